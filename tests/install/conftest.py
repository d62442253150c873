# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The installed tree, moved after it was installed, and what its programs need."""

from pathlib import Path

import pytest
from installed import install, make_packages

from mapmaker.tests.conftest import home, installed, server
from tests.kit.conftest import display, map_server

__all__ = ["display", "home", "installed", "map_server", "server"]  # fixtures


@pytest.fixture(scope="session")
def prefix(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """A prefix with blanks in its name, which is not the one that was installed into."""
    first = tmp_path_factory.mktemp("install") / "first place"
    install(first)
    return first.rename(tmp_path_factory.mktemp("moved") / "second strange place")


@pytest.fixture(scope="session")
def packages(tmp_path_factory: pytest.TempPathFactory) -> dict[str, Path]:
    """The Debian packages by their names."""
    return make_packages(tmp_path_factory.mktemp("packages"))
