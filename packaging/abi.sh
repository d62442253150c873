#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Compares what a build's module and kit library export with the last release: names, types, sizes.

set -euo pipefail
# shellcheck source=tools/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/../tools/common.sh"

BASELINE=$TOP/packaging/abi
BUILD=
WRITE=no

usage()
{
    cat <<END
usage: ./packaging/abi.sh [--write] [--baseline FOLDER] BUILD

Compares qtutils.so and libqtutils-nodebrowser.so in the folder BUILD with the descriptions of the
last release. The module must be the same; the library may have more functions. Ends with 1 and
the differences when a program built before wouldn't run. The build needs debug information.

  --write            write the descriptions instead: when a release is made
  --baseline FOLDER  where they are (default: packaging/abi)
  --help             show this text
END
}

parse_options()
{
    while (($#)); do
        case $1 in
            --write) WRITE=yes ;;
            --baseline)
                [[ -n ${2-} ]] || wrong_usage "--baseline needs a folder"
                BASELINE=$2
                shift
                ;;
            --help) usage && exit ;;
            -*) wrong_usage "unknown option $1" ;;
            *) BUILD=$1 ;;
        esac
        shift
    done
    [[ -n $BUILD ]] || wrong_usage "which build?"
}

# describe FILE HEADERS TARGET: the types of what a library exports, as its debug information says; types that the
# headers don't have are private. Without the folders of this build.
describe()
{
    [[ -e $1 ]] || fail "there is no $1" || return
    readelf --sections "$1" | grep '\.debug_info' >/dev/null || fail "$1 has no debug information" || return
    abidw --exported-interfaces-only --drop-private-types --headers-dir "$2" --no-corpus-path --no-comp-dir-path \
        --no-show-locs --no-architecture --no-elf-needed --no-parameter-names --type-id-style hash "$1" |
        sed "s| path='[^']*/| path='|" >"$3"
}

# examine NAME HEADERS OPTION...: compares a library, or writes its description.
examine()
{
    local name=$1 headers=$TOP/$2 file
    shift 2
    if [[ $WRITE == yes ]]; then
        describe "$BUILD/$name" "$headers" "$BASELINE/$name.abi"
        return
    fi
    file=$PRIVATE/$name.abi
    describe "$BUILD/$name" "$headers" "$file" || return
    abidiff "$@" "$BASELINE/$name.abi" "$file" || fail "$name differs from the last release"
}

parse_options "$@"
finish
private_folder
code=0
examine qtutils.so binding || code=1
examine libqtutils-nodebrowser.so kit/include --suppressions "$TOP/packaging/abi/additions.suppress" || code=1
exit "$code"
