# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Links that lead nowhere are found in bad samples, and none in good ones."""

import links
import pytest

OTHER = "# Order of calls\n\n## `show`, twice\n\n```sh\n# no heading\n```\n\n## Ends\n\n## Ends\n"
KNOWN = links.with_folders({"README.md", "docs/abi.md", "docs/guide.md", "docs/images/tree.png"})


def faults(text: str) -> list[str]:
    """Those of docs/guide.md with this text."""
    return list(links.faults("docs/guide.md", {"docs/guide.md": text, "docs/abi.md": OTHER}, KNOWN))


@pytest.mark.parametrize(
    "text",
    [
        "See [the contract](abi.md), [here](../docs/abi.md) and [there](../README.md).",
        "![The tree](images/tree.png)",
        '[![The tree](images/tree.png "A tree")](images/)',
        "[pictures](images), [all](../docs)",
        "[calls](abi.md#order-of-calls), [show](abi.md#show-twice), [2nd](abi.md#ends-1)",
        "# Own heading\n\n[above](#own-heading)",
        "# A [link](abi.md) in it\n\n[above](#a-link-in-it)",
        "[far](https://example.org/none.md#none) [mail](mailto:a@example.org)",
        "`[a](none.md)` and ``[b](`none.md)``",
        "```\n[a](none.md)\n```",
        "~~~\n```\n[a](none.md)\n~~~",
        "[contract]: abi.md",
        '<img src="images/tree.png"> <a href="abi.md">',
    ],
)
def test_a_link_that_leads_somewhere_is_fine(text: str) -> None:
    assert faults(text) == []


@pytest.mark.parametrize(
    "text, target",
    [
        ("See [the contract](none.md).", "none.md"),
        ("See [`abi`](docs/abi.md).", "docs/abi.md"),
        ("![The tree](images/Tree.png)", "images/Tree.png"),
        ("[![The tree](images/none.png)](abi.md)", "images/none.png"),
        ("[![The tree](images/tree.png)](none.md)", "none.md"),
        ("[out](../../README.md)", "../../README.md"),
        ("[top](/README.md)", "/README.md"),
        ("[contract]: none.md", "none.md"),
        ('<img src="none.png">', "none.png"),
        ("[one](abi.md), [two](none.md)", "none.md"),
    ],
)
def test_a_missing_file_is_found(text: str, target: str) -> None:
    assert faults(f"first\n{text}\n") == [f"docs/guide.md:2: no such file: {target}"]


@pytest.mark.parametrize(
    "target",
    ["abi.md#none", "abi.md#Ends", "abi.md#ends-2", "abi.md#no-heading", "#ends", "images/tree.png#ends"],
)
def test_a_missing_heading_is_found(target: str) -> None:
    assert faults(f"[there]({target})") == [f"docs/guide.md:1: no such heading: {target}"]


def test_a_link_behind_a_block_of_code_is_seen() -> None:
    assert faults("```c\nint i;\n```\n[a](none.md)") == ["docs/guide.md:4: no such file: none.md"]
