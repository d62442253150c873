# shellcheck shell=bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Functions of ./check, ./demo and their tests; to be sourced by a bash script (see "finish" for its traps).
# Functions that fail print one line to standard error. They work with and without "set -e".
#
# However the script ends, what it started ends too: the EXIT trap stops it in order, and where the script can
# run no trap (SIGKILL), the kernel sends each child SIGTERM (setpriv --pdeathsig).

TOP="$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)"
START_LIMIT=60 # seconds that a server may take to become ready
STOP_LIMIT=30  # seconds that a child may take to end after SIGTERM
PRIVATE=       # private folder of this run, made by private_folder
CHILDREN=()    # process numbers of what runs in the background
PATH=$PATH:/usr/sbin:/sbin # users' own lacks the folder of mariadbd

fail()
{
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    return 1
}

wrong_usage()
{
    fail "$1; see ./$(realpath --relative-to="$TOP" -- "$0") --help" || exit 2
}

# parse_folder_options OPTION ARGUMENT...: the command line of a script that knows --no-install, --help and an
# option with a folder; sets INSTALL, and FOLDER (absolute) where it is given. The script has "usage".
# shellcheck disable=SC2034 # the script uses them
parse_folder_options()
{
    local option=$1
    INSTALL=yes
    while shift && (($#)); do
        case $1 in
            --no-install) INSTALL=no ;;
            "$option")
                [[ -n ${2-} ]] || wrong_usage "$option needs a folder"
                FOLDER=$(realpath -m -- "$2")
                shift
                ;;
            --help) usage && exit ;;
            *) wrong_usage "unknown option $1" ;;
        esac
    done
}

# ---------------------------------------------------------------------------------------------- steps and time

now_ms() { printf '%s' "$((${EPOCHREALTIME/[.,]/} / 1000))"; }

# step TEXT COMMAND...: says what is done and how long it took; returns the command's exit code.
# A function runs in this shell, a program by "guarded".
step()
{
    local text=$1 start code=0 took outcome="done"
    shift
    printf -- '-- %s\n' "$text"
    start=$(now_ms)
    if [[ $(type -t "$1") == function ]]; then "$@" || code=$?; else guarded "$@" || code=$?; fi
    took=$(($(now_ms) - start))
    ((code)) && outcome=failed
    printf -- '-- %s: %s after %d.%d s\n' "$text" "$outcome" $((took / 1000)) $((took % 1000 / 100))
    return "$code"
}

# ---------------------------------------------------------------------------------------------------- children

# spawn LOG COMMAND...: starts a program in the background, in a session of its own; sets SPAWNED.
# A child whose parent has died before the kernel knew that it cares must not start: hence the look at PPID.
spawn()
{
    local log=$1 self=$BASHPID # expanded before the fork
    shift
    # shellcheck disable=SC2016 # the inner shell expands it
    setpriv --pdeathsig TERM setsid bash -c '[[ $PPID == "$0" ]] && exec "$@"' "$self" "$@" \
        </dev/null >"$log" 2>&1 &
    SPAWNED=$!
    CHILDREN+=("$SPAWNED")
}

# guarded COMMAND...: runs a program with all that it starts, without standard input; returns its exit code.
# It runs in the background because bash would hold back its traps until a program in the foreground ends.
guarded()
{
    local code=0 child self=$BASHPID # expanded before the fork
    setpriv --pdeathsig TERM setsid bash "$TOP/tools/guard.sh" "$self" "$@" </dev/null &
    child=$!
    CHILDREN+=("$child")
    wait "$child" || code=$?
    return "$code"
}

# wait_until SECONDS COMMAND...: repeats the command until it succeeds; fails when the time is up.
wait_until()
{
    local limit=$(($(now_ms) + $1 * 1000))
    shift
    until "$@"; do
        (($(now_ms) < limit)) || return 1
        read -rt 0.05 <> <(:) || : # a pause without a process
    done
}

# wait_ready PID COMMAND...: waits until the command succeeds; fails when the child ends or takes too long.
wait_ready() { wait_until "$START_LIMIT" ready_or_ended "$@" && is_running "$1"; }

