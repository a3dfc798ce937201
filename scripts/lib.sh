# shellcheck shell=bash
# Sourced by its neighbours: what building, running and testing need, and how it gets here.

# The one list of Debian packages, by purpose.
declare -A packages=(
    [build]="cmake ninja-build g++ qt6-base-dev qt6-l10n-tools"
    [display]="xvfb openbox xdotool x11-utils x11-xkb-utils imagemagick jq fonts-noto-color-emoji"
    # The version is fixed because every release of clang-format lays some code out differently;
    # 19 is in Debian 12 and 13 alike.
    [lint]="clang-format-19 clang-tidy-19"
    [test]="openssl libbenchmark-dev"
    [package]="nsis zip"
    [qt]="dpkg-dev g++ qt6-base-dev qt6-base-dev-tools"
    [debian13]="debootstrap debian-archive-keyring"
    [windows]="g++-mingw-w64-x86-64-posix cmake ninja-build qt6-base-dev qt6-l10n-tools"
    [wine]="wine wine64 fonts-wine fonts-liberation fonts-symbola xauth"
)
# The same where there is no apt: the commands that have to be here.
declare -A commands=(
    [build]="cmake ninja c++"
    [display]="Xvfb openbox xdotool xprop setxkbmap convert jq"
    [lint]="clang-format clang-tidy"
    [test]="openssl"
    [package]="makensis zip"
    [debian13]="debootstrap"
    [windows]="x86_64-w64-mingw32-g++-posix cmake ninja lrelease"
    [wine]="wine wineserver"
)

# Qt reads file names and texts as UTF-8; a bare system's "C" says nothing of it.
[[ $(locale charmap) == UTF-8 ]] || export LC_ALL=C.UTF-8

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# need <purpose>...: everything for build, display, lint or test is here, or the script ends.
need() {
    if command -v apt-get >/dev/null; then
        need_packages "$@"
    else
        need_commands "$@"
    fi
}

need_packages() {
    local purpose package missing=()
    for purpose in "$@"; do
        for package in ${packages[$purpose]}; do
            [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] \
                || missing+=("$package")
        done
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if ((EUID != 0)); then
        as_root=(sudo)
        [[ -t 0 ]] || as_root+=(-n)
        "${as_root[@]}" true 2>/dev/null \
            || die "these packages are missing: ${missing[*]}. Install them as root with:" \
                "apt-get install --no-install-recommends ${missing[*]}"
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}" </dev/null \
        || die "could not install: ${missing[*]}"
}

need_commands() {
    local purpose name missing=()
    for purpose in "$@"; do
        for name in ${commands[$purpose]}; do
            command -v "$name" >/dev/null || missing+=("$name")
        done
    done
    c++ -std=c++20 -fsyntax-only -x c++ /dev/null 2>/dev/null || missing+=("a C++20 compiler")
    [[ $(qt_version) =~ ^6\.([4-9]|[1-9][0-9]) ]] || missing+=("Qt 6.4 or later")
    ((${#missing[@]})) || return 0
    die "these are missing: $(printf '%s, ' "${missing[@]}" | sed 's/, $//')."
}

qt_version() {
    local tool
    for tool in qtpaths6 qmake6 qtpaths qmake; do
        "$tool" -query QT_VERSION 2>/dev/null && return
    done
}

# ctest_sums <log>: how many tests passed and how many failed, as CTest wrote into its log.
ctest_sums() {
    sed -n 's/.*tests passed, \([0-9]*\) tests* failed out of \([0-9]*\)/\1 \2/p' "$1" \
        | awk '{ print $2 - $1, $1 }'
}
