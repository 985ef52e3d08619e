#include "widgets/ReportView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace corvel {
namespace {

// Three columns, the last hidden; a cell reads "r<row>c<column>" unless the
// test sets another text.
class ReportViewTest : public testing::Test {
  protected:
    ReportViewTest() {
        view_.resize(600, 400);
        view_.show();
        QObject::connect(&view_, &ReportView::currentRowChanged, [this](int row) { note("current", row); });
        QObject::connect(&view_, &ReportView::rowPicked, [this](int row) { note("picked", row); });
        QObject::connect(&view_, &ReportView::rowDoubleClicked, [this](int row) { note("double", row); });
        QObject::connect(&view_, &ReportView::headerClicked, [this](int column) { note("header", column); });
        QObject::connect(&view_, &ReportView::contextMenuRequested, [this](int row) { note("menu", row); });
        QObject::connect(&view_, &ReportView::keyPressed, [this](Qt::Key key, int row) {
            note("key " + QKeySequence(key).toString().toStdString(), row);
        });
        QObject::connect(&view_, &ReportView::labelEdited,
                         [this](int row, const QString& text) { note("edited " + text.toStdString(), row); });
    }

    void note(const std::string& what, int number) { events_.push_back(what + " " + std::to_string(number)); }

    std::vector<std::string> takeEvents() { return std::exchange(events_, {}); }

    static ReportSource source(int rows) {
        ReportSource made;
        made.rows = rows;
        made.columns = {{QStringLiteral("name")}, {QStringLiteral("size"), Qt::AlignRight}, {}};
        made.columns.back().hidden = true;
        made.text = [](int row, int column) { return QStringLiteral("r%1c%2").arg(row).arg(column); };
        made.editText = [](int row) { return QStringLiteral("label %1").arg(row); };
        return made;
    }

    QPoint middleOf(int row) const { return view_.visualRect(view_.model()->index(row, 0)).center(); }

    void click(int row, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view_.viewport(), button, {}, middleOf(row));
    }

    QLineEdit* editor() const { return view_.viewport()->findChild<QLineEdit*>(); }

    using Events = std::vector<std::string>;
    ReportView view_;
    Events events_;
};

TEST_F(ReportViewTest, ClicksAndKeysAreReportedOnceEach) {
    view_.setSource(source(5));
    click(1);
    EXPECT_EQ(takeEvents(), (Events{"current 1", "picked 1"}));
    click(1);
    EXPECT_EQ(takeEvents(), (Events{"picked 1"}));
    QTest::keyClick(&view_, Qt::Key_Down);
    EXPECT_EQ(takeEvents(), (Events{"current 2", "picked 2", "key Down 2"}));
    QTest::keyClick(&view_, Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(takeEvents(), Events{});
    QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(takeEvents(), (Events{"picked 2", "double 2"}));
    const QRect header = view_.header()->viewport()->rect();
    const QPoint second(view_.header()->sectionViewportPosition(1) + 20, header.center().y());
    QTest::mouseClick(view_.header()->viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(takeEvents(), (Events{"header 1"}));
}

TEST_F(ReportViewTest, APressThatSlipsToTheNextRowPicksTheHighlightedOne) {
    view_.setSource(source(3));
    QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, middleOf(0));
    QTest::mouseMove(view_.viewport(), middleOf(1));
    QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, middleOf(1));
    EXPECT_EQ(view_.currentRow(), 1);
    EXPECT_EQ(takeEvents().back(), "picked 1");
}

TEST_F(ReportViewTest, ContextMenuNamesTheRowUnderTheMouseOrTheCurrentRow) {
    view_.setSource(source(5));
    const auto openMenu = [this](QContextMenuEvent::Reason reason, QPoint position) {
        QContextMenuEvent event(reason, position, view_.viewport()->mapToGlobal(position));
        QApplication::sendEvent(view_.viewport(), &event);
    };
    openMenu(QContextMenuEvent::Keyboard, {});
    EXPECT_EQ(takeEvents(), (Events{"menu -1"}));
    click(3, Qt::RightButton);
    openMenu(QContextMenuEvent::Mouse, middleOf(3));
    EXPECT_EQ(takeEvents(), (Events{"current 3", "picked 3", "menu 3"}));
    openMenu(QContextMenuEvent::Mouse, {10, 390});
    EXPECT_EQ(takeEvents(), (Events{"menu -1"}));
    EXPECT_EQ(view_.currentRow(), 3);
    openMenu(QContextMenuEvent::Mouse, middleOf(1));
    EXPECT_EQ(takeEvents(), (Events{"current 1", "picked 1", "menu 1"})) << "without a click before";
    QTest::keyClick(&view_, Qt::Key_Menu);
    EXPECT_EQ(takeEvents(), (Events{"menu 1"}));
}

