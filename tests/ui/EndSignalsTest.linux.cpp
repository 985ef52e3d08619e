#include "ui/EndSignals.h"

#include "ui/WindowDriver.h"

#include <gtest/gtest.h>

#include <csignal>

namespace corvel::test {
namespace {

TEST(EndSignals, CloseTheWindowSoThatEverythingIsSaved) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        WindowDriver driver(siteRecord("home", 1, "bob", "secret"));
        const EndSignals watched(*driver.window);
        driver.directory.write("sites.ini", "");
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_TRUE(eventually([&] { return !driver.window->isVisible(); })) << signal;
        EXPECT_NE(driver.directory.read("sites.ini").find("name = home"), std::string::npos) << signal;
    }
}

} // namespace
} // namespace corvel::test
