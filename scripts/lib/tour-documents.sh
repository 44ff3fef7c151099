# The tour's third part: PDF, recognised text, codes and films of what lies before the camera.
# Source it after tour-scans.sh.

pdfs() { find "$shots" -name '*.pdf' | sort; }
has_pdfs() { [ "$(pdfs | wc -l)" -ge "$1" ]; }
await_pdf() { # NUMBER PAGES: the newest one
    local file
    await "PDF number $1" has_pdfs "$1"
    file=$(pdfs | tail -n 1)
    command -v pdfinfo >/dev/null || return 0
    [ "$(pdfinfo "$file" | sed -n 's/^Pages: *//p')" -eq "$2" ] || fail "${file##*/} does not have $2 pages"
}

one_page_pdf() {
    click btnPdf
    await_pdf 1 1
}

pages_listed() { is_there "QListWidget.$1" PdfEx; }

pages_pdf() {
    local page
    click btnPdfEx
    await "the dialog of several pages" is_there PdfEx
    for page in 0 1 2 3 4; do
        click Scanner PdfEx
        await "page $page in the list" pages_listed "$page"
    done
    shoot pages-of-a-pdf
    click Pdf PdfEx
    await "the end of the dialog" is_gone PdfEx
    await_pdf 2 5
}

choose_in_dialog() { # TEXT; the next dialog may look the same
    local dialog
    await "the file dialog" is_there fileNameEdit
    click fileNameEdit
    dialog=$(xdotool getactivewindow)
    xdotool key ctrl+a
    xdotool type --delay 1 "$1"
    xdotool key Return
    wait_for 3 window_gone "$dialog" || xdotool key Return # the first one may have ended the list of proposals
    await "the file dialog's end" window_gone "$dialog"
}
window_gone() { ! xwininfo -id "$1" | grep IsViewable; }

# One of the made pages under the main camera, for as long as the program runs.
lay_page() { # FILE
    mkdir -p "$work/page"
    cat >"$work/page/desk.cfg" <<END
real = false;
cameras = ( { name = "Desk camera"; type = 1; usb = "1b172000"; source = "$made_pictures/pictures/1600x1200/$1";
              fps = 15; resolutions = [ "1600x1200" ]; } );
END
    export LUMRO_DESK=$work/page/desk.cfg
}

texts() { find "$shots" -name '*.rtf' | sort; }
has_texts() { [ "$(texts | wc -l)" -ge "$1" ]; }

recognised_text() { # NUMBER PAGE WORDS: as the document spells them
    lay_page "$2"
    start_over
    click btnOcr
    sleep 0.3
    shoot "recognising-${2%.jpg}"
    await "the text of $2" has_texts "$1"
    grep -qF "$3" "$(texts | tail -n 1)" || fail "the text of $2 does not hold: $3"
    shoot "recognised-${2%.jpg}"
    close_program
}

# What the menu of the PDF button offers, and the text that a PDF has a little after it was made.
choose_of_pdfs() { # ENTRY SETTING
    local step
    click btnPdf "" 3
    await "the PDF button's menu" is_there menu.0
    [ "$1" -ne 2 ] || shoot pdf-menu
    for step in $(seq "$1"); do xdotool key Down; done
    xdotool key Return
    await "the choice $2" setting_is "$2" true
}
newest_pdf_says() { pdftotext "$(pdfs | tail -n 1)" - | grep -qF "$1"; }

searchable_pdf() {
    local before
    lay_page 03-english-text.jpg
    start_over
    choose_of_pdfs 2 Pdf_Text
    choose_of_pdfs 3 Pdf_Archive
    before=$(pdfs | wc -l)
    click btnPdf
    await_pdf $((before + 1)) 1
    sleep 1
    shoot text-of-a-pdf
    command -v pdftotext >/dev/null || return 0
    await "the text of the PDF" newest_pdf_says "The Ferryman's Ledger"
    pdfinfo -meta "$(pdfs | tail -n 1)" | grep -qF "<pdfaid:part>2" || fail "the PDF is not for archives"
    click btnPdfEx
    await "the dialog of several pages" is_there checkText PdfEx
    shoot choices-of-pages
    click checkText PdfEx
    await "the choice taken back" setting_is Pdf_Text false
    click checkArchive PdfEx
    await "the choice taken back" setting_is Pdf_Archive false
    close_program
}

clipboard_is() { [ "$(timeout 10 xclip -out -selection clipboard)" = "$1" ]; }

codes() {
    lay_page 11-codes.jpg
    start_over
    click btnBarcode
    await "the window of the codes" is_there BarCode
    shoot codes
    click buttonCopy BarCode
    await "the codes in the clipboard" copied_every_code
    click editCode BarCode
    xdotool key ctrl+a
    xdotool type "Shelf 42, edited"
    click buttonCopy BarCode
    await "the edited text in the clipboard" clipboard_is "Shelf 42, edited"
    shoot edited-code
    click buttonClose BarCode
    await "the end of the window of the codes" is_gone BarCode
    close_program
}
copied_every_code() {
    local copied text
    copied=$(timeout 10 xclip -out -selection clipboard) || return 1
    while IFS= read -r text; do
        [[ $copied == *"$text   "* ]] || return 1
    done < <(tail -n +2 "$made_pictures/codes.csv" | cut -d, -f6-)
}

films() { find "$shots" -name '*.mp4'; }
has_film() { [ -n "$(films)" ]; }
has_film_of() { [ "$(grep -ao moof "$(films | tail -n 1)" | wc -l)" -ge "$1" ]; } # SECONDS, while it is recorded

film() {
    local film
    lay_cards
    start_over
    click btnRecord
    await "the window of the recording" is_there VideoRecord
    await "a second of film" has_film_of 1
    shoot recording
    await "three seconds of film" has_film_of 3
    click ButtonStop VideoRecord
    await "the question after the recording" is_there FolderOffer
    shoot recorded
    click buttonFinish FolderOffer
    await "the end of the question" is_gone FolderOffer
    await "the end of the window of the recording" is_gone VideoRecord
    await "the film" has_film
    film=$(films | tail -n 1)
    shoot film-in-the-strip
    close_program
    command -v ffprobe >/dev/null || return 0
    ! ffmpeg -v error -nostdin -i "$film" -f null - 2>&1 | grep . || fail "${film##*/} is damaged"
    ffmpeg -v error -y -ss 2 -i "$film" -frames:v 1 "$shots/frame-of-the-film.png"
}

documents() {
    lay_cards
    start_over
    one_page_pdf
    pages_pdf
    close_program
    recognised_text 1 03-english-text.jpg "The Ferryman's Ledger"
    recognised_text 2 05-russian-text.jpg '\u1063?\u1072?\u1089?\u1099?' # the first word
    searchable_pdf
    codes
    film
}
