#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# guard.sh PARENT COMMAND...: runs a program; SIGTERM ends all of its process group. To be started as the leader
# of a session by "guarded" in common.sh, which has the kernel send SIGTERM when PARENT dies.

stop_group()
{
    trap '' TERM
    kill -TERM 0
    wait
    exit 143
}

parent=$1
shift
trap stop_group TERM
[[ $PPID == "$parent" ]] || exit 1
"$@" &
wait $!
