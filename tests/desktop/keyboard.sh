#!/bin/bash
# The program without a mouse: a capture, a PDF, a setting and a film by keys alone; and what a screen reader is told on
# the way: every control of every window that comes has a name and a role.
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
. tests/desktop/made_desk.sh
need_tools
/usr/bin/python3 -c 'import pyatspi' 2>/dev/null || { say "Skipped: the accessibility bindings are missing." && exit 77; }

pages=$work/pages
mkdir "$pages"
preferences=(App_Language=1 Camera_Resolution=0)

start_bus() {
    local address=$work/bus
    dbus-daemon --session --nofork --print-address=3 3>"$address" >/dev/null 2>&1 &
    own $!
    wait_for "$patience" test -s "$address" || fail "the message bus does not start"
    DBUS_SESSION_BUS_ADDRESS=$(cat "$address")
    export DBUS_SESSION_BUS_ADDRESS QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
}

controls() { tests/desktop/controls.py list "$pid"; }
focused() { tests/desktop/controls.py focus "$pid" 2>/dev/null; }
focus_left() { [ "$(focused)" != "$1" ]; }

# Each control is named, and the keyboard reaches it.
walk() { # WINDOW CONTROL...: some that are among them
    local found control
    await "$1" is_there "$1"
    await "its controls, all of them with a name" controls
    found=$(controls)
    shift
    ! grep -E '\| (push button|check box|radio button|combo box|text|spin box|slider) \| .* \| -$' <<<"$found" ||
        fail "out of the keyboard's reach"
    for control; do grep -qF " | $control | " <<<"$found" || fail "no control is called $control:
$found"; done
}

reach() { # NAME: with Tab, from wherever the keyboard is
    local tries now
    for tries in $(seq 60); do
        now=$(focused)
        [[ $now != *" | $1" ]] || return 0
        xdotool key Tab
        # Pressed while the window was still coming forward, it is nobody's. A busy window manager may also leave no
        # window in front; then the keyboard has a way to get one.
        wait_for 3 focus_left "$now" || [ $((tries % 4)) -gt 0 ] || xdotool key alt+Tab
    done
    fail "Tab does not reach $1; it ended at $now"
}

use() { # NAME
    reach "$1"
    xdotool key space
}

settings() {
    local letter
    use Settings
    await "the settings" is_there ConfigSet
    for letter in g n s a i; do
        xdotool key "alt+$letter"
        sleep 0.3
        walk ConfigSet Close
    done
    await "the page of pictures" is_there pageImage
    use "Scanner Sound:"
    await "the setting" setting_is Scanner_Sound true
    xdotool key Escape
    await "the end of the settings" is_gone ConfigSet
}

several_pages() {
    use "Multi-page PDF"
    walk PdfEx Scanner Pdf
    use Scanner
    await "a page in the list" is_there QListWidget.0 PdfEx
    use Pdf
    await "the end of the dialog" is_gone PdfEx
    await "the PDF" has_file pdf
}
has_file() { find "$pages" -name "*.$1" | grep -q .; }

film() {
    use "Record video"
    walk VideoRecord Stop
    await "a second of film" has_fragment
    use Stop
    await "the question after it" is_there FolderOffer
    walk FolderOffer Finish
    use Finish
    await "the end of the question" is_gone FolderOffer
    await "the film" has_file mp4
}
has_fragment() { grep -aqs moof "$pages"/*.mp4; }

make_desk ""
prepare_home "$pages"
start_virtual_display
start_bus
start_program
await "the first picture" picture_painted
await "the buttons" is_enabled btnScanner
walk LumroScanner Capture "Merge images" "Multi-page PDF" Settings

use Capture
await_picture "$pages/IMAGE_000.jpg"
settings
several_pages
film
use "Continuous shooting"
walk AutoScan Stop
xdotool key Escape
await "the end of the scan" is_gone AutoScan
use "More functions"
walk More "Merge card" Fingerprint
xdotool key Escape
await "the end of the choice" is_gone More
close_program
