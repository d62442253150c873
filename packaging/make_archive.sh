#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Makes the source archive of the last commit, the same bytes each time.

set -euo pipefail
# shellcheck source=tools/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/../tools/common.sh"

OUTPUT=.

usage()
{
    cat <<END
usage: ./packaging/make_archive.sh [--output FOLDER]

Makes qtutils-VERSION.tar.gz of the last commit.

  --output FOLDER  where it goes (default: the working folder)
  --help           show this text
END
}

parse_options()
{
    while (($#)); do
        case $1 in
            --output)
                [[ -n ${2-} ]] || wrong_usage "--output needs a folder"
                OUTPUT=$2
                shift
                ;;
            --help) usage && exit ;;
            *) wrong_usage "unknown option $1" ;;
        esac
        shift
    done
}

parse_options "$@"
mkdir -p -- "$OUTPUT"
OUTPUT=$(realpath -- "$OUTPUT")
cd -- "$TOP"
[[ -e .git ]] || fail "there is no repository in $TOP" || exit 1
VERSION=$(git show HEAD:CMakeLists.txt | sed -nE 's/^project\(qtutils VERSION ([0-9.]+) .*/\1/p')
NAME=qtutils-$VERSION
# Git's settings may have the files get the user's rights, and "gzip" may write the time where it isn't told not to.
git -c tar.umask=0022 archive --format=tar --prefix="$NAME/" HEAD | gzip -9n >"$OUTPUT/$NAME.tar.gz.new"
mv -- "$OUTPUT/$NAME.tar.gz.new" "$OUTPUT/$NAME.tar.gz"
echo "$OUTPUT/$NAME.tar.gz"
