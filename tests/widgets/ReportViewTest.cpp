#include "widgets/ReportView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvel {
namespace {

// Three columns, the last hidden; a cell reads "r<row>c<column>" unless the test sets another text.
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
    QTest::keyClick(&view_, Qt::Key_Delete);
    QTest::keyClick(&view_, Qt::Key_Return);
    EXPECT_EQ(takeEvents(), (Events{"key Del 2", "key Return 2"}));
    QTest::keyClick(&view_, Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(takeEvents(), Events{});
    QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(takeEvents(), (Events{"picked 2", "double 2"}));
    QTest::mouseDClick(view_.viewport(), Qt::RightButton, {}, middleOf(2));
    EXPECT_EQ(std::ranges::count(takeEvents(), "double 2"), 0);
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
    openMenu(QContextMenuEvent::Keyboard, {});
    EXPECT_EQ(takeEvents(), (Events{"menu 3"}));
    openMenu(QContextMenuEvent::Mouse, middleOf(1));
    EXPECT_EQ(takeEvents(), (Events{"current 1", "picked 1", "menu 1"})) << "without a click before";
    QTest::keyClick(&view_, Qt::Key_Menu);
    EXPECT_EQ(takeEvents(), (Events{"menu 1"}));
}

TEST_F(ReportViewTest, LabelEditsAreAnnouncedAndChangeNothing) {
    struct Row {
        const char* name;
        const char* typed;
        Qt::Key end;
        Events events;
    };
    const std::vector<Row> table = {
        {"another text", "new", Qt::Key_Return, {"edited new 2"}},
        {"the same text", "label 2", Qt::Key_Return, {}},
        {"given up", "new", Qt::Key_Escape, {}},
    };
    view_.setSource(source(5));
    view_.setCurrentRow(2);
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        takeEvents();
        view_.editLabel(2);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(editor()->text(), QStringLiteral("label 2"));
        EXPECT_EQ(editor()->selectedText(), QStringLiteral("label 2"));
        QTest::keyClick(editor(), Qt::Key_Delete);
        QTest::keyClicks(editor(), QString::fromLatin1(row.typed));
        QTest::keyClick(editor(), row.end);
        // The editor commits and closes from the event loop.
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(takeEvents(), row.events);
        EXPECT_EQ(editor(), nullptr);
        EXPECT_EQ(view_.model()->index(2, 0).data().toString(), QStringLiteral("r2c0"));
    }
}

TEST_F(ReportViewTest, EnterAloneIsNoEdit) {
    for (const QString& name : {QStringLiteral("a\u2028z"), QStringLiteral("a\nz")}) {
        ReportSource named = source(1);
        named.editText = [&](int) { return name; };
        view_.setSource(named);
        view_.setCurrentRow(0);
        takeEvents();
        view_.editLabel(0);
        ASSERT_NE(editor(), nullptr);
        QTest::keyClick(editor(), Qt::Key_Return);
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(takeEvents(), Events{});
    }
}

