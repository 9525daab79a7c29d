#include "backends/qt/convert.h"
#include "qt_test.h"

namespace kirolane::tests {

namespace {

constexpr int kRowsInView = 26;

class ListTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        m_list = Get<Listbox>("StrGrid").operator->();
        m_view = Find<QTableView>("Mainform", "StrGrid");
        m_model = m_view->model();
        Fill(0);
    }
    void Fill(int rows) {
        Do([&] {
            m_list->DeleteAllRows();
            for (int row = 0; row < rows; ++row)
                Add("clip " + std::to_string(row) + ".mov");
        });
    }
    void Add(const std::string& name) {
        m_list->AddRow("");
        m_list->SetCell(m_list->ListCount() - 1, 1, name);
    }
    [[nodiscard]] QPoint Middle(int row) const { return m_view->visualRect(m_model->index(row, 1)).center(); }
    void ClickAt(QPoint at) { Click(m_view->viewport(), at); }
    [[nodiscard]] int Highlit() const {
        const auto rows = m_view->selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.front().row();
    }

    Listbox* m_list = nullptr;
    QTableView* m_view = nullptr;
    QAbstractItemModel* m_model = nullptr;
};

TEST_F(ListTest, StripesRunThroughRowsThatFillItAndTheSelectionCoversThem) {
    Fill(kRowsInView);
    const int height = m_view->viewport()->height();
    EXPECT_TRUE(m_view->visualRect(m_model->index(kRowsInView - 1, 0)).bottom() <= height &&
                height / m_view->rowHeight(0) == kRowsInView);
    EXPECT_EQ(m_view->viewport()->width(), 18 + 348 + 50);
    EXPECT_TRUE(m_view->verticalScrollBar()->isVisible());
    EXPECT_EQ(m_model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("ファイル名"));
    const auto ground = [&](int row) {
        return m_view->viewport()->grab().toImage().pixelColor(340, Middle(row).y());
    };
    for (const int row : {0, 1, 24})
        EXPECT_EQ(ground(row), row % 2 == 0 ? QColor(237, 243, 254) : QColor(Qt::white));
    Do([&] { m_list->SetListIndex(1); });
    EXPECT_NE(ground(1), QColor(Qt::white));
    EXPECT_EQ(ground(0), QColor(237, 243, 254));
}

TEST_F(ListTest, WhoFollowsTheModelsSignalsSeesWhatTheControlHolds) {
    std::vector<QString> seen;
    const auto look = [&](int first, int last) {
        seen.resize(static_cast<std::size_t>(m_model->rowCount()));
        for (int row = first; row <= last; ++row)
            seen[static_cast<std::size_t>(row)] = m_model->index(row, 1).data().toString();
    };
    QObject::connect(m_model, &QAbstractItemModel::modelReset, [&] { look(0, m_model->rowCount() - 1); });
    QObject::connect(m_model, &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first, int last) { look(first, last); });
    QObject::connect(m_model, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& from, const QModelIndex& to) { look(from.row(), to.row()); });
    QHeaderView* heading = m_view->horizontalHeader();
    const auto write = [&](std::initializer_list<int> rows) {
        for (const int row : rows)
            m_list->SetCell(row, 1, "written " + std::to_string(row));
    };
    const std::function<void()> steps[] = {
        [&] { Fill(3); },
        [&] { Do([&] { write({1}); }); },
        [&] { Do([&] {
                  Add("last.mov"), write({3, 1, 0, 2});
              }); },
        [&] { Press(Qt::Key_2, Qt::ControlModifier); },
        [&] { Click(heading->viewport(), QPoint(100, 10)); },
        [&] { Do([&] { Add("\x82\xA0.mov"); }); }, // a name in another encoding
        [&] { Do([&] { m_list->DeleteAllRows(), Add("one"); }); },
        [&] { Fill(kRowsInView + 1); },
        [&] { Do([&] { write({25}), m_list->SetListIndex(2); }); },
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
        EXPECT_TRUE(number != 4 || heading->sortIndicatorOrder() == Qt::AscendingOrder);
    }
}

TEST_F(ListTest, RowsThatComeInManySmallStepsAreAllThereInTheEnd) {
    for (int row = 0; row < 2000; ++row) {
        Do([&] { m_list->AddRow(std::to_string(row)); });
        EXPECT_TRUE(row >= kRowsInView || m_model->rowCount() == row + 1) << "rows in view are shown at once";
    }
    EXPECT_TRUE(Until([&] { return m_model->rowCount() == 2000; }));
    Do([&] { m_list->AddRow("last"), m_list->SetListIndex(2000); });
    EXPECT_EQ(Highlit(), 2000) << "a row that is selected is there at once";
}

TEST_F(ListTest, OfALongListTheRowsInViewAloneAreShownAnew) {
    constexpr int kRows = 99999;
    Fill(kRows);
    int shown = 0;
    QObject::connect(m_model, &QAbstractItemModel::modelReset, [&] { shown += kRows; });
    QObject::connect(
        m_model, &QAbstractItemModel::dataChanged,
        [&](const QModelIndex& from, const QModelIndex& to) { shown += to.row() - from.row() + 1; });
    Do([&] {
        for (int row = 0; row < kRows; ++row)
            m_list->SetCell(row, 0, "●");
    });
    EXPECT_TRUE(shown > 5 && shown <= kRowsInView + 1) << shown;
    Do([&] { m_list->SetListIndex(kRows - 1); });
    EXPECT_EQ(m_list->ScrollPosition(), kRows - kRowsInView);
    EXPECT_GT(Middle(kRows - 1).y(), 0);
}

TEST_F(ListTest, AClickSelectsADoubleClickOpensAndOneBesideTheRowsSelectsNone) {
    std::vector<int> selected;
    int opened = 0;
    m_list->OnChange = [&] { selected.push_back(m_list->ListIndex()); };
    m_list->OnDoubleClick = [&] { ++opened; };
    const QPoint beside(100, 200);
    Fill(5);
    ClickAt(Middle(3));
    ClickAt(beside);
    EXPECT_EQ(selected, (std::vector<int>{3, -1}));
    EXPECT_EQ(Highlit(), -1);
    for (const QPoint at : {Middle(4), beside}) {
        ClickAt(at);
        QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        EXPECT_EQ(opened, 1);
    }
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
    m_list->OnKeyDown = [&](const std::string& key) {
        EXPECT_EQ(m_windows->KeyDown(124), key == "right");
        EXPECT_EQ(m_windows->KeyDown(123), key == "left");
        m_list->SetListIndex(m_list->ListIndex() + (key == "right" ? 1 : key == "left" ? -1 : 0));
        return false;
    };
    Do([&] {
        m_list->SetListIndex(5);
        m_list->SetFocus();
    });
    const std::pair<Qt::Key, int> steps[] = {{Qt::Key_Down, 6}, {Qt::Key_Right, 7}, {Qt::Key_Left, 6},
                                             {Qt::Key_Up, 5},   {Qt::Key_End, 39},  {Qt::Key_Home, 0}};
    for (const auto& [key, row] : steps) {
        Press(key);
        EXPECT_EQ(m_list->ListIndex(), row);
    }
    QWindow* window = QGuiApplication::focusWindow();
    QTest::keyPress(window, Qt::Key_Right);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window, &repeat);
    }
    EXPECT_EQ(m_list->ListIndex(), 4);
    QTest::keyRelease(window, Qt::Key_Right);
    EXPECT_FALSE(m_windows->KeyDown(124));
}

} // namespace

} // namespace kirolane::tests
