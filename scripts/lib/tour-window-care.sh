# What holds for every window: clicks beside it do not bury it, Escape asks before work is lost; files are chosen in
# the folder of the captures, in the frame of the other windows.

window_care() {
    click btnMore
    await "the choice of buttons" is_there More
    xdotool mousemove $(middle_of TitleBar LumroScanner) click 1
    shoot window-care-not-buried
    xdotool key Escape
    await "the choice's end" is_gone More

    click btnPdfEx
    await "the pages' window" is_there PdfEx
    click Scanner
    await "a page" is_there QListWidget.0 PdfEx
    click AddImages
    await "the choice of files" is_there QFileDialog
    shoot window-care-files
    xdotool key Escape
    await "the end of the choice of files" is_gone QFileDialog
    xdotool key Escape
    await "the question" is_there buttonCancel MsgBox
    shoot window-care-question
    click_away buttonOkSecond MsgBox
    await "the end of the pages' window" is_gone PdfEx
}
