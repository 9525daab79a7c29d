#include "backends/qt/convert.h"
#include "contract/movieplayer.h"
#include "contract/popupmenu.h"
#include "qt_test.h"

#include <algorithm>
#include <utility>

namespace kirolane::tests {

namespace {

using Rows = std::span<const ControlDesign>;

const ControlDesign* RowOf(Rows rows, std::string_view name) {
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.name == name; });
    return row == rows.end() ? nullptr : &*row;
}

/// 0 for what stands on every page.
int PageOf(Rows rows, const ControlDesign& row) {
    return row.page != 0 || row.parent.empty() ? row.page : PageOf(rows, *RowOf(rows, row.parent));
}

bool IsSeen(const ControlDesign& row) {
    return row.kind != ControlKind::Timer && row.kind != ControlKind::Thread;
}

std::vector<std::pair<const char*, QVariant>> Properties(const ControlDesign& row) {
    using enum ControlKind;
    const QString text = qt::ToText(row.text);
    const Qt::Alignment sides[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    const auto align = QVariant::fromValue(sides[static_cast<int>(row.textAlign)] | Qt::AlignVCenter);
    if (row.kind == StaticText || row.kind == EditField)
        return {{"text", text}, {"alignment", align}};
    if (row.kind == GroupBox)
        return {{"title", text}};
    if (row.kind == BevelButton || row.kind == CheckBox || row.kind == PushButton)
        return {{"text", text}, {"checked", row.value != 0}};
    // Of these a class knows some.
    return {{"minimum", row.minimum},
            {"maximum", row.maximum},
            {"value", row.value},
            {"pageStep", row.pageStep},
            {"singleStep", row.lineStep}};
}

class FormsTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        Do([] {
            Instance<MonitorShow>()->Show();
            Instance<MusicShow>()->Show();
            Instance<SettingShow>()->Show();
            Instance<AboutShow>()->Show();
        });
    }

    static void ExpectWindow(const Form& form) {
        const QWidget* window = Find(form.name);
        const auto* content = window->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        const WindowDesign& design = form.design;
        const bool plain = design.frame == WindowFrame::Plain;
        const bool palette = design.role == WindowRole::Palette;
        const auto has = [&](Qt::WindowType flag) { return window->windowFlags().testFlag(flag); };
        EXPECT_EQ(window->windowHandle()->title(), qt::ToText(design.title));
        EXPECT_EQ(content->size(), QSize(design.width, design.height));
        const QPalette usual = QApplication::palette();
        EXPECT_EQ(content->palette().color(QPalette::Window),
                  design.hasBackColor ? qt::ToQt(design.backColor) : usual.color(QPalette::Window));
        EXPECT_EQ(has(Qt::WindowCloseButtonHint), design.closeButton && !plain);
        EXPECT_EQ(has(Qt::WindowMinimizeButtonHint), design.minimizeButton && !plain);
        EXPECT_FALSE(has(Qt::WindowMaximizeButtonHint));
        EXPECT_EQ(has(Qt::FramelessWindowHint), plain);
        EXPECT_EQ(window->cursor().shape() == Qt::BlankCursor, plain);
        EXPECT_EQ(has(Qt::WindowDoesNotAcceptFocus), palette);
        const bool above = palette || design.frame == WindowFrame::FloatingTool;
        EXPECT_EQ(window->windowHandle()->transientParent(),
                  above ? Find("Mainform")->windowHandle() : nullptr);

        QStringList wanted;
        for (const ControlDesign& row : form.rows)
            if (IsSeen(row))
                wanted << qt::ToText(row.name);
        QStringList seen;
        for (const QObject* child : content->children())
            seen << child->objectName();
        EXPECT_EQ(seen, wanted) << "from back to front";
    }

    static void ExpectWidget(const Form& form, const ControlDesign& row, int page) {
        QWidget& widget = *Find(form.name, std::string(row.name));
        const int own = PageOf(form.rows, row);
        QRect place = qt::ToQt(row.rect);
        if (row.kind == ControlKind::MoviePlayer)
            place.setHeight(place.height() - MoviePlayer::kHiddenStrip);
        EXPECT_EQ(widget.geometry(), place);
        EXPECT_EQ(widget.isEnabled(), row.enabled);
        EXPECT_EQ(!widget.isHidden(), row.visible && (own == 0 || own == page));
        EXPECT_EQ(widget.accessibleDescription(), QString()) << "it would be read out";
        auto* spoken = QAccessible::queryAccessibleInterface(&widget);
        EXPECT_EQ(spoken->text(QAccessible::Name), qt::ToText(row.spoken.empty() ? row.text : row.spoken));
        EXPECT_TRUE(row.kind == ControlKind::StaticText || !spoken->text(QAccessible::Name).isEmpty());
        for (const auto& [name, wanted] : Properties(row))
            EXPECT_EQ(widget.metaObject()->indexOfProperty(name) < 0 ? wanted : widget.property(name), wanted)
                << name;
        EXPECT_EQ(widget.font().bold(), row.bold);
        if (row.kind == ControlKind::StaticText) {
            EXPECT_EQ(widget.palette().color(QPalette::Active, QPalette::WindowText),
                      qt::ToQt(row.textColor));
        }
        if (row.kind == ControlKind::Rectangle) {
            EXPECT_EQ(widget.grab().toImage().pixelColor(9, 9), qt::ToQt(row.fillColor));
        }
        QStringList parts;
        if (const auto* list = qobject_cast<QTableView*>(&widget)) {
            for (int column = 0; column < list->model()->columnCount(); ++column)
                parts << QString::number(list->columnWidth(column));
            EXPECT_EQ(parts.join(','), qt::ToText(row.columnWidths));
        } else if (const auto* tabs = widget.findChild<QTabBar*>()) {
            for (int tab = 0; tab < tabs->count(); ++tab)
                parts << tabs->tabText(tab);
            EXPECT_EQ(parts.join('\n'), qt::ToText(row.text));
        }
    }
};

