# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Running of bash scripts that use tools/common.sh."""

import os
import subprocess
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
COMMON = f"set -euo pipefail; . {TOP}/tools/common.sh; finish"


def run_script(text: str, environment: dict[str, str] | None = None) -> "subprocess.CompletedProcess[str]":
    return subprocess.run(
        ["bash", "-c", text],
        env={**os.environ, **(environment or {})},
        capture_output=True,
        text=True,
        check=False,
    )
