# What lasts longer than a moment: a bar says how far it has come, and cancels it. Source it after tour.sh's own
# functions, tour-scans.sh and tour-documents.sh.

# Fifty large pictures in the folder of captures, so that their PDF takes its time; in other folders some that have to
# be coded anew.
lay_many_pictures() {
    local i
    mkdir -p "$work/many" "$work/slow"
    for i in $(seq 10 59); do cp "$made_pictures/pictures/2592x1944/01-"*.jpg "$work/many/p$i.jpg"; done
    convert "$work/many/p10.jpg" -interlace PNG -quality 10 "$work/slow/p10.png"
    for i in $(seq 11 29); do cp "$work/slow/p10.png" "$work/slow/p$i.png"; done
}

begin_pdf_of_many() { # FILE
    click btnPdf "" 3
    await "the menu of the PDF button" is_there menu.0
    click menu.0
    choose_in_dialog "$(printf '"p%d.jpg" ' $(seq 10 59))"
    choose_in_dialog "$work/many/$1"
    await "the bar" is_there buttonCancelJob
}

no_pdf_is_left() { # nor half of one
    [ "$(ls -A "$work/many" | wc -l)" -eq 50 ] || fail "something is left: $(ls -A "$work/many")"
}

pages_of_the_dialog() {
    click btnPdfEx
    await "the dialog of several pages" is_there PdfEx
    click AddImages PdfEx
    choose_in_dialog "$(printf "\"$work/slow/p%d.png\" " $(seq 10 29))"
    await "the pages" pages_listed 19
    click Pdf PdfEx
    await "the bar" is_there buttonCancelJob PdfEx
    shoot progress-of-pages
    click buttonCancelJob PdfEx
    await "the end of the writing" is_enabled Pdf PdfEx
    shoot cancelled-pages
    is_there PdfEx >/dev/null || fail "the dialog went with the cancel"
    no_pdf_is_left
    click buttonClose PdfEx
    await "the dialog's end" is_gone PdfEx
}

window_progress() {
    local ordinary=$LUMRO_DESK
    close_program
    lay_many_pictures
    prepare_home "$work/many"
    start_over
    begin_pdf_of_many cancelled.pdf
    shoot progress-of-a-pdf
    begin_again_is_refused
    click buttonCancelJob
    await "the bar's end" is_gone buttonCancelJob
    shoot cancelled-pdf
    no_pdf_is_left
    begin_pdf_of_many whole.pdf
    await "the whole PDF" is_there buttonFinish
    click buttonFinish
    test -s "$work/many/whole.pdf" || fail "there is no PDF after a cancelled one"
    rm "$work/many/whole.pdf"
    begin_pdf_of_many abandoned.pdf
    close_program # in the middle
    no_pdf_is_left
    start_over
    pages_of_the_dialog
    close_program
    lay_page 04-chinese-text.jpg
    prepare_home "$shots"
    start_over
    click btnOcr
    await "the bar or the text" bar_or_text
    shoot progress-of-a-recognition
    await "the bar's end" is_gone buttonCancelJob
    await "the text" has_texts 1
    close_program
    export LUMRO_DESK=$ordinary
    prepare_home "$shots"
    start_over
}
bar_or_text() { is_there buttonCancelJob || has_texts 1; }

# By the menu, as the first time; the window says why nothing happens.
begin_again_is_refused() {
    click btnPdf "" 3
    await "the menu of the PDF button" is_there menu.0
    click menu.0
    sleep 0.5
    shoot second-pdf-refused
    is_gone fileNameEdit >/dev/null || fail "a second PDF is begun beside the first"
}
