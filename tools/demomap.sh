# shellcheck shell=bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# The demo's map, which ./demo, the installed qtutils-demo and tools/make_pictures.sh share; to be sourced after
# tools/common.sh. It is made of the release notes of this machine's packages and kept in CACHE.

CACHE=${XDG_CACHE_HOME:-$HOME/.cache}/qtutils-demo
HOST=build-release/qtutils-host
MODULE=build-release/qtutils.so
HIERARCHY=$CACHE/hierarchy.qth
MAP=(/usr/bin/python3 -m mapmaker changelogs --or-sample --som-database som --source-database texts
    --name changelogs --script "$HIERARCHY" --report "$CACHE/report.json")

# open_map INSTALL FRESH: installs (unless INSTALL is "no") what is missing, builds, starts the server with the map,
# which is made where there is none or FRESH is "yes".
open_map()
{
    lock_cache
    step "Packages" need_packages "$1"
    build_host
    serve_map "$2"
}

# serve_map FRESH: the last part of open_map, for a module that is built.
serve_map()
{
    if [[ $1 == yes ]] || ! map_is_complete; then forget_map; fi
    step "Start a private database server" start_server "$CACHE/data"
    map_is_complete || step "Make a map of the release notes" make_map
    give_runtime_folder
}

build_host()
{
    step "Configure" cmake --preset release
    step "Build qtutils.so and qtutils-host" cmake --build --preset release --parallel 2 --target qtutils qtutils-host
}

give_runtime_folder()
{
    : "${XDG_RUNTIME_DIR:=$PRIVATE}"
    export XDG_RUNTIME_DIR
}

# run_host: opens the window, with a prompt for commands to it.
# The host reads the terminal, so it is not "guarded"; the kernel ends it with this script all the same.
run_host()
{
    local scripts=(host/scripts/open.qth "$HIERARCHY" host/scripts/{select,colors,read,show}.qth) code=0
    echo 'Type .help for a list of commands, "show" to open a closed window again, .quit to end the demo.'
    setpriv --pdeathsig TERM "$HOST" "${scripts[@]/#/--script=}" --interactive "$MODULE" <&0 &
    CHILDREN+=($!)
    wait $! || code=$?
    return "$code"
}

# The server inherits the lock: it holds until the server has written its data, however this script ends.
lock_cache()
{
    mkdir -p -- "$CACHE" || return
    exec {LOCK}>"$CACHE/lock" || return
    flock --nonblock "$LOCK" || fail "another demo uses $CACHE; end it first"
}

# What the kept map depends on, apart from the packages' release notes.
map_version() { mariadbd --version && echo "${MAP[*]}"; }

forget_map() { rm -rf -- "$CACHE"/{complete,data,data.new}; }

map_is_complete() { [[ -e $CACHE/complete && $(<"$CACHE/complete") == "$(map_version)" ]]; }

make_map()
{
    guarded "${MAP[@]}" || return
    map_version >"$CACHE/complete"
}

# take_pictures SCRIPT DIR: has a script of tools/ drive the window and take pictures of it.
take_pictures()
{
    guarded /usr/bin/python3 "tools/$1" --host "$HOST" --module "$MODULE" --hierarchy "$HIERARCHY" \
        --output "$2"
}
