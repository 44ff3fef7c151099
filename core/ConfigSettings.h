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

private:
    QSettings* settings_ = nullptr;
};
