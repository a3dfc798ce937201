# Sourced by it: the files and the registry of an installation.
# shellcheck shell=bash
# shellcheck disable=SC2154 # what tests/windows/package sets

# close_program: when it was not this script that started it.
close_program() {
    keys alt+F4
    eventually "the program does not end" is_gone "$home_title"
}

not() { ! "$@"; }

windows_path() { winepath -w "$1" 2>/dev/null; }

# files_of <folder>: all files and links below it, in a fixed order.
files_of() { (cd "$1" && find . ! -type d -printf '%P\n') | sort; }
only_in() { [[ $(files_of "$1") == "$2" ]]; }
# All that a person has beside the boards, and beside the running uninstaller itself, which Windows
# removes when it starts the next time.
all_files() { files_of "$person" | sed '\,^Documents/OrvanePlumara/,d; \,^AppData/Local/Temp/~nsu,d'; }

# What there is beside the boards is what there was.
nothing_left() {
    local left
    left=$(all_files)
    [[ $left == "$untouched" ]] || fail "left over is: $(diff <(echo "$untouched") <(echo "$left"))"
}

# value <key> [name]: what the registry says there; without a name, the key's own value. It is
# exported, because what "reg query" prints has lost letters.
value() {
    local name=@ escaped='s/\\\(.\)/\1/g'
    [[ -z ${2:-} ]] || name="\"$2\""
    rm -f "$scratch/value.reg"
    wine reg export "$1" "$(windows_path "$scratch")\\value.reg" >/dev/null 2>&1 || return 0
    iconv -f UTF-16 "$scratch/value.reg" | tr -d '\r' | sed '4,${/^\[/,$d}' \
        | sed -n "s/^$name=dword:/0x/p; s/^$name=\"\(.*\)\"\$/\1/p" | sed "$escaped"
}
# in_registry <key> [name]
in_registry() { [[ -n $(value "$@") ]]; }
# says <key> <name> <value>
says() { [[ $(value "$1" "$2") == "$3" ]] || fail "in $1, '$2' is '$(value "$1" "$2")'"; }

# is_a_page <title>: what is shown under the title is no message box, which is lower.
is_a_page() {
    local HEIGHT=0
    eval "$(xdotool getwindowgeometry --shell "$(find_window "$1")")"
    ((HEIGHT > 300))
}

is_a_message() { is_shown "$1" && ! is_a_page "$1"; }

# All but the buttons, which also look different while they are pressed.
page() { cut_out 0 0 490 310 | sha256sum; }
is_another_page() { [[ $(page) != "$1" ]]; }
turn_page() {
    local before
    before=$(page)
    keys Return
    eventually "the next page does not come" is_another_page "$before"
}

# The last page of the installer has a dark picture on its left.
is_last_page() { (($(ink 0 0 40 300) > 11000)); }

# is_closed_by <key>: of the uninstaller
is_closed_by() {
    keys "$1"
    is_gone "$removal_title"
}

# exits_with <code> <command>...
exits_with() {
    local expected=$1 code=0
    shift
    "$@" || code=$?
    ((code == expected)) || fail "exit code $code instead of $expected: $*"
}

# double_click_board <file>: starts what is registered for boards, as Windows does. wine's own shell does
# not look into what is registered for one person only.
double_click_board() {
    local command file
    command=$(value "$classes\\$class\\shell\\open\\command")
    file=$(windows_path "$1")
    command=${command//%1/$file}
    eval "wine ${command//\\/\\\\}"
}

# As Windows does it when a person has no say: with the entry's own command line.
remove_silently() {
    local command
    command=$(value "$entry" QuietUninstallString)
    # Quotes mean the same here as there, other than backslashes.
    eval "wine ${command//\\/\\\\}"
    # It goes on in a copy of itself, and the entry is the last that it removes.
    eventually "the silent uninstaller does not come to its end" not in_registry "$entry" DisplayName
    [[ ! -e $program_folder ]] || fail "left in the folder is: $(files_of "$program_folder")"
}

# make_other_installer <version> <file>: of a version that has a file and a folder that this one has not.
make_other_installer() {
    local old=$scratch/$1
    mkdir "$old"
    echo "antes" | tee "$old/Plumara.exe" >"$old/De antes.txt"
    cat >"$old/files.nsh" <<END
!macro InstallFiles
SetOutPath "\$INSTDIR\\viejo"
File "$old/De antes.txt"
SetOutPath "\$INSTDIR"
File "$old/Plumara.exe"
!macroend
!macro RemoveFiles
Delete "\$INSTDIR\\viejo\\De antes.txt"
Delete "\$INSTDIR\\Plumara.exe"
!macroend
!macro RemoveFolders
RMDir "\$INSTDIR\\viejo"
!macroend
END
    makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$1" -DKILOBYTES=1 -DFILES="$old/files.nsh" \
        -DICON="$here/../../resources/img/orvaneplumaraico.ico" -DOUTPUT="$2" \
        "$here/../../packaging/windows/plumara.nsi"
}
