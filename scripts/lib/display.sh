# A virtual display with a window manager, screenshots of the program's window, and an end to all of it.
# Source it after common.sh.

window_title="Lumro TRVS"
: "${window_manager:=openbox --sm-disable}"
owned=

# own PID: it is ended with this script, however that ends.
own() { owned="$1 $owned"; }

end_owned() {
    local pid
    trap - EXIT
    for pid in $owned; do
        kill "$pid" 2>/dev/null || continue
        kill -CONT "$pid" 2>/dev/null || : # one that a test has stopped
        (sleep 5 && kill -KILL "$pid") >/dev/null 2>&1 & # what hangs does not hold up the rest
        wait "$pid" 2>/dev/null || :
        kill $! 2>/dev/null || :
    done
}
trap end_owned EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

display_answers() { [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; }

# wait_for SECONDS COMMAND...: asks ten times a second until the command succeeds.
wait_for() {
    local tries=$(($1 * 10))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $((tries -= 1)) -gt 0 ] || return 1
        sleep 0.1
    done
}

# Sets DISPLAY to a free number that the server itself picks. Without -noreset the server starts over, and throws
# out whoever is just connecting, each time its last client leaves: the window manager was lost to a question
# that came before it.
start_virtual_display() {
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1920x1080x24 -noreset -nolisten tcp 3>"$number" 2>/dev/null &
    own $!
    wait_for 60 test -s "$number" || die "The virtual display (Xvfb) does not start."
    DISPLAY=:$(cat "$number")
    export DISPLAY QT_QPA_PLATFORM=xcb
    if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
        export XDG_RUNTIME_DIR=$root/build/runtime
        mkdir -p -m 700 "$XDG_RUNTIME_DIR"
    fi
    rm -f "$number"
    $window_manager >/dev/null 2>&1 &
    own $!
    wait_for 60 window_manager_runs || die "The window manager ($window_manager) does not start."
}

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; }

# The program's main window, whether or not a window manager lists it.
window_of() {
    local window
    for window in $(xdotool search --onlyvisible --name "$window_title" 2>/dev/null); do
        if [ "$(xdotool getwindowpid "$window" 2>/dev/null)" = "$1" ]; then
            printf '%s\n' "$window"
            return
        fi
    done
}
window_shown() { [ -n "$(window_of "$1")" ]; }
runs() { kill -0 "$1" 2>/dev/null; }
ended() { ! runs "$1"; }

# Passes the program's lines on; the one that tells of the first picture becomes the file MARK.
pass_on_report() { # MARK
    local line
    trap '' INT
    while IFS= read -r line; do
        if [ "$line" = "first picture painted" ]; then : >"$1"; else printf '%s\n' "$line"; fi
    done
}

painted_or_ended() { [ -e "$1" ] || ended "$2"; }
shown_or_ended() { window_shown "$1" || ended "$1"; }

# take_screenshot PID MARK FILE: once the first picture is painted; fails without one, but still shows the
# window as it is then.
take_screenshot() {
    local window what="first picture"
    wait_for 60 shown_or_ended "$1" || return 1
    wait_for 30 painted_or_ended "$2" "$1" || what="window, which shows no picture"
    rm -f "$2"
    window=$(window_of "$1")
    if [ -z "$window" ]; then
        say "The program ended before its window showed up (does it run already?)."
        return 1
    fi
    import -window "$window" "$3" || return 1
    say "Screenshot of the $what: $root/$3"
    [ "$what" = "first picture" ]
}

# Closes the window as its close button does; ends the program when that does not.
close_window() {
    local window
    window=$(window_of "$1")
    [ -z "$window" ] || wmctrl -i -c "$window" || :
    [ -n "$window" ] && wait_for 15 ended "$1" || kill "$1" 2>/dev/null || :
}
