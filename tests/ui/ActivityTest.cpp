#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int connections = 12; // on the demo server

constexpr int column(ActivityCell cell) {
    return static_cast<int>(cell);
}

class ActivityTab : public DemoWindow {
  protected:
    void SetUp() override { startOn(activityTab); }

    // Lets the site's timer tick once, which it never does by itself.
    void tick() {
        auto& timer = driver_->find<QTimer>("tmrRefreshWho_1");
        bool hasTicked = false;
        QObject::connect(
            &timer, &QTimer::timeout, &timer, [&] { timer.stop(), hasTicked = true; },
            Qt::SingleShotConnection);
        timer.start(0);
        ASSERT_TRUE(eventually([&] { return hasTicked && driver_->isIdle(1); }));
    }

    ReportView& list() { return driver_->find<ReportView>("lvwActivity_1"); }
    QHeaderView& header() { return *list().header(); }
};

TEST_F(ActivityTab, ShowsWhoIsOnlineOnceItIsAsked) {
    EXPECT_FALSE(driver_->find<QTimer>("tmrRefreshWho_1").isActive());
    auto& freeze = driver_->find<QCheckBox>("chkFreezeRefresh");
    freeze.click();
    tick();
    EXPECT_EQ(list().model()->rowCount(), 0);
    freeze.click();
    tick();
    ASSERT_EQ(list().model()->rowCount(), connections);
    EXPECT_EQ(list().model()->index(8, column(ActivityCell::pwd)).data().toString(), u"/pub/Größe und Maß"_s);

    list().setCurrentRow(5);
    tick();
    EXPECT_EQ(list().currentRow(), 5);

    driver_->chooseSitesMenu(1);
    EXPECT_EQ(list().model()->rowCount(), 0);
    driver_->chooseSitesMenu(0);
    ASSERT_TRUE(eventually([&] { return driver_->window->program().site(1).session.bLoggedIn; }));
    freeze.click();
    driver_->click("cmdRefreshWho");
    EXPECT_TRUE(eventually([&] { return list().model()->rowCount() == connections; })) << "frozen, but asked";
}

TEST_F(ActivityTab, KeepsItsColumnsAsTheyWereLeft) {
    const int user = column(ActivityCell::user);
    const int group = column(ActivityCell::group);
    driver_->window->program().windowState().columns[static_cast<std::size_t>(group)].autosize = false;
    header().moveSection(header().visualIndex(user), 5);
    list().setColumnUnits(group, 3000);
    tick();
    EXPECT_EQ(list().columnUnits(group), 3000) << "a width of its own is not fitted";
    driver_->restart();
    EXPECT_EQ(header().visualIndex(user), 5);
    EXPECT_EQ(list().columnUnits(group), 3000);
    EXPECT_EQ(driver_->store.value("activitylist_width_9"), "1300") << "of a column that fits itself";
}

} // namespace
} // namespace corvel::test
