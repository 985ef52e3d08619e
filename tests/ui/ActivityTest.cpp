#include "ui/WindowDriver.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QScrollBar>
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

    // Waits for the next tick of a timer.
    void await(QTimer& timer) {
        bool hasTicked = false;
        const auto connection =
            QObject::connect(&timer, &QTimer::timeout, [&hasTicked] { hasTicked = true; });
        ASSERT_TRUE(eventually([&] { return hasTicked; }));
        QObject::disconnect(connection);
    }

    // Lets the site's timer tick once, which it never does by itself.
    void tick() {
        auto& timer = driver_->find<QTimer>("tmrRefreshWho_1");
        timer.start(0);
        await(timer);
        timer.stop();
        ASSERT_TRUE(driver_->waitForIdle());
    }

    ReportView& list() { return driver_->find<ReportView>("lvwActivity_1"); }
    ActivityPanel& panel() { return *driver_->window->findChild<ActivityPanel*>(); }
    QHeaderView& header() { return *list().header(); }
    QString cell(int row, ActivityCell cell) {
        return list().model()->index(row, column(cell)).data().toString();
    }
    WindowState& state() { return driver_->window->program().windowState(); }
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
    EXPECT_EQ(cell(2, ActivityCell::transferred), u"700 MB"_s);
    EXPECT_EQ(cell(8, ActivityCell::pwd), u"/pub/Größe und Maß"_s);

    list().setCurrentRow(5);
    list().horizontalScrollBar()->setValue(20);
    tick();
    EXPECT_EQ(list().currentRow(), 5);
    EXPECT_EQ(list().horizontalScrollBar()->value(), 20);

    driver_->chooseSitesMenu(1);
    EXPECT_EQ(list().model()->rowCount(), 0);
}

TEST_F(ActivityTab, KeepsItsColumnsAsTheyWereLeft) {
    const int user = column(ActivityCell::user);
    const int group = column(ActivityCell::group);
    state().columns[static_cast<std::size_t>(group)].autosize = false;
    header().moveSection(header().visualIndex(user), 5);
    list().setColumnUnits(group, 3000);
    tick();
    EXPECT_EQ(list().columnUnits(group), 3000) << "a width of its own is not fitted";
    driver_->restart();
    EXPECT_EQ(header().visualIndex(user), 5);
    EXPECT_EQ(list().columnUnits(group), 3000);
    EXPECT_EQ(driver_->store.value("activitylist_width_9"), "1300") << "of a column that fits itself";

    // A hidden column is left out until the program ends, and does not lose its width.
    state().columns[static_cast<std::size_t>(group)].shown = false;
    panel().applyColumns();
    EXPECT_TRUE(list().isColumnHidden(group));
    driver_->restart();
    EXPECT_FALSE(list().isColumnHidden(group));
    EXPECT_EQ(list().columnUnits(group), 3000);
}

TEST_F(ActivityTab, GivesAWidthBackToColumnsWithoutOne) {
    const auto cid = static_cast<std::size_t>(ActivityCell::cid);
    state().columns[cid] = {.position = 2, .autosize = false, .width = 0};
    state().columns[cid + 1].shown = false;
    panel().applyColumns();
    ASSERT_EQ(list().columnWidth(column(ActivityCell::cid)), 0);
    await(driver_->find<QTimer>("tmrSocketStatus"));
    EXPECT_GT(list().columnWidth(column(ActivityCell::cid)), 0);
    EXPECT_EQ(list().columnWidth(column(ActivityCell::user)), 0);
}

TEST_F(ActivityTab, ColoursWholeRowsByTheirState) {
    tick();
    const auto colourOf = [this](int row) {
        const QImage picture = list().viewport()->grab().toImage();
        const QRect place = list().visualRect(list().model()->index(row, column(ActivityCell::icon)));
        return QColor(picture.pixelColor(place.left() + 1, place.center().y()));
    };
    const QColor plain = colourOf(2);
    state().activitylist_use_colors = true;
    panel().applyColours();
    EXPECT_EQ(colourOf(0), QColor(Qt::white));
    EXPECT_EQ(colourOf(1), QColor(Qt::blue));
    EXPECT_EQ(colourOf(2), QColor(Qt::red));
    state().activitylist_color_up_bg = 0x00FF00;
    EXPECT_EQ(colourOf(2), QColor(Qt::green));
    state().activitylist_use_colors = false;
    EXPECT_EQ(colourOf(2), plain);
}

} // namespace
} // namespace corvel::test
