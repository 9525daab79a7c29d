#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "backends/qt/reporting.h"
#include "contract/pushbutton.h"

#include <QPushButton>

namespace kirolane::qt {

namespace {

class PushButtonPeer final : public ControlPeer {
public:
    PushButtonPeer(PushButton& button, QWidget& content) : ControlPeer(button) {
        auto* widget = new Reporting<QPushButton>(GetLink(), ToPlainText(button.Caption()), &content);
        widget->setFont(FontOf(button.Design()));
        widget->setFocusPolicy(Qt::NoFocus);
        QObject::connect(widget, &QAbstractButton::clicked, widget, [link = GetLink()] {
            if (auto* pressed = link.As<PushButton>())
                pressed->ReportClick();
        });
        Adopt(*widget);
    }

private:
    void UpdateOwn() override {}
    [[nodiscard]] QString SpokenName() const override { return ToText(Held<PushButton>().Caption()); }
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(PushButton& button, QWidget& content) {
    return std::make_unique<PushButtonPeer>(button, content);
}

} // namespace kirolane::qt
