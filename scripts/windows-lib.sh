# Sourced by its neighbours after lib.sh: the place where the Windows program is built, Debian 13,
# and the Qt that it is built with.
# shellcheck shell=bash

# What is made once and kept.
cache=${PLUMARA_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvane-plumara}

# What the person can set, for the help texts.
# shellcheck disable=SC2034 # used by those who source this file
windows_variables="  PLUMARA_QT_WINDOWS     the folder or archive of a Qt 6.8 for Windows, else the one that
                         scripts/build-qt-windows made
  PLUMARA_CACHE          where what is made once is kept, else ~/.cache/orvane-plumara
  PLUMARA_DEBIAN_MIRROR  where Debian 13 comes from, else the mirror that this machine uses"

# The release of Qt for which Debian 13 has the tools that run on the host.
windows_qt_release=6.8

# on_debian_13 <script> <argument>...: goes on where this is Debian 13; elsewhere runs the script in
# a Debian 13 of its own, which sees the same project, and ends with the script's exit code.
on_debian_13() {
    [[ $(release) != trixie ]] || return 0
    (($(id -u) == 0)) || die "needs root rights to make and enter a Debian 13 here: start it with sudo," \
        "or on Debian 13."
    mkdir -p "$cache"
    make_debian_13
    in_debian_13 "$@"
    exit
}

release() {
    sed -n 's/^VERSION_CODENAME=//p' /etc/os-release 2>/dev/null || true
}

# A root of Debian 13, which appears under its name only when it is whole.
make_debian_13() {
    local root=$cache/debian-13 half=$cache/debian-13.part mirror
    exec {lock}>"$cache/lock"
    flock "$lock"
    if [[ ! -d $root ]]; then
        need debian13
        mirror=${PLUMARA_DEBIAN_MIRROR:-$(debian_mirror)}
        [[ -n $mirror ]] || die "finds no Debian mirror: set PLUMARA_DEBIAN_MIRROR to the address of one."
        echo "Making a Debian 13 in $root"
        rm -rf "$half"
        # Its mounts go with it, however it ends: removing the half root must not reach through them.
        unshare --mount --propagation private \
            debootstrap --variant=minbase trixie "$half" "$mirror" >"$cache/debian-13.log" 2>&1 || {
            rm -rf "$half"
            die "could not make a Debian 13: see $cache/debian-13.log"
        }
        mv "$half" "$root"
    fi
    exec {lock}>&-
}

# The mirror that this machine takes its own packages from.
debian_mirror() {
    # shellcheck disable=SC2016 # apt-get fills these in
    apt-get indextargets --format '$(LABEL) $(REPO_URI)' 2>/dev/null \
        | sed -n 's/^Debian //p' | head -n 1
}

# in_debian_13 <command>...: runs it there in this folder. What it mounts and starts goes with it.
in_debian_13() {
    local root=$cache/debian-13
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
    ' bash "$root" 3 "$PWD" "$cache" "$PLUMARA_QT_WINDOWS" \
        /usr/bin/env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        LC_ALL=C.UTF-8 TERM="${TERM:-dumb}" ${CI:+CI="$CI"} ${http_proxy:+http_proxy="$http_proxy"} \
        ${CMAKE_BUILD_PARALLEL_LEVEL:+CMAKE_BUILD_PARALLEL_LEVEL="$CMAKE_BUILD_PARALLEL_LEVEL"} \
        PLUMARA_CACHE="$cache" PLUMARA_QT_WINDOWS="$PLUMARA_QT_WINDOWS" \
        bash -c 'cd "$1" && shift && exec "$@"' bash "$PWD" "$@"
}

# Sets PLUMARA_QT_WINDOWS to the folder of the Qt for Windows: the one named, which may be packed,
# or the one that scripts/build-qt-windows has made.
find_windows_qt() {
    local place=${PLUMARA_QT_WINDOWS:-$cache/qt-windows}
    [[ -e $place ]] || die "needs a Qt $windows_qt_release for Windows: set PLUMARA_QT_WINDOWS to its" \
        "folder or archive, or make one with scripts/build-qt-windows."
    place=$(realpath "$place")
    [[ ! -f $place ]] || unpack_windows_qt "$place"
    local config=$place/lib/cmake/Qt6/Qt6ConfigVersionImpl.cmake version
    [[ -f $config && -f $place/bin/Qt6Core.dll ]] \
        || die "finds no Qt for Windows in $place: set PLUMARA_QT_WINDOWS to the folder that holds its bin and lib."
    version=$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")/\1/p' "$config")
    [[ $version == "$windows_qt_release".* ]] \
        || die "needs a Qt $windows_qt_release for Windows, but the one in $place is $version."
    export PLUMARA_QT_WINDOWS=$place
}

# Sets place to the folder to which the archive was unpacked, now or earlier.
unpack_windows_qt() {
    local archive=$1 half
    place=$cache/qt-windows-$(sha256sum "$archive" | cut -c 1-12)
    [[ ! -d $place ]] || return 0
    half=$place.part
    rm -rf "$half"
    mkdir -p "$half"
    tar -xf "$archive" -C "$half" --strip-components=1 || {
        rm -rf "$half"
        die "could not unpack $archive: it is no archive, or the disk is full."
    }
    mv "$half" "$place"
}
