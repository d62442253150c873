# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Dates that the window can't compare with a host's dates."""

from collections.abc import Iterator

from mapmaker.doctor.columns import warning
from mapmaker.doctor.finding import Finding
from mapmaker.doctor.patient import Patient

TEXTS = ("char", "varchar", "tinytext", "text", "mediumtext", "longtext")
READABLE = "^[0-9]{4}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])T([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]"
EFFECT = "row operations by date pass them over or take them for another time; they are sorted first"


def check(patient: Patient) -> Iterator[Finding]:
    """Missing, zero and unreadable dates."""
    table = patient.documents
    if not table.has("id", "date"):
        return
    kinds = [("dates.null", "have no date", "date IS NULL")]
    if table.columns["date"].type in TEXTS:
        kinds.append(
            ("dates.text", "have a date of another form than 2005-03-01T13:00:00", "date NOT REGEXP %s")
        )
    else:
        zero = "YEAR(date) = 0 OR MONTH(date) = 0 OR DAYOFMONTH(date) = 0"
        kinds.append(("dates.zero", "have a date with a year, month or day of zero", zero))
    for code, fault, condition in kinds:
        values = (READABLE,) if "%s" in condition else ()
        if count := patient.matching(table, condition, *values):
            text = f"{count} documents {fault}, {patient.example(condition, *values)}"
            yield warning(code, table, text, EFFECT, "give them a date")
