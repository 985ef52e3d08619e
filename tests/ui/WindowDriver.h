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
#include <vector>

namespace corvel::test {

// Lets events happen until condition holds; false when it does not within the time that nothing here takes.
bool eventually(const std::function<bool()>& condition);

// Drives a dialog or a window as a person does, by the names of its controls.
class Driver {
  public:
    explicit Driver(QWidget& shown) : root_(&shown) { shown.show(); }
    virtual ~Driver() = default;

    // The control of that name, when everything that has changed is shown.
    template <typename Widget>
    Widget& find(const char* name) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        auto* widget = root_->findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr) {
            lookAtEverything();
            widget = root_->findChild<Widget*>(QLatin1String(name));
        }
        if (widget == nullptr) {
            throw std::runtime_error(std::string("no control is named ") + name);
        }
        return *widget;
    }

    QString text(const char* box);
    // Types text in place of what the box holds.
    void setText(const char* box, const QString& text);
    void setTexts(const std::vector<std::pair<const char*, QString>>& boxes);
    void press(const char* name, Qt::Key key) { QTest::keyClick(&find<QWidget>(name), key); }
    void click(const char* name) { QTest::mouseClick(&find<QWidget>(name), Qt::LeftButton); }
    // Clicks on a row of a list box.
    void clickRow(const char* list, int row);
    // Clicks on the row of a list whose column reads text.
    void clickRow(const char* list, int column, const QString& text);

    // Waits for a box of that kind over the window.
    template <typename Box>
    Box* waitForBox() {
        Box* box = nullptr;
        eventually([&] {
            box = nullptr;
            for (Box* candidate : root_->findChildren<Box*>()) {
                box = candidate->isVisible() ? candidate : box;
            }
            return box != nullptr;
        });
        return box;
    }
    bool waitForNoDialog();
    // Answers the next message box with a button, and gives its text.
    QString answer(int button);

  protected:
    Driver() = default;
    virtual void lookAtEverything() {}

    QWidget* root_ = nullptr;
};

// The main window over a directory and a store of its own. A control that nobody has looked at yet is looked
// for on every tab of every site.
class WindowDriver : public Driver {
  public:
    // Starts the window with these files; an empty text means no file.
    explicit WindowDriver(const std::string& sitesFile, const std::string& settingsFile = {});

    void start();
    // Closes the window as a person does; restart starts another on the same files and store.
    void close() { window->close(); }
    void restart();

    const SiteSession& session(int site) { return window->program().site(site).session; }

    void showTab(int index);
    // Logs in on a site by its menu and waits until the root is listed.
    bool logIn(int site);
    // Nothing is outstanding or waiting on the site.
    bool isIdle(int site);
    bool waitForIdle(int site = 1);

    // The browser of site 1. Rows go by the text of their first column; -1 when there is no such row.
    ReportView& browser() { return find<ReportView>("lvwBrowser_1"); }
    int rowOf(const QString& name);
    bool waitForRow(const QString& name);
    bool waitForNoRow(const QString& name);
    QString path() { return text("txtBrowserPWD_1"); }
    void select(const QString& name) { browser().setCurrentRow(rowOf(name)); }
    void doubleClick(const QString& name);
    using Driver::press;
    void press(Qt::Key key) { QTest::keyClick(&browser(), key); }
    void refresh();
    void rename(const QString& name, const QString& newName);

    // Runs the command of a custom menu on site 1.
    void run(const std::string& command) {
        window->program().menus().ExecuteMenuCommand(1, menuCommand(command, {}));
    }
    // Triggers an entry of the sites menu.
    void chooseSitesMenu(int index);
    // Types a text into the next input box and accepts it.
    void answerText(const QString& text);

    TemporaryDirectory directory;
    MemoryStore store;
    std::unique_ptr<frmMain> window;

  private:
    void lookAtEverything() override;
};

// The first row of a list with this text in a column; -1 when there is none.
int rowWith(const ReportView& list, int column, const QString& text);

// The question about a certificate, whichever window it is about; null where none comes.
QWidget* waitForCertificateQuestion();

// One site of a sites.ini.
std::string siteRecord(const std::string& name, int port, const std::string& user,
                       const std::string& password, bool isEncrypted = false);

// The tabs of the window.
enum Tab { consoleTab, activityTab, browserTab, statsTab, usersTab, groupsTab };

// The window over two sites of the program's own server, home and backup.
class DemoWindow : public testing::Test {
  protected:
    explicit DemoWindow(const DemoOptions& options = {}) : server_(options) { EXPECT_TRUE(server_.listen()); }

    // Starts the window with a settings.ini of these lines.
    void start(const std::string& settings = {});
    // Starts it with a tab on top and logged in on the first site.
    void startOn(int tab, const std::string& settings = {});

    DemoServer server_;
    std::unique_ptr<WindowDriver> driver_;
};

} // namespace corvel::test