TEST_F(FormsTest, EachWidgetIsWhatItsRowSays) {
    EXPECT_EQ(QFontInfo(Find("Mainform", "MaxTime")->font()).family(), QStringLiteral("IPAPGothic"));
    for (const Form& form : kForms) {
        SCOPED_TRACE(form.name);
        ExpectWindow(form);
        auto* tabs = Find(form.name)->findChild<QTabBar*>();
        for (int page = 1; page <= (tabs == nullptr ? 1 : 2); ++page) {
            if (tabs != nullptr)
                tabs->setCurrentIndex(page - 1);
            for (const ControlDesign& row : form.rows)
                if (IsSeen(row)) {
                    SCOPED_TRACE(row.name);
                    ExpectWidget(form, row, page);
                }
        }
    }
}

TEST_F(FormsTest, AWheelThatPassesOverChangesNothing) {
    Do([] {
        auto popup = Get<PopupMenu, SettingShow>("FreeSeek_Popup");
        for (const char* row : {"1分", "2分", "3分"})
            popup->AddRow(row);
        popup->SetListIndex(1);
    });
    for (const Form& form : kForms)
        for (QWidget* widget : Find(form.name)->findChildren<QWidget*>())
            for (const int turn : {-240, 240})
                for (const char* name : {"value", "currentIndex"}) {
                    widget->setEnabled(true);
                    const QVariant before = widget->property(name);
                    const QPointF at = widget->rect().center();
                    QWheelEvent wheel(at, widget->mapToGlobal(at), {}, {turn, turn}, {}, {}, {}, false);
                    QCoreApplication::sendEvent(widget, &wheel);
                    EXPECT_EQ(widget->property(name), before) << widget->objectName().toStdString();
                }
}

} // namespace

} // namespace kirolane::tests
