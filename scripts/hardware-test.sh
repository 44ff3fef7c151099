#!/bin/bash
# Runs the tests on the real drivers: boots the lab (tests/hardware/lab), plugs cameras and a printer in software
# into it and drives what talks to them. Ends with 77 where the lab cannot be had.
#   scripts/hardware-test.sh [BUILDFOLDER [TESTARGUMENT...]]     default build/release
. "$(dirname "$0")/lib/common.sh"
folder=$(cd "${1:-build/release}" && pwd)
[ $# -eq 0 ] || shift

pictures=$folder/tests/lab-pictures
lab=tests/hardware/lab/lab.sh

# picture FILE SOURCE [OPTION...]: as cameras send them, with half the colours across.
picture() {
    local size=${1%%_*}
    convert "$2" -auto-orient -rotate '90<' -resize "$size^" -gravity center -extent "$size" "${@:3}" \
        -strip -quality 90 -sampling-factor 4:2:2 "$pictures/$1"
}

make_pictures() {
    local page=../shared/photos/page-on-cloth.jpg
    [ -f "$page" ] || page=$(find "$folder/share/desk/pictures/1600x1200" -name '*.jpg' | sort | head -n 1)
    [ -n "$page" ] || die "No picture of a page: build the desk's pictures first."
    mkdir -p "$pictures"
    picture 640x480_a.jpg "$page"
    picture 640x480_b.jpg "$page" -flip
    picture 1600x1200_a.jpg "$page"
}

"$lab" prepare
[ -f "$pictures/1600x1200_a.jpg" ] || make_pictures
with=$root/tests/hardware/lab/with
"$lab" run 1100 "
    $with-cameras $pictures $folder/tests/v4l2_test $* || failed=1
    $with-printer $folder/tests/usblp_test $* || failed=1
    exit \${failed:-0}"
