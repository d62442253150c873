# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Addresses: they are put into a shell's command line between double quotes, without escapes."""

from collections.abc import Iterator

from mapmaker.doctor.columns import error, warning
from mapmaker.doctor.finding import Finding
from mapmaker.doctor.patient import Patient

COMMANDS = '["$`\\\\[:cntrl:]]|^-'  # end the quotes, start a command, or are taken for an option
CUTTING = "[,() ]"  # end the argument in the command for a browser that runs already


def check(patient: Patient) -> Iterator[Finding]:
    """Addresses that a shell or a browser takes for more than an address."""
    table = patient.documents
    if not table.has("id", "URL"):
        return
    commands, cutting = "URL REGEXP %s", "URL REGEXP %s AND NOT URL REGEXP %s"
    if count := patient.matching(table, commands, COMMANDS):
        fault = f"{count} addresses are unsafe for a shell, {patient.example(commands, COMMANDS)}"
        effect = "opening such a document can run any command as the user of the window"
        yield error(
            "addresses.unsafe", table, fault, effect, 'percent-encode \\ " $ ` and control characters'
        )
    if count := patient.matching(table, cutting, CUTTING, COMMANDS):
        example = patient.example(cutting, CUTTING, COMMANDS)
        fault = f"{count} addresses have a blank, comma or parenthesis, {example}"
        effect = "a browser that runs already may open another address"
        yield warning("addresses.cut", table, fault, effect, "percent-encode these characters")