TEST_F(ReportViewTest, NothingButEditLabelStartsAnEdit) {
    view_.setSource(source(5));
    view_.setCurrentRow(2);
    QTest::keyClick(&view_, Qt::Key_F2);
    QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(editor(), nullptr);
    view_.editLabel(7);
    EXPECT_EQ(editor(), nullptr);
    ReportSource readOnly = source(5);
    readOnly.editText = nullptr;
    view_.setSource(readOnly);
    view_.editLabel(2);
    EXPECT_EQ(editor(), nullptr);
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
    struct Row {
        const char* name;
        int before, rows;
        ReportView::CurrentRow mode;
        int after;
    };
    using enum ReportView::CurrentRow;
    const std::vector<Row> table = {
        {"kept", 3, 9, keep, 3},
        {"kept at the end", 3, 2, keep, 1},
        {"no rows left", 3, 0, keep, -1},
        {"cleared", 3, 9, clear, -1},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        view_.setSource(source(5));
        view_.setCurrentRow(row.before);
        view_.setSource(source(row.rows), row.mode);
        EXPECT_EQ(view_.currentRow(), row.after);
        EXPECT_EQ(view_.selectedRows(), row.after < 0 ? std::vector<int>{} : std::vector<int>{row.after});
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

// What column fitting is for: the longest text is not cut, and little room is wasted.
TEST_F(ReportViewTest, FittedColumnsShowTheirWidestCellWhole) {
    constexpr int widestRow = 90; // out of sight
    struct Row {
        const char* name;
        const char* widest; // UTF-8
    };
    const std::vector<Row> table = {
        {"wide letters", "WWWWWWWWWWWW"},
        {"many narrow letters", "iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii"},
        {"Cyrillic", "длинное имя файла"},
        {"a wide character of few bytes", "\uFDFA\uFDFA\uFDFA\uFDFA"},
        {"shorter than the header", "x"},
    };
    for (const Row& row : table) {
        const std::string widest = row.widest;
        const auto bytes = [&](int at, int) -> std::string_view {
            return at == widestRow ? std::string_view(widest) : "short";
        };
        ReportSource cells = source(widestRow + 1);
        cells.columns[1].header = QStringLiteral("header");
        cells.text = [bytes](int at, int column) {
            return QString::fromStdString(std::string(bytes(at, column)));
        };
        ReportSource sent = cells;
        sent.rows = 500;
        sent.sentText = bytes;
        ReportSource room = cells;
        room.columns[1].room = {QString::fromStdString(widest)};
        room.rows = 2;
        for (const auto& [way, fitted] :
             {std::pair("cells", cells), std::pair("what was sent", sent), std::pair("room", room)}) {
            SCOPED_TRACE(std::string(row.name) + " by " + way);
            view_.setSource(sent);
            const QModelIndex widestCell = view_.model()->index(widestRow, 1);
            const int cellWidth = view_.sizeHintForIndex(widestCell).width();
            view_.setSource(fitted);
            view_.fitColumns(0, 2);
            const int needed = std::max(cellWidth, view_.header()->sectionSizeHint(1));
            const int text = QFontMetrics(view_.font()).horizontalAdvance(QString::fromStdString(widest));
            const int width = view_.header()->sectionSize(1);
            EXPECT_GE(width, needed);
            EXPECT_LE(width, std::max(view_.header()->sectionSizeHint(1), text + 24));
            EXPECT_TRUE(view_.isColumnHidden(2));
        }
    }
}

TEST_F(ReportViewTest, TheIconHasItsRoomInAFittedColumn) {
    ReportSource withIcon = source(1);
    withIcon.icon = [](int) {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        return QIcon(pixmap);
    };
    view_.setSource(withIcon);
    view_.fitColumns(0, 0);
    EXPECT_GE(view_.header()->sectionSize(0), view_.sizeHintForIndex(view_.model()->index(0, 0)).width());
}

TEST_F(ReportViewTest, RowColoursReachTheRightEdge) {
    ReportSource coloured = source(2);
    coloured.colours = [](int row) { return row == 1 ? RowColours{Qt::white, Qt::blue} : RowColours{}; };
    view_.setSource(coloured);
    const QImage image = view_.viewport()->grab().toImage();
    EXPECT_EQ(image.pixelColor(image.width() - 2, middleOf(1).y()), QColor(Qt::blue));
    EXPECT_NE(image.pixelColor(image.width() - 2, middleOf(0).y()), QColor(Qt::blue));
}

TEST_F(ReportViewTest, ThePlaceholderShowsOnlyInAnEmptyList) {
    view_.setSource(source(0));
    const QImage blank = view_.viewport()->grab().toImage();
    view_.setPlaceholder(QStringLiteral("Nothing here yet"));
    const QImage explained = view_.viewport()->grab().toImage();
    EXPECT_NE(explained, blank);
    view_.setSource(source(1));
    const QImage row = view_.viewport()->grab().toImage();
    view_.setPlaceholder({});
    EXPECT_EQ(view_.viewport()->grab().toImage(), row);
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

} // namespace
} // namespace corvel
