-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- What the head knows of the servers behind it. On the head, once; then "mapmaker head" makes the links to a map.
-- The password lies in mysql.servers as it is here, for all who may read that table: the account may read the map and
-- nothing else. For an encrypted connection add SSL_CA, SSL_CERT and SSL_KEY in the tables' comments, or let HAProxy
-- encrypt. HOST and PORT are those of HAProxy.

CREATE SERVER $SERVER FOREIGN DATA WRAPPER mysql OPTIONS (
    HOST '$CLUSTER_HOST',
    PORT $CLUSTER_PORT,
    USER 'reader',
    PASSWORD '$READER_PASSWORD',
    DATABASE '$SOM');
