#pragma once

#include "demo/DemoServer.h"
#include "ui/WindowDriver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace corvel::test {

// The window over two sites of the program's own server, home and backup.
class DemoWindow : public testing::Test {
  protected:
    explicit DemoWindow(const DemoOptions& options = {}) : server_(options) { EXPECT_TRUE(server_.listen()); }

    // Starts the window with a settings.ini of these lines.
    void start(const std::string& settings = {}) {
        driver_ = std::make_unique<WindowDriver>(siteRecord("home", server_.port(), "demo", "demo") +
                                                     siteRecord("backup", server_.port(), "demo", "demo"),
                                                 settings);
    }

    // Starts it with a tab on top and logged in on the first site.
    void startOn(int tab, const std::string& settings = {}) {
        start(settings);
        driver_->showTab(tab);
        ASSERT_TRUE(driver_->logIn(1));
    }

    DemoServer server_;
    std::unique_ptr<WindowDriver> driver_;
};

// The tabs of the window.
enum Tab { consoleTab, activityTab, browserTab, statsTab, usersTab, groupsTab };

} // namespace corvel::test
