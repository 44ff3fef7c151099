#pragma once

#include "Words.h"
#include "pages/Pages.h"

#include <string>
#include <vector>

class Pen;

/// A way in which a page is laid out.
struct Layout
{
    const char* name;
    bool hasColumns; ///< of running text beside each other
    double widthMm, heightMm;
    void (*draw)(Pen& pen); ///< in the order in which it is read
};

const std::vector<Layout>& layouts();

struct MadePage
{
    std::string layout;
    Tongue tongue;
    bool hasColumns;
    deskpictures::FlatPage page;
    QStringList readings; ///< the orders in which a person may read it
};

MadePage makePage(const Layout& layout, Tongue tongue, unsigned seed);

// The layouts, by what they are.
namespace layout {

void plainText(Pen& pen);
void oldTyped(Pen& pen);
void sideNotes(Pen& pen);
void twoColumnsAroundPicture(Pen& pen);
void twoColumnsNarrowGutter(Pen& pen);
void twoColumnsFootnotes(Pen& pen);
void threeColumns(Pen& pen);
void newspaper(Pen& pen);
void magazine(Pen& pen);
void captions(Pen& pen);
void table(Pen& pen);
void receipt(Pen& pen);
void form(Pen& pen);
void letter(Pen& pen);
void sideways(Pen& pen);
void official(Pen& pen);
void stamped(Pen& pen);
void feature(Pen& pen);
void boxed(Pen& pen);
void paperback(Pen& pen);
void typescript(Pen& pen);

} // namespace layout
