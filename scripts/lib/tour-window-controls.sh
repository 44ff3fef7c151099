# The camera's controls: the panel over the preview's edge, a darker picture, a focus by a click, all as delivered.

controls_of_camera() { # NAME: one camera's kept value
    grep -A 20 '^\[Camera_desk' "$XDG_CONFIG_HOME/lumro/lylumroscanner.ini" | sed -n "s/^$1=//p" | head -n 1
}
is_kept() { [ "$(controls_of_camera "$1")" = "$2" ]; }
is_put_back() { ! grep -q '^\[Camera_desk' "$XDG_CONFIG_HOME/lumro/lylumroscanner.ini"; }
# On a low screen the panel scrolls: until another turn shows no more of it.
scroll_to() { # NAME WHEEL-BUTTON
    local turn now height=
    for turn in $(seq 40); do
        now=$(line_of "$1" | awk '{print $5}')
        [ -z "$now" ] || [ "$now" != "$height" ] || return 0
        height=$now
        xdotool mousemove $(middle_of ControlPanel) click "$2"
        sleep 0.3
    done
    fail "the panel does not scroll to $1"
}
is_disabled() { line_of "$1" | grep -q ' 0$'; }

window_controls() {
    click buttonControls
    await "the camera's controls" is_there sliderFocus
    await "the panel at rest" middle_of ControlPanel
    scroll_to sliderBrightness 5
    shoot controls
    click sliderBrightness
    xdotool key Home
    await "the kept brightness" is_kept Brightness -64
    changing_view :
    shoot controls-dark
    scroll_to checkFocus 4
    click checkFocus
    await "the focus by hand" is_enabled sliderFocus
    click sliderFocus
    xdotool key Home
    await "the kept focus" is_kept Focus 0
    changing_view :
    shoot controls-unsharp
    xdotool mousemove $(point_in_view 420 380) click 1
    await "the found focus" is_kept Focus 120
    changing_view :
    shoot controls-focused
    click buttonAsDelivered
    await "nothing kept" is_put_back
    await "the automatic focus" is_disabled sliderFocus
    click buttonCloseControls
    await "the end of the panel" is_gone ControlPanel
    shoot controls-closed
}
