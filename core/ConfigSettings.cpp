#include "ConfigSettings.h"

#include <QFile>
#include <QSettings>

#include <cstdio>
#include <mutex>
#include <set>

namespace {

/// Paths, each of which is new once.
class Paths
{
public:
    bool isNew(const QString& path)
    {
        const std::lock_guard lock(mutex_);
        return known_.insert(path).second;
    }

private:
    std::mutex mutex_;
    std::set<QString> known_;
};

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
        static Paths used;
        if (used.isNew(settings_->fileName())) {
            settings_->allKeys(); // a file is parsed when it is read, and what is wrong with it
            settings_->sync();    // is told by the next synchronisation
            if (settings_->status() == QSettings::FormatError)
                rescueBrokenFile(settings_->fileName());
        }
    }
    return settings_;
}

void ConfigSettings::save()
{
    static Paths refused;
    QSettings& settings = *GetSettings();
    settings.sync();
    if (settings.status() == QSettings::AccessError && refused.isNew(settings.fileName()))
        std::fprintf(stderr,
                     "settings: %s cannot be written, changes are lost when the program ends\n",
                     qUtf8Printable(settings.fileName()));
}
