// corvel_pictures DIRECTORY [--dark] [--size WIDTHxHEIGHT]: drives the real window on a demo server of its
// own, with the sample settings, and leaves a picture of every tab, dialog and menu in the directory.
// QT_SCALE_FACTOR=2 gives them at double size. What faultsOf finds goes to standard error; then the exit code
// is 3.

#include "config/Files.h"
#include "demo/DemoServer.h"
#include "tools/Look.h"
#include "ui/DemoHome.h"
#include "ui/WindowDriver.h"

#include <QApplication>
#include <QCheckBox>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyleFactory>
#include <QTabWidget>

#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace corvel;
using namespace corvel::test;

enum Page { console, activity, browser, stats, users, groups, settings, results };

struct Options {
    QDir directory;
    bool dark = false;
    QSize size;
};

Options readOptions(const QApplication& application) {
    QCommandLineParser parser;
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Use a dark palette."));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Of the main window."),
                                  QStringLiteral("width>x<height"), QStringLiteral("1100x700"));
    parser.addOptions({dark, size});
    parser.addPositionalArgument(QStringLiteral("directory"), QStringLiteral("Where the pictures go."));
    parser.process(application);
    const QStringList sides = parser.value(size).split(QLatin1Char('x'));
    if (parser.positionalArguments().size() != 1 || sides.size() != 2) {
        parser.showHelp(2);
    }
    return {.directory = QDir(parser.positionalArguments().front()),
            .dark = parser.isSet(dark),
            .size = {sides[0].toInt(), sides[1].toInt()}};
}

void useDarkPalette() {
    QPalette palette(QColor(45, 45, 45), QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 100, 170));
    palette.setColor(QPalette::Link, QColor(110, 170, 255));
    QApplication::setPalette(palette);
}

std::string sampleSettings() {
    const DemoHome home;
    return readFile(home.directory() + "/settings.ini").bytes;
}

// Takes pictures of one window.
class Photographer {
  public:
    explicit Photographer(const Options& options)
        : directory_(options.directory), driver_(sites(), sampleSettings()) {
        driver_.window->resize(options.size);
    }

    bool isFaulty() const { return isFaulty_; }

    void takeAll() {
        picture("console-before");
        driver_.logIn(1);
        tabs();
        menus();
        browserDialogs();
        userDialogs();
        groupDialogs();
        siteDialog();
        windowDialogs();
        outcome();
        certificates();
        closed();
    }

  private:
    // Of its server, the second one encrypted.
    std::string sites() {
        if (!server_.listen()) {
            throw std::runtime_error(server_.errorText().toStdString());
        }
        return siteRecord("home", server_.port(), "demo", "demo") +
               siteRecord("backup", server_.port(), "demo", "demo", true);
    }

    void save(QWidget& widget, const std::string& name) {
        eventually([&] { return driver_.isIdle(1); });
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        for (const QString& fault : faultsOf(widget)) {
            std::cerr << name << ": " << fault.toStdString() << '\n';
            isFaulty_ = true;
        }
        const QString path = directory_.filePath(QString::fromStdString(name) + QStringLiteral(".png"));
        if (!widget.grab().save(path)) {
            throw std::runtime_error("cannot write " + path.toStdString());
        }
        std::cout << path.toStdString() << '\n';
    }
    void picture(const std::string& name) { save(*driver_.window, name); }

