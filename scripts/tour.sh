#!/bin/bash
# Works the program from start to end by real clicks and keys, on a virtual display and with the virtual desk,
# and leaves screenshots and the produced files in a folder. Fails when something that a user expects does not
# happen.
#   scripts/tour.sh FOLDER            what the program does, function by function
#   scripts/tour.sh --window[=NAME] FOLDER   how its windows behave: scripts/lib/tour-window-*.sh, all or that one
#   PROGRAM=...        another build's program instead of that of build/release
#   APP_LANGUAGE=0|1|2 Chinese, English (otherwise) or Russian
#   QT_SCALE_FACTOR=2  as on a screen with small pixels
windows= # a pattern
case ${1:-} in --window) windows="*" && shift ;; --window=*) windows=${1#*=} && shift ;; esac
[ $# -eq 1 ] || { echo "usage: $0 [--window[=NAME]] FOLDER" >&2 && exit 2; }
shots=$(realpath -m "$1")
. "$(dirname "$0")/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh

if [ -z "$program" ]; then
    scripts/setup.sh build run
    build release lumroscanner desk_pictures
    program=$root/build/release/bin/lumroscanner
fi
need_tools
export LUMRO_DESK=${LUMRO_DESK:-$(dirname "$(dirname "$program")")/share/desk/desk.cfg}
mkdir -p "$shots"
rm -f "$shots"/IMAGE_*.jpg "$shots"/*.pdf "$shots"/*.rtf "$shots"/*.mp4 "$shots"/*.bmp "$shots"/*.png

number=0
shoot() { # NAME
    number=$((number + 1))
    import -window root -quality 30 "$shots/$(printf '%02d' "$number")-$1.png"
}

capture() { # BUTTON FILE
    click "$1"
    await_picture "$shots/$2"
}

start() {
    preferences=("App_Language=${APP_LANGUAGE:-1}")
    prepare_home "$shots"
    start_virtual_display
    start_program
    await "the first picture" picture_painted
    await "the button bar" is_enabled btnScanner
    import -window root "$shots/main-window.png"
}

pages() {
    show_tools
    shoot tool-bar
    click_tool buttonDeskew # straight and cropped to the page
    await "the cropping mode" setting_is Deskew 1
    capture btnScanner IMAGE_000.jpg
    capture btnDocument IMAGE_001.jpg
    shoot captured-pages
    click_tool buttonDeskew
}

drawn_crop() {
    local whole part
    click_tool buttonManualDeskew
    changing_view drag_in_view 400 300 600 700
    shoot drawn-rectangle
    capture btnScanner IMAGE_002.jpg
    changing_view click_tool buttonManualDeskew
    capture btnScanner IMAGE_003.jpg
    whole=$(identify -format %h "$shots/IMAGE_003.jpg")
    part=$(identify -format %h "$shots/IMAGE_002.jpg")
    # 400 of 1000 were drawn; the picture fills the height of the view
    [ $((part * 1000 / whole)) -ge 380 ] && [ $((part * 1000 / whole)) -le 420 ] ||
        fail "the drawn rectangle has $part of $whole lines"
}

view() {
    changing_view click_tool buttonRotateRight
    shoot turned
    capture btnScanner IMAGE_004.jpg
    [ "$(identify -format '%w' "$shots/IMAGE_004.jpg")" -eq "$(identify -format '%h' "$shots/IMAGE_003.jpg")" ] ||
        fail "the capture is not turned as the view is"
    changing_view click_tool buttonRotateLeft
    changing_view click_tool buttonZoomIn
    changing_view xdotool mousemove $(point_in_view 500 600) click 4 click 4 click 4
    changing_view drag_in_view 500 600 650 500
    shoot zoomed
    changing_view click_tool buttonAdapt
    click_tool buttonFreeze
    shoot frozen
    click_tool buttonFreeze
}

full_screen() {
    xdotool mousemove $(point_in_view 500 600) click --repeat 2 --delay 60 1
    await "the full screen" is_there videoView videoView
    xdotool mousemove_relative 5 5
    await "the tool bar on the full screen" is_there ToolBar videoView
    shoot full-screen
    xdotool key Escape
    await "the window" is_there videoView LumroScanner
}

resolutions() {
    click_tool comboResolution
    await "the list of resolutions" is_there comboResolution.0
    shoot resolutions
    click comboResolution.0
    await "the kept choice" setting_is Camera_Resolution 0
}

strip_and_choices() {
    hide_tools
    click QListWidget.0 "" 3
    await "the strip's menu" is_there menu.0
    shoot strip-menu
    xdotool key Escape
    await "the menu's end" is_gone menu
    click btnMore
    await "the choice of buttons" is_there More
    click checkSign
    await "the chosen button" is_there btnSign
    shoot more-buttons
    click checkSign
    await "the button's end" is_gone btnSign
    click buttonClose More
    await "the choice's end" is_gone More
}

# Each file tour-window-NAME.sh has a function window_NAME, which finds the program running on the ordinary desk with
# its preferences as delivered, and leaves it so.
windows() {
    local file name
    for file in scripts/lib/tour-window-$windows.sh; do
        . "$file"
        name=${file##*/tour-window-}
        "window_${name%.sh}"
        is_there LumroScanner >/dev/null || fail "$file does not leave the program running"
    done
}

. scripts/lib/tour-scans.sh
. scripts/lib/tour-documents.sh
. scripts/lib/tour-books.sh
. scripts/lib/tour-identity.sh
. scripts/lib/tour-cards.sh
. scripts/lib/tour-printer.sh

start
if [ -n "$windows" ]; then
    windows
    close_program
    say "Screenshots and files: $shots"
    exit
fi
pages
drawn_crop
view
full_screen
resolutions
strip_and_choices
close_program
scans
documents
book_spread
identity
id_cards
printing
say "Screenshots and files: $shots"
