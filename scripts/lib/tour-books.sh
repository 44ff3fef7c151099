# The tour's part about books: an open one becomes two flat pages.
# Source it after tour-documents.sh.

lay_book() {
    mkdir -p "$work/book"
    cat >"$work/book/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; source = "$made_pictures/pictures/2592x1944/12-book.jpg";
              fps = 10; resolutions = [ "2592x1944" ]; } );
END
    export LUMRO_DESK=$work/book/desk.cfg
}

# A box is ticked by its mark or its words, which may end before its middle.
tick() { # NAME WINDOW
    await "$1" middle_of "$1" "$2"
    xdotool mousemove $(set -- $(line_of "$1" "$2"); echo $(($2 + 12)) $(($3 + $5 / 2))) click 1
}

# The guide line along the spine, and one file a page.
choose_both_pages() {
    open_settings Image
    setting_is Book_Line true || tick checkBookLine ConfigSet
    await "the guide line" setting_is Book_Line true
    tick checkDoublePage ConfigSet
    shoot book-settings
    close_settings
}

book_spread() {
    local before left right page
    lay_book
    start_over
    choose_both_pages
    shoot open-book
    before=$(pictures_taken)
    click btnBookscan
    await_pictures 3 "$before" # the frame as it is, then the pages
    await "the left page in the strip" is_there QListWidget.0
    shoot flat-pages
    left=$(ls "$shots"/IMAGE_*.jpg | tail -n 2 | head -n 1)
    right=$(ls "$shots"/IMAGE_*.jpg | tail -n 1)
    cp "$left" "$shots/book-left.jpg"
    cp "$right" "$shots/book-right.jpg"
    for page in "$left" "$right"; do
        [ "$(identify -format '%[fx:h>w]' "$page")" = 1 ] || fail "${page##*/} is no upright page"
    done
    close_program
}
