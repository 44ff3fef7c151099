# The tour's part about identity cards: a card that is laid on the reader is read by itself, and saved twice.
# Source it after tour-scans.sh.

card_portrait() { md5sum "$TMPDIR/elphoto.bmp"; }
other_portrait() { [ -s "$TMPDIR/elphoto.bmp" ] && [ "$(card_portrait)" != "$1" ]; }
lay_card() { # NAME: on the reader, and waits until it has been read
    local before
    before=$(card_portrait 2>/dev/null) || before=none
    cp "$made_pictures/cards/$1".* "$work/idcard/cards"
    touch "$work/idcard/cards/$1.cfg"
    await "the card $1" other_portrait "$before"
    sleep 0.3 # until it is painted
    shoot "card-$1"
}
card_rows() { [ "$(grep -c 000000199001010028 "$shots/cardinfo.cvs")" -eq "$1" ]; }

id_cards() {
    local portrait=$shots/000000199001010028.jpg info=$shots/cardinfo.cvs row
    expected_messages='^"[^"]*/cardinfo\.cvs"$' # where the row goes
    rm -rf "$portrait" "$info" "$work/idcard"
    mkdir -p "$work/idcard/cards"
    cat >"$work/idcard/desk.cfg" <<END
real = false;
idcard = { cards = "cards"; };
END
    export LUMRO_DESK=$work/idcard/desk.cfg
    start_program
    click btnReadIdCard
    await "the window of identity cards" is_there IdCardReader
    shoot no-card
    lay_card resident
    for row in 1 2; do
        click buttonSave IdCardReader
        await "row $row" card_rows "$row"
    done
    shoot card-saved
    [ "$(head -n 1 "$info")" = $'姓名,性别,民族,出生,住址,公民身份号码,签发机关,有效期限\r' ] ||
        fail "${info##*/} does not begin with its header"
    [ "$(sed -n 2p "$info")" = "$(sed -n 3p "$info")" ] && [ "$(wc -l <"$info")" -eq 3 ] ||
        fail "${info##*/} does not hold the card twice"
    [ "$(size_of "$portrait")" = 102x126 ] || fail "the portrait is not that of the card"
    [ "$(stat -c %a "$info" "$portrait" "$TMPDIR/elphoto.bmp" | sort -u)" = 600 ] || fail "others may read the card"
    lay_card residence
    lay_card foreigner
    lay_card other
    click buttonClose IdCardReader
    await "the end of the window of identity cards" is_gone IdCardReader
    wait_for "$patience" test ! -e "$TMPDIR/elphoto.bmp" || fail "the portrait stays behind"
    close_program
    expected_messages=
}
