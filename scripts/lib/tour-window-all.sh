# Every window once: it comes, shows all that it has on the screen, and goes with Escape.

opens_whole() { # BUTTON WINDOW
    click "$1"
    await "$2" is_there "$2"
    await "$2 at rest" middle_of "$2"
    await "all of $2 on the screen" is_on_screen "$2"
    shoot "window-$2"
    xdotool key Escape
    await "the end of $2" is_gone "$2"
}

window_all() {
    is_on_screen LumroScanner || fail "the main window is larger than the screen: $(is_on_screen LumroScanner)"
    opens_whole btnMore More
    opens_whole setting ConfigSet
    opens_whole btnPdfEx PdfEx
    opens_whole btnAutoScanner AutoScan
}
