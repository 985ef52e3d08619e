#include "browser/FileOperations.h"
#include "browser/qt/frmBrowserCHATTR.h"
#include "browser/qt/frmBrowserCHMOD.h"
#include "browser/qt/frmBrowserNUKE.h"
#include "ui/DemoWindow.h"
#include "widgets/DialogDriver.h"

#include <QCheckBox>
#include <QRegularExpression>
#include <QTcpSocket>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int accessColumn = 5;

// Logged in as a master, in "/pub".
class BrowserDialogs : public DemoWindow {
  protected:
    void SetUp() override {
        startOn(browserTab,
                "site_nuke_syntax = site nuke %(name) %(mult) %(reason)\nsite_nuke_replace_spaces = _\n");
        driver_->window->resize(1000, 700);
        ASSERT_TRUE(driver_->waitForRow(u"pub"_s));
        enter(u"pub"_s);
    }

    void enter(const QString& name) {
        driver_->doubleClick(name);
        ASSERT_TRUE(eventually([&] { return driver_->isIdle(1) && driver_->rowOf(name) < 0; }));
    }

    void run(const char* command) { driver_->window->program().menus().ExecuteMenuCommand(1, command); }

    // Selects a row and opens its dialog by the command of a menu.
    template <typename Dialog>
    Dialog& open(const QString& row, const char* command) {
        driver_->select(row);
        run(command);
        return *driver_->window->findChild<Dialog*>();
    }

    // A control of the open CHATTR dialog; the window has other ones of these names.
    template <typename Widget>
    Widget& inChattr(const char* name) {
        return *driver_->window->findChild<frmBrowserCHATTR*>()->findChild<Widget*>(QLatin1String(name));
    }

    // Waits until the open CHATTR dialog can be confirmed.
    bool waitForAnswer() {
        return eventually([&] { return inChattr<QPushButton>("Command1").isEnabled(); });
    }

    void confirmChattr() {
        QTest::mouseClick(&inChattr<QPushButton>("Command1"), Qt::LeftButton);
        waitForClose<frmBrowserCHATTR>();
    }

    template <typename Dialog>
    void waitForClose() {
        ASSERT_TRUE(eventually(
            [&] { return driver_->isIdle(1) && driver_->window->findChild<Dialog*>() == nullptr; }));
    }

    QString access(const QString& name) {
        driver_->refresh();
        const QAbstractItemModel& model = *driver_->browser().model();
        return model.index(driver_->rowOf(name), accessColumn).data().toString();
    }

    // What was sent to the server, and its answers, since the last call; without the times.
    std::string replies() {
        const QString all = QString::fromStdString(driver_->session(1).browserReplyLog.text());
        QString added = all.mid(std::exchange(repliesRead_, all.size()));
        return added.remove(QRegularExpression(u"\\[[0-9][^]]*\\] |\r"_s)).toStdString();
    }

    qsizetype repliesRead_ = 0;
};

TEST_F(BrowserDialogs, SetPermissions) {
    auto& form = open<frmBrowserCHMOD>(u"say \"hello\".txt"_s, "chmod");
    DialogDriver dialog(form);
    EXPECT_EQ(form.windowTitle(), u"SITE CHMOD"_s);
    EXPECT_EQ(dialog.text("txtPath"), "/pub/say \"hello\".txt");
    EXPECT_EQ(dialog.text("txtCHMODval"), "644");
    for (const char* const box : {"chkX_0", "chkX_1", "chkX_3", "chkX_6"}) {
        EXPECT_TRUE(dialog.find<QCheckBox>(box).isChecked()) << box;
        dialog.press(box, Qt::Key_Space);
    }
    EXPECT_EQ(dialog.text("txtCHMODval"), "000");
    dialog.type("txtCHMODval", u"751"_s);
    dialog.press("chkX_8", Qt::Key_Space);
    EXPECT_EQ(dialog.text("txtCHMODval"), "750");

    // The entry is the one that was selected, even if the list shows another directory by now.
    driver_->window->program().browser().root(1);
    ASSERT_TRUE(driver_->waitForNoRow(u"tools"_s));
    dialog.press("txtCHMODval", Qt::Key_Return);
    waitForClose<frmBrowserCHMOD>();
    EXPECT_EQ(replies(), "> SITE chmod 750 /pub/say \"hello\".txt\n200 SITE CHMOD command successful");
    enter(u"pub"_s);
    EXPECT_EQ(access(u"say \"hello\".txt"_s), u"-rwxr-x---"_s);
}

TEST_F(BrowserDialogs, HideADirectory) {
    {
        auto& form = open<frmBrowserCHATTR>(u"empty"_s, "chattr");
        DialogDriver dialog(form);
        EXPECT_EQ(form.windowTitle(), u"Hide directory (SITE CHATTR)"_s);
        EXPECT_EQ(dialog.find<QListWidget>("lstUsers").count(), 60);
        EXPECT_EQ(dialog.find<QListWidget>("lstGroups").count(), 8);
        ASSERT_TRUE(waitForAnswer());
        EXPECT_EQ(dialog.text("txtCurrent"), "<not set>");
        dialog.clickRow("lstUsers", 2);
        dialog.clickRow("lstUsers", 0);
        dialog.clickRow("lstGroups", 1);
        dialog.press("chkFlags", Qt::Key_Space);
        dialog.type("txtFlags", u"3"_s);
        dialog.press("txtFlags", Qt::Key_Return);
    }
    waitForClose<frmBrowserCHATTR>();
    const SiteSession& session = driver_->session(1);
    const std::string arguments =
        "3 -" + session.Users[0].sName + " -" + session.Users[2].sName + " =" + session.Groups[1].sName;
    EXPECT_EQ(replies(), "> site chattr +h \"empty\" \" " + arguments + "\"\n200 CHATTR command successful");

    // An answer that comes after its dialog was closed is not taken for the next one's.
    open<frmBrowserCHATTR>(u"empty"_s, "chattr").reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    open<frmBrowserCHATTR>(u"two  blanks"_s, "chattr");
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(inChattr<QLineEdit>("txtCurrent").text(), u"<not set>"_s);
    confirmChattr();
    EXPECT_EQ(replies(), "");

    open<frmBrowserCHATTR>(u"empty"_s, "chattr");
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(inChattr<QLineEdit>("txtCurrent").text().toStdString(), arguments);
    confirmChattr();
    EXPECT_EQ(replies(), "\n> site chattr -h \"empty\"\n200 CHATTR command successful");
}

