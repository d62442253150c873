-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- What the head knows of the servers behind it. On the head, once; then "mapmaker head" makes the links to a map.
-- The password lies in mysql.servers as it is here, for all who may read that table: the account may read the map and
-- nothing else. HOST and PORT are those of HAProxy. The connection is in plain: between machines let HAProxy encrypt it
-- (tunnel.cfg), and name the tunnel's end on this machine here.

CREATE SERVER $SERVER FOREIGN DATA WRAPPER mysql OPTIONS (
    HOST '$CLUSTER_HOST',
    PORT $CLUSTER_PORT,
    USER 'reader',
    PASSWORD '$READER_PASSWORD',
    DATABASE '$SOM');
