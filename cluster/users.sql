-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- Accounts that every cluster needs. Once, where the cluster is written to; the other servers copy it. Words that begin
-- with a dollar sign are yours to fill in, by hand or with envsubst. CLIENTS are the addresses that connections come
-- from, such as 10.0.0.%: behind HAProxy those of HAProxy.

-- Makes maps with mapmaker, and may do nothing else.
CREATE USER 'maker'@'localhost' IDENTIFIED BY '$MAKER_PASSWORD';
CREATE DATABASE IF NOT EXISTS $SOM DEFAULT CHARACTER SET utf8mb4;
CREATE DATABASE IF NOT EXISTS $TEXTS DEFAULT CHARACTER SET utf8mb4;
GRANT ALL ON $SOM.* TO 'maker'@'localhost';
GRANT ALL ON $TEXTS.* TO 'maker'@'localhost';

-- HAProxy's look whether the server answers. It has no right at all, and no password since HAProxy can send none.
CREATE USER 'hapcheck'@'$CLIENTS';

-- The window's user; its rights follow when the tables are there (reader.sql).
CREATE USER 'reader'@'$CLIENTS' IDENTIFIED BY '$READER_PASSWORD';
