# The tour's fourth part: what identifies people, with made-up cards, faces and fingers.
# Source it after tour-scans.sh.

prints() { find "$shots" -name '*.bmp' | sort; }
has_prints() { [ "$(prints | wc -l)" -ge "$1" ]; }

# A finger that lies there at once, or only later.
lay_finger() { # SECONDS
    mkdir -p "$work/finger"
    cat >"$work/finger/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; source = "$made_pictures/pictures"; fps = 15;
              resolutions = [ "1600x1200" ]; } );
fingerprint = { prints = "$made_pictures/prints"; delay = $1; };
END
    export LUMRO_DESK=$work/finger/desk.cfg
}

# Buttons that are not there at first.
choose_button() { # CHECK BUTTON
    click btnMore
    await "the choice of buttons" is_there More
    click "$1"
    await "the chosen button" is_there "$2"
    click buttonClose More
    await "the choice's end" is_gone More
}

fingerprint() {
    lay_finger 2.0
    start_over
    choose_button checkFingerprint btnFingerPrint
    click btnFingerPrint
    await "the window of the fingerprint" is_there FignerPrint
    click buttonCapture FignerPrint
    sleep 0.5
    shoot finger-awaited
    await "the print" has_prints 1
    identify -format '%m %w %h %[type]' "$(prints | tail -n 1)" | grep -q '^BMP3\? 256 360 Grayscale' ||
        fail "the print has another form"
    [ "$(stat -c %a "$(prints | tail -n 1)")" = 600 ] || fail "others may read the print"
    sleep 0.5
    shoot finger-taken
    xdotool key Escape
    await "the end of the window of the fingerprint" is_gone FignerPrint
    shoot finger-in-the-strip
    close_program
}

identity() {
    fingerprint
}
