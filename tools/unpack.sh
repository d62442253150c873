# shellcheck shell=bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Packages whose files are needed but which would set up a service; to be sourced after tools/common.sh.

# need_files INSTALL TAG FOLDER: unpacks into the folder, instead of installing, the packages with that tag that aren't
# installed; returns 2 instead where INSTALL is "no".
need_files()
{
    local missing
    mapfile -t missing < <(files_to_unpack "$2")
    ((${#missing[@]})) && [[ ! -e $3/versions || $(<"$3/versions") != "${missing[*]}" ]] || return 0
    if [[ $1 == no ]]; then
        fail "files of these packages are missing: ${missing[*]}" || return 2
    fi
    echo "unpacking in $3: ${missing[*]}"
    unpack_packages "$3" "${missing[@]}" || fail "could not unpack: ${missing[*]}"
}

# files_to_unpack TAG: the packages with that tag that aren't installed; MariaDB's in the installed server's version.
files_to_unpack()
{
    local package
    while read -r package; do
        [[ $package != mariadb-* ]] || package+="=$(dpkg-query -W -f '${Version}' mariadb-server-core)"
        echo "$package"
    done < <(comm -13 <(listed_packages | sort) <(missing_packages "$1" | sort))
}

# unpack_packages FOLDER PACKAGE...: the folder is there with all files or not at all.
unpack_packages()
{
    local new=$1.new package
    rm -rf -- "$new"
    mkdir -p -- "$new" || return
    (cd -- "$new" && { apt-get -q download "${@:2}" || { apt_get update && apt-get -q download "${@:2}"; }; }) || return
    for package in "$new"/*.deb; do
        dpkg-deb --extract "$package" "$new" && rm -- "$package" || return
    done
    echo "${*:2}" >"$new/versions"
    rm -rf -- "$1"
    mv -- "$new" "$1"
}
