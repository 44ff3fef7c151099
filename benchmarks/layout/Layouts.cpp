#include "Layouts.h"

#include "Pen.h"

const std::vector<Layout>& layouts()
{
    constexpr double a4w = 210, a4h = 297;
    static const std::vector<Layout> all = {
        {"plain text", false, a4w, a4h, layout::plainText},
        {"two columns, picture", true, a4w, a4h, layout::twoColumnsAroundPicture},
        {"two columns, narrow", true, a4w, a4h, layout::twoColumnsNarrowGutter},
        {"two columns, footnotes", true, a4w, a4h, layout::twoColumnsFootnotes},
        {"three columns", true, a4w, a4h, layout::threeColumns},
        {"newspaper", true, a4w, a4h, layout::newspaper},
        {"magazine", true, a4w, a4h, layout::magazine},
        {"captions", false, a4w, a4h, layout::captions},
        {"side notes", false, a4w, a4h, layout::sideNotes},
        {"table", false, a4w, a4h, layout::table},
        {"receipt", false, 80, 170, layout::receipt},
        {"form", false, a4w, a4h, layout::form},
        {"letter", false, a4w, a4h, layout::letter},
        {"sideways", false, a4w, a4h, layout::sideways},
        {"official", false, a4w, a4h, layout::official},
        {"stamped", false, a4w, a4h, layout::stamped},
        {"old typed", false, a4w, a4h, layout::oldTyped},
        {"feature", true, a4w, a4h, layout::feature},
        {"boxed feature", true, a4w, a4h, layout::boxed},
        {"paperback", false, 111, 178, layout::paperback},
        {"typescript", false, a4w, a4h, layout::typescript},
    };
    return all;
}

MadePage makePage(const Layout& layout, Tongue tongue, unsigned seed)
{
    Words words(tongue, seed);
    deskpictures::Sheet sheet(layout.widthMm, layout.heightMm);
    Pen pen(sheet, words);
    layout.draw(pen);
    return {layout.name, tongue, layout.hasColumns, deskpictures::finish(sheet), pen.readings()};
}