    void show(Page tab) { driver_.find<QTabWidget>("tabMain").setCurrentIndex(tab); }
    void press(const char* button) { driver_.find<QPushButton>(button).click(); }
    void clickRow(const char* list, int row, int column = 1) {
        auto& view = driver_.find<ReportView>(list);
        const QModelIndex index = view.model()->index(row, column);
        view.scrollTo(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
        eventually([&] { return driver_.isIdle(1); });
    }
    // Pictures the dialog that step opens, and cancels it.
    void dialog(const std::string& name, const std::function<void()>& step) {
        step();
        auto* const box = driver_.waitForBox<QDialog>();
        if (box == nullptr) {
            throw std::runtime_error("no dialog for " + name);
        }
        save(*box, name);
        box->reject();
        eventually([] { return QApplication::activeModalWidget() == nullptr; });
    }
    // Pictures the question about the certificate of site 2, and answers it with a button.
    void question(const std::string& name, const char* button) {
        driver_.chooseSitesMenu(0);
        QWidget* const box = waitForCertificateQuestion();
        if (box == nullptr) {
            throw std::runtime_error("no dialog for " + name);
        }
        save(*box, name);
        box->findChild<QPushButton*>(QLatin1String(button))->click();
    }

    void tabs() {
        show(console);
        eventually([&] {
            return driver_.find<QPlainTextEdit>("txtLogFTP_1").toPlainText().contains(QLatin1String("230 "));
        });
        picture("console");
        show(activity);
        picture("activity");
        show(browser);
        driver_.select(QStringLiteral("incoming"));
        picture("browser");
        show(stats);
        picture("stats");
        show(users);
        picture("users-none");
        clickRow("lvwUsers_1", 1);
        picture("users");
        press("cmdUserBatch");
        picture("batch");
        driver_.find<QCheckBox>("chkBatchTagLine").setChecked(true);
        driver_.setText("txtBatchTagline", QStringLiteral("on leave"));
        dialog("frmBatchPreview", [&] { press("cmdBatchPreview"); });
        press("cmdBatchPerform");
        eventually([&] { return driver_.find<ReportView>("lvwBatchResults").model()->rowCount() > 0; });
        picture("batch-results");
        press("cmdUserBatch");
        show(groups);
        clickRow("lvwGroups_1", 1);
        picture("groups");
        show(settings);
        picture("settings");
        show(results);
        picture("results");
    }

    // The menus of the rows that are selected.
    void menus() {
        driver_.window->program().tmrRefreshWho_Timer(1, false);
        eventually([&] { return driver_.isIdle(1); });
        driver_.find<ReportView>("lvwActivity_1").setCurrentRow(1);
        menu(MenuKind::tray, "tray");
        menu(MenuKind::browser, "browser");
        menu(MenuKind::userList, "users");
        menu(MenuKind::groupList, "groups");
        menu(MenuKind::activity, "activity");
    }
    void menu(MenuKind kind, const std::string& name) {
        QMenu* const menu = driver_.window->findChild<CustomMenus*>()->prepare(kind);
        if (menu == nullptr) {
            throw std::runtime_error("no menu for " + name);
        }
        menu->popup({20, 20});
        save(*menu, "menu-" + name);
        menu->close();
    }

    void browserDialogs() {
        const auto choose = [this](const char* command) {
            return [this, command] {
                driver_.window->program().menus().ExecuteMenuCommand(1, menuCommand(command, {}));
            };
        };
        show(browser);
        dialog("frmBrowserCHMOD", choose("chmod"));
        dialog("frmBrowserCHATTR", choose("chattr"));
        dialog("frmBrowserNUKE", choose("nuke"));
    }

    void userDialogs() {
        show(users);
        dialog("frmAddUser", [&] { press("cmdUserAdd"); });
        dialog("frmCopyUser", [&] { press("cmdUserCopy"); });
        dialog("frmChangeUserGroups", [&] { press("cmdUserEditGroups"); });
        dialog("password", [&] { press("cmdUserResetPWD"); });
        dialog("delete-user",
               [&] { QTest::keyClick(&driver_.find<ReportView>("lvwUsers_1"), Qt::Key_Delete); });
        dialog("frmUserSections", [&] {
            auto& list = driver_.find<ReportView>("lvwUserSections");
            const QPoint place = list.visualRect(list.model()->index(0, 0)).center();
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
        });
    }

    void groupDialogs() {
        show(groups);
        dialog("frmAddGroup", [&] { press("cmdGroupAdd"); });
    }

    // What is said of a change that was sent.
    void outcome() {
        show(users);
        driver_.setText("txtUserTagLine", QStringLiteral("Gone fishing"));
        press("cmdUserSaveChanges");
        picture("users-outcome");
        dialog("frmQueue", [&] { driver_.find<QAction>("mnuViewQueue").trigger(); });
    }

    void closed() {
        driver_.window->program().selectSite(1);
        driver_.chooseSitesMenu(1);
        picture("console-closed");
    }

    void siteDialog() {
        dialog("frmSitesAddEdit", [&] {
            driver_.chooseSitesMenu(3);
            driver_.waitForBox<QDialog>();
            // Not the scratch directory, whose name is a trial of its own.
            auto& place = driver_.find<QLabel>("lblPasswordPlace");
            place.setText(place.text().section(QLatin1Char('/'), 0, 0) + QStringLiteral("/home/ann/corvel"));
        });
    }

    void windowDialogs() {
        dialog("frmSettings", [&] { press("cmdSettings"); });
        dialog("about", [&] { driver_.find<QAction>("mnuHelpAbout").trigger(); });
    }

    void certificates() {
        show(console);
        mdlMain& program = driver_.window->program();
        program.selectSite(2);
        dialog("frmCertificate-none", [&] { driver_.chooseSitesMenu(10); });
        question("frmCertificateQuestion", "cmdCertTrust");
        eventually([&] {
            return driver_.find<QLabel>("lblEncryption").text().startsWith(QLatin1String("TLS")) &&
                   driver_.find<QPlainTextEdit>("txtLogFTP_2").toPlainText().contains(QLatin1String("230 "));
        });
        picture("encrypted");
        dialog("frmCertificate", [&] { driver_.chooseSitesMenu(10); });
        driver_.chooseSitesMenu(1);
        driver_.store.setValue("certificate_127.0.0.1_" + std::to_string(server_.port()),
                               std::string(64, '0'));
        question("frmCertificateQuestion-changed", "cmdCertDisconnect");
    }

    bool isFaulty_ = false;
    QDir directory_;
    DemoServer server_{DemoOptions{.tls = DemoTls::offered}};
    WindowDriver driver_;
};

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const Options options = readOptions(application);
    if (options.dark) {
        useDarkPalette();
    }
    try {
        options.directory.mkpath(QStringLiteral("."));
        Photographer photographer(options);
        photographer.takeAll();
        return photographer.isFaulty() ? 3 : 0;
    } catch (const std::exception& failure) {
        std::cerr << "corvel_pictures: " << failure.what() << '\n';
        return 1;
    }
}
