-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- Accounts on a head, which only this machine's programs reach. On the head, once; "reader.sql" follows for each map.

-- Makes links, or maps, with mapmaker: it looks up where the servers are.
CREATE USER 'maker'@'localhost' IDENTIFIED BY '$MAKER_PASSWORD';
CREATE DATABASE IF NOT EXISTS $SOM DEFAULT CHARACTER SET utf8mb4;
CREATE DATABASE IF NOT EXISTS $TEXTS DEFAULT CHARACTER SET utf8mb4;
GRANT ALL ON $SOM.* TO 'maker'@'localhost';
GRANT ALL ON $TEXTS.* TO 'maker'@'localhost';
GRANT SELECT ON mysql.servers TO 'maker'@'localhost';

-- The window's user.
CREATE USER 'reader'@'$CLIENTS' IDENTIFIED BY '$READER_PASSWORD';
