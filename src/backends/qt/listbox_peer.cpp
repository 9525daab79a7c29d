#include "backends/qt/controlpeers.h"
#include "backends/qt/listview.h"
#include "backends/qt/reporting.h"
#include "contract/listbox.h"

namespace kirolane::qt {

namespace {

class ListboxPeer final : public ControlPeer {
public:
    ListboxPeer(Listbox& list, QWidget& content) : ControlPeer(list) {
        m_view = new Reporting<ListView>(GetLink(), GetLink(), &content);
        Adopt(*m_view);
    }

private:
    void UpdateOwn() override { m_view->UpdateControl(); }

    ListView* m_view;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(Listbox& list, QWidget& content) {
    return std::make_unique<ListboxPeer>(list, content);
}

} // namespace kirolane::qt
