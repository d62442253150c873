#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Makes the Debian packages and their bill of materials, and has lintian look at them.

set -euo pipefail
# shellcheck source=tools/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/../tools/common.sh"

FOLDER=build-package/packages

usage()
{
    cat <<END
usage: ./packaging/make_packages.sh [--no-install] [--output FOLDER]

Installs the packages of tools/packages.txt that are missing, builds the preset "package" and leaves
the Debian packages in the folder, with a bill of materials of what they hold and depend on (SPDX 2.3).

  --no-install     install nothing; where a package is missing, name it and end with 2
  --output FOLDER  where they go (default: build-package/packages)
  --help           show this text
END
}

# The time that all files get: that of the last commit, or of the sources where there is no repository.
source_time() { git log -1 --format=%ct 2>/dev/null || stat --format=%Y CMakeLists.txt; }

make_packages()
{
    private_folder || return
    guarded cpack --config build-package/CPackConfig.cmake -B "$PRIVATE" || return
    mkdir -p -- "$FOLDER" && mv -- "$PRIVATE"/*.deb "$FOLDER"
}

write_bill() { packaging/sbom.py "$FOLDER"/*.deb >"$FOLDER/qtutils.spdx.json"; }

parse_folder_options --output "$@"
umask 022 # it shows in the packages
cd -- "$TOP"
finish
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(source_time)}
export SOURCE_DATE_EPOCH
step "Packages" need_packages "$INSTALL"
step "Configure" cmake --preset package
step "Build" cmake --build --preset package --parallel 2
step "Make the packages" make_packages
# The first upload to Debian would have to close the wish for it; these packages go elsewhere.
step "Look at them" lintian --no-cfg --allow-root --fail-on error,warning \
    --suppress-tags initial-upload-closes-no-bugs "$FOLDER"/*.deb
step "Write the bill of materials" write_bill
