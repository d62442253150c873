#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Run by try_packages.sh as root inside a bare system, where the packages lie in the folder of this script: installs
# them, has a user without rights try them, removes them. Changes the system it runs in; don't run it elsewhere.
#
# Writes a line for each trial to "results" (outcome, packages, what was tried, why it failed) and "end" as the last.

set -uo pipefail
FOLDER=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")
RESULTS=$FOLDER/results
LOG=$FOLDER/log
VISITOR=visitor
TIME_LIMIT=120 # seconds for a trial, for a hang only
WITH_SERVER="set -e; source /usr/share/qtutils/tools/common.sh; finish; start_server" # as the demo does
FOR_TRIALS=(g++ make cmake pkg-config man-db desktop-file-utils appstream xvfb openbox)
DOCUMENTS=200 # of a map
ROUND= # the packages that are being tried

mapfile -t OURS < <(sed -n 's/^Package: //p' "$FOLDER/Packages")

# ------------------------------------------------------------------------------------------------------- trials

# try WHAT COMMAND...: a trial; what the command prints shows when it fails.
try()
{
    local what=$1 outcome=ok reason=
    shift
    "$@" >"$LOG" 2>&1 </dev/null || { outcome=FAILED reason=$(find_reason); tail -n 20 "$LOG"; }
    printf '%s\t%s\t%s\t%s\n' "$outcome" "$ROUND" "$what" "$reason" >>"$RESULTS"
    printf '%-6s %s: %s\n' "$outcome" "$ROUND" "$what"
    [[ $outcome == ok ]]
}

# The line that tells most: what apt misses, or else the last one.
find_reason() { grep -m1 -E '(^| )Depends: ' "$LOG" || grep . "$LOG" | tail -n1; }

# as_visitor COMMAND...: as a user without rights, display and server.
as_visitor()
{
    local code=0
    cd "/home/$VISITOR" && runuser -u "$VISITOR" -- env -i HOME="/home/$VISITOR" PATH=/usr/local/bin:/usr/bin:/bin \
        LANG=C.UTF-8 timeout --kill-after=10 "$TIME_LIMIT" "$@" || code=$?
    ((code != 124)) || echo "no end within $TIME_LIMIT s" >&2
    return "$code"
}

# says TEXT COMMAND...: whether the command ends well and the text is in what it prints.
says()
{
    local text=$1 output
    shift
    output=$(as_visitor "$@") || { echo "$output"; return 1; }
    [[ $output == *"$text"* ]] || { printf '%s\nthere is no "%s" in that\n' "$output" "$text"; return 1; }
}

