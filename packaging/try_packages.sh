#!/bin/bash
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
#
# Installs the Debian packages in a bare Debian 12, tries them there as a user, and removes them again.

set -euo pipefail
# shellcheck source=tools/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/../tools/common.sh"

FOLDER=$TOP/build-package/packages
SUITE=bookworm
AS_ROOT=() # what gives a user the rights of root in a namespace
STOP_LIMIT=5 # seconds: the system is thrown away, so nothing in it needs to end in order

usage()
{
    cat <<END
usage: ./packaging/try_packages.sh [--no-install] [--packages FOLDER]

Makes a bare Debian 12 in a private folder, from the mirror of this machine's apt, installs there the
packages that packaging/make_packages.sh has made, tries them as a user without rights, and removes
them. Ends with 1 when a trial fails, with 2 when something that is needed for them is missing.
Needs root or user namespaces, the network and 3 GB; nothing of this system is changed.

  --no-install       install nothing; where a package is missing, name it and end with 2
  --packages FOLDER  where they are (default: build-package/packages)
  --help             show this text
END
}

# need_rights: a system is made by root, or with the rights of root in a user namespace; sets BARE_SYSTEM.
# Its mounts and processes are apart, and end when the program ends that started them, however it does.
need_rights()
{
    (($(id -u) == 0)) || AS_ROOT=(unshare --map-auto --map-root-user)
    local apart=(unshare --mount --pid --fork --kill-child --mount-proc)
    "${AS_ROOT[@]}" "${apart[@]}" true 2>/dev/null ||
        fail "needs root, or user namespaces with ranges in /etc/subuid and /etc/subgid" || return 2
    BARE_SYSTEM=("${AS_ROOT[@]}" setpriv --pdeathsig KILL "${apart[@]}" mmdebstrap --mode=root --skip=chroot/mount/sys)
}

# end: stops what runs. Files of the system may belong to users of the namespace, who remove them.
end()
{
    local folder=$PRIVATE
    PRIVATE=
    stop_children
    [[ -z $folder ]] || "${AS_ROOT[@]}" rm -rf -- "$folder"
}

# find_archive: the lines of this machine's apt for the suite and its updates; sets ARCHIVE, where each is reached.
find_archive()
{
    local format="deb \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" uri release
    mapfile -t ARCHIVE < <(apt-get indextargets --format "$format" 'Created-By: Packages' 'Origin: Debian' |
        grep -E " $SUITE(-[a-z]+)? " | sort -u)
    ((${#ARCHIVE[@]})) || fail "this machine's apt has no lists of Debian $SUITE; run: apt-get update" || return 2
    read -r _ uri release _ <<<"${ARCHIVE[0]}"
    guarded /usr/lib/apt/apt-helper download-file "${uri%/}/dists/$release/InRelease" "$PRIVATE/InRelease" \
        >"$PRIVATE/network.log" 2>&1 || fail "the network is missing: can't reach $uri" || return 2
}

# collect: a folder for the system, with the packages as an archive, the trials, and the smallest hosts.
collect()
{
    local folder=$PRIVATE/trial twice
    mkdir -- "$folder"
    cp -- "$FOLDER"/*.deb packaging/trial.sh "$folder"
    cp -r -- tests/install/consumer "$folder"
    (cd -- "$folder" && dpkg-scanpackages --multiversion . >Packages 2>/dev/null)
    twice=$(sed -n 's/^Package: //p' "$folder/Packages" | sort | uniq -d)
    [[ -z $twice ]] || fail "more than one version in $FOLDER: ${twice//$'\n'/ }" || return
    chmod -R a+rX "$folder"
    apt-config dump Acquire | grep -E '^Acquire::(https?::|Check-|Retries)' >"$PRIVATE/apt.conf" || : # such as a proxy
}

try_packages()
{
    # shellcheck disable=SC2016 # mmdebstrap expands it
    guarded env TMPDIR="$PRIVATE" LC_ALL=C.UTF-8 "${BARE_SYSTEM[@]}" --quiet --variant=minbase --format=null \
        --aptopt="$PRIVATE/apt.conf" --dpkgopt=force-unsafe-io \
        --customize-hook="copy-in $PRIVATE/trial /" \
        --customize-hook='chroot "$1" bash /trial/trial.sh' \
        --customize-hook="copy-out /trial/results $PRIVATE" \
        "$SUITE" - "${ARCHIVE[@]}" || fail "the bare system broke off"
}

# show_results: what was tried, with its outcome; fails when a trial has.
show_results()
{
    local outcome packages what reason total=0 failed=0 first=
    [[ $(tail -n 1 "$PRIVATE/results") == end ]] || fail "the trials broke off" || return
    printf '\n%-6s  %-15s  %s\n' Result Packages Trial
    while IFS=$'\t' read -r outcome packages what reason; do
        printf '%-6s  %-15s  %s\n' "$outcome" "$packages" "$what${reason:+: $reason}"
        total=$((total + 1))
        [[ $outcome == FAILED ]] || continue
        failed=$((failed + 1)) first=${first:-$packages: $what: $reason}
    done < <(grep -v '^end$' "$PRIVATE/results")
    ((failed == 0)) || fail "$failed of $total trials failed, the first: $first" || return
    echo "All $total trials are well."
}

parse_folder_options --packages "$@"
umask 022
cd -- "$TOP"
finish
trap 'set +e; end' EXIT
step "Packages" need_packages "$INSTALL" trial
compgen -G "$FOLDER/*.deb" >/dev/null ||
    fail "there are no packages in $FOLDER; make them with packaging/make_packages.sh" || exit 2
need_rights
private_folder
step "Look for the archive" find_archive
collect
step "Install, try and remove the packages in a bare system" try_packages
show_results
