# Sourced by its neighbours after lib.sh: the Debian in which something is built, when it is not the one
# of this machine.
# shellcheck shell=bash

# What is made once and kept.
cache=${PLUMARA_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvane-plumara}

# What the person can set, for the help texts.
# shellcheck disable=SC2034 # used by those who source this file
debian_variables="  PLUMARA_CACHE          where what is made once is kept, else ~/.cache/orvane-plumara
  PLUMARA_DEBIAN_MIRROR  where a Debian comes from, else the mirror that this machine uses"

# By their versions
declare -A debian_releases=([12]=bookworm [13]=trixie)

# on_debian <version> <script> <argument>...: goes on where this is that Debian; elsewhere runs the
# script in one of its own, which sees the same project, and ends with the script's exit code.
on_debian() {
    local version=$1 code=0
    shift
    [[ $(debian_version) != "$version" ]] || return 0
    make_debian "$version"
    in_root "$cache/debian-$version" "$@" || code=$?
    exit "$code"
}

debian_version() {
    sed -n 's/^VERSION_ID="\(.*\)"/\1/p' /etc/os-release 2>/dev/null || true
}

require_root() {
    (($(id -u) == 0)) || die "needs root rights to make and enter a Debian $1 here: start it with sudo" \
        "${2:-}"
}

# make_debian <version>: the one in the cache folder, which is made only once.
make_debian() {
    local root=$cache/debian-$1
    require_root "$1" "or on Debian $1."
    mkdir -p "$cache"
    exec {lock}>"$cache/lock"
    flock "$lock"
    if [[ ! -d $root ]]; then
        echo "Making a Debian $1 in $root"
        make_root "$1" "$root"
    fi
    exec {lock}>&-
}

# make_root <version> <folder>: a bare Debian, which appears under its name only when it is whole.
make_root() {
    local root=$2 half=$2.part mirror
    need debian
    mirror=${PLUMARA_DEBIAN_MIRROR:-$(debian_mirror)}
    [[ -n $mirror ]] || die "finds no Debian mirror: set PLUMARA_DEBIAN_MIRROR to the address of one."
    rm -rf "$half"
    # Its mounts go with it, however it ends: removing the half root must not reach through them.
    unshare --mount --propagation private \
        debootstrap --variant=minbase "${debian_releases[$1]}" "$half" "$mirror" >"$root.log" 2>&1 || {
        rm -rf "$half"
        die "could not make a Debian $1: see $root.log"
    }
    mv "$half" "$root"
}

# The mirror that this machine takes its own packages from.
debian_mirror() {
    # shellcheck disable=SC2016 # apt-get fills these in
    apt-get indextargets --format '$(LABEL) $(REPO_URI)' 2>/dev/null \
        | sed -n 's/^Debian //p' | head -n 1
}

# in_root <folder> <command>...: runs it in that Debian, in this folder of the project. What it mounts
# and starts goes with it.
in_root() {
    local root=$1 folders=("$PWD" "$cache")
    shift
    [[ -z ${PLUMARA_QT_WINDOWS:-} ]] || folders+=("$PLUMARA_QT_WINDOWS")
    cp -L /etc/resolv.conf "$root/etc/resolv.conf" 2>/dev/null || true
    # shellcheck disable=SC2016 # the inner shell expands these
    unshare --mount --propagation private --pid --fork --kill-child bash -c '
        set -euo pipefail
        root=$1 count=$2 && shift 2
        mount --rbind /dev "$root/dev"
        mount -t proc proc "$root/proc"
        for folder in "${@:1:count}"; do
            mkdir -p "$root$folder"
            mount --bind "$folder" "$root$folder"
        done
        exec chroot "$root" "${@:count+1}"
    ' bash "$root" "${#folders[@]}" "${folders[@]}" \
        /usr/bin/env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        LC_ALL=C.UTF-8 TERM="${TERM:-dumb}" ${CI:+CI="$CI"} ${http_proxy:+http_proxy="$http_proxy"} \
        ${CMAKE_BUILD_PARALLEL_LEVEL:+CMAKE_BUILD_PARALLEL_LEVEL="$CMAKE_BUILD_PARALLEL_LEVEL"} \
        PLUMARA_CACHE="$cache" ${PLUMARA_QT_WINDOWS:+PLUMARA_QT_WINDOWS="$PLUMARA_QT_WINDOWS"} \
        bash -c 'cd "$1" && shift && exec "$@"' bash "$PWD" "$@"
}
