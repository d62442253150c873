-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- The account of the replicas. On the primary, once. It sees every change, so nobody else should know its password.

CREATE USER 'replica'@'$CLIENTS' IDENTIFIED BY '$REPLICA_PASSWORD';
GRANT REPLICATION SLAVE ON *.* TO 'replica'@'$CLIENTS';
