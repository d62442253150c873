-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- On each replica, once, while it is as empty as the primary was when its log began. A replica that is added
-- later gets a copy of the data first (mariadb-dump --all-databases --gtid --master-data=1).
-- Between machines add MASTER_SSL = 1, MASTER_SSL_CA = '/etc/mysql/ca.pem', MASTER_SSL_VERIFY_SERVER_CERT = 1.

CHANGE MASTER TO
    MASTER_HOST = '$PRIMARY_HOST',
    MASTER_PORT = $PRIMARY_PORT,
    MASTER_USER = 'replica',
    MASTER_PASSWORD = '$REPLICA_PASSWORD',
    MASTER_CONNECT_RETRY = 1,
    MASTER_USE_GTID = slave_pos;
START SLAVE;
