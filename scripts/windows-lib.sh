# Sourced by its neighbours after debian-lib.sh: the Qt that the Windows program is built with.
# shellcheck shell=bash

# What the person can set, for the help texts.
# shellcheck disable=SC2034,SC2154 # used by those who source this file; debian-lib.sh
windows_variables="  PLUMARA_QT_WINDOWS     the folder or archive of a Qt 6.8 for Windows, else the one that
                         scripts/build-qt-windows made
$debian_variables"

# The release of Qt for which Debian 13 has the tools that run on the host.
windows_qt_release=6.8

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
