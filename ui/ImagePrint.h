#pragma once

class QImage;
class QPrinter;

/// Printing of one picture: as large as the page allows, in its own proportions, centred. Reentrant.
namespace ImagePrint {

/// Turns the page to the picture's orientation. Before the user sees the print dialog, so that it shows
/// there.
void orient(QPrinter& printer, const QImage& image);

/// @return false when the printer did not start or failed while the page was drawn
bool print(QPrinter& printer, const QImage& image);

} // namespace ImagePrint
