#include "ConfigSettings.h"

#include <QFile>
#include <QSettings>

#include <cstdio>
#include <mutex>
#include <set>

namespace {

/// True at the first call with this path.
bool isFirstUse(const QString& path)
{
    static std::mutex mutex;
    static std::set<QString> used;
    const std::lock_guard lock(mutex);
    return used.insert(path).second;
}

void rescueBrokenFile(const QString& path)
{
    const QString copy = path + QStringLiteral(".broken");
    QFile::remove(copy);
    const bool copied = QFile::copy(path, copy);
    std::fprintf(stderr,
                 "settings: %s cannot be parsed, defaults are used where it is unreadable; %s %s\n",
                 qUtf8Printable(path),
                 copied ? "the file was copied to" : "no copy could be made as",
                 qUtf8Printable(copy));
}

} // namespace

ConfigSettings::ConfigSettings(QObject* parent) : QObject(parent) {}

ConfigSettings::~ConfigSettings()
{
    delete settings_;
}

QSettings* ConfigSettings::GetSettings()
{
    if (!settings_) {
        settings_ = new QSettings(QSettings::IniFormat,
                                  QSettings::UserScope,
                                  QStringLiteral("lumro"),
                                  QStringLiteral("lylumroscanner"));
        if (isFirstUse(settings_->fileName())) {
            settings_->allKeys(); // a file is parsed when it is read, and what is wrong with it
            settings_->sync();    // is told by the next synchronisation
            if (settings_->status() == QSettings::FormatError)
                rescueBrokenFile(settings_->fileName());
        }
    }
    return settings_;
}