# is_file PATTERN: whether there is one file that everybody may read.
is_file()
{
    local found
    mapfile -t found < <(compgen -G "$1")
    ((${#found[@]} == 1)) || { echo "there are ${#found[@]} files $1"; return 1; }
    as_visitor test -r "${found[0]}" || { echo "not everybody may read ${found[0]}"; return 1; }
}

# The version of what a package holds, without the numbers that a distribution adds.
version_of() { dpkg-query -W -f '${Version}' "$1" | sed 's/^[0-9]*://; s/-[^-]*$//'; }

says_version() { says "$1 $(version_of "$2")" "$1" --version; }

# ----------------------------------------------------------------------------------------- what users do with each

try_qtutils()
{
    try "the host tells its version" says_version qtutils-host qtutils
    try "the host tells its options" says --script qtutils-host --help
    try "the host loads the module and lists its prototypes" says "void select(int iSelection)" qtutils-host --list
    try "the driver is there that Qt loads by its name" is_file '/usr/lib/*/qt6/plugins/sqldrivers/libqsqlmysql.so'
    try "the signs are there" is_file '/usr/share/qtutils/Images/20.xpm'
    try_completion qtutils-host
}

try_mapmaker()
{
    try "mapmaker tells its version" says_version mapmaker mapmaker
    try "the doctor tells its options" says --json mapmaker doctor --help
    try "its modules are compiled" is_file '/usr/share/qtutils/mapmaker/__pycache__/cli.*.pyc'
    try_completion mapmaker
}

try_python()
{
    try "Python finds the package, and that its library" says libqtutils-nodebrowser.so.0 /usr/bin/python3 -c \
        'import qtutils.library; print(qtutils.NodeBrowser, qtutils.library.library()._name)'
    try "its modules are compiled" is_file '/usr/lib/python3/dist-packages/qtutils/__pycache__/library.*.pyc'
}

try_demo()
{
    try "the demo tells its version" says_version qtutils-demo qtutils-demo
    try "a private server starts, mapmaker stores a map there" says changelogs_train bash -c "$WITH_SERVER
        mapmaker sample --documents $DOCUMENTS --name changelogs
        mariadb --no-defaults --user=\$MYSQL_USER -e 'SHOW TABLES FROM som'"
    try_completion qtutils-demo
}

try_completion()
{
    # shellcheck disable=SC2016 # the inner shell expands it
    try "bash completes $1" says "-F" bash -c 'source "/usr/share/bash-completion/completions/$0"; complete -p "$0"' "$1"
}

try_documents()
{
    local page
    for page in "1 qtutils-host" "1 mapmaker" "1 qtutils-demo" "3 qtutils"; do
        # shellcheck disable=SC2086 # section and name
        try "man finds ${page#* } in section ${page% *}" says "${page#* }.${page% *}" man -w $page
    done
    try "the guides are there" is_file '/usr/share/doc/qtutils/docs/users-guide.md'
}

try_desktop()
{
    local share=/usr/share
    try "the entry of the menu is there" is_file "$share/applications/*[dD]emo.desktop"
    try "the entry of the menu is valid" as_visitor desktop-file-validate $share/applications/*[dD]emo.desktop
    try "the data for software centres are there" is_file "$share/metainfo/*[dD]emo.metainfo.xml"
    try "the data for software centres are valid" as_visitor \
        appstreamcli validate --no-net $share/metainfo/*[dD]emo.metainfo.xml
    try "the icon is there" is_file "$share/icons/hicolor/scalable/apps/*[dD]emo.svg"
}

# The programs print the code of a module that isn't there: 3.
try_kit()
{
    local home=/home/$VISITOR flags
    cp -r "$FOLDER/consumer" "$home" && chown -R "$VISITOR:" "$home/consumer"
    flags=$(pkg-config --cflags --libs qtutils)
    # shellcheck disable=SC2086 # several words
    {
        try "pkg-config: a host in C is built" as_visitor cc consumer/consumer.c $flags -o by_hand_c
        try "pkg-config: a host in C++ is built" as_visitor c++ -std=c++20 consumer/consumer.cpp $flags -o by_hand_cpp
    }
    try "CMake: the package is found" as_visitor cmake -S consumer -B built
    try "CMake: hosts in C and C++ are built" as_visitor cmake --build built
    for program in ./by_hand_c ./by_hand_cpp built/consumer_c built/consumer_cpp; do
        try "$program runs" says 3 "$program" /no/such/module.so
    done
}

# The demo's map in the window, on a display without a screen.
try_window()
{
    local scripts=/usr/share/qtutils/host/scripts
    try "the window opens a map and answers" says "piNumRows = " bash -c "$WITH_SERVER; start_display; set -o pipefail
        mapmaker sample --documents $DOCUMENTS --name changelogs --script map.qth
        qtutils-host --script $scripts/open.qth --script map.qth --script $scripts/show.qth \\
            --command 'select 0; getNumRows int[1]' | grep -x 'piNumRows = [1-9][0-9]*'"
}

try_all()
{
    try "apt installs what the trials need" apt install "${FOR_TRIALS[@]}" || return
    try_qtutils
    try_mapmaker
    try_python
    try_demo
    try_documents
    try_desktop
    try_kit
    try_window
}

# --------------------------------------------------------------------------------------------- install and remove

apt() { DEBIAN_FRONTEND=noninteractive apt-get -y --no-install-recommends "$@"; }

installed() { [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]; }

# What our packages have put there; folders that others have, too, are theirs.
list_files()
{
    local package path
    for package in "${OURS[@]}"; do
        installed "$package" || continue
        while read -r path; do
            [[ -d $path && ! -L $path && $path != *qtutils* && $path != *mapmaker* ]] || echo "$path"
        done < <(dpkg -L "$package")
    done
}

# nothing_left FILE...: whether none of them is there any longer, nor anything else that has their names.
nothing_left()
{
    local path left=()
    for path; do [[ ! -e $path && ! -L $path ]] || left+=("$path"); done
    mapfile -t -O "${#left[@]}" left < <(find / -xdev \( -path "$FOLDER" -o -path /home -o -path /tmp -o -path /proc \) \
        -prune -o \( -name '*qtutils*' -o -name '*mapmaker*' \) -print)
    ((${#left[@]} == 0)) || { printf '%s\n' "${left[@]}" | sort -u | sed 's/$/ is left/'; return 1; }
}

# visit NAME TRIALS PACKAGE...: installs the packages with what they depend on, tries them, removes all of ours.
visit()
{
    local trials=$2 files=()
    ROUND=$1
    shift 2
    try "apt installs it" apt install "$@" && "$trials"
    mapfile -t files < <(list_files)
    try "apt removes it" apt purge "${OURS[@]}"
    try "nothing is left of it" nothing_left "${files[@]}"
}

# What those before have brought stays there, so the order matters: the host comes before Python, Python before the
# maker of maps with its libraries, the database server behind them. A dependency that a package lacks isn't there then.
rm -f -- "$RESULTS"
useradd --create-home "$VISITOR"
echo "127.0.0.1 localhost" >/etc/hosts # which an installer writes; the database server looks it up
echo "deb [trusted=yes] file:$FOLDER ./" >/etc/apt/sources.list.d/trial.list
ROUND=archive
if try "apt reads the lists" apt update; then
    visit qtutils try_qtutils qtutils
    visit python3-qtutils try_python python3-qtutils
    visit mapmaker try_mapmaker mapmaker
    visit qtutils-demo try_demo qtutils-demo
    visit "all packages" try_all "$FOLDER"/*.deb
fi
echo end >>"$RESULTS"
