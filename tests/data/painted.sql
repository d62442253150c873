-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT

-- Documents without titles, whose cells show nothing but colours: five on node 1, two on node 2, 3000 on node 3.
CREATE DATABASE som;
CREATE DATABASE painted;
USE painted;

CREATE TABLE document (
    id INT NOT NULL PRIMARY KEY,
    date DATETIME,
    title VARCHAR(20),
    void VARCHAR(20)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE som.painted_train (
    node INT NOT NULL,
    dist DOUBLE NOT NULL,
    item INT NOT NULL
) ENGINE=InnoDB;

CREATE TABLE som.painted_som (
    node INT NOT NULL PRIMARY KEY,
    _assigned_topic INT,
    _keywords TEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

INSERT INTO document SELECT seq, '2007-01-01 12:00:00' + INTERVAL seq DAY, '', '' FROM seq_1_to_3000;
INSERT INTO som.painted_train SELECT 1, 0, seq FROM seq_1_to_5;
INSERT INTO som.painted_train SELECT 2, 0, seq FROM seq_1_to_2;
INSERT INTO som.painted_train SELECT 3, 0, seq FROM seq_1_to_3000;
INSERT INTO som.painted_som VALUES (0, 0, 'all'), (1, 1, 'five'), (2, 2, 'two'), (3, 3, 'many');
