# The restored window: resized and moved by its edges and its title, half as wide as a small screen, and the small
# tool bar of the drawn rectangle. Source it after desktop.sh and the tour's other parts.

main_place() { set -- $(line_of LumroScanner); echo "$2 $3 $4 $5"; }
# Within 3 px, because a scaled window has no place between its own points.
place_is() { # X Y WIDTH HEIGHT
    main_place | awk -v wanted="$*" '
        {split(wanted, want); for (i = 1; i <= 4; ++i) if ($i - want[i] > 3 || want[i] - $i > 3) exit 1}'
}
place_changes() { [ "$(main_place)" != "$1" ]; }
is_restored() { is_there edgeRight; }
is_maximised() { is_gone edgeRight; }

# drag_by NAME X Y DX DY: from a point of a widget, in thousandths of its size.
drag_by() {
    local at x=$2 y=$3 dx=$4 dy=$5
    middle_of "$1" LumroScanner >/dev/null || fail "$1 does not come to rest"
    set -- $(line_of "$1" LumroScanner)
    at="$(($2 + $4 * x / 1000)) $(($3 + $5 * y / 1000))"
    set -- $at
    xdotool mousemove "$1" "$2" mousedown 1
    local step # with pauses, in which the window manager takes the mouse over
    for step in 1 2 3 4; do
        sleep 0.4
        xdotool mousemove $(($1 + dx * step / 4)) $(($2 + dy * step / 4))
    done
    sleep 0.4
    xdotool mouseup 1
}

# resize_main WIDTH HEIGHT: in pixels of the screen, by its lower right corner.
resize_main() {
    set -- "$1" "$2" $(main_place)
    drag_by edgeRight 500 985 $(($1 - $5)) $(($2 - $6))
    await "a window of $1 x $2" place_is "$3" "$4" "$1" "$2"
}


window_frame() {
    local before scale=${QT_SCALE_FACTOR:-1}
    drag_by TitleBar 300 500 0 0
    xdotool click --repeat 2 --delay 60 1
    await "the restored window" is_restored
    shoot frame-restored
    before=$(main_place)
    drag_by TitleBar 300 500 -40 -30
    await "a window that has been moved" place_changes "$before"
    set -- $(main_place)
    drag_by edgeLeft 500 500 30 0
    await "a narrower window" place_is $(($1 + 30)) "$2" $(($3 - 30)) "$4"
    drag_by edgeTop 500 500 0 -20
    await "a higher window" place_is $(($1 + 30)) $(($2 - 20)) $(($3 - 30)) $(($4 + 20))
    before=$(awk -v scale="$scale" 'BEGIN {print int(683 * scale)}')
    resize_main "$before" "$4"
    show_tools
    shoot frame-half-width
    click buttonOverflow
    await "the other tools" is_there menu.0
    shoot frame-other-tools
    xdotool key Escape
    await "the end of the other tools" is_gone menu
    click_tool buttonManualDeskew
    await "the small bar" is_gone comboDevice
    shoot frame-drawing-bar
    before=$(middle_of buttonManualDeskew)
    xdotool mousemove $before mousedown 1 mousemove_relative 40 60 mousemove_relative 100 160
    await "the bar out of the way" is_under_the_title buttonManualDeskew
    shoot frame-rectangle-under-the-bar
    xdotool mouseup 1
    click_tool buttonManualDeskew
    await "the whole bar" is_there comboDevice
    drag_by TitleBar 300 500 0 0
    xdotool click --repeat 2 --delay 60 1
    await "the maximised window" is_maximised
}

is_under_the_title() { # also as far as nothing of it shows
    set -- $(line_of videoView) $(line_of "$1")
    [ $# -lt 14 ] || [ "${10}" -lt "$3" ]
}
