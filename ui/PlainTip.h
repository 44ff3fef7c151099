#pragma once

#include <QString>

/// What a tool tip must be given so that it shows `text` as it is. The toolkit takes a text with something
/// like a tag in it, as the name of a file may have, for markup, and leaves the tag out.
QString plainTip(const QString& text);
