// Starts the program and ends with status 0 at the console's first paint. Its argument is the movie folder.

#include "app.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <unistd.h>

namespace {

/// Ends the process once the turn is over in which the console was painted.
class EndAtPaint : public QObject {
protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::Paint && widget != nullptr &&
            widget->window()->objectName() == QLatin1String("Mainform"))
            QMetaObject::invokeMethod(
                this, [] { _exit(0); }, Qt::QueuedConnection);
        return false;
    }
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const kirolane::bench::App app(argv[1], kirolane::bench::Displays::Desktop);
    EndAtPaint end;
    qApp->installEventFilter(&end);
    app.Until([] { return false; });
    return 1;
}
