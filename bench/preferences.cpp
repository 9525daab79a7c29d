#include "app.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "contract/implicit_instance.h"
#include "logic/settings/settingform.h"
#include "logic/shell/mainform.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include <memory>

namespace kirolane::bench {

namespace {

/// Sees the first paint of a window of that name.
class FirstPaint : public QObject {
public:
    FirstPaint() { qApp->installEventFilter(this); }
    void Await(const char* window) {
        m_window = QLatin1String(window);
        m_seen = false;
    }
    [[nodiscard]] bool Seen() const { return m_seen; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && object->isWidgetType())
            m_seen = m_seen || static_cast<QWidget*>(object)->window()->objectName() == m_window;
        return false;
    }

private:
    QLatin1String m_window;
    bool m_seen = false;
};

QWidget* FindWindow(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == QLatin1String(name))
            return window;
    return nullptr;
}

/// The toolkit's own control of the same kind.
QWidget* PlainTwin(const QWidget& control, QWidget* parent) {
    if (const auto* box = qobject_cast<const QCheckBox*>(&control))
        return new QCheckBox(box->text(), parent);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control))
        return new QLineEdit(edit->text(), parent);
    if (const auto* popup = qobject_cast<const QComboBox*>(&control)) {
        auto* twin = new QComboBox(parent);
        for (int i = 0; i < popup->count(); ++i)
            twin->addItem(popup->itemText(i));
        return twin;
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return new QPushButton(button->text(), parent);
    return new QLabel(control.accessibleName(), parent);
}

/// A window of the toolkit with as many controls of the same kinds in the same places.
std::unique_ptr<QWidget> PlainWindow(const QWidget& form) {
    auto window = std::make_unique<QWidget>();
    window->setObjectName(QStringLiteral("Plain"));
    window->resize(form.size());
    for (const QWidget* control : form.findChildren<QWidget*>())
        if (!control->accessibleDescription().isEmpty()) // a control carries its name there
            PlainTwin(*control, window.get())
                ->setGeometry({control->mapTo(&form, QPoint()), control->size()});
    return window;
}

} // namespace

std::vector<Row> MeasurePreferences(const Inputs& /*inputs*/) {
    ::setenv("KIROLANE_NAMES", "1", 1);
    const MemoryFolder memory;
    const App app(memory.MakeFiles("few", 26));
    app.UntilScanned();
    FirstPaint paint;
    Samples form;
    Samples plain;
    std::size_t controls = 0;
    for (int run = 0; run < kRuns; ++run) {
        paint.Await("SettingForm");
        const StopWatch watch;
        app.Deliver([&] { app.Console().SettingFormShow_Action(); });
        app.Until([&] { return paint.Seen(); });
        form.Add(watch.Milliseconds());

        const QWidget& shown = *FindWindow("SettingForm");
        paint.Await("Plain");
        const StopWatch plainWatch;
        const auto window = PlainWindow(shown);
        window->show();
        app.Until([&] { return paint.Seen(); });
        plain.Add(plainWatch.Milliseconds());
        controls = static_cast<std::size_t>(window->children().size());

        app.Deliver([] { Instance<SettingForm>()->Close(); });
        app.For(50);
    }
    Row row = RatioRow("open preferences / plain window", form, plain, "ms", 2.0);
    row.reference += ", " + std::to_string(controls) + " controls";
    return {row};
}

} // namespace kirolane::bench
