#pragma once

#include <QLineEdit>

/// The field in which an entry of the strip gets another name: Enter or a click elsewhere takes it, Escape
/// leaves the old one. GUI thread only.
class EntryName : public QLineEdit
{
    Q_OBJECT

public:
    explicit EntryName(QWidget* parent);

    void begin(const QString& path, const QRect& place);
    /// The new name was not to be had: the field stays for another one, or, without the keyboard, goes.
    void refuse();
    QString path() const { return path_; } ///< empty while nothing is renamed
    void follow(const QString& newPath) { path_ = newPath; }
    void end();

Q_SIGNALS:
    void named(const QString& path, const QString& name);
    void ended(); ///< gives the keyboard back

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QString path_;
};
