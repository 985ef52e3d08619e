#include "widgets/ReportView.h"

#include "widgets/Colours.h"
#include "widgets/LogBox.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QTextBlock>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvel {
namespace {

// Two columns; a cell reads "r<row>c<column>".
class ReportViewTest : public testing::Test {
  protected:
    ReportViewTest() {
        view_.resize(600, 400);
        view_.show();
        QObject::connect(&view_, &ReportView::currentRowChanged, [this](int row) { note("current", row); });
        QObject::connect(&view_, &ReportView::rowPicked, [this](int row) { note("picked", row); });
        QObject::connect(&view_, &ReportView::rowDoubleClicked, [this](int row) { note("double", row); });
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
        made.columns = {{QStringLiteral("name")}, {QStringLiteral("size")}};
        made.text = [](int row, int column) { return QStringLiteral("r%1c%2").arg(row).arg(column); };
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
    click(3, Qt::RightButton);
    openMenu(QContextMenuEvent::Mouse, middleOf(3));
    EXPECT_EQ(takeEvents(), (Events{"current 3", "picked 3", "menu 3"}));
    openMenu(QContextMenuEvent::Mouse, {10, 390});
    EXPECT_EQ(takeEvents(), (Events{"menu -1"}));
    EXPECT_EQ(view_.currentRow(), 3);
    openMenu(QContextMenuEvent::Mouse, middleOf(1));
    EXPECT_EQ(takeEvents(), (Events{"current 1", "picked 1", "menu 1"})) << "without a click before";
}

TEST_F(ReportViewTest, LabelEditsAreAnnouncedAndChangeNothing) {
    const auto end = [this](Qt::Key key) { QTest::keyClick(editor(), key); };
    const QString unshowable = QStringLiteral("a\u2028z\nb"); // by the box
    struct Case {
        QString label, typed; // typed nothing: Enter alone
        std::function<void()> end;
        Events events;
    };
    const std::vector<Case> cases = {
        {u"label"_s, u"new"_s, [&] { end(Qt::Key_Return); }, {"edited new 2"}},
        {u"label"_s, u"label"_s, [&] { end(Qt::Key_Return); }, {}},
        {u"label"_s, u"new"_s, [&] { end(Qt::Key_Escape); }, {}},
        {unshowable, u""_s, [&] { end(Qt::Key_Return); }, {}},
        {u"label"_s, u"new"_s, [&] { view_.setSource(source(1)); }, {"current -1"}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(&row - cases.data());
        ReportSource named = source(5);
        named.editText = [&](int) { return row.label; };
        view_.setSource(named);
        view_.setCurrentRow(2);
        events_.clear();
        view_.editLabel(2);
        ASSERT_NE(editor(), nullptr);
        QTest::keyClicks(editor(), row.typed);
        row.end();
        // The editor commits and closes from the event loop.
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(takeEvents(), row.events);
        EXPECT_EQ(editor(), nullptr);
    }
}

TEST_F(ReportViewTest, AFilterHidesRowsThatAreThenNeitherCurrentNorSelected) {
    ReportSource made = source(30);
    made.pinned = 1;
    view_.setMultiSelection(true);
    view_.setSource(made);
    view_.setCurrentRow(12);
    view_.setSelectedRows({3, 12, 13});
    events_.clear();
    view_.setFilter(u"R1 C1"_s);
    EXPECT_EQ(view_.rowsShown(), 11) << "1 and 10 to 19, the pinned one aside";
    EXPECT_EQ(view_.rowsInAll(), 29);
    EXPECT_EQ(view_.selectedRows(), (std::vector{12, 13}));
    EXPECT_EQ(takeEvents(), Events{});
    view_.growTo(120);
    view_.setFilter(u"r1 c1 r11"_s);
    EXPECT_EQ(view_.rowsShown(), 11) << "11 and 110 to 119";
    EXPECT_EQ(takeEvents(), Events{"current -1"});
    EXPECT_EQ(view_.selectedRows(), std::vector<int>{});
    click(2);
    EXPECT_EQ(takeEvents(), (Events{"current 110", "picked 110"}));
    view_.setFilter({});
    EXPECT_EQ(view_.currentRow(), 110);
    EXPECT_EQ(view_.rowsShown(), 119);
    EXPECT_EQ(takeEvents(), Events{});
}

TEST_F(ReportViewTest, LettersGoToANameAndTheSelectionIsCopied) {
    ReportSource made = source(4);
    made.columns[0].alignment = Qt::AlignRight;
    made.columns.push_back({.header = u"hidden"_s, .hidden = true});
    made.text = [](int row, int column) {
        return column == 1 ? QStringList{u"anna"_s, u"Bob"_s, u"bea"_s, u"boris"_s}[row] : u"  7"_s;
    };
    view_.setMultiSelection(true);
    view_.setSource(made);
    QTest::keyClicks(&view_, u"bor"_s);
    EXPECT_EQ(view_.currentRow(), 3);
    view_.setSelectedRows({1, 3});
    QTest::keyClick(&view_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"name\tsize\n7\tBob\n7\tboris"_s);
}

TEST(LogBox, ASelectionIsKeptUntilItIsLetGo) {
    LogText log(25000, LogText::Style::linesPart);
    const auto read = [&log]() -> const LogText& { return log; };
    LogBox box(read);
    LogBox next(read); // shows what has come a turn behind the box
    box.show();
    const auto shows = [&log](LogBox& shown) {
        shown.scheduleUpdate();
        const QString text = QString::fromStdString(log.text()).remove(u'\r');
        return QTest::qWaitFor([&] { return shown.toPlainText() == text; });
    };
    struct Row {
        const char* name;
        std::function<void()> hold;
        std::function<void()> letGo;
    };
    const std::vector<Row> rows = {
        {"a selection", [&] { box.selectAll(); }, [&] { box.moveCursor(QTextCursor::Start); }},
        {"the mouse", [&] { QTest::mousePress(box.viewport(), Qt::LeftButton); },
         [&] { QTest::mouseRelease(box.viewport(), Qt::LeftButton); }},
        {"holding it", [&] { box.setHeld(true); }, [&] { box.setHeld(false); }},
    };
    for (const Row& row : rows) {
        log.append("550 a line", "t");
        ASSERT_TRUE(shows(box)) << row.name;
        const QString before = box.toPlainText();
        row.hold();
        log.append("another", "t", LogLine::command);
        box.scheduleUpdate();
        ASSERT_TRUE(shows(next)) << row.name;
        EXPECT_EQ(box.toPlainText(), before) << row.name;
        row.letGo();
        EXPECT_TRUE(QTest::qWaitFor([&] { return box.toPlainText() == next.toPlainText(); })) << row.name;
    }
}

// The box that follows the log shows what one shows that looks at it for the first time.
TEST(LogBox, FollowsTheLogHoweverItsLinesGoAndAreCut) {
    using enum LogText::Style;
    struct Row {
        LogText::Style style;
        std::size_t limit;
        std::vector<std::size_t> sizes; // of the lines
    };
    const std::vector<std::size_t> sizes = {1, 30, 2500, 3000, 20, 2000, 2500, 1, 20000, 5, 5000, 4000, 1};
    const std::vector<Row> rows = {
        {linesEnd, 9000, sizes},
        {linesPart, 9000, sizes},
        {linesEnd, 21, {3, 3, 3, 3, 3, 3}}, // three whole lines
        {linesPart, 25, {3, 3, 3, 3, 3, 3}},
    };
    const auto blocks = [](const LogBox& shown) {
        std::vector<std::pair<QString, QColor>> all;
        for (QTextBlock block = shown.document()->begin(); block.isValid(); block = block.next()) {
            all.emplace_back(block.text(), block.layout()->formats().value(0).format.foreground().color());
        }
        return all;
    };
    for (const Row& row : rows) {
        LogText log(row.limit, row.style);
        const auto read = [&log]() -> const LogText& { return log; };
        LogBox box(read);
        LogLine kind = LogLine::reply;
        for (const std::size_t size : row.sizes) {
            kind = kind == LogLine::reply ? LogLine::command : LogLine::reply;
            log.append(std::string(size, 'x'), "t", kind);
            LogBox fresh(read);
            box.scheduleUpdate();
            fresh.scheduleUpdate();
            const QString whole = QString::fromStdString(log.text()).remove(u'\r');
            ASSERT_TRUE(QTest::qWaitFor([&] {
                return box.wholeText() == whole && fresh.wholeText() == whole;
            })) << size;
            EXPECT_EQ(blocks(box), blocks(fresh)) << size;
            for (const auto& [text, colour] : blocks(box)) {
                EXPECT_LE(text.size(), 2100);
                EXPECT_EQ(text.contains(u" more character"_s), text.size() > 2000);
            }
        }
    }
}

TEST(LogBox, ItsColoursCanBeReadOnEveryGround) {
    LogText log(25000, LogText::Style::linesPart);
    for (const LogLine line : {LogLine::refusal, LogLine::command, LogLine::event}) {
        log.append("a line", "t", line);
    }
    LogBox box([&log]() -> const LogText& { return log; });
    box.scheduleUpdate();
    ASSERT_TRUE(QTest::qWaitFor([&] { return box.document()->blockCount() == 3; }));
    for (const QColor ground : {0xFFFFFF, 0xEFF0F1, 0x808080, 0x31363B, 0x000000}) {
        QPalette palette;
        palette.setColor(QPalette::Base, ground);
        box.setPalette(palette);
        std::set<QRgb> colours;
        for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next()) {
            const QColor colour = block.layout()->formats().value(0).format.foreground().color();
            EXPECT_GE(contrast(colour, ground), 4.5) << colour.name().toStdString();
            colours.insert(colour.rgb());
        }
        EXPECT_EQ(colours.size(), 3U) << ground.name().toStdString();
    }
}

} // namespace
} // namespace corvel
