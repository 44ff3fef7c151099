#pragma once

#include <QObject>

class QSettings;

/// Owns the store of all preferences: one INI file per user. Every instance addresses the same file and sees
/// the others' writes at once. Reentrant: each thread uses an instance of its own.
class ConfigSettings : public QObject
{
    Q_OBJECT

public:
    explicit ConfigSettings(QObject* parent = nullptr);
    ~ConfigSettings() override;

    /// The store, made at the first call; never null, owned by this object. A file that cannot be parsed is
    /// copied beside itself (".broken") before anything is written, and named on standard error.
    QSettings* GetSettings();
    /// Writes what has changed into the file, at once. When that is not possible, which is named on standard
    /// error the first time, the changes hold until the program ends.
    void save();

private:
    QSettings* settings_ = nullptr;
};
