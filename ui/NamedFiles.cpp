#include "NamedFiles.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int mostNames = 3;
constexpr int longestName = 24; // characters; the strip is no wider

QString shortened(const QString& name)
{
    const int half = longestName / 2;
    return name.size() <= longestName ? name : name.left(half - 1) + QChar(0x2026) + name.right(half);
}

} // namespace

QString namedFiles(const QStringList& paths)
{
    QStringList names;
    for (int i = 0; i < std::min(paths.size(), mostNames); ++i)
        names.append(shortened(QFileInfo(paths[i]).fileName()));
    QString text = names.join(QStringLiteral(", "));
    const int more = paths.size() - names.size();
    if (more == 0)
        return text;
    return QCoreApplication::translate("NamedFiles", "%1 and %n more", nullptr, more).arg(text);
}