TEST_F(ReportViewTest, LabelEditsAreAnnouncedAndChangeNothing) {
    struct Case {
        const char* name;
        QString label;
        QString typed; // nothing: Enter alone
        Qt::Key end;
        Events events;
    };
    const QString label = QStringLiteral("label");
    const std::vector<Case> cases = {
        {"another text", label, QStringLiteral("new"), Qt::Key_Return, {"edited new 2"}},
        {"the same text", label, label, Qt::Key_Return, {}},
        {"given up", label, QStringLiteral("new"), Qt::Key_Escape, {}},
        {"what the box cannot show", QStringLiteral("a\u2028z\nb"), {}, Qt::Key_Return, {}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        ReportSource named = source(5);
        named.editText = [&](int) { return row.label; };
        view_.setSource(named);
        view_.setCurrentRow(2);
        takeEvents();
        view_.editLabel(2);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(editor()->selectedText(), editor()->text());
        QTest::keyClicks(editor(), row.typed);
        QTest::keyClick(editor(), row.end);
        // The editor commits and closes from the event loop.
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(takeEvents(), row.events);
        EXPECT_EQ(editor(), nullptr);
        EXPECT_EQ(view_.model()->index(2, 0).data().toString(), QStringLiteral("r2c0"));
    }
}

TEST_F(ReportViewTest, ANewSourceDropsTheEditUnderWay) {
    view_.setSource(source(5));
    view_.setCurrentRow(2);
    view_.editLabel(2);
    ASSERT_NE(editor(), nullptr);
    QTest::keyClicks(editor(), QStringLiteral("new"));
    takeEvents();
    view_.setSource(source(1));
    QApplication::sendPostedEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(takeEvents(), (Events{"current -1"}));
}

TEST_F(ReportViewTest, CurrentRowIsKeptOrCleared) {
    using enum ReportView::CurrentRow;
    const std::vector<std::tuple<int, ReportView::CurrentRow, int>> cases = {
        {9, keep, 3}, {2, keep, 1}, {0, keep, -1}, {9, clear, -1}};
    for (const auto& [rows, mode, after] : cases) {
        view_.setSource(source(5));
        view_.setCurrentRow(3);
        view_.setSource(source(rows), mode);
        EXPECT_EQ(view_.currentRow(), after);
        EXPECT_EQ(view_.selectedRows(), after < 0 ? std::vector<int>{} : std::vector<int>{after});
    }
}

TEST_F(ReportViewTest, OnlyChangedRowsInSightArePaintedAgain) {
    std::vector<int> paintedRows;
    ReportSource changing = source(500);
    changing.text = [&](int row, int) {
        paintedRows.push_back(row);
        return QString();
    };
    view_.setSource(changing);
    view_.setCurrentRow(100);
    QApplication::processEvents();
    const int place = view_.verticalScrollBar()->value();
    paintedRows.clear();
    view_.refreshWhere([](int row) { return row == 2 || row == 100; });
    QApplication::processEvents();
    EXPECT_EQ(std::set<int>(paintedRows.begin(), paintedRows.end()), std::set<int>{100});
    view_.refresh();
    QApplication::processEvents();
    EXPECT_GT(paintedRows.size(), 10U);
    EXPECT_LT(paintedRows.size(), 500U);

    view_.growTo(1000);
    QApplication::processEvents();
    EXPECT_EQ(view_.model()->rowCount(), 1000);
    EXPECT_EQ(view_.currentRow(), 100);
    EXPECT_EQ(view_.verticalScrollBar()->value(), place);
}

// The longest text is not cut, by whichever way it is found.
TEST_F(ReportViewTest, FittedColumnsShowTheirWidestCellWhole) {
    constexpr int widestRow = 90; // out of sight
    const std::vector<QString> texts = {QStringLiteral("WWWWWWWWWWWW"), QString(45, u'i'),
                                        QString(4, u'\uFDFA'), QStringLiteral("x")};
    for (const QString& widest : texts) {
        const std::string bytes = widest.toStdString();
        ReportSource cells = source(widestRow + 1);
        cells.text = [&](int row, int) { return row == widestRow ? widest : QStringLiteral("short"); };
        ReportSource sent = cells;
        sent.rows = 500;
        sent.sentText = [&](int row, int) { return row == widestRow ? std::string_view(bytes) : "short"; };
        ReportSource room = source(2);
        room.columns[1].room = {widest};
        for (const ReportSource& fitted : {cells, sent, room}) {
            SCOPED_TRACE(bytes + " in a list of " + std::to_string(fitted.rows));
            view_.setSource(cells);
            const int needed = std::max(view_.sizeHintForIndex(view_.model()->index(widestRow, 1)).width(),
                                        view_.header()->sectionSizeHint(1));
            view_.setSource(fitted);
            view_.fitColumns(0, 2);
            EXPECT_GE(view_.header()->sectionSize(1), needed);
            EXPECT_LE(view_.header()->sectionSize(1), needed + 40) << "little room is wasted";
            EXPECT_TRUE(view_.isColumnHidden(2));
        }
    }
}

TEST_F(ReportViewTest, SeveralRowsCanBeSelectedWhereAllowed) {
    view_.setSource(source(5));
    click(3);
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(1));
    EXPECT_EQ(view_.selectedRows(), (std::vector<int>{1}));
    view_.setMultiSelection(true);
    for (const int row : {3, 4, 0}) {
        QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(row));
    }
    EXPECT_EQ(view_.selectedRows(), (std::vector<int>{0, 1, 3, 4}));
}

