#!/bin/bash
# No window of the program hides behind its main window or stays behind when that one is minimised, is brought
# forward or ends. Under the window manager whose command is given.
#   tests/desktop/windows.sh COMMAND...
window_manager=$*
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
. tests/desktop/made_desk.sh
need_tools
for tool in "$1" "${window_manager##*-- }"; do
    command -v "${tool%% *}" >/dev/null || { say "Skipped: $tool is missing." && exit 77; }
done

pages=$work/pages
mkdir "$pages"
preferences=(App_Language=1 Camera_Resolution=0)

# The identifiers of the program's windows at the window manager, the lowest first.
stack() { xprop -root _NET_CLIENT_LIST_STACKING | sed 's/.*# //; s/,//g'; }
owner_of() { xprop -id "$1" WM_TRANSIENT_FOR | sed -n 's/.*# //p'; }
top_window() { stack | awk '{print $NF}'; }
another_on_top() { [ $(($(top_window))) -ne $((main)) ]; }
is_minimised() { xprop -id "$1" WM_STATE | grep -q Iconic; }
is_back() { ! is_minimised "$1"; }
is_on_top() { [ $(($(top_window))) -eq $(($1)) ]; }
is_active() { [ "$(xdotool getactivewindow)" -eq $(($1)) ]; }

# What was opened last lies over the main window and stays there, whatever is clicked; goes and comes with it.
stays_above() { # NAME
    await "$1" is_there "$1"
    await "$1 on top" another_on_top
    window=$(top_window)
    [ $(($(owner_of "$window"))) -eq $((main)) ] || fail "$1 does not belong to the main window"
    for place in "960 300" "300 600" "1600 20"; do # the view, the strip's side, the title
        xdotool mousemove $place click 1
        sleep 0.3 # for a window manager that would raise what was clicked
        is_on_top "$window" || fail "a click beside $1 buries it"
    done
    xdotool windowminimize $((main))
    await "$1 minimised with the main window" is_minimised "$window"
    timeout "$patience" "$program" 2>/dev/null || fail "a second start beside $1"
    await "the main window back" is_back "$main"
    await "$1 back" is_back "$window"
    await "$1 on top again" is_on_top "$window"
}
leaves_by_escape() { # NAME
    await "the end of $1 by Escape" gone_after_escape "$1"
}
# Pressed again, because a window that has just come forward may not have the keys yet.
gone_after_escape() { is_gone "$1" || { xdotool key Escape && wait_for 1 is_gone "$1"; }; }

make_desk ""
prepare_home "$pages"
start_virtual_display
start_program
await "the first picture" picture_painted
main=$(window_of "$pid")

click btnMore
stays_above More
leaves_by_escape More

click setting
stays_above ConfigSet
leaves_by_escape ConfigSet

click btnPdfEx
stays_above PdfEx
await "the main window's keys" is_active "$main" # it was clicked
click btnPdfEx
await "the pages' window in front" is_active "$window"
leaves_by_escape PdfEx

click btnRecord
stays_above VideoRecord
click ButtonStop
await "the question" is_there FolderOffer
leaves_by_escape FolderOffer
await "the end of the recording's window" is_gone VideoRecord
close_program
