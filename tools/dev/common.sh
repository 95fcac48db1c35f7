# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by ./dev: where things are, and how the tool chain comes to this machine.
# shellcheck shell=bash

: "${project:?}"
cache=${EMULATIONMANAGEMENT_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/emulationmanagement}
build_root=$project/build
qtcreator_series=16

say() { printf '[dev %(%H:%M:%S)T] %s\n' -1 "$*" >&2; }
fail() {
    say "error: $*"
    exit 1
}

# as_root COMMAND...: as it is for root, by sudo for everybody else.
as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "root rights are needed for: $*"
    fi
}

listed_packages() { sed -e 's/#.*//' "$project/tools/packages.txt" | xargs -n1; }

# with_progress LOG COMMAND...: the command's output goes to LOG; a line now and then shows that it lives. The command is
# in the foreground, so that Ctrl-C ends it.
with_progress() {
    local log=$1 status=0
    shift
    mkdir -p "$(dirname "$log")"
    : >"$log"
    report_progress "$log" "$BASHPID" 7>&- 9>&- &
    local reporter=$!
    ("$@") >"$log" 2>&1 7>&- || status=$?
    kill "$reporter" 2>/dev/null || true
    wait "$reporter" 2>/dev/null || true
    if ((status)); then
        tail -n 40 "$log" >&2
        fail "step failed with exit code $status; its output is in $log"
    fi
}

# report_progress LOG PARENT: until the parent has gone.
report_progress() {
    local started=$SECONDS
    while sleep 1 && kill -0 "$2" 2>/dev/null; do
        if (((SECONDS - started) % 15 == 14)); then
            say "  … $((SECONDS - started)) s: $(tail -n 1 "$1" | tr -d '\r' | cut -c1-100)"
        fi
    done
}

# One ./dev at a time builds and tests in a checkout; file descriptor 7 holds the lock.
lock_checkout() {
    mkdir -p "$build_root"
    exec 7>"$build_root/.lock"
    flock -n 7 && return
    say "waiting for another ./dev that works in this folder"
    flock 7
}

unlock_checkout() { exec 7>&-; }

is_debian_13() {
    # shellcheck disable=SC1091
    (source /etc/os-release 2>/dev/null && [[ ${ID:-} == debian && ${VERSION_ID:-0} -ge 13 ]])
}

# --- Debian 13: packages ------------------------------------------------------------------

missing_packages() {
    local package
    while read -r package; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || echo "$package"
    done < <(listed_packages)
}

