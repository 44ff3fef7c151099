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

# A specimen card on the reader, a drawn person before the face camera.
lay_card_and_face() {
    mkdir -p "$work/face"
    cat >"$work/face/desk.cfg" <<END
real = false;
cameras = (
  { name = "Desk camera"; type = 1; usb = "1b172000"; source = "$made_pictures/pictures"; fps = 15;
    resolutions = [ "1600x1200" ]; },
  { name = "Portrait camera"; type = 2; usb = "0bda5801"; source = "$made_pictures/portrait/01-holder.jpg"; fps = 15;
    resolutions = [ "640x480" ]; } );
idcard = { cards = "$made_pictures/cards"; };
END
    export LUMRO_DESK=$work/face/desk.cfg
}

captures() { find "$shots" -name 'IMAGE_*.jpg'; }
has_more_captures() { [ "$(captures | wc -l)" -gt "$1" ]; }

face_check() {
    local before
    lay_card_and_face
    start_over
    click btnFace
    await "the window of faces" is_there FaceVerify
    sleep 2
    shoot face-before
    before=$(captures | wc -l)
    click buttonOneClick FaceVerify
    await "the advice" is_there MsgBox
    shoot face-advice
    click_away buttonOkSecond MsgBox
    await "the picture of the face" has_more_captures "$before"
    sleep 2
    shoot face-compared
    [ "$(stat -c %a "$(captures | xargs ls -t | head -n 1)")" = 600 ] || fail "others may read the picture of the face"
    click buttonClose FaceVerify
    await "the end of the window of faces" is_gone FaceVerify
    close_program
}

identity() {
    fingerprint
    face_check
}
