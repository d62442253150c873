# shellcheck shell=bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Functions for private clusters; to be sourced after tools/common.sh.
#
# Packages that would set up a service are not installed: those with the tag "cluster-files" are unpacked into
# CLUSTER_FILES.

CLUSTER_KINDS=(replicas galera head shards)
CLUSTER_FILES=${XDG_CACHE_HOME:-$HOME/.cache}/qtutils-cluster/files

# need_kind NAME: ends the script unless there is such a kind of cluster.
need_kind()
{
    [[ " ${CLUSTER_KINDS[*]} " == *" $1 "* ]] || wrong_usage "unknown kind $1"
}

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

# start_cluster KIND MAP: starts a private cluster in PRIVATE, with a map by mapmaker's command and options MAP, whose
# tables are named "changelogs"; exports the variables that lead the window there.
start_cluster()
{
    private_folder || return
    local log=$PRIVATE/cluster.log variables=$PRIVATE/variables
    spawn "$log" /usr/bin/python3 -B -m cluster.runner "$1" "--folder=$PRIVATE" "--map=$2" --name=changelogs \
        "--environment=$variables"
    START_LIMIT=600 wait_ready "$SPAWNED" test -e "$variables" || { show_log "$log"; fail "no cluster"; return; }
    # shellcheck source=/dev/null
    source "$variables"
}
