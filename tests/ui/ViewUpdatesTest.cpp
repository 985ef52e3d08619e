#include "ui/ViewUpdates.h"

#include <QCoreApplication>
#include <QEvent>

#include <gtest/gtest.h>

namespace corvel::test {
namespace {

TEST(ViewUpdates, TellEachChangeOnceAndBeforeAnythingIsShown) {
    std::vector<ViewChange> told;
    ViewUpdates* running = nullptr;
    ViewUpdates updates(
        [&](const ViewChange& change) {
            told.push_back(change);
            if (told.size() == 1) {
                running->pathChanged(7); // comes in the next round
            }
        },
        [](int, Dialog) {});
    running = &updates;
    const auto tellBy = [](QEvent::Type type) {
        QObject anybody;
        QEvent event(type);
        QCoreApplication::sendEvent(&anybody, &event);
    };
    updates.listingChanged(2);
    updates.logChanged(1, LogKind::console);
    updates.listingChanged(2);
    tellBy(QEvent::SockAct);
    EXPECT_TRUE(told.empty()) << "more data may be there";
    tellBy(QEvent::Paint);
    const std::vector<ViewChange> first = {{.part = ViewPart::listing, .site = 2},
                                           {.part = ViewPart::log, .site = 1, .log = LogKind::console}};
    EXPECT_EQ(told, first);
    QCoreApplication::sendPostedEvents(&updates, QEvent::MetaCall);
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told[2], (ViewChange{.part = ViewPart::path, .site = 7}));
}

} // namespace
} // namespace corvel::test
