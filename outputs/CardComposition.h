#pragma once

#include <QObject>
#include <QPixmap>

#include <functional>

class CaptureDesk;

/// Two captures become one picture, typically the front and the back of a card: one click each, then the pair
/// goes to the merge dialog. Between the two clicks the desk refuses every other capture and the preview's
/// tools are off. Lives as long as the program, and the first picture with it. GUI thread only.
class CardComposition : public QObject
{
    Q_OBJECT

public:
    /// Shows the pair to the user; a picture that could not be read back is null. `savePath` is where the
    /// merged picture may go.
    using ShowPair =
        std::function<void(const QPixmap& first, const QPixmap& second, const QString& savePath)>;

    /// `desk` is borrowed for the life of this object.
    CardComposition(CaptureDesk& desk, ShowPair show, QObject* parent = nullptr);

    /// Behind the composition buttons. A shot that fails leaves everything as it was. Clicks that come while
    /// a shot is being taken do nothing: an impatient user must not get the same side twice.
    void takeShot();
    /// Forgets the first picture; its file stays.
    void giveUp();
    bool isPending() const { return !first_.isNull(); } ///< the first picture waits for the second

Q_SIGNALS:
    void firstSideChanged(const QPixmap& first); ///< null: none waits any more

private:
    void takeSide();
    QString captureFile();
    void keepFirst(const QPixmap& first);
    void finish(const QPixmap& second);
    void setFirst(const QPixmap& first);

    CaptureDesk& desk_;
    ShowPair show_;
    QPixmap first_;
    bool isTaking_ = false;
};
