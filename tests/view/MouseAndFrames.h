#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

inline QImage plain(const QSize& size, const QColor& colour)
{
    QImage image(size, QImage::Format_RGB888);
    image.fill(colour);
    return image;
}

/// The simulated mouse of the toolkit moves the cursor only; a drag needs the events themselves.
inline void
mouse(QWidget& widget, QEvent::Type type, const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type,
                      at,
                      isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

/// Pixels that count their users.
inline QImage loan(std::atomic<int>& lent, uchar value)
{
    constexpr int side = 32;
    auto* pixels = new std::vector<uchar>(side * side * 3, value);
    ++lent;
    struct Loan
    {
        std::vector<uchar>* pixels;
        std::atomic<int>* lent;
    };
    const auto giveBack = [](void* info) {
        const std::unique_ptr<Loan> l(static_cast<Loan*>(info));
        std::fill(l->pixels->begin(), l->pixels->end(), uchar(1)); // whoever still paints it shows it
        delete l->pixels;
        --*l->lent;
    };
    return QImage(
        pixels->data(), side, side, side * 3, QImage::Format_RGB888, giveBack, new Loan{pixels, &lent});
}
