#include "PlainTip.h"

#include <QTextDocument>

QString plainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}
