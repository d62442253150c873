-- SPDX-FileCopyrightText: The qtutils developers
-- SPDX-License-Identifier: MIT

-- A small map: node 1 has five documents, node 2 two, node 3 none; root 0 shows one.
CREATE DATABASE som;
CREATE DATABASE news;

CREATE TABLE news.document (
    id INT NOT NULL PRIMARY KEY,
    date DATETIME,
    title VARCHAR(200),
    URL VARCHAR(200),
    text MEDIUMTEXT,
    author VARCHAR(80),
    rate DECIMAL(8,3)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE som.news_train (
    node INT NOT NULL,
    dist DOUBLE NOT NULL,
    item INT NOT NULL,
    PRIMARY KEY (node, item)
) ENGINE=InnoDB;

CREATE TABLE som.news_som (
    node INT NOT NULL PRIMARY KEY,
    _assigned_topic INT,
    _keywords TEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

INSERT INTO news.document VALUES
    (1, '2005-03-01 13:00:00', 'Schnee im März', 'http://news.example/1', 'Es schneit in Zürich.', 'Anna', 1.500),
    (2, '2005-03-02 08:15:30', 'Wahl in Köln', 'http://news.example/2', 'Die Wahl ist vorbei.', 'Bert', 2.250),
    (3, '2005-03-03 00:00:00', 'Äpfel werden teurer', 'http://news.example/3', 'Ein Apfel kostet mehr.', 'Anna', 12.500),
    (4, '2005-02-27 23:59:59', 'Zug entgleist', 'http://news.example/4', 'Niemand wurde verletzt.', 'Cora', 0.125),
    (5, '2005-03-01 09:30:00', 'Neue Brücke', 'http://news.example/5', 'Die Brücke ist offen.', 'Bert', 7.000),
    (6, '2006-05-10 12:00:00', 'Sommer', 'http://news.example/6', 'Es ist warm.', 'Anna', 3.333),
    (7, '2006-05-11 12:00:00', 'Herbst', 'http://news.example/7', 'Es ist kühl.', 'Cora', 4.000);

INSERT INTO som.news_train VALUES
    (0, 0.5, 1),
    (1, 0.125, 1), (1, 0.25, 2), (1, 0.5, 3), (1, 0.75, 4), (1, 1.5, 5),
    (2, 0.1, 6), (2, 0.2, 7);

INSERT INTO som.news_som VALUES
    (0, 5, 'alles\nviel\nmehr\nganz'),
    (1, 3, 'red\ngreen\nblue\ngrey'),
    (2, 25, 'warm\nkühl'),
    (3, 1, 'leer\nnichts\nkeiner');
