#include "ConfigSettings.h"

#include <QFile>
#include <QSettings>

#include <cstdio>

namespace {

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
        if (settings_->status() == QSettings::FormatError)
            rescueBrokenFile(settings_->fileName());
    }
    return settings_;
}
