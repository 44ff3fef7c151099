#!/bin/bash
# Ten seconds of film by real clicks, from cameras of different speed and with the view turned, looked at with
# another program; and the film of a program that is killed.
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
need_tools
command -v ffprobe >/dev/null || { say "Skipped: ffprobe is missing." && exit 77; }

films=$work/films
preferences=(App_Language=1)

make_desk_with() { # FRAMES_PER_SECOND
    mkdir -p "$work/desk"
    cat >"$work/desk/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; fps = $1; hold = 0.5;
              source = "$(dirname "$(dirname "$program")")/share/desk/pictures/1600x1200";
              resolutions = [ "1600x1200" ]; } );
END
    export LUMRO_DESK=$work/desk/desk.cfg
}

# The moments at which the program says that it records and that it has stopped, in seconds.
watch_output() {
    tail --pid="$pid" -f "$work/stdout" | while read -r line; do
        case $line in record:*) date +%s.%N >>"$work/moments" ;; esac
    done &
}
seconds_of_recording() { bc <<<"$(sed -n 2p "$work/moments") - $(sed -n 1p "$work/moments")"; }

begin_film() {
    rm -rf "$films" "$work/moments"
    click btnRecord
    await "the window of the recording" is_there VideoRecord
}

tell() { # FIELD of the film's stream
    ffprobe -v error -select_streams v -show_entries "stream=$1" -of csv=p=0 "$films"/*.mp4
}

film_of_ten_seconds() { # FRAMES_PER_SECOND SIZE
    local at began lasted recorded
    begin_film
    began=$(date +%s%N)
    at=$(middle_of ButtonStop VideoRecord)
    xdotool mousemove $at
    sleep "$(bc <<<"10 - ($(date +%s%N) - $began) / 1000000000")"
    xdotool click 1
    await "the question after the recording" is_there FolderOffer
    click buttonFinish FolderOffer
    await "the end of the window of the recording" is_gone VideoRecord
    lasted=$(tell duration)
    recorded=$(seconds_of_recording)
    say "$1 frames per second: $(tell codec_name,width,height,r_frame_rate,avg_frame_rate)," \
        "recorded for $recorded s, a film of $lasted s"
    [ "$(tell codec_name,width,height,r_frame_rate)" = "h264,$2,30/1" ] || fail "another kind of film"
    # What was begun and ended is told a moment later, on a busy machine a longer one.
    [ "$(bc <<<"d = $lasted - $recorded; d > -0.5 && d < 0.5")" -eq 1 ] || fail "a film of $lasted s"
    ffmpeg -v error -i "$films"/*.mp4 -f null - 2>&1 | grep . && fail "a damaged film"
    return 0
}

start_with_camera() { # FRAMES_PER_SECOND
    make_desk_with "$1"
    prepare_home "$films"
    start_program
    await "the first picture" picture_painted
    watch_output
}

killed_film() {
    start_with_camera 30
    begin_film
    sleep 6
    kill -KILL "$pid"
    { wait "$pid" || :; } 2>/dev/null
    ffmpeg -v error -i "$films"/*.mp4 -f null - 2>&1 | grep . && fail "a damaged film after a crash"
    say "killed after 6 s: a film of $(tell duration) s"
    [ "$(bc <<<"$(tell duration) >= 4")" -eq 1 ] || fail "a film of $(tell duration) s"
}

start_virtual_display
for rate in 15 30 60; do
    start_with_camera "$rate"
    film_of_ten_seconds "$rate" 1600,1200
    [ "$rate" -eq 60 ] || close_program
done
changing_view click_tool buttonRotateRight
film_of_ten_seconds 60 1200,1600
close_program
killed_film
