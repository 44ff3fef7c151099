#!/bin/bash
# The first steps under a Wayland compositor: start, capture, the windows of the buttons, close. Clicks reach it
# through the X display in whose window it runs.
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
. tests/desktop/made_desk.sh
need_tools
command -v weston >/dev/null || { say "Skipped: weston is missing." && exit 77; }

pages=$work/pages
mkdir "$pages"
preferences=(App_Language=1 Camera_Resolution=0)

# Over the whole display and without a panel, so that its screen's points are those of the display.
start_compositor() {
    printf '[shell]\npanel-position=none\n' >"$work/weston.ini"
    # It was seen to hang before it had a socket, on a busy machine.
    local attempt
    for attempt in 1 2 3; do
        weston --config="$work/weston.ini" --backend=x11-backend.so --use-pixman --fullscreen --width=1920 \
            --height=1080 --socket=lumro-test --idle-time=0 >"$work/weston" 2>&1 &
        own $!
        ! wait_for 40 test -S "$XDG_RUNTIME_DIR/lumro-test" || break
        cat "$work/weston"
        [ "$attempt" -lt 3 ] || die "The compositor (weston) does not start."
        kill -KILL $!
    done
    export WAYLAND_DISPLAY=lumro-test QT_QPA_PLATFORM=wayland
}
start_wayland_program() {
    : >"$work/protocol"
    WAYLAND_DEBUG=1 "$program" >"$work/stdout" 2> >(tee "$work/protocol" | grep -vE '^\[ *[0-9.]+\]' >"$work/stderr") &
    pid=$!
    own "$pid"
    await "the first picture" picture_painted
    # The compositor takes differences; from the corner on, its pointer and that of the display agree.
    xdotool mousemove 1 1 mousemove 0 0
}
owned_windows() { grep -cE 'xdg_toplevel@[0-9]+\.set_parent\(xdg_toplevel@[0-9]+\)' "$work/protocol"; }

# Opens it by its button, sees that the compositor knows its owner, and leaves it by Escape.
visit() { # BUTTON NAME
    local before
    before=$(owned_windows || :)
    click "$1"
    await "$2" is_there "$2"
    await "the owner of $2" more_owned_than "$before"
    import -window root "${shots:-$work}/wayland-$2.png"
    xdotool key Escape
    await "the end of $2 by Escape" is_gone "$2"
}
more_owned_than() { [ "$(owned_windows)" -gt "$1" ]; }

make_desk ""
prepare_home "$pages"
start_virtual_display
start_compositor
start_wayland_program
click btnScanner
await_picture "$pages/IMAGE_000.jpg"
visit btnMore More
visit setting ConfigSet
visit btnPdfEx PdfEx
visit btnRecord VideoRecord
timeout "$patience" "$program" 2>/dev/null || fail "a second start"
runs "$pid" || fail "the program died of a second start"
close_program
