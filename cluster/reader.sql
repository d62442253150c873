-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT
--
-- The window's rights on a map: reading three tables. Once for each map; they stay when a new map takes its place.

GRANT SELECT ON $SOM.${MAP}_train TO 'reader'@'$CLIENTS';
GRANT SELECT ON $SOM.${MAP}_som TO 'reader'@'$CLIENTS';
GRANT SELECT ON $TEXTS.document TO 'reader'@'$CLIENTS';
