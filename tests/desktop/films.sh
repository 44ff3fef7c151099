#!/bin/bash
# Films by real clicks, from cameras of different speed and with the view turned; and the film of a program that is
# killed. The camera's pictures are numbered, and the numbers are read back out of the films: so it is seen which
# pictures are there, how often and when, however busy the machine is.
. "$(dirname "$0")/../../scripts/lib/common.sh"
. scripts/lib/display.sh
. scripts/lib/desktop.sh
need_tools
command -v ffprobe >/dev/null || { say "Skipped: ffprobe is missing." && exit 77; }

films=$work/films
preferences=(App_Language=1)
cycle=128 # numbers, then again from 0: seven fields, black for 0 and white for 1, and a white one

draw_numbers() {
    local n bit
    mkdir -p "$work/desk/800x600"
    for n in $(seq 0 $((cycle - 1))); do
        { echo "P2 8 1 1"; for bit in 6 5 4 3 2 1 0; do echo $((n >> bit & 1)); done; echo 1; } |
            convert pgm:- -sample '800x600!' -quality 90 "$work/desk/800x600/$(printf %03d "$n").jpg"
    done
}

make_desk_with() { # FRAMES_PER_SECOND
    cat >"$work/desk/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; fps = $1; hold = 0.0;
              source = "800x600"; resolutions = [ "800x600" ]; } );
END
    export LUMRO_DESK=$work/desk/desk.cfg
}

begin_film() {
    rm -rf "$films"
    click btnRecord
    await "the window of the recording" is_there VideoRecord
}

seconds_in_file() { grep -ao moof "$films"/*.mp4 | wc -l; }
has_seconds() { [ "$(seconds_in_file)" -ge "$1" ]; }

tell() { # FIELD of the film's stream
    ffprobe -v error -select_streams v -show_entries "stream=$1" -of csv=p=0 "$films"/*.mp4
}

# The slot of 1/30 s of each frame and the grey of its eight fields.
frames_of_film() { # FIELDS_ACROSS FIELDS_DOWN
    paste <(ffprobe -v error -show_entries packet=pts_time -of csv=p=0 "$films"/*.mp4 | tr -d ,) \
        <(ffmpeg -v error -nostdin -i "$films"/*.mp4 -vsync passthrough -vf "scale=$1:$2:flags=area,format=gray" \
            -f rawvideo - | od -An -v -tu1 -w8)
}

# Prints frames, repeated ones, pictures of the camera up to the last one, those of them that are left out, and frames
# that come late: by more than half a second against the others. The number of a frame never falls.
count_frames() { # FRAMES_PER_SECOND
    awk -v rate="$1" -v cycle="$cycle" '
        { number = 0
          for (i = 2; i <= 8; ++i) number = 2 * number + ($i > 128)
          for (i = 2; i <= 9; ++i) if ($i > 60 && $i < 195) unreadable = 1
          if ($9 < 195 || NF != 9) unreadable = 1
          step = NR == 1 ? 0 : (number - before + cycle) % cycle
          if (step > cycle / 2) backwards = 1
          if (NR > 1 && step == 0) ++repeated
          if (step > 1) lost += step - 1
          before = number
          sum += step
          behind[NR] = $1 * rate - sum
          if (NR == 1 || behind[NR] < least) least = behind[NR] }
        END { for (i = 1; i <= NR; ++i) late += behind[i] - least > rate / 2
              if (unreadable || backwards) exit 1
              print NR, repeated + 0, sum + 1, lost + 0, late + 0 }'
}

# What the program says of its last film: frames, repeated, dropped because the encoder was late.
figures() {
    sed -n 's/^record: \(.*\) frames, \(.*\) repeated, \(.*\) dropped, .*/\1 \2 \3/p' "$work/stdout" | tail -n 1
}

film_of_five_seconds() { # FRAMES_PER_SECOND SIZE FIELDS_ACROSS FIELDS_DOWN
    local frames repeated pictures lost late said_frames said_repeated dropped surplus
    begin_film
    await "five seconds of film" has_seconds 5
    click ButtonStop VideoRecord
    await "the question after the recording" is_there FolderOffer
    click buttonFinish FolderOffer
    await "the end of the window of the recording" is_gone VideoRecord
    [ "$(tell codec_name,width,height,r_frame_rate)" = "h264,$2,30/1" ] || fail "another kind of film"
    complaints
    read -r said_frames said_repeated dropped < <(figures)
    read -r frames repeated pictures lost late < <(frames_of_film "$3" "$4" | count_frames "$1") ||
        fail "the numbers cannot be read, or fall"
    say "$1 pictures a second: $frames frames, $repeated repeated, $lost pictures of $pictures left out," \
        "$dropped of them because the encoder was late; $late frames late"
    [ "$frames $repeated" = "$said_frames $said_repeated" ] ||
        fail "the program says: $said_frames frames, $said_repeated repeated"
    [ "$late" -eq 0 ] || fail "late frames"
    # Beyond 30 a second there is no place. A busy machine's camera thread does not take each picture either.
    surplus=$(($1 > 30 ? pictures - pictures * 30 / $1 : 0))
    [ $((lost - dropped - surplus)) -le $((pictures / 2)) ] || fail "most pictures are not in the film"
}

complaints() { ! ffmpeg -v error -nostdin -i "$films"/*.mp4 -f null - 2>&1 | grep . || fail "a damaged film"; }

killed_film() {
    local before after
    begin_film
    await "five seconds of film" has_seconds 5
    before=$(seconds_in_file)
    kill -KILL "$pid"
    { wait "$pid" || :; } 2>/dev/null
    complaints
    frames_of_film 8 1 >"$work/frames"
    count_frames 30 <"$work/frames" >"$work/count" || fail "the numbers cannot be read, or fall"
    after=$(awk '{ last = $1 } END { print int(last + 1) }' "$work/frames")
    say "killed with $before seconds in the file: a film of $after seconds"
    [ "$after" -ge $((before - 1)) ] || fail "more than the last second is lost"
}

start_with_camera() { # FRAMES_PER_SECOND
    make_desk_with "$1"
    prepare_home "$films"
    start_program
    await "the first picture" picture_painted
}

draw_numbers
start_virtual_display
for rate in 15 30 60; do
    start_with_camera "$rate"
    film_of_five_seconds "$rate" 800,600 8 1
    [ "$rate" -eq 60 ] || close_program
done
changing_view click_tool buttonRotateRight
film_of_five_seconds 60 600,800 1 8
close_program
start_with_camera 30
killed_film
