# What the window says of itself: what a capture saves while the picture is frozen or has an inset, the first side
# of a merge, a film that runs or is refused, a camera that stands still. Source it after tour.sh's own functions
# and tour-scans.sh.

# The desk of the steps below: an 8-megapixel camera that stalls when asked to, and one that looks at the person.
lay_truth() { # MORE, settings of the first camera
    mkdir -p "$work/truth"
    cat >"$work/truth/desk.cfg" <<END
real = false;
cameras = (
  { name = "Desk camera"; type = 1; usb = "1b172000"; source = "$made_pictures/pictures"; hold = 6.0; fps = 15;
    resolutions = [ "2592x1944", "1600x1200" ]; $1 },
  { name = "Portrait camera"; type = 2; usb = "0bda5801"; source = "$made_pictures/portrait"; fps = 15;
    resolutions = [ "640x480" ]; } );
END
    export LUMRO_DESK=$work/truth/desk.cfg
}

frozen_page() {
    local before
    before=$(pictures_taken)
    click_tool buttonFreeze
    await "the offer to save the frozen page" is_there buttonSaveFrozen
    hide_tools
    shoot frozen-page
    click buttonSaveFrozen
    await_pictures 1 "$before"
    click_tool buttonFreeze
    await "the live view" is_gone FrozenBar
}

inset_left_out() {
    click_tool checkAssist
    await "the second camera's picture" is_there MoveVideoWidget
    hide_tools
    sleep 1 # its first picture
    shoot inset-left-out
    click_tool checkAssist
    await "the end of the second camera's picture" is_gone MoveVideoWidget
}

first_side() {
    local before
    before=$(pictures_taken)
    click btnPicCompose
    await_pictures 1 "$before"
    await "the first side" is_there FirstSide
    shoot first-side
    xdotool key Escape
    await "the end of the merge" is_gone FirstSide
}

film_too_large() {
    click btnRecord
    await "the refusal" is_there buttonFilm
    shoot film-refused
    click buttonFilm
    await "the film" is_there VideoRecord
    click buttonClose VideoRecord
    await "the end of its window" is_gone VideoRecord
    await "the mark" is_there RecordingMark
    shoot film-runs
    click btnRecord
    click ButtonStop
    click buttonFinish
    await "the mark's end" is_gone RecordingMark
}

waiting_camera() {
    click btnScanner
    await "the sign that it waits" is_there WaitingSign
    shoot capture-waits
    xdotool key Escape
    await "the sign's end" is_gone WaitingSign
    click btnPdfEx
    await "the dialog" is_there PdfEx
    sleep 3 # the camera is silent for two seconds
    shoot still-pages
    click buttonClose PdfEx
    await "the dialog's end" is_gone PdfEx
}

window_truth() {
    local ordinary=$LUMRO_DESK
    close_program
    preferences=("App_Language=${APP_LANGUAGE:-1}" Camera_Resolution=0)
    prepare_home "$shots"
    lay_truth ""
    start_over
    frozen_page
    inset_left_out
    first_side
    film_too_large
    close_program
    lay_truth "stall_after = 2.0;"
    start_over
    sleep 3
    expected_messages='Get image timeout!'
    waiting_camera
    close_program
    expected_messages=
    export LUMRO_DESK=$ordinary
    preferences=("App_Language=${APP_LANGUAGE:-1}")
    prepare_home "$shots"
    start_over
}
