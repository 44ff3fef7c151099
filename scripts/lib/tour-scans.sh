# The tour's second part: settings, shortcuts, timed and automatic scanning, two cameras, both sides of a card.
# Source it after desktop.sh and tour.sh's own functions.

made_pictures=$(dirname "$(dirname "$program")")/share/desk

# Both sides of a card under the main camera in turn, a person before the second one.
lay_cards() {
    mkdir -p "$work/cards/pages"
    ln -sf "$made_pictures"/pictures/1600x1200/*-card-*.jpg "$work/cards/pages"
    cat >"$work/cards/desk.cfg" <<END
real = false;
cameras = (
  { name = "Desk camera"; type = 1; usb = "1b172000"; source = "pages"; hold = 3.0; fps = 15;
    resolutions = [ "1600x1200" ]; },
  { name = "Portrait camera"; type = 2; usb = "0bda5801"; source = "$made_pictures/portrait"; fps = 15;
    resolutions = [ "640x480" ]; } );
keys = { camera = 0; fifo = "keys"; };
END
    export LUMRO_DESK=$work/cards/desk.cfg
}

# A hand turns over the pages of the film once, after the first one has lain there for a while.
lay_film() {
    local still number=0
    mkdir -p "$work/film/pages"
    set -- "$made_pictures"/page-turn/*.jpg
    for still in $(seq 150); do ln -s "$1" "$work/film/pages/$((10000 + number++)).jpg"; done
    for still in "$@"; do ln -s "$still" "$work/film/pages/$((10000 + number++)).jpg"; done
    cat >"$work/film/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; source = "pages"; hold = 0.0; fps = 15;
              loop = false; resolutions = [ "1600x1200" ]; } );
END
    export LUMRO_DESK=$work/film/desk.cfg
    film_seconds=$((number / 15 + 2))
    film_pages=$(($(wc -l <"$made_pictures/page-turn.csv") - 1))
}

start_over() { # on the desk that LUMRO_DESK names now
    start_program
    await "the first picture" picture_painted
    await "the button bar" is_enabled btnScanner
}

pictures_taken() { ls "$shots"/IMAGE_*.jpg | wc -l; }
has_pictures() { [ "$(pictures_taken)" -ge "$1" ]; }
await_pictures() { # COUNT more than BEFORE
    await "$1 more pictures" has_pictures $(($2 + $1))
    await_picture "$(ls "$shots"/IMAGE_*.jpg | tail -n 1)"
}

open_settings() { # PAGE
    click setting
    await "the settings" is_there ConfigSet
    click_until "the settings' page $1" "button$1" ConfigSet is_there "page$1" ConfigSet
}
close_settings() {
    click buttonClose ConfigSet
    await "the end of the settings" is_gone ConfigSet
}
choose() { # CHOOSER ROW
    click "$1"
    await "the list of $1" is_there "$1.$2"
    click "$1.$2"
}

settings_pages() {
    local page
    open_settings Global
    for page in Global Image AutoPage Shortcut About; do
        click "button$page" ConfigSet
        await "the page $page" is_there "page$page" ConfigSet
        shoot "settings-$page"
    done
    click buttonAutoPage ConfigSet
    click radioTimerScan
    choose comboDelay 0
    await "the interval" setting_is AutoScan_Delay 1
    click buttonShortcut ConfigSet
    click editScanner
    xdotool key F9
    await "the shortcut" setting_is Shortcut_Scanner F9
    close_settings
}

shortcut() {
    local before
    before=$(pictures_taken)
    xdotool key F9
    await_pictures 1 "$before"
}

camera_keys() {
    local before
    before=$(pictures_taken)
    echo 2 >"$work/cards/keys"
    await_pictures 1 "$before"
    changing_view zoom_by_key 8
    changing_view zoom_by_key 9
}
zoom_by_key() { echo "$1" >"$work/cards/keys"; }

timed_scan() {
    local before
    before=$(pictures_taken)
    click btnAutoScanner
    await "the dialog of the timed scan" is_there AutoScan
    shoot timed-scan
    await_pictures 3 "$before"
    click buttonStop AutoScan
    await "the end of the timed scan" is_gone AutoScan
}

two_cameras() {
    local before
    open_settings Image
    click checkComposite
    choose comboMergePosition 3
    await "the position of the second picture" setting_is Merge_Pos 3
    close_settings
    click_tool checkAssist
    await "the second camera's picture" is_there MoveVideoWidget
    hide_tools
    shoot second-camera
    before=$(pictures_taken)
    click btnScanner
    await_pictures 1 "$before"
    click_tool checkAssist
    await "the end of the second camera's picture" is_gone MoveVideoWidget
}

# The page in the preview, without the notice below it.
page_looks() {
    local at
    at=$(line_of videoView)
    set -- $at
    import -window root -crop "$4x$(($5 / 2))+$2+$(($3 + 60))" rgb:- | md5sum
}
other_page_lies_there() { [ "$(page_looks)" != "$1" ]; }

both_sides() {
    local before side
    before=$(pictures_taken)
    side=$(page_looks)
    await "a side that has just been laid down" other_page_lies_there "$side"
    side=$(page_looks)
    click btnPicCompose
    await_pictures 1 "$before"
    shoot first-side
    await "the other side" other_page_lies_there "$side"
    click btnPicCompose
    await "the dialog that joins two pictures" is_there ImageMerge
    click radioUpDown
    shoot merge
    click buttonSave ImageMerge
    await_pictures 3 "$before"
    await "the end of the dialog" is_gone ImageMerge
}

automatic_scan() {
    local before
    before=$(pictures_taken)
    preferences+=(AutoScan_Type=0)
    prepare_home "$shots"
    lay_film
    start_over
    click btnAutoScanner
    await "the dialog of the automatic scan" is_there AutoScan
    await_pictures 1 "$before"
    shoot automatic-scan
    sleep "$film_seconds"
    await "a picture of each page" has_pictures $((before + film_pages))
    [ "$(pictures_taken)" -eq $((before + film_pages)) ] ||
        fail "$(($(pictures_taken) - before)) pictures of $film_pages pages"
    click buttonStop AutoScan
    await "the end of the automatic scan" is_gone AutoScan
    close_program
}

scans() {
    lay_cards
    start_over
    settings_pages
    shortcut
    camera_keys
    timed_scan
    two_cameras
    both_sides
    close_program
    automatic_scan
}
