// The list as it stands in the console.

#include "contract/listbox.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QAbstractItemModel>
#include <QAccessible>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

namespace kirolane::tests {

namespace {

using Rows = std::vector<int>;

class ListTest : public QtTest {
protected:
    void SetUp() override {
        m_console = StartWith<ConsoleShow>();
        m_list = m_console->Control<Listbox>("StrGrid").operator->();
        m_view = Find<QTableView>("Mainform", "StrGrid");
        m_list->OnChange = [this] { m_changes.push_back(m_list->ListIndex()); };
    }
    void Fill(int rows) {
        Do([&] {
            m_list->DeleteAllRows();
            for (int row = 0; row < rows; ++row) {
                m_list->AddRow("");
                m_list->SetCell(row, 1, "clip " + std::to_string(row) + ".mov");
            }
        });
        m_changes.clear();
    }
    [[nodiscard]] QPoint Middle(int row) const {
        return m_view->visualRect(m_view->model()->index(row, 1)).center();
    }
    void Click(QPoint at) { QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at); }
    [[nodiscard]] int Highlit() const {
        const auto rows = m_view->selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.front().row();
    }
    [[nodiscard]] QString Shown(int row, int column) const {
        return m_view->model()->index(row, column).data().toString();
    }

    Ref<ConsoleShow> m_console;
    Listbox* m_list = nullptr;
    QTableView* m_view = nullptr;
    Rows m_changes;
};

TEST_F(ListTest, TwentySixRowsAndThreeColumnsFillIt) {
    EXPECT_EQ(m_view->viewport()->height() / m_view->rowHeight(0), 26);
    EXPECT_LE(m_view->visualRect(m_view->model()->index(25, 0)).bottom(), m_view->viewport()->height());
    EXPECT_EQ(m_view->viewport()->width(), 18 + 348 + 50);
    EXPECT_TRUE(m_view->verticalScrollBar()->isVisible());
}

TEST_F(ListTest, StripesRunThroughBlankRowsAndTheSelectionCoversThem) {
    const auto ground = [&](int row) { return m_view->viewport()->grab().toImage().pixelColor(Middle(row)); };
    EXPECT_EQ(ground(0), QColor(237, 243, 254));
    EXPECT_EQ(ground(1), QColor(255, 255, 255));
    EXPECT_EQ(ground(24), QColor(237, 243, 254));
    Do([&] { m_list->SetListIndex(1); });
    EXPECT_EQ(Highlit(), 1);
    EXPECT_NE(ground(1), QColor(255, 255, 255));
    EXPECT_EQ(ground(0), QColor(237, 243, 254));
}

TEST_F(ListTest, ShowsRowsAsTheyAreWritten) {
    Fill(3);
    EXPECT_EQ(m_view->model()->rowCount(), 3);
    Do([&] {
        m_list->SetCell(1, 0, "●");
        m_list->AddRow("");
        m_list->SetCell(3, 1, "\x82\xA0.mov"); // a name in another encoding
    });
    EXPECT_EQ(Shown(1, 0), QStringLiteral("●"));
    EXPECT_EQ(Shown(3, 1), QStringLiteral("\uFFFD\uFFFD.mov"));
    EXPECT_EQ(m_list->Cell(3, 1), "\x82\xA0.mov");
    Do([&] {
        m_list->DeleteAllRows();
        m_list->AddRow("one");
    });
    EXPECT_EQ(m_view->model()->rowCount(), 1);
    EXPECT_EQ(Shown(0, 0), QStringLiteral("one"));
}

TEST_F(ListTest, AClickSelectsAndOneBesideTheRowsSelectsNone) {
    Fill(5);
    Click(Middle(3));
    EXPECT_EQ(m_changes, Rows{3});
    Click(QPoint(100, 200));
    EXPECT_EQ(m_changes, (Rows{3, -1}));
    EXPECT_EQ(Highlit(), -1);
    // As the program does it: a selection that is gone comes back at one end.
    m_list->OnChange = [this] {
        if (m_list->ListIndex() == -1)
            m_list->SetListIndex(0);
    };
    Click(Middle(2));
    Click(QPoint(100, 200));
    EXPECT_EQ(m_list->ListIndex(), 0);
    EXPECT_EQ(Highlit(), 0);
}

TEST_F(ListTest, ADoubleClickIsToldAfterItsSelection) {
    Fill(5);
    Rows opened;
    m_list->OnDoubleClick = [&] { opened.push_back(m_list->ListIndex()); };
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(4));
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(4));
    EXPECT_EQ(opened, Rows{4});
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 200));
    EXPECT_EQ(opened.size(), 1U) << "no row is there";
}

