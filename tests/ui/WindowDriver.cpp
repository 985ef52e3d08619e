#include "ui/WindowDriver.h"

#include "config/PlatformFiles.h"

#include <QElapsedTimer>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>

#include <algorithm>

namespace corvel::test {

bool eventually(const std::function<bool()>& condition) {
    constexpr int longest = 20000;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > longest) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

QString Driver::text(const char* box) {
    return find<QLineEdit>(box).text();
}

void Driver::setText(const char* box, const QString& text) {
    auto& edit = find<QLineEdit>(box);
    edit.selectAll();
    edit.del(); // as keys do: what is set by the program is not typed
    edit.insert(text);
}

void Driver::setTexts(const std::vector<std::pair<const char*, QString>>& boxes) {
    for (const auto& [box, typed] : boxes) {
        setText(box, typed);
    }
}

void Driver::clickRow(const char* list, int row) {
    auto& box = find<QAbstractItemView>(list);
    const QModelIndex index = box.model()->index(row, 0);
    QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, box.visualRect(index).center());
}

void Driver::clickRow(const char* list, int column, const QString& text) {
    auto& rows = find<ReportView>(list);
    const QModelIndex index = rows.model()->index(rowWith(rows, column, text), column);
    ASSERT_TRUE(index.isValid()) << text.toStdString();
    rows.scrollTo(index);
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, rows.visualRect(index).center());
}

bool Driver::waitForNoDialog() {
    return eventually([&] { return root_->findChild<QDialog*>() == nullptr; });
}

QString Driver::answer(int button) {
    auto* const box = waitForBox<QMessageBox>();
    if (box == nullptr) {
        return QStringLiteral("no message box");
    }
    const QString text = box->text();
    QTest::mouseClick(box->button(static_cast<QMessageBox::StandardButton>(button)), Qt::LeftButton);
    return text;
}

WindowDriver::WindowDriver(const std::string& sitesFile, const std::string& settingsFile) {
    store.setValue("show_sites_list", "1");
    store.setValue("window_state", "0");
    if (!sitesFile.empty()) {
        directory.write("sites.ini", sitesFile);
        makePrivate(filePath(directory.fileNamed("sites.ini"))); // as the window writes it
    }
    if (!settingsFile.empty()) {
        directory.write("settings.ini", settingsFile);
    }
    start();
}

void WindowDriver::start() {
    window = std::make_unique<frmMain>(store, directory.path());
    root_ = window.get();
    window->start();
}

void WindowDriver::restart() {
    close();
    start();
}

void WindowDriver::showTab(int index) {
    find<QTabWidget>("tabMain").setCurrentIndex(index);
}

void WindowDriver::lookAtEverything() {
    auto& tabs = *window->findChild<QTabWidget*>(QStringLiteral("tabMain"));
    mdlMain& program = window->program();
    const int currentTab = tabs.currentIndex();
    const int currentSite = program.currentSite();
    for (int site = std::min(1, program.siteCount()); site <= program.siteCount(); ++site) {
        program.selectSite(site);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        for (int tab = 0; tab < tabs.count(); ++tab) {
            tabs.setCurrentIndex(tab);
        }
    }
    program.selectSite(currentSite);
    tabs.setCurrentIndex(currentTab);
}

bool WindowDriver::logIn(int site) {
    find<QAbstractItemView>("lvwSites")
        .setCurrentIndex(find<QAbstractItemView>("lvwSites").model()->index(site - 1, 0));
    chooseSitesMenu(0);
    return eventually(
        [&] { return session(site).bLoggedIn && isIdle(site) && !session(site).sBrowserPWD.empty(); });
}

bool WindowDriver::isIdle(int site) {
    return !session(site).bAwaitingReply &&
           std::ranges::all_of(session(site).CommandQueue,
                               [](const Command& slot) { return slot.sCommand.empty(); });
}

bool WindowDriver::waitForIdle(int site) {
    return eventually([&] { return isIdle(site); });
}

int WindowDriver::rowOf(const QString& name) {
    return rowWith(browser(), 0, name);
}

bool WindowDriver::waitForRow(const QString& name) {
    return eventually([&] { return isIdle(1) && rowOf(name) >= 0; });
}

bool WindowDriver::waitForNoRow(const QString& name) {
    return eventually([&] { return isIdle(1) && browser().model()->rowCount() > 0 && rowOf(name) < 0; });
}

void WindowDriver::doubleClick(const QString& name) {
    const QRect place = browser().visualRect(browser().model()->index(rowOf(name), 0));
    QTest::mouseClick(browser().viewport(), Qt::LeftButton, {}, place.center());
    QTest::mouseDClick(browser().viewport(), Qt::LeftButton, {}, place.center());
}

void WindowDriver::refresh() {
    waitForIdle();
    click("cmdBrowser_1");
    waitForIdle();
}

void WindowDriver::rename(const QString& name, const QString& newName) {
    select(name);
    press(Qt::Key_F2);
    auto* const editor = browser().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->insert(newName); // in place of all of it, which is selected
    QTest::keyClick(editor, Qt::Key_Return);
    // The list takes the text only when the event loop turns.
    EXPECT_TRUE(eventually([&] { return browser().viewport()->findChild<QLineEdit*>() == nullptr; }));
}

void WindowDriver::chooseSitesMenu(int index) {
    find<QAction>(("mnuListSites_" + std::to_string(index)).c_str()).trigger();
}

void WindowDriver::answerText(const QString& text) {
    auto* const box = waitForBox<QInputDialog>();
    ASSERT_NE(box, nullptr);
    box->setTextValue(text);
    box->accept();
}

int rowWith(const ReportView& list, int column, const QString& text) {
    const QAbstractItemModel& model = *list.model();
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.index(row, column).data().toString() == text) {
            return row;
        }
    }
    return -1;
}

QWidget* waitForCertificateQuestion() {
    QWidget* question = nullptr;
    eventually([&] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(windows, [](const QWidget* window) {
            return window->isVisible() && window->objectName() == QLatin1String("frmCertificateQuestion");
        });
        question = found == windows.end() ? nullptr : *found;
        return question != nullptr;
    });
    return question;
}

std::string siteRecord(const std::string& name, int port, const std::string& user,
                       const std::string& password, bool isEncrypted) {
    return "name = " + name + "\nhost = 127.0.0.1\nport = " + std::to_string(port) + "\nuser = " + user +
           "\npass = " + password + "\nusesslproxy = " + (isEncrypted ? "1" : "0") + "\n\n";
}

void DemoWindow::start(const std::string& settings) {
    driver_ = std::make_unique<WindowDriver>(siteRecord("home", server_.port(), "demo", "demo") +
                                                 siteRecord("backup", server_.port(), "demo", "demo"),
                                             settings);
}

void DemoWindow::startOn(int tab, const std::string& settings) {
    start(settings);
    driver_->showTab(tab);
    ASSERT_TRUE(driver_->logIn(1));
}

} // namespace corvel::test
