# shellcheck shell=bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# The packages of private clusters; to be sourced after tools/common.sh. Packages that would set up a service are not
# installed: with the tag "cluster-files", their files are unpacked into CLUSTER_FILES.

CLUSTER_FILES=${XDG_CACHE_HOME:-$HOME/.cache}/qtutils-cluster/files

# need_cluster_packages INSTALL: installs and unpacks what is missing; returns 2 instead where INSTALL is "no".
need_cluster_packages()
{
    local missing
    need_packages "$1" cluster || return
    mapfile -t missing < <(files_to_unpack)
    ((${#missing[@]})) && [[ ! -e $CLUSTER_FILES/versions || $(<"$CLUSTER_FILES/versions") != "${missing[*]}" ]] || return 0
    if [[ $1 == no ]]; then
        fail "files of these packages are missing: ${missing[*]}" || return 2
    fi
    echo "unpacking in $CLUSTER_FILES: ${missing[*]}"
    unpack_packages "${missing[@]}" || fail "could not unpack: ${missing[*]}"
}

# files_to_unpack: the packages with that tag that aren't installed; MariaDB's in the installed server's version.
files_to_unpack()
{
    local package version
    version=$(dpkg-query -W -f '${Version}' mariadb-server-core)
    while read -r package; do
        [[ $package != mariadb-* ]] || package+="=$version"
        echo "$package"
    done < <(comm -13 <(listed_packages | sort) <(missing_packages cluster-files | sort))
}

# The folder is there with all files or not at all.
unpack_packages()
{
    local new=$CLUSTER_FILES.new package
    rm -rf -- "$new"
    mkdir -p -- "$new" || return
    (cd -- "$new" && { apt-get -q download "$@" || { apt_get update && apt-get -q download "$@"; }; }) || return
    for package in "$new"/*.deb; do
        dpkg-deb --extract "$package" "$new" && rm -- "$package" || return
    done
    echo "$*" >"$new/versions"
    rm -rf -- "$CLUSTER_FILES"
    mv -- "$new" "$CLUSTER_FILES"
}
