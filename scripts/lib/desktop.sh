# Works the program as a user does: real clicks and keys on a virtual display of its own, in a throw-away home.
# The program tells in a text file where its widgets are, so controls are clicked by name. Source it after
# common.sh and display.sh; PROGRAM or `program`, and LUMRO_DESK, are set before start_program.

work=$(mktemp -d)
trap 'end_owned; rm -rf "$work"' EXIT
map=$work/widgets
program=${PROGRAM:+$(realpath "$PROGRAM")}
expected_messages= # a pattern of the lines on standard error that a step provokes
: "${patience:=60}" # seconds for anything that the program is asked for, also on a busy machine

fail() {
    trap - ERR
    [ -z "${DISPLAY:-}" ] || import -window root "${shots:-$work}/failed.png" 2>/dev/null || :
    [ ! -s "$work/stderr" ] || sed 's/^/    program: /' "$work/stderr" >&2
    die "FAILED: $*"
}

# Ends as skipped (77) where the display's tools are missing.
need_tools() {
    local tool
    for tool in Xvfb openbox xdotool xclip wmctrl xprop import convert; do
        command -v "$tool" >/dev/null || { say "Skipped: $tool is missing." && exit 77; }
    done
}

# The preferences of the next start, as lines key=value in `preferences`; pictures go to FOLDER.
prepare_home() { # FOLDER
    export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_RUNTIME_DIR=$work/run
    export TMPDIR=$work/tmp # the single-instance mark of another program's user lies elsewhere
    export LUMRO_UI_MAP=$map LUMRO_START_REPORT=1
    unset XDG_DOCUMENTS_DIR LANGUAGE
    mkdir -p "$XDG_CONFIG_HOME/lumro" "$TMPDIR" "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
    {
        printf '[General]\nSave_Path="%s"\n' "$1"
        printf '%s\n' "${preferences[@]}"
    } >"$XDG_CONFIG_HOME/lumro/lylumroscanner.ini"
}

setting() { sed -n "s/^$1=//p" "$XDG_CONFIG_HOME/lumro/lylumroscanner.ini"; }
setting_is() { [ "$(setting "$1")" = "$2" ]; }

start_program() {
    rm -f "$map" "$work/stdout" "$work/stderr"
    "$program" >>"$work/stdout" 2>>"$work/stderr" &
    pid=$!
    own "$pid"
    await "the window" window_shown "$pid"
}

picture_painted() { grep -q 'first picture painted' "$work/stdout"; }

# await WHAT COMMAND...: until the command succeeds; a failure when the program ends meanwhile.
await() {
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@" >/dev/null 2>&1; do
        runs "$pid" || fail "the program ended while waiting for $what"
        [ "$SECONDS" -lt "$end" ] || fail "no sign of $what"
        sleep 0.1
    done
}

# The line of a widget: NAME [WINDOW], of several the last one.
line_of() { awk -v name="$1" -v window="${2:-}" \
    '$1 == name && (window == "" || $6 == window) {line = $0} END {if (line) print line; else exit 1}' "$map"; }
is_there() { line_of "$@"; }
is_gone() { ! line_of "$@"; }
is_enabled() { line_of "$@" | grep -q ' 1$'; }

# Whether a window and all that it shows lie on the screen.
is_on_screen() { # WINDOW
    local width height
    read -r width height < <(xdotool getdisplaygeometry)
    awk -v window="$1" -v width="$width" -v height="$height" '
        $6 != window {next}
        {seen = 1}
        $2 < 0 || $3 < 0 || $2 + $4 > width || $3 + $5 > height {print $1 " lies outside"; outside = 1}
        END {exit !seen || outside}' "$map"
}