// Two fixed columns of five, which the mouse drags about, each step upon the
// last.
TEST(ColumnMoves, LeaveTheFixedColumnsInFront) {
    constexpr int columnCount = 5;
    constexpr int columnPixels = 60;
    ReportView list;
    ReportSource source;
    source.columns.resize(columnCount);
    source.text = [](int, int) { return QString(); };
    list.setSource(source);
    list.letColumnsMove(2);
    list.resize(columnCount * columnPixels + 50, 200);
    list.show();
    QHeaderView& header = *list.header();
    for (int column = 0; column < columnCount; ++column) {
        header.resizeSection(column, columnPixels);
    }
    struct Case {
        int from, to;
        std::vector<int> order; // afterwards
    };
    const std::vector<Case> cases = {
        {2, 4, {0, 1, 3, 4, 2}}, {4, 2, {0, 1, 2, 3, 4}}, {3, 0, {0, 1, 3, 2, 4}}, {4, 1, {0, 1, 4, 3, 2}},
        {0, 3, {0, 1, 4, 3, 2}}, {1, 2, {0, 1, 4, 3, 2}}, {2, 3, {0, 1, 3, 4, 2}},
    };
    for (const Case& row : cases) {
        const int offset =
            row.to > row.from ? columnPixels - 10 : 10; // past the middle, where columns change
        const QPoint start(row.from * columnPixels + columnPixels / 2, header.height() / 2);
        const QPoint end(row.to * columnPixels + offset, start.y());
        QWidget* const area = header.viewport();
        QTest::mousePress(area, Qt::LeftButton, {}, start);
        for (const QPoint& place : {(start + end) / 2, end}) {
            QMouseEvent move(QEvent::MouseMove, place, area->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                             {});
            QApplication::sendEvent(area, &move);
        }
        QTest::mouseRelease(area, Qt::LeftButton, {}, end);
        std::vector<int> order;
        for (int place = 0; place < columnCount; ++place) {
            order.push_back(header.logicalIndex(place));
        }
        EXPECT_EQ(order, row.order) << row.from << " to " << row.to;
    }
}

} // namespace
} // namespace corvel
