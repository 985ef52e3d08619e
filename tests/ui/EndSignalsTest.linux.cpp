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

} // namespace
} // namespace corvel::test
