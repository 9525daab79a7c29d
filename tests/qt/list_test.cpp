// The list as it stands in the console.

#include "backends/qt/convert.h"
#include "qt_test.h"

#include <algorithm>

namespace kirolane::tests {

namespace {

constexpr int kRowsInView = 26;

class ListTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        m_list = Get<Listbox>("StrGrid").operator->();
        m_view = Find<QTableView>("Mainform", "StrGrid");
        Fill(0);
    }
    void Fill(int rows) {
        Do([&] {
            m_list->DeleteAllRows();
            for (int row = 0; row < rows; ++row) {
                m_list->AddRow("");
                m_list->SetCell(row, 1, "clip " + std::to_string(row) + ".mov");
            }
        });
    }
    [[nodiscard]] QPoint Middle(int row) const {
        return m_view->visualRect(m_view->model()->index(row, 1)).center();
    }
    void ClickAt(QPoint at) { Click(m_view->viewport(), at); }
    [[nodiscard]] int Highlit() const {
        const auto rows = m_view->selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.front().row();
    }

    Listbox* m_list = nullptr;
    QTableView* m_view = nullptr;
};

TEST_F(ListTest, StripesRunThroughRowsThatFillItAndTheSelectionCoversThem) {
    Fill(kRowsInView);
    EXPECT_EQ(m_view->viewport()->height() / m_view->rowHeight(0), kRowsInView);
    EXPECT_LE(m_view->visualRect(m_view->model()->index(25, 0)).bottom(), m_view->viewport()->height());
    EXPECT_EQ(m_view->viewport()->width(), 18 + 348 + 50);
    EXPECT_TRUE(m_view->verticalScrollBar()->isVisible());
    EXPECT_EQ(m_view->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("ファイル名"));
    const auto ground = [&](int row) {
        return m_view->viewport()->grab().toImage().pixelColor(340, Middle(row).y());
    };
    for (const int row : {0, 1, 24})
        EXPECT_EQ(ground(row), row % 2 == 0 ? QColor(237, 243, 254) : QColor(Qt::white));
    Do([&] { m_list->SetListIndex(1); });
    EXPECT_EQ(Highlit(), 1);
    EXPECT_NE(ground(1), QColor(Qt::white));
    EXPECT_EQ(ground(0), QColor(237, 243, 254));
}

TEST_F(ListTest, WhoFollowsTheModelsSignalsSeesWhatTheControlHolds) {
    const QAbstractItemModel* model = m_view->model();
    std::vector<QString> seen;
    const auto look = [&](int first, int last) {
        seen.resize(static_cast<std::size_t>(model->rowCount()));
        for (int row = first; row <= last; ++row)
            seen[static_cast<std::size_t>(row)] = model->index(row, 1).data().toString();
    };
    QObject::connect(model, &QAbstractItemModel::modelReset, [&] { look(0, model->rowCount() - 1); });
    QObject::connect(model, &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first, int last) { look(first, last); });
    QObject::connect(model, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& from, const QModelIndex& to) { look(from.row(), to.row()); });
    QHeaderView* heading = m_view->horizontalHeader();
    const auto sort = [&] { Click(heading->viewport(), QPoint(100, 10)); };
    const auto add = [&](const char* name) {
        m_list->AddRow("");
        m_list->SetCell(m_list->ListCount() - 1, 1, name);
    };
    const std::function<void()> steps[] = {
        [&] { Fill(3); },
        [&] { Do([&] { m_list->SetCell(1, 1, "●"); }); },
        [&] { Do([&] { add("last.mov"), m_list->SetCell(0, 1, "first.mov"); }); },
        sort,
        sort,
        [&] { Do([&] { add("\x82\xA0.mov"); }); }, // a name in another encoding
        [&] { Do([&] { m_list->DeleteAllRows(), add("one"); }); },
        [&] { Fill(kRowsInView + 1); },
        [&] { Do([&] { m_list->SetCell(25, 1, "in view"), m_list->SetListIndex(2); }); },
        [&] { Fill(0); },
    };
    int number = 0;
    for (const auto& step : steps) {
        SCOPED_TRACE(++number);
        step();
        ASSERT_EQ(static_cast<int>(seen.size()), m_list->ListCount());
        for (int row = 0; row < m_list->ListCount(); ++row)
            EXPECT_EQ(seen[static_cast<std::size_t>(row)], qt::ToText(m_list->Cell(row, 1)));
        EXPECT_EQ(heading->isSortIndicatorShown(), number >= 4 && number <= 6);
    }
}