install_packages() {
    [[ -z $(missing_packages) ]] && return
    mkdir -p "$cache"
    (
        flock 9 # a second run waits here and then finds them
        local missing
        mapfile -t missing < <(missing_packages)
        ((${#missing[@]})) || exit 0
        say "installing ${#missing[@]} packages: ${missing[*]}"
        local log=$cache/logs/apt-$$.log
        if [[ -n $(dpkg --audit 2>&1) ]]; then # what an interrupted run has left
            with_progress "$log" as_root env DEBIAN_FRONTEND=noninteractive dpkg --configure -a
        fi
        with_progress "$log" as_root apt-get -q update
        with_progress "$log" as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get -q -y -o DPkg::Lock::Timeout=600 --no-install-recommends install "${missing[@]}"
    ) 9>"$cache/packages.lock"
}

# --- elsewhere: one Debian 13 tree in the cache folder --------------------------------------

# A tree is never changed once it has its name: another package list makes another tree.
tree_path() {
    local inputs
    inputs=$({
        listed_packages
        sed '/^# SPDX-/d' "$project/tools/dev/tree-hook.sh"
    } | sha256sum | cut -c1-12)
    echo "$cache/debian13-$inputs"
}

ensure_tree() {
    local tree=$1
    [[ -d $tree ]] && return 0
    mkdir -p "$cache"
    (
        flock 9 # a second run waits here and then finds the tree
        [[ -d $tree ]] && exit 0
        as_root rm -rf "$cache"/debian13-*.partial # what an interrupted run has left
        install_tree_makers
        say "making a Debian 13 tree in $tree (a few minutes, once)"
        with_progress "$cache/logs/tree.log" as_root mmdebstrap --variant=apt \
            --aptopt='Apt::Install-Recommends "false"' \
            --dpkgopt=force-unsafe-io \
            --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-exclude=/usr/share/man/*' \
            --include="$(listed_packages | paste -sd,)" \
            --customize-hook="$(printf '%q "$1"' "$project/tools/dev/tree-hook.sh")" \
            trixie "$tree.partial"
        mv "$tree.partial" "$tree" 2>/dev/null || as_root mv "$tree.partial" "$tree"
        say "the tree is ready"
    ) 9>"$cache/tree.lock"
    remove_unused_trees "$tree"
}

install_tree_makers() {
    local -a missing=()
    command -v mmdebstrap >/dev/null || missing+=(mmdebstrap)
    command -v bwrap >/dev/null || missing+=(bubblewrap)
    if command -v apt-get >/dev/null; then
        # Ubuntu's mmdebstrap does not bring the keys of Debian's archive.
        [[ -e /usr/share/keyrings/debian-archive-keyring.gpg ]] || missing+=(debian-archive-keyring)
    elif ((${#missing[@]})); then
        fail "this machine needs the programs mmdebstrap and bwrap (bubblewrap); please install them"
    fi
    ((${#missing[@]})) || return 0
    say "installing ${missing[*]}"
    with_progress "$cache/logs/apt.log" as_root apt-get -q update
    with_progress "$cache/logs/apt.log" as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y -o DPkg::Lock::Timeout=600 --no-install-recommends install "${missing[@]}"
}

# Trees of other package lists go when nobody has used them for a week; each run holds a shared lock on its tree.
remove_unused_trees() {
    local other
    for other in "$cache"/debian13-*; do
        [[ -d $other && $other != "$1" && $other != *.partial ]] || continue
        [[ -z $(find "$other.used" -mtime -7 2>/dev/null) ]] || continue
        (
            flock -n -x 8 || exit 0
            say "removing the unused tree $other"
            as_root rm -rf "$other" "$other.used"
        ) 8<"$other"
    done
}

remove_cache() {
    [[ -d $cache ]] || return 0
    as_root rm -rf "$cache"
}

# run_in_tree TREE COMMAND...: as an ordinary user of the tree, which passt asks for. The tree is read-only; the
# project and the cache folder keep their paths. The network and /dev are the machine's.
run_in_tree() {
    local tree=$1 name link
    shift
    local -a options=(--unshare-user --uid 1000 --gid 1000)
    for name in etc opt srv usr var; do options+=(--ro-bind "$tree/$name" "/$name"); done
    for name in bin lib lib64 sbin; do
        link=$(readlink "$tree/$name") && options+=(--symlink "$link" "/$name")
    done
    mkdir -p "$cache/home"
    options+=(
        --dev-bind /dev /dev --proc /proc --ro-bind /sys /sys
        --tmpfs /tmp --tmpfs /run --tmpfs /var/tmp --dir /run/user/1000
        --bind "$cache" "$cache"
        --bind "$project" "$project"
        --ro-bind /etc/resolv.conf /etc/resolv.conf
        --setenv HOME "$cache/home" --setenv USER developer --setenv LOGNAME developer
        --setenv PATH /usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin
        --setenv XDG_RUNTIME_DIR /run/user/1000
        --setenv EMULATIONMANAGEMENT_CACHE "$cache"
        --setenv LANG C.UTF-8 --setenv LC_ALL C.UTF-8
        --unsetenv XDG_CACHE_HOME --unsetenv XDG_CONFIG_HOME --unsetenv XDG_DATA_HOME
        --unsetenv DBUS_SESSION_BUS_ADDRESS
    )
    # What this machine trusts, and where its user's npm gets packages from.
    local certificates=/etc/ssl/certs/ca-certificates.crt
    if [[ -f $certificates ]]; then
        options+=(--ro-bind "$certificates" "$certificates")
    fi
    if [[ -f $HOME/.npmrc ]]; then
        options+=(--ro-bind "$HOME/.npmrc" /run/npmrc --setenv npm_config_userconfig /run/npmrc)
    fi
    # A linked git work tree keeps its repository elsewhere.
    local repository
    repository=$(git -C "$project" rev-parse --path-format=absolute --git-common-dir 2>/dev/null || true)
    if [[ -n $repository && $repository != "$project"/* ]]; then options+=(--bind "$repository" "$repository"); fi
    if [[ -d /tmp/.X11-unix ]]; then options+=(--bind /tmp/.X11-unix /tmp/.X11-unix); fi
    local xauthority=${XAUTHORITY:-$HOME/.Xauthority}
    if [[ -f $xauthority ]]; then
        options+=(--ro-bind "$xauthority" "$xauthority" --setenv XAUTHORITY "$xauthority")
    fi
    case $PWD/ in
    "$project"/*) options+=(--chdir "$PWD") ;;
    *) options+=(--chdir "$project") ;;
    esac
    touch "$tree.used"
    (
        flock -s 8
        exec bwrap "${options[@]}" -- "$@"
    ) 8<"$tree"
}

# --- the host's headers ---------------------------------------------------------------------

# Debian packs Qt Creator without development files; its source package has the headers. Prints the folder.
qtcreator_headers() {
    local version directory
    version=$(dpkg-query -W -f '${source:Upstream-Version}' qtcreator)
    [[ $version == "$qtcreator_series".* ]] || say "warning: Qt Creator is $version, the plugin is written for $qtcreator_series"
    directory=$cache/qtcreator-headers-$version
    local newest_header=$directory/src/libs/3rdparty/tl_expected/include/tl/expected.hpp
    if [[ ! -f $newest_header ]]; then
        mkdir -p "$cache"
        (
            flock 9
            [[ -f $newest_header ]] && exit 0
            say "fetching the headers of Qt Creator $version"
            with_progress "$cache/logs/qtcreator-headers.log" \
                "$project/tools/dev/fetch-qtcreator-headers.sh" "$version" "$directory" "$cache/qtcreator-source.partial"
        ) 9>"$cache/headers.lock" || return 1
    fi
    echo "$directory"
}

# Returns where the tools are at hand; otherwise runs the same verb inside the tree and ends with its exit code.
enter_toolchain() {
    if is_debian_13; then
        [[ -n ${EMULATIONMANAGEMENT_IN_TREE:-} ]] || install_packages
        QTCREATOR_HEADERS=$(qtcreator_headers) || exit 1
        export QTCREATOR_HEADERS
        return 0
    fi
    local tree
    tree=$(tree_path)
    ensure_tree "$tree"
    local status=0
    EMULATIONMANAGEMENT_IN_TREE=1 run_in_tree "$tree" "$project/dev" "$@" || status=$?
    exit "$status"
}
