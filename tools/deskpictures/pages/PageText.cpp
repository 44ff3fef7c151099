#include "Pages.h"

#include <QFile>

#include <stdexcept>

namespace deskpictures {

QStringList pageText(const QString& name)
{
    QFile file(QStringLiteral(":/texts/%1.txt").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the text \"" + name.toStdString() + "\" is not in the program");
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

FlatPage finish(Sheet& sheet)
{
    return {sheet.take(), sheet.widthMm(), sheet.heightMm()};
}

} // namespace deskpictures
