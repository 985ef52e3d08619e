#include "ui/desktop/Desktop.h"
#include "ui/WindowDriver.h"

#include <gtest/gtest.h>

#include <csignal>

namespace corvel::test {
namespace {

TEST(EndSignals, CloseTheWindowSoThatEverythingIsSaved) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(signal, SIG_DFL); // the tests may have been started in the background
        WindowDriver driver(siteRecord("home", 1, "bob", "secret"));
        const EndSignals watched(*driver.window);
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_TRUE(eventually([&] { return !driver.window->isVisible(); })) << signal;
        EXPECT_NE(driver.directory.read("sites.ini").find("ident = "), std::string::npos) << signal;
    }
}

// As nohup starts a program that is to outlive its terminal.
TEST(EndSignals, LeaveAnIgnoredSignalIgnored) {
    auto* const before = std::signal(SIGHUP, SIG_IGN);
    {
        WindowDriver driver(siteRecord("home", 1, "bob", "secret"));
        const EndSignals watched(*driver.window);
        ASSERT_EQ(std::raise(SIGHUP), 0);
        QTest::qWait(50);
        EXPECT_TRUE(driver.window->isVisible());
    }
    EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

} // namespace
} // namespace corvel::test
