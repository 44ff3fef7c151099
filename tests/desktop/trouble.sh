#!/bin/bash
# What goes wrong on a real desk: no camera, a camera that is pulled out, a folder that cannot be written, a
# second start, a crash. The program says so, lives on and starts again.
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
. tests/desktop/made_desk.sh
need_tools

pages=$work/pages
mkdir "$pages"
preferences=(App_Language=1 Camera_Resolution=0)

no_camera() {
    make_desk ""
    echo 'real = false; cameras = ();' >"$LUMRO_DESK"
    prepare_home "$pages"
    start_program
    await "the text without a camera" shows_red_text
    click btnScanner
    click btnDocument
    close_program
    [ "$(pictures)" -eq 0 ] || fail "a picture without a camera"
}

pulled_out_camera() {
    make_desk "unplug_after = 2.0;"
    start_program
    await "the first picture" picture_painted
    await "the text after the camera went" shows_red_text
    click btnScanner
    click_tool buttonZoomIn
    runs "$pid" || fail "the program died with its camera"
    expected_messages=.
    close_program
    expected_messages=
}

is_removed() { [ ! -e "$1" ]; }
is_minimised() { xprop -id "$1" WM_STATE | grep -q Iconic; }
is_active() { [ "$(xdotool getactivewindow)" = "$1" ]; }

second_starts() {
    local window other box status=0
    make_desk ""
    start_program
    await "the first picture" picture_painted
    window=$(window_of "$pid")
    xdotool windowminimize "$window"
    await "the minimised window" is_minimised "$window"
    timeout "$patience" "$program" 2>"$work/second" || status=$?
    [ "$status" -eq 0 ] || fail "a second start ended with status $status"
    grep -q 'runs already; its window has come forward' "$work/second" || fail "a second start says nothing"
    await "the first window" is_active "$window"
    [ "$(wmctrl -l | grep -c "$window_title")" -eq 1 ] || fail "a second window"

    kill -STOP "$pid" # it hangs
    LUMRO_UI_MAP= "$program" 2>"$work/second" &
    other=$!
    own "$other"
    await "the message about it" xdotool search --onlyvisible --pid "$other"
    grep -q 'does not answer' "$work/second" || fail "a second start says nothing about one that hangs"
    box=$(xdotool search --onlyvisible --pid "$other" | tail -n 1)
    await "the message in front" is_active "$box"
    xdotool key Return
    wait "$other" && fail "a start beside one that hangs succeeds"
    kill -CONT "$pid"
}

crash() {
    kill -KILL "$pid"
    { wait "$pid" || :; } 2>/dev/null
    echo "half a page" >"$pages/.lumro-$pid-7.tmp"
}

after_a_crash() {
    local number
    for number in 0 1 2 3 4; do
        click btnScanner
        await_picture "$pages/IMAGE_00$number.jpg"
        crash
        [ "$number" -eq 0 ] || rm "$TMPDIR"/qipc_sharedmemory_* # as programs that tidy up do
        start_program
        await "the first picture after a crash" picture_painted
        await "the end of what the crash left" is_removed "$pages/.lumro-"*
    done
    close_program
}

folder_that_cannot_be_written() {
    local before
    echo "a file" >"$work/occupied"
    prepare_home "$work/occupied/pages"
    start_program
    await "the first picture" picture_painted
    changing_view click btnScanner # the notice
    await "the message" grep -q occupied "$work/stderr"
    expected_messages=occupied
    close_program
    expected_messages=
    [ "$(cat "$work/occupied")" = "a file" ] || fail "the file in the way has changed"
}

start_virtual_display
no_camera
pulled_out_camera
second_starts
after_a_crash
folder_that_cannot_be_written