# Prints the middle of a widget that has stopped moving: the map follows the screen by a tenth of a second.
middle_of() { # NAME [WINDOW]
    local now before=
    for _ in $(seq 50); do
        now=$(line_of "$@" || :)
        [ -z "$now" ] || [ "$now" != "$before" ] || break
        before=$now
        sleep 0.2
    done
    set -- $now
    [ $# -ge 5 ] && echo $(($2 + $4 / 2)) $(($3 + $5 / 2))
}

click() { # NAME [WINDOW [BUTTON]]
    local at
    await "$1" is_there "$1" "${2:-}"
    at=$(middle_of "$1" "${2:-}") || fail "$1 does not come to rest"
    xdotool mousemove $at
    until [ "$(middle_of "$1" "${2:-}")" = "$at" ]; do # a window that was still finding its place
        at=$(middle_of "$1" "${2:-}") || fail "$1 does not come to rest"
        xdotool mousemove $at
    done
    xdotool click "${3:-1}"
}

# In a window that has just come and may still be finding its place; for what may be clicked more than once.
click_until() { # WHAT NAME WINDOW COMMAND...
    local what=$1 name=$2 window=$3 try
    shift 3
    for try in 1 2 3; do
        click "$name" "$window"
        ! wait_for 5 "$@" || return 0
        say "$what has not come by click $try"
    done
    await "$what" "$@"
}

# The button that ends a dialog. One that is still finding its place gets the first click beside it, and what the
# program believes of its place may differ from where the window manager has put it.
click_away() { # NAME WINDOW
    local try X=0 Y=0 believed
    click "$1" "$2"
    for try in 1 2 3 4; do
        ! wait_for 3 is_gone "$2" || return 0
        eval "$(xdotool getactivewindow getwindowgeometry --shell | grep '^[XY]=')"
        believed=$(line_of "$2") || return 0
        say "$2 lies at $X $Y, the map says: $believed"
        xdotool mousemove $(set -- $(middle_of "$1" "$2") $believed; echo $(($1 + X - $4)) $(($2 + Y - $5))) click 1
    done
    fail "$2 does not go"
}

# Moves the mouse to a point of the preview, in thousandths of its size.
point_in_view() { # X Y
    local x=$1 y=$2
    set -- $(line_of videoView)
    echo $(($2 + $4 * x / 1000)) $(($3 + $5 * y / 1000))
}

# The tool bar comes with the mouse.
show_tools() {
    xdotool mousemove $(point_in_view 500 500) mousemove_relative 3 3
    await "the tool bar" is_there ToolBar
}
hide_tools() {
    xdotool mousemove $(set -- $(line_of TitleBar LumroScanner); echo $(($2 + $4 / 2)) $(($3 + $5 / 2)))
    await "the tool bar's leave" is_gone ToolBar
}
click_tool() {
    show_tools
    click "$1"
}

drag_in_view() { # X1 Y1 X2 Y2
    xdotool mousemove $(point_in_view "$1" "$2") mousedown 1
    xdotool mousemove $(point_in_view $((($1 + $3) / 2)) $((($2 + $4) / 2))) mousemove $(point_in_view "$3" "$4")
    xdotool mouseup 1
}

# What the preview shows, below the tool bar.
view_looks() {
    set -- $(line_of videoView)
    import -window root -crop "$4x$(($5 * 3 / 4))+$2+$(($3 + $5 / 4))" rgb:- | md5sum
}
looks_other() { [ "$(view_looks)" != "$1" ]; }

# Runs a command and waits until the preview looks different.
changing_view() { # COMMAND...
    local before
    before=$(view_looks)
    "$@"
    await "a change of the picture after: $*" looks_other "$before"
}

size_of() { identify -format '%wx%h' "$1"; }

# Waits for a picture; it appears whole, because the program renames it into place.
await_picture() { # FILE
    await "${1##*/}" test -s "$1"
    identify -regard-warnings "$1" >/dev/null || fail "${1##*/} is damaged"
}

close_program() {
    local status=0
    click buttonClose LumroScanner
    wait_for "$patience" is_finished || fail "the program does not end"
    wait "$pid" || status=$?
    [ "$status" -eq 0 ] || fail "the program ended with status $status"
    check_messages
}
is_finished() { ! runs "$pid"; }

# Any line but the program's own notes is an error. A tool tip that goes while the toolkit asks the display where it
# is brings a note of the toolkit's own.
check_messages() {
    local notes='^(devcount|btn|card type): ?-?[0-9]*$|^qt\.qpa\.xcb: .* 3 \(BadWindow\), .*\(TranslateCoords\)'
    ! grep -vE "$notes${expected_messages:+|$expected_messages}" "$work/stderr" |
        grep . || fail "unexpected messages"
}
