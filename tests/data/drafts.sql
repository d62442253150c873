-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT

-- A second map beside that of news.sql: node 1 has four documents, of which one has no date; root 0 has none.
CREATE TABLE som.drafts_train (
    node INT NOT NULL,
    dist DOUBLE NOT NULL,
    item INT NOT NULL,
    PRIMARY KEY (node, item)
) ENGINE=InnoDB;

CREATE TABLE som.drafts_som (
    node INT NOT NULL PRIMARY KEY,
    _assigned_topic INT,
    _keywords TEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

INSERT INTO news.document VALUES
    (8, NULL, 'Ohne Datum', 'http://news.example/8', 'Noch nicht gedruckt.', 'Anna', 0.000),
    (9, '2007-01-01 10:00:00', 'Neujahr', 'http://news.example/9', 'Ein Jahr beginnt.', 'Bert', 1.000),
    (10, '2007-01-01 10:00:30', 'Konzert', 'http://news.example/10', 'Es wird gespielt.', 'Cora', 2.000),
    (11, '2007-01-01 10:01:30', 'Feuerwerk', 'http://news.example/11', 'Es hat geknallt.', 'Bert', 3.000);

INSERT INTO som.drafts_train VALUES
    (1, 0.25, 8), (1, 0.5, 9), (1, 0.75, 10), (1, 1.0, 11);

INSERT INTO som.drafts_som VALUES
    (0, 2, 'neu\nalt'),
    (1, 7, 'fest\nmusik\njahr');
