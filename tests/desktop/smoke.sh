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
# Trimmed by 15 px along each edge; 4 px for finding the edges.
identify -format '%w %h\n' "$pages/IMAGE_000.jpg" | {
    read -r width height
    [ "$width" -ge 866 ] && [ "$width" -le 874 ] && [ "$height" -ge 606 ] && [ "$height" -le 614 ] ||
        fail "a page of 870 x 610 was to come out, not $width x $height"
}
echo 2 >"$work/desk/keys"
await_picture "$pages/IMAGE_001.jpg"
close_program
