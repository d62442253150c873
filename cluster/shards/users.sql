-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- Accounts on a shard, once on each. CLIENTS are the addresses of the heads and of the machine where mapmaker runs.

-- mapmaker writes the documents straight into the shards.
CREATE USER 'maker'@'$CLIENTS' IDENTIFIED BY '$MAKER_PASSWORD';
CREATE DATABASE IF NOT EXISTS $TEXTS DEFAULT CHARACTER SET utf8mb4;
GRANT ALL ON $TEXTS.* TO 'maker'@'$CLIENTS';

-- The heads read. Each map has a table of its own here, hence the right on the whole database.
CREATE USER 'reader'@'$CLIENTS' IDENTIFIED BY '$READER_PASSWORD';
GRANT SELECT ON $TEXTS.* TO 'reader'@'$CLIENTS';
