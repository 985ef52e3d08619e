#include "widgets/LogBox.h"

#include <QApplication>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace corvel {
namespace {

TEST(LogBox, ManyChangesInOneTurnAreShownOnce) {
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
    QApplication::processEvents();
    EXPECT_EQ(fetched, 1);
    EXPECT_EQ(box.toPlainText(), log);
    EXPECT_TRUE(box.textCursor().atEnd());
    EXPECT_EQ(box.verticalScrollBar()->value(), box.verticalScrollBar()->maximum());

    log = QStringLiteral("short");
    box.scheduleUpdate();
    QApplication::processEvents();
    EXPECT_EQ(fetched, 2);
    EXPECT_EQ(box.toPlainText(), log);
}

TEST(LogBox, ABoxThatGoesAwayFetchesNothing) {
    int fetched = 0;
    {
        LogBox box([&] {
            ++fetched;
            return QString();
        });
        box.scheduleUpdate();
    }
    QApplication::processEvents();
    EXPECT_EQ(fetched, 0);
}

} // namespace
} // namespace corvel
