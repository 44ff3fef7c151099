// The least that a program with a window can do: the limit of the start.
#include <QApplication>
#include <QPaintEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {

class Window : public QWidget
{
    void paintEvent(QPaintEvent*) override
    {
        QTimer::singleShot(0, this, [] {
            std::puts("first picture painted");
            std::fflush(stdout);
        });
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    Window window;
    window.showMaximized();
    return QApplication::exec();
}
