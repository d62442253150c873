# shellcheck shell=bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Functions for private clusters; to be sourced after tools/common.sh.
#
# Packages that would set up a service are not installed: those with the tag "cluster-files" are unpacked into
# CLUSTER_FILES (need_files).

# shellcheck source=tools/unpack.sh
source "$TOP/tools/unpack.sh"

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
    need_packages "$1" cluster && need_files "$1" cluster-files "$CLUSTER_FILES"
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
