# After the capture: a listed picture is turned, renamed, cropped and put back as it was; several are chosen and dragged
# onto the pages of a PDF, where a line shows how they are put into another order.

# Where the middle of an entry is, and what lies DX DY beside it.
beside_entry() { # NUMBER [DX [DY]]
    local at
    await "entry $1" is_there "QListWidget.$1"
    at=$(middle_of "QListWidget.$1") || fail "entry $1 does not come to rest"
    set -- $at "${2:-0}" "${3:-0}"
    echo $(($1 + $3)) $(($2 + $4))
}

click_on_bar() { # NUMBER BUTTON
    local at
    at=$(beside_entry "$1" 0 20)
    xdotool mousemove $at mousemove_relative 2 2
    await "the bar over entry $1" is_there "$2" LumroScanner
    click "$2" LumroScanner
}

is_wide() { [ "$(identify -format '%w' "$1")" -gt "$(identify -format '%h' "$1")" ]; }
is_tall() { ! is_wide "$1" && [ -s "$1" ]; }
looks_again() { cmp -s "$1" "$work/original.jpg"; }
is_smaller() { [ "$(identify -format '%w' "$1")" -lt "$2" ]; }
has_line() { # from the very edge of the list of pages, where no entry begins
    set -- $(line_of QListWidget PdfEx)
    import -window root -depth 8 -crop "3x$5+$2+$3" +repage txt:- | grep -i '#FFD54F' >/dev/null
}

# The press is first held back, in case it is the begin of a scroll; held too long it would open the menu.
drag_slowly() { # FROM-X FROM-Y TO-X TO-Y
    local step
    xdotool mousemove "$1" "$2" mousedown 1
    sleep 0.3
    for step in 1 2 3; do
        xdotool mousemove_relative -- -12 0
        sleep 0.08
    done
    xdotool mousemove "$3" "$4"
    sleep 0.3
    xdotool mousemove_relative 1 1 mousemove_relative 1 1
    sleep 0.3
}

window_afterwards() {
    local first=$shots/IMAGE_000.jpg width
    rm -f "$shots"/IMAGE_*.jpg
    capture btnScanner IMAGE_000.jpg
    capture btnScanner IMAGE_001.jpg
    await "two entries" is_there QListWidget.1
    is_wide "$first" || fail "the desk's picture is not wide"
    cp "$first" "$work/original.jpg"

    click_on_bar 0 entryTurnRight
    await "a turned picture" is_tall "$first"
    shoot entry-bar
    click_on_bar 0 entryUndo
    await "the picture as it was" looks_again "$first"

    click QListWidget.0 LumroScanner
    xdotool key F2
    await "the field for a name" is_there entryName
    xdotool type --delay 30 "Invoice"
    shoot entry-name
    xdotool key Return
    await "the new name" test -s "$shots/Invoice.jpg"
    xdotool key ctrl+z
    await "the old name" test -s "$first"

    width=$(identify -format %w "$first")
    xdotool key c
    await "the crop" is_there CropDialog
    await "the picture in it" is_there corner0 CropDialog
    await "all of it on the screen" is_on_screen CropDialog
    shoot crop
    xdotool key Return
    await "the cropped picture" is_smaller "$first" "$width"
    xdotool key ctrl+z
    await "the uncropped picture" looks_again "$first"

    click QListWidget.0 LumroScanner
    xdotool keydown ctrl
    click QListWidget.1 LumroScanner
    xdotool keyup ctrl
    shoot several-selected
    onto_pages
    rm -f "$shots"/IMAGE_*.jpg
    await "the entries' end" is_gone QListWidget.0
}

# The window of the PDF lies over the preview, on a small screen over most of the strip too.
onto_pages() {
    local entry
    click btnPdfEx
    await "the pages of a PDF" is_there PdfEx
    entry=$(set -- $(line_of QListWidget.0 LumroScanner); echo $(($2 + $4 * 9 / 10)) $(($3 + $5 / 2)))
    drag_slowly $entry $(middle_of QListWidget PdfEx)
    shoot dragged-files
    xdotool mouseup 1
    await "both pages" is_there QListWidget.1 PdfEx
    drag_slowly $(middle_of QListWidget.0 PdfEx) $(middle_of QListWidget.1 PdfEx)
    await "the line where the page would fall" has_line
    shoot pages-in-order
    xdotool mouseup 1
    click buttonClose PdfEx
    await "the end of the pages" is_gone PdfEx
}