TEST_F(ListTest, ArrowsStep) {
    Fill(40);
    m_list->OnKeyDown = [this](const std::string&) {
        if (Runtime::Current().Windows().KeyDown(123) && m_list->ListIndex() > 0)
            m_list->SetListIndex(m_list->ListIndex() - 1);
        else if (Runtime::Current().Windows().KeyDown(124))
            m_list->SetListIndex(m_list->ListIndex() + 1);
        return false;
    };
    Do([&] {
        m_list->SetListIndex(5);
        m_list->SetFocus();
    });
    Press(Qt::Key_Down);
    EXPECT_EQ(m_list->ListIndex(), 6);
    Press(Qt::Key_Right);
    EXPECT_EQ(m_list->ListIndex(), 7);
    Press(Qt::Key_Left);
    EXPECT_EQ(m_list->ListIndex(), 6);
    Press(Qt::Key_Up);
    EXPECT_EQ(m_list->ListIndex(), 5);
    Press(Qt::Key_End);
    EXPECT_EQ(m_list->ListIndex(), 39);
    EXPECT_EQ(Highlit(), 39);
    EXPECT_EQ(m_list->ScrollPosition(), 14) << "26 of 40 rows are in view";
    EXPECT_FALSE(TheRuntime().Windows().KeyDown(123));
}

TEST_F(ListTest, AHeldArrowStepsWithEachRepeat) {
    Fill(40);
    int steps = 0;
    m_list->OnKeyDown = [&](const std::string& key) {
        EXPECT_EQ(key, "right");
        steps += Runtime::Current().Windows().KeyDown(124) ? 1 : 0;
        return false;
    };
    Do([&] { m_list->SetFocus(); });
    QWindow* window = QGuiApplication::focusWindow();
    QTest::keyPress(window, Qt::Key_Right);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window, &repeat);
    }
    EXPECT_EQ(steps, 4);
    QTest::keyRelease(window, Qt::Key_Right);
    EXPECT_FALSE(TheRuntime().Windows().KeyDown(124));
}

TEST_F(ListTest, AHeadingReportsAndSorts) {
    Do([&] {
        m_list->DeleteAllRows();
        for (const char* name : {"b", "a", "c"}) {
            m_list->AddRow("");
            m_list->SetCell(m_list->ListCount() - 1, 1, name);
        }
    });
    QHeaderView* heading = m_view->horizontalHeader();
    QTest::mouseClick(heading->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 10));
    EXPECT_EQ(Shown(0, 1), QStringLiteral("a"));
    EXPECT_TRUE(heading->isSortIndicatorShown());
    QTest::mouseClick(heading->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 10));
    EXPECT_EQ(Shown(0, 1), QStringLiteral("c"));
    Fill(3);
    EXPECT_FALSE(heading->isSortIndicatorShown());
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

TEST_F(ListTest, ShowingWritesToEveryRowOfALongListCostsNoMoreThanOfAShortOne) {
    constexpr int kRows = 99999;
    // What an open writes to the rows; the milliseconds that the window takes to show it.
    const auto show = [&](int row) {
        QElapsedTimer whole;
        qint64 writing = 0;
        whole.start();
        Do([&] {
            QElapsedTimer handler;
            handler.start();
            for (int k = 0; k < m_list->ListCount(); ++k) {
                m_list->SetCell(k, 0, "");
                m_list->SetCell(row, 0, "●");
            }
            writing = handler.nsecsElapsed();
        });
        QCoreApplication::processEvents();
        return static_cast<double>(whole.nsecsElapsed() - writing) / 1e6;
    };
    const auto best = [&] {
        double least = show(1);
        for (int row = 2; row <= 5; ++row)
            least = std::min(least, show(row));
        return least;
    };
    Fill(26);
    const double few = best();
    Fill(kRows);
    ASSERT_EQ(m_view->model()->rowCount(), kRows);
    const double many = best();
    EXPECT_LT(many - few, 5.0) << few << " ms of 26 rows, " << many << " ms of " << kRows;
    EXPECT_EQ(Shown(5, 0), QStringLiteral("●"));

    Do([&] { m_list->SetListIndex(kRows - 1); });
    Settle();
    EXPECT_EQ(m_list->ScrollPosition(), kRows - 26);
    EXPECT_GT(Middle(kRows - 1).y(), 0);
}

TEST_F(ListTest, RowsThatComeInManySmallStepsAreAllThereInTheEnd) {
    Fill(0);
    for (int row = 0; row < 2000; ++row) {
        Do([&] { m_list->AddRow(std::to_string(row)); });
        if (row < 26) {
            EXPECT_EQ(m_view->model()->rowCount(), row + 1) << "rows in view are shown at once";
        }
    }
    EXPECT_TRUE(Until([&] { return m_view->model()->rowCount() == 2000; }));
    Do([&] { m_list->AddRow("last"), m_list->SetListIndex(2000); });
    EXPECT_EQ(Highlit(), 2000) << "a row that is selected is there at once";
}

} // namespace

} // namespace kirolane::tests
