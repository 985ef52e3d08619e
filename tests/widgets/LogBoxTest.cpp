#include "widgets/LogBox.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace corvel {
namespace {

TEST(LogBox, ManyChangesAreShownOnce) {
    QString log;
    int fetched = 0;
    LogBox box([&] {
        ++fetched;
        return log;
    });
    box.resize(400, 200);
    box.show();
    for (int line = 0; line < 1000; ++line) {
        log += QStringLiteral("<b>line</b> %1\n").arg(line);
        box.scheduleUpdate();
    }
    EXPECT_EQ(fetched, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return fetched > 0; }));
    EXPECT_EQ(box.toPlainText(), log);
    EXPECT_TRUE(box.textCursor().atEnd());
    EXPECT_EQ(box.verticalScrollBar()->value(), box.verticalScrollBar()->maximum());

    log = QStringLiteral("short");
    box.scheduleUpdate();
    ASSERT_TRUE(QTest::qWaitFor([&] { return fetched > 1; }));
    EXPECT_EQ(fetched, 2);
    EXPECT_EQ(box.toPlainText(), log);
}

} // namespace
} // namespace corvel
