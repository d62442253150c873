#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Makes the documentation's pictures anew: the window on the demo's map, on a virtual display.

set -euo pipefail
# shellcheck source=tools/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
source "$TOP/tools/demomap.sh"

FOLDER=$TOP/docs/images

usage()
{
    cat <<END
usage: ./tools/make_pictures.sh [--no-install] [--output DIR]

Takes the pictures of the documentation. Like ./demo it installs what is missing, builds, and makes
the map of the release notes of the installed packages; a map that is kept in
$CACHE is taken as it is.

  --no-install  install nothing; where a package is missing, name it and end with 2
  --output DIR  folder of the pictures (default: docs/images)
  --help        show this text
END
}

take_color_pictures()
{
    PYTHONPATH=kit/python QTUTILS_NODEBROWSER=build-release/libqtutils-nodebrowser.so guarded /usr/bin/python3 \
        tools/color_pictures.py --module "$MODULE" --hierarchy "$HIERARCHY" --output "$FOLDER"
}

# On light and dark desktops, and on screens of more pixels.
take_looks()
{
    cmake --preset dev && cmake --build --preset dev --parallel 2 --target tst_module_looks &&
        QTUTILS_PICTURES=$FOLDER guarded build-dev/tests/module/tst_module_looks
}

parse_folder_options --output "$@"
cd -- "$TOP"
finish
open_map "$INSTALL" no
step "Start a virtual display" start_display
step "Take the pictures" take_pictures pictures.py "$FOLDER"
step "Build the kit" cmake --build --preset release --parallel 2 --target qtutils_nodebrowser
step "Take the pictures of colours" take_color_pictures
step "Take the pictures of desktops" take_looks