TEST_F(BrowserDialogs, HideNothingBeforeTheServerHasAnswered) {
    for (QTcpSocket* const client : server_.findChildren<QTcpSocket*>()) {
        client->blockSignals(true); // the server hears nothing more on this connection
    }
    auto& form = open<frmBrowserCHATTR>(u"empty"_s, "chattr");
    DialogDriver dialog(form);
    QTest::keyClick(&form, Qt::Key_Return);
    ASSERT_TRUE(form.isVisible());
    driver_->chooseSitesMenu(1);
    ASSERT_TRUE(driver_->logIn(1));
    EXPECT_FALSE(dialog.find<QPushButton>("Command1").isEnabled()) << "the answer was lost";
    form.reject();
    waitForClose<frmBrowserCHATTR>();

    enter(u"pub"_s);
    driver_->window->program().browser().send(1, {fileCommand("RMD ", "empty")});
    ASSERT_TRUE(driver_->waitForIdle());
    open<frmBrowserCHATTR>(u"empty"_s, "chattr");
    const auto& txtCurrent = inChattr<QLineEdit>("txtCurrent");
    ASSERT_TRUE(eventually([&] { return !txtCurrent.text().isEmpty(); }));
    EXPECT_TRUE(txtCurrent.text().startsWith(u"550 empty"_s));
    replies();
    DialogDriver refused(*driver_->window->findChild<frmBrowserCHATTR*>());
    refused.click("Command1");
    EXPECT_NE(refused.answer(QMessageBox::No), "") << "it would clear what nobody has seen";
    EXPECT_EQ(replies(), "");
    refused.click("Command1");
    refused.answer(QMessageBox::Yes);
    waitForClose<frmBrowserCHATTR>();
    EXPECT_TRUE(replies().starts_with("\n> site chattr -h \"empty\"\n"));
}

TEST_F(BrowserDialogs, NukeARelease) {
    auto& form = open<frmBrowserNUKE>(u"Holiday pictures"_s, "nuke");
    DialogDriver dialog(form);
    EXPECT_EQ(form.windowTitle(), u"SITE NUKE"_s);
    EXPECT_EQ(dialog.text("txtPath"), "/pub");
    EXPECT_EQ(dialog.text("txtName"), "Holiday pictures");
    EXPECT_EQ(form.focusWidget()->objectName(), u"txtMultip"_s);
    QTest::keyClicks(form.focusWidget(), u"3"_s);
    QTest::keyClick(form.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(form.focusWidget()->objectName(), u"txtReason"_s);
    ASSERT_TRUE(form.isVisible());
    QTest::keyClicks(form.focusWidget(), u"bad release"_s);
    QTest::keyClick(form.focusWidget(), Qt::Key_Enter);
    waitForClose<frmBrowserNUKE>();
    EXPECT_TRUE(replies().starts_with("> site nuke Holiday pictures 3 bad_release\n"
                                      "200-NUKE of Holiday pictures: bad_release\n"));
}

TEST_F(BrowserDialogs, OpenForTheirKindOfRowAlone) {
    driver_->select(u"README"_s);
    run("chattr");
    driver_->browser().setCurrentRow(-1);
    for (const char* const command : {"chmod", "chattr", "nuke"}) {
        run(command);
    }
    EXPECT_EQ(driver_->window->findChild<QDialog*>(), nullptr);
}

// What the boxes cannot show comes back as it was.
TEST(BrowserDialogForms, KeepTheBytesOfNames) {
    const std::string name = "\xE4 \"%(x)\" \n\x01\xFF";
    std::vector<std::string> confirmed;
    std::optional<std::string> problem = "not now";
    frmBrowserCHMOD chmod({{.txtPath = name}, TextEncoding::utf8}, [&](const ChmodForm& form) {
        confirmed.push_back(form.txtPath);
        return problem;
    });
    DialogDriver(chmod).click("cmdOK");
    EXPECT_EQ(DialogDriver(chmod).answer(), "not now");
    frmBrowserNUKE nuke({{.txtName = name}, true, TextEncoding::utf8}, [&](const NukeForm& form) {
        confirmed.push_back(form.txtName);
        return problem;
    });
    DialogDriver(nuke).click("cmdOK");
    EXPECT_EQ(DialogDriver(nuke).answer(), "not now");
    frmBrowserCHATTR chattr({{.sName = name, .lstUsers = {{name}}}, TextEncoding::utf8},
                            [&](const ChattrForm& form) {
                                confirmed.push_back(form.sName);
                                confirmed.push_back(form.lstUsers[0].sText);
                                confirmed.push_back(form.txtCurrent);
                                return problem;
                            });
    chattr.setAnswer({.txtCurrent = name}, TextEncoding::windows1252);
    DialogDriver(chattr).click("Command1");
    EXPECT_EQ(DialogDriver(chattr).answer(), "not now");
    EXPECT_EQ(confirmed, std::vector<std::string>(5, name));
}

} // namespace
} // namespace corvel::test
