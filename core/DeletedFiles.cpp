#include "DeletedFiles.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

constexpr int mostAttempts = 100;

void complain(const char* what, const QString& path, int error)
{
    const QString reason = qt_error_string(error);
    std::fprintf(stderr, "cannot %s %s: %s\n", what, qUtf8Printable(path), qUtf8Printable(reason));
}

/// "page (2).jpg"
QString numbered(const QString& path, int number)
{
    const QFileInfo file(path);
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    return QStringLiteral("%1/%2 (%3)%4")
        .arg(file.absolutePath(), file.completeBaseName(), QString::number(number), suffix);
}

} // namespace

bool DeletedFiles::take(const QString& path)
{
    HiddenFile file;
    const int error = file.hide(path);
    if (error == 0)
        taken_.push_back({path, std::move(file)});
    else
        complain("delete", path, error);
    return error == 0;
}

QString DeletedFiles::putBack(const QString& path)
{
    const auto file =
        std::find_if(taken_.rbegin(), taken_.rend(), [&](const Taken& taken) { return taken.path == path; });
    if (file == taken_.rend())
        return {};
    QString place = path;
    int error = file->file.bringBack(place);
    for (int number = 2; error == EEXIST && number <= mostAttempts; ++number) {
        place = numbered(path, number);
        error = file->file.bringBack(place);
    }
    if (error != 0) {
        complain("bring back", path, error);
        return {};
    }
    taken_.erase(std::prev(file.base()));
    return place;
}
