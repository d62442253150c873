# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The documentation's pictures: what is asked of the map for them, and which there are."""

import re
import subprocess
import sys
from pathlib import Path

import pytest
from shellscript import COMMON, TOP, run_script

sys.path[:0] = [str(TOP / "tools"), str(TOP / "kit/python")]

import mapquery  # noqa: E402
from color_pictures import is_colored  # noqa: E402
from pictures import HIGHLIGHT, selected_row  # noqa: E402
from screen import Box, Picture, TourError  # noqa: E402

WHITE = b"\xff\xff\xff"
IMAGES = TOP / "docs/images"
LARGEST = 150_000  # bytes of a picture
LINK = re.compile(r"!\[[^\]]*\]\(([^)]+\.png)\)")

TABLES = """
CREATE DATABASE som; CREATE DATABASE texts;
CREATE TABLE som.changelogs_som (_assigned_topic INT, _keywords TEXT);
CREATE TABLE som.changelogs_train (node INT, dist DOUBLE, item INT);
CREATE TABLE texts.document (id INT, date DATETIME, text TEXT, package TEXT DEFAULT 'tar');
INSERT INTO som.changelogs_som VALUES (0, 'all\\nthings'), (1, 'cve\\nsecurity');
INSERT INTO som.changelogs_train SELECT 1, 0, seq FROM som.seq_0_to_7;
INSERT INTO som.changelogs_train SELECT 2, 0, seq FROM som.seq_8_to_11;
INSERT INTO texts.document (id, date, text) VALUES
    (0, '2001-01-31 10:00:00', CONCAT('One CVE', REPEAT('\\n*', 10))),
    (1, '2001-01-31 10:00:00', 'a second text of the same second'),
    (2, '2001-01-31 11:00:00', CONCAT('A CVE [ by somebody ]', REPEAT('\\n*', 10))),
    (3, '2002-02-28 12:00:00', CONCAT('A text without the word', REPEAT('\\n*', 10))),
    (4, '2002-02-28 12:30:00', CONCAT('A long CVE', REPEAT('\\n*', 20))),
    (5, '2003-03-31 12:00:00', CONCAT('CVE', REPEAT('\\n*', 8))),
    (6, '2004-03-31 12:00:00', 'a short CVE'),
    (7, '2005-03-31 12:00:00', CONCAT('CVE', REPEAT('\\n*', 12))),
    (8, '2006-03-31 12:00:00', CONCAT('A CVE of another node', REPEAT('\\n*', 10)));
INSERT INTO texts.document (id, date, text) SELECT seq, '2006-03-31 13:00:00', 'another node' FROM som.seq_9_to_11;
"""
QUESTIONS = """
import mapquery
print(mapquery.keyword(1), mapquery.keyword(1, 2))
print(mapquery.date_of_text(1, "cve"))
print(*mapquery.fullest_day(1))
print(mapquery.date_of_text(1, "somebody"))
print(mapquery.rows(1, "somebody")[2], mapquery.rows(1, "somebody")[7])
try:
    mapquery.date_of_text(2, "somebody")
except mapquery.TourError as error:
    print(error)
"""


def linked_pictures() -> set[Path]:
    """The pictures that the documents show."""
    documents = [TOP / "README.md", *TOP.glob("docs/**/*.md"), *TOP.glob("*/README.md")]
    return {(path.parent / link).resolve() for path in documents for link in LINK.findall(path.read_text())}


def test_the_map_is_asked_for_what_is_worth_a_picture(tmp_path: Path) -> None:
    (tmp_path / "tables.sql").write_text(TABLES)
    (tmp_path / "questions.py").write_text(QUESTIONS)
    result = run_script(
        f'{COMMON}; start_server; mariadb --no-defaults "--user=$MYSQL_USER" <{tmp_path}/tables.sql;'
        f" PYTHONPATH={TOP}/tools /usr/bin/python3 -B {tmp_path}/questions.py"
    )
    assert (result.stderr, result.stdout.splitlines()[:1]) == ("", ["cve security"])
    assert result.stdout.splitlines()[1:] == [
        "2003-03-31 12:00:00",  # nearest to ten lines, and the earlier of two
        "31.01.2001 3",
        "2001-01-31 11:00:00",  # rather with a name than no text
        "(0.0, True, 'tar') (0.0, False, 'tar')",
        "the map has no text with somebody in node 2",
    ]


def test_without_a_server_the_first_question_is_named(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("MYSQL_UNIX_PORT", "/nonexistent")
    with pytest.raises(TourError, match="^the map has no keyword for node 1$"):
        mapquery.keyword(1)


def test_the_selected_row_is_found_by_its_colour() -> None:
    rows = [WHITE * 10] * 50
    assert selected_row(Picture(tuple(rows)), Box(2, 10, 6, 40)) == 0
    rows[5:8] = [HIGHLIGHT * 10] * 3  # outside of the table
    rows[30:50] = [HIGHLIGHT * 10] * 20
    rows[35] = WHITE * 10  # a letter
    assert selected_row(Picture(tuple(rows)), Box(2, 10, 6, 40)) == 39


def test_white_rows_are_not_coloured_ones() -> None:
    white, orange = WHITE * 10, b"\xff\xc6\x73" * 10
    assert not is_colored(Picture((white,) * 20))
    assert is_colored(Picture((white,) * 18 + (orange,) * 2))


def test_every_picture_of_colours_shows_some() -> None:
    for path in (*IMAGES.glob("colors*.png"), IMAGES / "notes.png"):
        command = ["convert-im6.q16", str(path), "-depth", "8", "ppm:-"]
        _, size, _, pixels = subprocess.run(command, capture_output=True, check=True).stdout.split(b"\n", 3)
        length = 3 * int(size.split()[0])
        rows = tuple(pixels[place : place + length] for place in range(0, len(pixels), length))
        assert is_colored(Picture(rows)), path.name


def test_every_picture_that_a_document_shows_is_there() -> None:
    assert linked_pictures() >= {IMAGES / "browser.png", IMAGES / "find.png"}
    assert [path for path in linked_pictures() if not path.is_file()] == []


def test_every_picture_is_shown_by_a_document_and_made_by_the_script() -> None:
    pictures = set(IMAGES.iterdir())
    assert pictures == linked_pictures()
    scripts = "".join((TOP / "tools" / name).read_text() for name in ("pictures.py", "color_pictures.py"))
    others = [path.name for path in pictures if f'"{path.stem}"' not in scripts]
    looks = [f"looks-{style}-{scale}.png" for style in ("dark", "fusion") for scale in (100, 125, 150, 200)]
    assert sorted(others) == looks
    assert "tst_module_looks" in (TOP / "tools/make_pictures.sh").read_text()


def test_pictures_are_small_png_files() -> None:
    command = ["identify-im6.q16", "-format", "%m\n", *map(str, IMAGES.iterdir())]
    formats = subprocess.run(command, capture_output=True, text=True, check=True).stdout.split()
    assert set(formats) == {"PNG"}
    assert [path.name for path in IMAGES.iterdir() if path.stat().st_size >= LARGEST] == []