TEST_F(ListTest, RowsThatComeInManySmallStepsAreAllThereInTheEnd) {
    for (int row = 0; row < 2000; ++row) {
        Do([&] { m_list->AddRow(std::to_string(row)); });
        if (row < kRowsInView) {
            EXPECT_EQ(m_view->model()->rowCount(), row + 1) << "rows in view are shown at once";
        }
    }
    EXPECT_TRUE(Until([&] { return m_view->model()->rowCount() == 2000; }));
    Do([&] { m_list->AddRow("last"), m_list->SetListIndex(2000); });
    EXPECT_EQ(Highlit(), 2000) << "a row that is selected is there at once";
}

TEST_F(ListTest, AClickSelectsADoubleClickOpensAndOneBesideTheRowsSelectsNone) {
    std::vector<int> selected;
    std::vector<int> opened;
    m_list->OnChange = [&] { selected.push_back(m_list->ListIndex()); };
    m_list->OnDoubleClick = [&] { opened.push_back(m_list->ListIndex()); };
    const QPoint beside(100, 200);
    Fill(5);
    ClickAt(Middle(3));
    ClickAt(beside);
    EXPECT_EQ(selected, (std::vector<int>{3, -1}));
    EXPECT_EQ(Highlit(), -1);
    for (const QPoint at : {Middle(4), beside}) {
        ClickAt(at);
        QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }
    EXPECT_EQ(opened, std::vector<int>{4});
    // As the program does it: a selection that is gone comes back at one end.
    m_list->OnChange = [&] {
        if (m_list->ListIndex() == -1)
            m_list->SetListIndex(0);
    };
    ClickAt(Middle(2));
    ClickAt(beside);
    EXPECT_EQ(m_list->ListIndex(), 0);
    EXPECT_EQ(Highlit(), 0);
}

TEST_F(ListTest, ArrowsStepWithEachRepeat) {
    Fill(40);
    Names keys;
    m_list->OnKeyDown = [&](const std::string& key) {
        keys.push_back(key);
        const int step = m_windows->KeyDown(124) ? 1 : m_windows->KeyDown(123) ? -1 : 0;
        m_list->SetListIndex(m_list->ListIndex() + step);
        return false;
    };
    Do([&] {
        m_list->SetListIndex(5);
        m_list->SetFocus();
    });
    const std::pair<Qt::Key, int> steps[] = {
        {Qt::Key_Down, 6}, {Qt::Key_Right, 7}, {Qt::Key_Left, 6}, {Qt::Key_Up, 5}};
    for (const auto& [key, row] : steps) {
        Press(key);
        EXPECT_EQ(m_list->ListIndex(), row);
    }
    EXPECT_EQ(keys, (Names{"down", "right", "left", "up"}));
    QWindow* window = QGuiApplication::focusWindow();
    QTest::keyPress(window, Qt::Key_Right);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window, &repeat);
    }
    EXPECT_EQ(m_list->ListIndex(), 9);
    QTest::keyRelease(window, Qt::Key_Right);
    EXPECT_FALSE(m_windows->KeyDown(124));
    Press(Qt::Key_End);
    EXPECT_EQ(m_list->ListIndex(), 39);
    EXPECT_EQ(Highlit(), 39);
    EXPECT_EQ(m_list->ScrollPosition(), 40 - kRowsInView);
}

TEST_F(ListTest, AssistiveToolsReadAndSelectCells) {
    Fill(3);
    auto* table = QAccessible::queryAccessibleInterface(m_view)->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->cellAt(2, 1)->text(QAccessible::Name), QStringLiteral("clip 2.mov"));
    EXPECT_TRUE(table->selectRow(1));
    EXPECT_TRUE(Until([&] { return m_list->ListIndex() == 1; }));
}

TEST_F(ListTest, OfALongListTheRowsInViewAloneAreShownAnew) {
    constexpr int kRows = 99999;
    Fill(kRows);
    int shown = 0;
    const QAbstractItemModel* model = m_view->model();
    QObject::connect(model, &QAbstractItemModel::modelReset, [&] { shown += kRows; });
    QObject::connect(
        model, &QAbstractItemModel::dataChanged,
        [&](const QModelIndex& from, const QModelIndex& to) { shown += to.row() - from.row() + 1; });
    Do([&] {
        for (int row = 0; row < kRows; ++row)
            m_list->SetCell(row, 0, "●");
    });
    EXPECT_TRUE(shown > 5 && shown <= kRowsInView + 1) << shown;
    Do([&] { m_list->SetListIndex(kRows - 1); });
    Settle();
    EXPECT_EQ(m_list->ScrollPosition(), kRows - kRowsInView);
    EXPECT_GT(Middle(kRows - 1).y(), 0);
}

} // namespace

} // namespace kirolane::tests