ready_or_ended() { has_ended "$1" || "${@:2}"; }

# Whether a process runs and is this shell's child: the number of one that has ended may be another's by now.
is_running() { grep -Eqs "^PPid:[[:space:]]+$BASHPID\$" "/proc/$1/status"; }

has_ended() { ! is_running "$1"; }

# stop_child PID: ends a child in order, and by force when it takes too long.
stop_child()
{
    is_running "$1" && kill -TERM "$1" 2>/dev/null || return 0
    wait_until "$STOP_LIMIT" has_ended "$1" || kill -KILL "$1" 2>/dev/null
    wait "$1" 2>/dev/null
}

# stop_children: ends all children, the last first, and removes the private folder.
stop_children()
{
    local index
    trap '' INT TERM HUP
    for ((index = ${#CHILDREN[@]} - 1; index >= 0; index--)); do
        stop_child "${CHILDREN[index]}"
    done
    CHILDREN=()
    [[ -z $PRIVATE ]] || rm -rf -- "$PRIVATE"
    PRIVATE=
}

# finish: sets the traps by which the script ends in order. Prints nothing: the terminal may be gone.
finish()
{
    trap 'set +e; stop_children' EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    trap 'exit 129' HUP
}

# ---------------------------------------------------------------------------------------------------- packages

# listed_packages [TAG]: the names on the list without a tag, and those with @TAG.
listed_packages()
{
    awk -v tag="@${1-}" '{ sub(/#.*/, "") } NF == 1 || $2 == tag { print $1 }' "${PACKAGES:-$TOP/tools/packages.txt}"
}

# missing_packages [TAG]: those of the list that are not installed.
missing_packages()
{
    local package
    while read -r package; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || echo "$package"
    done < <(listed_packages "$@")
}

# need_packages INSTALL [TAG]: installs what is missing of packages.txt; returns 2 instead where INSTALL is "no".
need_packages()
{
    local missing
    mapfile -t missing < <(missing_packages "${@:2}")
    ((${#missing[@]})) || return 0
    if [[ $1 == no ]]; then
        fail "these packages are missing: ${missing[*]}" || return 2
    fi
    echo "missing packages: ${missing[*]}"
    install_packages "${missing[@]}"
}

# The package lists are fetched when there are none, or when installing fails: they may be too old.
install_packages()
{
    local lists=("${APT_LISTS:-/var/lib/apt/lists}"/*_Packages*)
    if [[ -e ${lists[0]} ]]; then
        apt_get install -y --no-install-recommends "$@" && return
    fi
    apt_get update && apt_get install -y --no-install-recommends "$@" && return
    fail "could not install: $*"
}

# apt-get stays in the foreground, deliberately: sudo may ask, and an installation should not be cut short.
apt_get()
{
    local command=(env DEBIAN_FRONTEND=noninteractive apt-get "$@")
    if (($(id -u) != 0)); then
        type sudo >/dev/null 2>&1 || fail "sudo is missing; run as root: apt-get $*" || return
        command=(sudo "${command[@]}")
    fi
    echo "running: ${command[*]}"
    "${command[@]}"
}

# ---------------------------------------------------------------------------------------------- private server

# private_folder: makes PRIVATE, a folder with rights 0700 whose path leaves room for a socket's name.
private_folder()
{
    local base=${TMPDIR:-/tmp}
    [[ -z $PRIVATE ]] || return 0
    ((${#base} < 80)) || base=/tmp # a socket's path has at most 107 bytes
    PRIVATE=$(mktemp -d "$base/qtutils-XXXXXXXX") || fail "can't make a folder in $base"
}

# random_text: 32 hexadecimal digits.
random_text() { od -An -N16 -tx1 /dev/urandom | tr -d ' \n'; }

# start_server [DATA]: starts a MariaDB server on a socket in PRIVATE, with its data in DATA (default: there).
# Exports MYSQL_HOST, MYSQL_UNIX_PORT, MYSQL_USER and MYSQL_PWD, and sets SERVER to its process number.
start_server()
{
    private_folder || return
    local data=${1:-$PRIVATE/data} log=$PRIVATE/server.log options
    options=(--no-defaults "--datadir=$data" "--tmpdir=$PRIVATE" --innodb-log-file-size=16M)
    (($(id -u) != 0)) || options+=(--user=root)
    [[ -d $data/mysql ]] || make_data_folder "$data" "${options[@]}" || return
    export MYSQL_HOST=localhost MYSQL_UNIX_PORT=$PRIVATE/mysql.sock MYSQL_USER=qtutils MYSQL_PWD
    MYSQL_PWD=$(random_text)
    write_accounts >"$PRIVATE/accounts.sql"
    spawn "$log" mariadbd "${options[@]}" --skip-networking "--socket=$MYSQL_UNIX_PORT" \
        "--pid-file=$PRIVATE/server.pid" "--init-file=$PRIVATE/accounts.sql" --character-set-server=utf8mb4 \
        --innodb-flush-log-at-trx-commit=2
    SERVER=$SPAWNED
    wait_ready "$SERVER" server_answers || { show_log "$log"; fail "the database server didn't start"; }
}

# make_data_folder DATA OPTION...: only a complete folder gets the name DATA.
make_data_folder()
{
    local data=$1 log=$PRIVATE/install.log
    shift
    rm -rf -- "$data.new" "$data"
    guarded mariadb-install-db "$@" "--datadir=$data.new" --auth-root-authentication-method=normal \
        --skip-test-db >"$log" 2>&1 || { show_log "$log"; fail "can't make the database in $data"; return; }
    mv -- "$data.new" "$data"
}

# The server's accounts: all get this run's password.
write_accounts()
{
    echo "CREATE OR REPLACE USER '$MYSQL_USER'@'localhost' IDENTIFIED BY '$MYSQL_PWD';"
    echo "GRANT ALL ON *.* TO '$MYSQL_USER'@'localhost';"
    echo "ALTER USER 'root'@'localhost' IDENTIFIED BY '$MYSQL_PWD';"
}

server_answers() { mariadb --no-defaults "--user=$MYSQL_USER" -e 'SELECT 1' >/dev/null 2>&1; }

show_log() { tail -n 20 -- "$1" >&2; }

# --------------------------------------------------------------------------------------------- private display

# start_display: starts an X server without a screen and a window manager on it; exports DISPLAY and XAUTHORITY.
start_display()
{
    private_folder || return
    local number=$PRIVATE/display log=$PRIVATE/display.log
    write_cookie >"$PRIVATE/authority"
    : >"$number"
    spawn "$log" Xvfb -displayfd 3 -auth "$PRIVATE/authority" -screen 0 1600x1200x24 -noreset -nolisten tcp 3>"$number"
    wait_ready "$SPAWNED" test -s "$number" || { show_log "$log"; fail "Xvfb didn't start"; return; }
    export DISPLAY XAUTHORITY=$PRIVATE/authority
    DISPLAY=:$(<"$number")
    spawn "$PRIVATE/openbox.log" env HOME="$PRIVATE" XDG_CONFIG_HOME="$PRIVATE" XDG_CACHE_HOME="$PRIVATE" \
        XDG_DATA_HOME="$PRIVATE" openbox --sm-disable --config-file "$TOP/tools/openbox.xml"
    wait_ready "$SPAWNED" window_manager_runs || { show_log "$PRIVATE/openbox.log"; fail "openbox didn't start"; }
}

# An authority file with one cookie for any address and any display; only its readers may use the display.
write_cookie()
{
    printf '\xff\xff\0\0\0\0\0\x12MIT-MAGIC-COOKIE-1\0\x10'
    head -c 16 /dev/urandom
}

window_manager_runs() { [[ $(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null) == *'window id'* ]]; }

# display_works: whether DISPLAY names a display that answers.
display_works() { [[ -n ${DISPLAY-} ]] && xprop -root _NET_SUPPORTED >/dev/null 2>&1; }
