# A virtual desk of one's own with pictures whose contents are known, and what a test may ask about the screen.
# Source it after scripts/lib/desktop.sh.

# A white sheet of 900 x 640 px with black bars for text, turned by 5 degrees, on a dark desk of 1600 x 1200.
draw_page() { # FILE
    local lines=() y
    for y in $(seq 80 60 500); do lines+=(-draw "rectangle 80,$y 820,$((y + 18))"); done
    convert -size 900x640 xc:white -fill black "${lines[@]}" -background '#303030' -rotate 5 \
        -gravity center -extent 1600x1200 -attenuate 0.2 +noise gaussian -quality 92 "$1"
}

# make_desk EXTRA: one camera over that sheet, with further settings of the camera, and keys.
make_desk() {
    mkdir -p "$work/desk"
    draw_page "$work/desk/page.jpg"
    cat >"$work/desk/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; source = "page.jpg"; fps = 10;
              resolutions = [ "1600x1200", "800x600" ]; $1 } );
keys = { camera = 0; fifo = "keys"; };
END
    export LUMRO_DESK=$work/desk/desk.cfg
}

# Whether the preview shows pure red: the text that there is no picture.
shows_red_text() {
    set -- $(line_of videoView)
    import -window root -depth 8 -crop "$4x32+$2+$(($3 + $5 / 2 - 16))" txt:- | grep -q '#FF0000'
}

pictures() { find "$pages" -name 'IMAGE_*' | wc -l; }
