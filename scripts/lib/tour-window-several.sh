# Several pages side by side become a file each; the page of the shortcuts records the key that is pressed.
# Source it after desktop.sh and the tour's other parts.

# Three cards and two receipts, turned, on a dark desk.
lay_several() {
    local cards=$work/several
    mkdir -p "$cards"
    convert -size 360x228 xc:'#e8eef4' -fill '#705848' -draw 'rectangle 240,40 330,150' -fill '#282828' \
        -draw 'rectangle 30,50 200,60' -draw 'rectangle 30,90 180,100' -draw 'rectangle 30,130 190,140' \
        "$cards/card.png"
    convert -size 200x620 xc:white -fill '#303030' -draw 'rectangle 30,60 170,70' \
        -draw 'rectangle 30,110 150,120' -draw 'rectangle 30,300 160,310' "$cards/receipt.png"
    convert -size 1600x1200 xc:'#383c40' \
        \( "$cards/card.png" -background none -rotate 8 \) -geometry +60+80 -composite \
        \( "$cards/card.png" -background none -rotate -20 \) -geometry +520+60 -composite \
        \( "$cards/card.png" -background none -rotate 3 \) -geometry +250+640 -composite \
        \( "$cards/receipt.png" -background none -rotate 5 \) -geometry +1020+120 -composite \
        \( "$cards/receipt.png" -background none -rotate -4 \) -geometry +1310+220 -composite \
        -attenuate 0.1 +noise gaussian -quality 92 "$cards/page.jpg"
    cat >"$cards/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; source = "page.jpg"; fps = 10;
              resolutions = [ "1600x1200" ]; } );
END
    export LUMRO_DESK=$cards/desk.cfg
}

outlines_shown() {
    set -- $(line_of videoView)
    [ "$(import -window root -depth 8 -crop "$4x$5+$2+$3" rgba:- | od -An -v -tx1 -w4 | grep -c 'ff 00 00 ff')" -gt 1000 ]
}

window_several() {
    local before desk=$LUMRO_DESK
    close_program
    lay_several
    start_over
    click_tool buttonDeskewEx
    await "the cropping mode" setting_is Deskew 2
    hide_tools
    await "the outlines" outlines_shown
    shoot several-pages
    before=$(pictures_taken)
    click btnScanner
    await_pictures 5 "$before"
    shoot several-files
    click_tool buttonDeskewEx
    await "the mode's end" setting_is Deskew 0
    record_shortcut
    close_program
    export LUMRO_DESK=$desk
    start_over
}

record_shortcut() {
    open_settings Shortcut
    shoot shortcuts-empty
    click editScanner
    xdotool key ctrl+shift+s
    await "the recorded keys" setting_is Shortcut_Scanner Ctrl+Shift+S
    xdotool key ctrl+z
    await "the other keys" setting_is Shortcut_Scanner Ctrl+Z
    shoot shortcuts-recorded
    xdotool key BackSpace
    await "the emptied field" setting_is Shortcut_Scanner ''
    close_settings
}
