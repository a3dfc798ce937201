# Sourced by the scripts: their options, and the tools and packages that they need, by purpose:
#   build     the program on Linux
#   display   a virtual display, and a person's pointer and keys in it
#   lint      layout and lint, of C++ and of the scripts, and the spelling of Spanish texts
#   test      what the tests and the benchmarks need beside the program, the page of the guide too
#   bench     running the benchmarks
#   coverage  counting what the tests reach
#   mutants   trying whether the tests notice changed sources
#   fuzz      fuzzing: a compiler with libFuzzer, and what tells where a finding was made
#   windows   the program for Windows
#   wine      running it
#   package   its installer and its ZIP file
#   deb       the package for a Debian
#   desktop   what a Debian desktop has: what opens a file by its type, and the checks of its files
#   art       rendering the pictures
#   qt        building a Qt for Windows
#   debian    making a Debian of another version
# shellcheck shell=bash

# The Debian packages.
declare -A packages=(
    [build]="cmake ninja-build g++ qt6-base-dev qt6-l10n-tools"
    [display]="xvfb openbox xdotool x11-utils x11-xkb-utils imagemagick jq fonts-noto-color-emoji"
    # The version is fixed because every release of clang-format lays some code out differently;
    # 19 is in Debian 12 and 13 alike.
    [lint]="clang-format-19 clang-tidy-19 shellcheck hunspell hunspell-es"
    [test]="appstream binutils desktop-file-utils libbenchmark-dev openssl pandoc python3"
    [bench]="libbenchmark-dev python3"
    [coverage]="gcovr"
    [mutants]="git"
    # Older ones than 16 do not understand the standard library's ranges.
    [fuzz]="clang-19 libclang-rt-19-dev llvm-19"
    [windows]="g++-mingw-w64-x86-64-posix cmake ninja-build qt6-base-dev qt6-l10n-tools"
    [wine]="wine wine64 fonts-wine fonts-liberation fonts-symbola xauth"
    [package]="nsis zip pandoc python3-yaml"
    [deb]="dpkg-dev file pandoc"
    [desktop]="appstream desktop-file-utils libglib2.0-bin procps xdg-utils"
    [art]="librsvg2-bin imagemagick"
    [qt]="dpkg-dev g++ qt6-base-dev qt6-base-dev-tools"
    [debian]="debootstrap debian-archive-keyring"
)
# The commands, for people who install by hand. Of names with a comma between them one is enough.
declare -A commands=(
    [build]="cmake ninja c++"
    [display]="Xvfb openbox xdotool xprop xwininfo setxkbmap convert import jq"
    [lint]="clang-format-19,clang-format clang-tidy-19,clang-tidy shellcheck hunspell"
    [test]="appstreamcli desktop-file-validate objdump openssl pandoc python3 readelf"
    [bench]="python3"
    [coverage]="gcovr gcov"
    [mutants]="git"
    [fuzz]="clang++-19,clang++"
    [windows]="x86_64-w64-mingw32-g++-posix cmake ninja"
    [wine]="wine wineboot wineserver"
    [package]="makensis zip pandoc"
    [deb]="dpkg-shlibdeps file pandoc"
    [desktop]="appstreamcli desktop-file-validate gio pidof xdg-open"
    [art]="rsvg-convert convert"
    [qt]="dpkg-source c++ ninja"
    [debian]="debootstrap"
)

# Qt reads file names and texts as UTF-8; a bare system's "C" says nothing of it.
[[ $(locale charmap) == UTF-8 ]] || export LC_ALL=C.UTF-8

# What the help texts say of --no-install.
# shellcheck disable=SC2034 # used by those who source this file
no_install_option="  --no-install  names what is missing on this machine and installs nothing"

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# take_options <help text> <argument>...: shows the help text for --help, notes --no-install where the
# text offers it, and leaves all that follows in the array arguments.
take_options() {
    help_text=$1
    shift
    while [[ ${1:-} == --help || (${1:-} == --no-install && $help_text == *"[--no-install]"*) ]]; do
        if [[ $1 == --help ]]; then
            echo "$help_text"
            exit
        fi
        export PLUMARA_NO_INSTALL=1
        shift
    done
    arguments=("$@")
}
# expect_arguments <fewest> <most>: so many of them are left, and no option.
expect_arguments() {
    ((${#arguments[@]} >= $1 && ${#arguments[@]} <= $2)) || wrong_usage
    local argument
    for argument in "${arguments[@]}"; do
        [[ $argument != -* ]] || wrong_usage
    done
}
wrong_usage() {
    local usage=${help_text%%$'\n'*}
    printf '%s: is used as %s; --help tells more.\n' "$(basename "$0")" "${usage#Usage: }" >&2
    exit 2
}

# need <purpose>...: everything for these purposes is here, or gets here, or the script ends.
need() {
    if [[ -z ${PLUMARA_NO_INSTALL:-} ]] && command -v apt-get >/dev/null; then
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
    if (($(id -u) != 0)); then
        as_root=(sudo)
        [[ -t 0 ]] || as_root+=(-n)
        "${as_root[@]}" true 2>/dev/null \
            || die "needs packages that only root can install:" \
                "apt-get install --no-install-recommends ${missing[*]}"
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}" </dev/null \
        || die "could not install: ${missing[*]}"
}

# need_commands <purpose>...: the same, but nothing is installed.
need_commands() {
    local purpose names missing=()
    for purpose in "$@"; do
        for names in ${commands[$purpose]}; do
            first_command "$names" >/dev/null || missing+=("${names//,/ or }")
        done
        case $purpose in
        build)
            compiles /dev/null || missing+=("a C++20 compiler")
            [[ $(qt_version) =~ ^6\.([4-9]|[1-9][0-9]) ]] || missing+=("Qt 6.4 or later")
            ;;
        test | bench)
            compiles /dev/null -include benchmark/benchmark.h || missing+=("Google Benchmark")
            ;;
        fuzz)
            has_libfuzzer || missing+=("libFuzzer")
            ;;
        esac
    done
    ((${#missing[@]})) || return 0
    die "needs what is missing here: $(printf '%s, ' "${missing[@]}" | sed 's/, $//')."
}

# first_command <names>: the path of the first that is here, of names with commas between them.
first_command() {
    local names name
    IFS=, read -ra names <<<"$1"
    for name in "${names[@]}"; do
        command -v "$name" && return
    done
    return 1
}

compiles() { c++ -std=c++20 -fsyntax-only "${@:2}" -x c++ "$1" 2>/dev/null; }

# Its programs come without a main() of their own.
has_libfuzzer() {
    local compiler
    compiler=$(first_command "${commands[fuzz]}") || return
    echo 'extern "C" int LLVMFuzzerTestOneInput(const char *, unsigned long) { return 0; }' \
        | "$compiler" -fsanitize=fuzzer,address -x c++ -o /dev/null - 2>/dev/null
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
