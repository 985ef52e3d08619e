#pragma once

#include "common/Ports.h"
#include "demo/DemoServer.h"
#include "support/TemporaryDirectory.h"
#include "ui/frmMain.h"
#include "widgets/ReportView.h"

#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace corvel::test {

// Lets events happen until condition holds; false when it does not within the time that nothing here takes.
bool eventually(const std::function<bool()>& condition);

// One site of a sites.ini.
std::string siteRecord(const std::string& name, int port, const std::string& user,
                       const std::string& password);

// The main window over a directory and a store of its own, driven as a person would: by its controls' names.
class WindowDriver {
  public:
    // Starts the window with these files; an empty text means no file.
    explicit WindowDriver(const std::string& sitesFile, const std::string& settingsFile = {});

    // Closes the window as a person does and starts another on the same files and store.
    void restart();
    void close();

    // The control of that name, when everything that has changed is shown. One that nobody has looked at yet
    // is looked for on every tab of every site.
    template <typename Widget>
    Widget& find(const char* name) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        auto* widget = window->findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr) {
            lookAtEverything();
            widget = window->findChild<Widget*>(QLatin1String(name));
        }
        if (widget == nullptr) {
            throw std::runtime_error(std::string("no control is named ") + name);
        }
        return *widget;
    }

    const SiteSession& session(int site) { return window->program().site(site).session; }

    void showTab(int index);
    void click(const char* button);
    QString text(const char* box);
    void setText(const char* box, const QString& text);
    // Clicks on the row of a list whose column reads text.
    void clickRow(const char* list, int column, const QString& text);

    // Logs in on a site by its menu and waits until the root is listed.
    bool logIn(int site);
    // Nothing is outstanding or waiting on the site.
    bool isIdle(int site);
    bool waitForIdle(int site = 1);
    bool waitForNoDialog();

    // The browser of site 1. Rows go by the text of their first column; -1 when there is no such row.
    ReportView& browser();
    int rowOf(const QString& name);
    bool waitForRow(const QString& name);
    bool waitForNoRow(const QString& name);
    QString path();
    void select(const QString& name);
    void doubleClick(const QString& name);
    void press(Qt::Key key);
    void refresh();
    void rename(const QString& name, const QString& newName);

    // Triggers an entry of the sites menu.
    void chooseSitesMenu(int index);
    // Waits for a box of that kind over the window.
    template <typename Box>
    Box* waitForBox() {
        Box* box = nullptr;
        eventually([&] {
            box = nullptr;
            for (Box* candidate : window->findChildren<Box*>()) {
                box = candidate->isVisible() ? candidate : box;
            }
            return box != nullptr;
        });
        return box;
    }
    // Answers the next message box with a button, and gives its text.
    QString answer(int button);
    // Types a text into the next input box and accepts it.
    void answerText(const QString& text);

    TemporaryDirectory directory;
    MemoryStore store;
    std::unique_ptr<frmMain> window;

  private:
    void start();
    void lookAtEverything();
};

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

// The first row of a list with this text in a column; -1 when there is none.
int rowWith(const ReportView& list, int column, const QString& text);

// Whether a window is shown, in the band of those that lie over all others.
bool isTopmost(const QWidget& window);

} // namespace corvel::test
