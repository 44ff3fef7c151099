# The tour's fourth part: a receipt with everything on it, from the desk's printer.
# Source it after tour-documents.sh.

lay_printer() {
    lay_page 03-english-text.jpg
    echo 'printer = { paper = "paper"; };' >>"$work/page/desk.cfg"
    receipt=$work/page/paper/receipt-1.png
}

show_printer_button() {
    click btnMore
    await "the choice of buttons" is_there More
    click checkPrint
    await "the printer's button" is_there btnPrint
    click buttonClose More
    await "the choice's end" is_gone More
}

printer_is_open() { is_there buttonOpenDevice printer && ! is_enabled buttonOpenDevice printer; }

open_printer() {
    click btnPrint
    await "the printer's window" is_there printer
    click buttonScanDevices printer
    click comboDevices printer
    await "the printer in the list" is_there comboDevices.0
    xdotool key End Return # behind the real ones
    await "the end of the list" is_gone comboDevices.0
    click buttonOpenDevice printer
    await "the open printer" printer_is_open
    is_on_screen printer || fail "the printer's window is larger than the screen: $(is_on_screen printer)"
}

print_code() { # BUTTON DIALOG TEXT
    click "$1" printer
    await "the dialog $2" is_there "$2"
    click "$2"
    xdotool key ctrl+a
    xdotool type "$3"
    xdotool key Return
    await "the end of the dialog $2" is_gone "$2"
}

receipt_is_as_long_as() { [ "$(identify -format %h "$receipt")" -ge "$1" ]; }

print_everything() {
    click editText printer
    xdotool type "Table 7: 2 x tea"
    choose comboSize 1
    click checkBold printer
    click buttonText printer
    shoot printer
    click checkBold printer
    choose comboSize 0
    click buttonText printer
    print_code buttonBarcode PrintBarcode "{BShelf 42"
    print_code buttonQrCode PrintQRCode "Receipt 7, with thanks"
    click buttonPicture printer
    # In quotes, so that no proposals come, which would take the last key.
    choose_in_dialog "\"$(ls "$made_pictures"/portrait/*.jpg | head -n 1)\""
}

check_receipt() {
    local read
    await_picture "$receipt"
    await "the whole receipt" receipt_is_as_long_as 1070
    cp "$receipt" "$shots/receipt.png"
    command -v zbarimg >/dev/null || return 0
    read=$(zbarimg -q --raw "$shots/receipt.png")
    [ "$(sort <<<"$read")" = "$(printf 'Receipt 7, with thanks\nShelf 42')" ] || fail "the codes say: $read"
}

printing() {
    lay_printer
    start_over
    show_printer_button
    open_printer
    print_everything
    check_receipt
    click buttonCloseDevice printer
    await "the closed printer" is_enabled buttonOpenDevice printer
    close_program
}
