#!/bin/bash
# Start, one straightened page by click and one by the camera's key, close: a clean end and no message.
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
. tests/desktop/made_desk.sh
need_tools

pages=$work/pages
mkdir "$pages"
preferences=(App_Language=1 Deskew=1 Camera_Resolution=0)
make_desk ""
prepare_home "$pages"
start_virtual_display
start_program
await "the first picture" picture_painted

click btnScanner
await_picture "$pages/IMAGE_000.jpg"
# It has the proportions of A4 but for half a percent, and gets them whole; 4 px for finding the edges.
identify -format '%w %h\n' "$pages/IMAGE_000.jpg" | {
    read -r width height
    [ "$width" -ge 901 ] && [ "$width" -le 909 ] && [ "$height" -ge 637 ] && [ "$height" -le 643 ] ||
        fail "a page of 905 x 640 was to come out, not $width x $height"
}
echo 2 >"$work/desk/keys"
await_picture "$pages/IMAGE_001.jpg"
close_program
