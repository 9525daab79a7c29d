// The reference of the start: an empty window of the console's size, linked to Qt's widgets alone. Ends
// with status 0 at its first paint.

#include "displays.h"

#include <QApplication>
#include <QWidget>

#include <unistd.h>

namespace {
class EmptyWindow : public QWidget {
protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QMetaObject::invokeMethod(
            this, [] { _exit(0); }, Qt::QueuedConnection);
    }
};
} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    kirolane::bench::Use(kirolane::bench::Displays::Desktop, argv[1]);
    QApplication application(argc, argv);
    EmptyWindow window;
    window.resize(800, 420);
    window.show();
    return QApplication::exec();
}
