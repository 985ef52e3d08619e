#include "admin/qt/AccountDialogs.h"

#include "admin/AdminSupport.h"
#include "admin/qt/BatchPanel.h"
#include "admin/qt/frmAddUser.h"
#include "widgets/DialogDriver.h"

namespace corvel {
namespace {

// A dialog over a form, and what became of it: how often it was confirmed, with what at last.
template <typename Dialog, typename Form>
struct Opened {
    Form form;
    TextEncoding encoding = TextEncoding::utf8;
    std::optional<std::string> problem = {};
    int confirmed = 0;
    Dialog dialog{{form, encoding}, [this](const Form& filled) {
                      ++confirmed;
                      form = filled;
                      return problem;
                  }};
    DialogDriver driver{dialog};

    void type(const std::vector<std::pair<const char*, const char*>>& boxes) {
        for (const auto& [name, text] : boxes) {
            driver.type(name, QString::fromUtf8(text));
        }
    }
};
using AddUser = Opened<frmAddUser, AddUserForm>;
using AddGroup = Opened<frmAddGroup, AddGroupForm>;
using CopyUser = Opened<frmCopyUser, CopyUserForm>;
using ChangeUserGroups = Opened<frmChangeUserGroups, ChangeUserGroupsForm>;
using UserSections = Opened<frmUserSections, SectionsForm>;

template <typename Case>
void expectDialogManners(Case opened, const char* confirm, const Texts& tabs) {
    SCOPED_TRACE(opened.dialog.objectName().toStdString());
    QApplication::processEvents();
    EXPECT_EQ(opened.driver.tabOrder(), tabs);
    for (const std::string problem : {"what is wrong", ""}) {
        opened.problem = problem;
        opened.driver.click(confirm);
        EXPECT_EQ(opened.driver.answer(), problem) << "an empty one was told already";
        EXPECT_TRUE(opened.dialog.isVisible());
    }
    opened.problem.reset();
    opened.driver.click(confirm);
    EXPECT_FALSE(opened.dialog.isVisible());
    opened.dialog.show();
    expectUsableByKeys(opened.dialog);
    EXPECT_EQ(opened.confirmed, 3);
}

TEST(AccountDialogs, SayWhatIsWrongAndCloseOnlyWithoutAProblem) {
    expectDialogManners(AddUser{addUserForm(threeGroups())}, "cmdOK",
                        {"txtUserName", "txtPassword", "txtMainGroup", "txtUserFlags", "txtUserTagLine",
                         "txtUserCredits", "txtRatio", "txtNumOfLogins_0", "txtNumOfLogins_1",
                         "txtNumOfLogins_2", "txtUserBwUp", "txtUserBwDn", "lstAllGroup", "txtUserIP",
                         "cmdUserAddDelIp_0", "cmdUserAddDelIp_1", "lstUserIP", "cmdOK", "cmdCancel"});
    expectDialogManners(AddGroup{}, "cmdOK",
                        {"txtGroupname", "txtGroupdescr", "txtGroupGroupslots", "txtGroupLeechslots",
                         "txtGroupVFS", "cmdOK", "cmdCancel"});
    expectDialogManners(CopyUser{copyUserForm(bob())}, "cmdOK",
                        {"txtNewUsername", "cmdOK", "cmdCancel", "txtSourceUsername", "txtSourceUID"});
    expectDialogManners(ChangeUserGroups{changeUserGroupsForm(bob(), threeGroups())}, "cmdOK",
                        {"lstGroups", "lstGAdmin", "cmdOK", "cmdCancel"});
    Texts sections;
    for (const char* const i : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        sections.insert(sections.end(), {std::string("txtRatio_") + i, std::string("txtCredits_") + i});
    }
    sections.insert(sections.end(), {"cmdSave", "cmdCancel"});
    expectDialogManners(UserSections{sectionsForm(bob())}, "cmdSave", sections);
}

TEST(frmAddGroup, EveryBoxReachesItsCommand) {
    AddGroup opened;
    opened.type({{"txtGroupname", "pilots"},
                 {"txtGroupdescr", "who fly"},
                 {"txtGroupGroupslots", "7"},
                 {"txtGroupLeechslots", "02"},
                 {"txtGroupVFS", "/vfs/pilots"}});
    opened.driver.press("txtGroupVFS", Qt::Key_Return);
    const CommandSequence sequence = addGroupSequence(opened.form);
    EXPECT_EQ(written({sequence.first}), Texts{"110 tag -1 SITE grpadd pilots"});
    EXPECT_EQ(sequence.sBegin, "-------------[ BEGIN ]-[ ADDGROUP ]-------------");
    EXPECT_EQ(sequence.sBatchLines, "site change pilots groupslots 7 2\r\n"
                                    "site change pilots groupdescription who fly\r\n"
                                    "site change pilots groupvfsfile /vfs/pilots\r\n");
}

// Group membership is toggled: asked for twice, the account would leave its main group.
TEST(frmAddUser, EveryBoxReachesItsCommand) {
    AddUser opened{addUserForm(threeGroups())};
    DialogDriver& driver = opened.driver;
    EXPECT_EQ(driver.find<QLineEdit>("txtPassword").echoMode(), QLineEdit::Password);
    driver.press("txtMainGroup", Qt::Key_Down);
    EXPECT_TRUE(driver.find<QListWidget>("lstAllGroup").item(0)->isHidden());
    driver.clickRow("lstAllGroup", 1);
    driver.clickRow("lstAllGroup", 2);
    driver.press("txtMainGroup", Qt::Key_Down);
    EXPECT_FALSE(driver.find<QListWidget>("lstAllGroup").item(0)->isHidden());
    opened.type({{"txtUserName", "carl"}, {"txtPassword", "secret"}, {"txtUserIP", "*@1 *@2 x@*"}});
    driver.press("txtUserIP", Qt::Key_Return);
    opened.type({{"txtUserFlags", "3"},
                 {"txtUserTagLine", "hello"},
                 {"txtUserCredits", "3"},
                 {"txtRatio", "5"},
                 {"txtNumOfLogins_0", "2"},
                 {"txtNumOfLogins_1", "1"},
                 {"txtNumOfLogins_2", "4"},
                 {"txtUserBwUp", "100"},
                 {"txtUserBwDn", "200"}});
    driver.click("cmdOK");
    EXPECT_EQ(driver.answer(), "");
    const CommandSequence sequence = addUserSequence(opened.form);
    EXPECT_EQ(sequence.first.sCommand, "SITE gadduser guests carl secret *@1");
    EXPECT_EQ(sequence.sBatchLines, "site addip carl *@2 x@*\r\n"
                                    "site chgrp carl crew\r\n"
                                    "site change carl credits 3072 0\r\n"
                                    "site change carl ratio 5 0\r\n"
                                    "site change carl tagline hello\r\n"
                                    "site change carl logins 2 ftp\r\n"
                                    "site change carl logins 1 telnet\r\n"
                                    "site change carl logins 4 http\r\n"
                                    "site change carl flags 3\r\n"
                                    "site change carl speedlimit 200 100\r\n");
}

TEST(frmAddUser, AMasterIsAddedOnlyAfterAYes) {
    AddUser opened{addUserForm(threeGroups())};
    opened.type({{"txtUserFlags", "3M"}});
    for (const bool isYes : {false, true}) {
        opened.driver.click("cmdOK");
        EXPECT_EQ(opened.driver.answer(isYes ? QMessageBox::Yes : QMessageBox::No),
                  "Warning: you are adding a new [M]aster user. Continue?");
        EXPECT_EQ(opened.confirmed, isYes ? 1 : 0);
        EXPECT_EQ(opened.dialog.isVisible(), !isYes);
    }
    opened.dialog.show();
    opened.driver.click("cmdOK");
    QTest::keyClick(opened.dialog.findChild<QMessageBox*>(), Qt::Key_Return);
    EXPECT_EQ(opened.confirmed, 1) << "the default answer is no";
}

TEST(frmAddUser, MasksAreAddedAndDeletedByButtonsAndEnter) {
    AddUser opened{addUserForm({})};
    DialogDriver& driver = opened.driver;
    const auto masks = [&] {
        std::string texts;
        auto& list = driver.find<QListWidget>("lstUserIP");
        for (int i = 0; i < list.count(); ++i) {
            texts += list.item(i)->text().toStdString() + ";";
        }
        return texts;
    };
    const auto add = [&](const char* mask) {
        opened.type({{"txtUserIP", mask}});
        driver.press("txtUserIP", Qt::Key_Return);
    };
    add(" a@1 ");
    driver.press("txtUserIP", Qt::Key_Enter);
    EXPECT_EQ(masks(), "a@1;") << "a second Enter adds nothing";
    opened.type({{"txtUserIP", "b@2"}});
    driver.click("cmdUserAddDelIp_0");
    add("c@3");
    add("  ");
    EXPECT_EQ(masks(), "a@1;b@2;c@3;");
    driver.clickRow("lstUserIP", 1);
    EXPECT_EQ(driver.text("txtUserIP"), "b@2");
    driver.click("cmdUserAddDelIp_1");
    driver.clickRow("lstUserIP", 0);
    driver.press("lstUserIP", Qt::Key_Return);
    EXPECT_EQ(masks(), "c@3;");
    EXPECT_EQ(opened.confirmed, 0) << "Enter there is not OK";
}

TEST(frmAddUser, SamplesAreSelectedUntilReplaced) {
    for (const char* const name : {"txtUserIP", "txtUserTagLine"}) {
        AddUser opened{addUserForm({})};
        auto& box = opened.driver.find<QLineEdit>(name);
        const QString sample = box.text();
        opened.driver.click(name);
        EXPECT_EQ(box.selectedText(), sample) << name;
        opened.type({{name, "own text"}});
        opened.driver.click("txtPassword");
        opened.driver.click(name);
        EXPECT_FALSE(box.hasSelectedText()) << name;
    }
}

TEST(frmCopyUser, NamesAreCheckedWithoutTheirBlanks) {
    struct Row {
        const char* newName;
        const char* box; // afterwards
        std::optional<std::string> problem;
    };
    const std::vector<Row> table = {
        {" new user ", "newuser", {}},
        {"  ", "", "Please enter a valid username."},
        {"b ob", "bob", "This user already exists !"},
    };
    CopyUser opened{copyUserForm(bob())};
    auto& newName = opened.driver.find<QLineEdit>("txtNewUsername");
    EXPECT_TRUE(QTest::qWaitFor([&] { return newName.hasFocus(); }));
    opened.type({{"txtNewUsername", "[a b]-c_("}, {"txtSourceUID", "9"}});
    EXPECT_EQ(newName.text().toStdString(), "ab-c_(") << "these keys do nothing";
    for (const Row& row : table) {
        opened.problem = ""; // the dialog stays
        newName.setText(QString::fromLatin1(row.newName));
        opened.driver.press("txtNewUsername", Qt::Key_Return);
        EXPECT_EQ(newName.text().toStdString(), row.box);
        EXPECT_EQ(copyUserProblem(opened.form, {bob()}), row.problem);
        EXPECT_EQ(written({copyUserCommand(opened.form)}),
                  Texts{std::string("107 SITE CorvelExt copyuser 7 ") + row.box});
    }
}

// bob is a member of staff and crew and an administrator of crew.
TEST(frmChangeUserGroups, ClicksToggleOneEntryEach) {
    struct Row {
        const char* name;
        std::vector<int> groups, admins; // rows that are clicked
        Texts sent;
    };
    const std::vector<Row> table = {
        {"nothing", {}, {}, {}},
        {"out of one, into another", {0, 1}, {}, {"107 SITE chgrp bob staff guests "}},
        {"groups before administrators",
         {0},
         {1},
         {"107 SITE chgrp bob staff ", "107 SITE change bob admingroup guests"}},
        {"twice is not at all", {2, 2}, {0, 0}, {}},
        {"admin of others",
         {},
         {0, 2},
         {"107 SITE change bob admingroup staff", "107 SITE change bob admingroup crew"}},
    };
    for (const Row& row : table) {
        ChangeUserGroups opened{changeUserGroupsForm(bob(), threeGroups())};
        EXPECT_EQ(opened.dialog.windowTitle().toStdString(), "Change groups - bob");
        for (const int index : row.groups) {
            opened.driver.clickRow("lstGroups", index);
        }
        for (const int index : row.admins) {
            opened.driver.clickRow("lstGAdmin", index);
        }
        opened.driver.click("cmdOK");
        EXPECT_EQ(written(changeUserGroupsCommands(bob(), opened.form)), row.sent) << row.name;
    }
}

// Two groups that look the same on screen are still two groups, each with its own bytes.
TEST(frmChangeUserGroups, NamesComeBackAsTheServersBytes) {
    const GroupTable groups = ParseGroupTable(1, Lines{"p | 5 | caf\xE9\x07 | 1"}).table;
    ChangeUserGroups opened{changeUserGroupsForm(bob(), groups), TextEncoding::windows1252};
    EXPECT_EQ(opened.driver.find<QListWidget>("lstGroups").item(0)->text().toStdString(), "caf\u00E9\u2407");
    opened.driver.clickRow("lstGroups", 0);
    opened.driver.press("lstGroups", Qt::Key_Return);
    EXPECT_EQ(written(changeUserGroupsCommands(bob(), opened.form)),
              (Texts{"107 SITE chgrp bob caf\xE9\x07 "}));
}

// Section 0 of bob has the ratio 5, section 3 has 3 and a credit of 2 MB.
TEST(frmUserSections, ChangedBoxesAreSent) {
    struct Row {
        const char* box;
        const char* typed;
        Texts sent;
    };
    const std::vector<Row> table = {
        {"txtRatio_0", "5", {}},
        {"txtRatio_0", "05", {"107 SITE change bob ratio 5 0"}},
        {"txtCredits_4", "2", {"107 SITE change bob credits 2048 4"}},
        {"txtRatio_3", "x", {"107 SITE change bob ratio 0 3"}},
        {"txtCredits_3", "0.5", {"107 SITE change bob credits 512 3"}},
        {"txtCredits_9", "900719925474099.3", {"107 SITE change bob credits 922337203685477683 9"}},
    };
    for (const Row& row : table) {
        UserSections opened{sectionsForm(bob())};
        EXPECT_EQ(opened.dialog.windowTitle().toStdString(), "Sections - bob");
        opened.driver.click("txtCredits_0");
        EXPECT_TRUE(opened.driver.find<QLineEdit>("txtCredits_0").hasSelectedText());
        opened.type({{row.box, row.typed}});
        opened.driver.press(row.box, Qt::Key_Return);
        EXPECT_EQ(written(saveSectionsCommands(bob(), opened.form)), row.sent) << row.box;
    }
}

TEST(BatchPanel, ATickSendsItsOwnBoxesAlone) {
    const std::vector<std::pair<const char*, const char*>> boxes = {
        {"txtBatchFlags", "3"},    {"txtBatchLogins_0", "2"},           {"txtBatchLogins_1", ""},
        {"txtBatchLogins_2", "4"}, {"txtBatchHomePath", "/home/%user"}, {"txtBatchVFS", "/vfs"},
        {"txtBatchTagline", "hi"}, {"txtBatchSpeedDn", "-1"},           {"txtBatchSpeedUp", "9"},
    };
    const std::vector<std::pair<const char*, const char*>> ticks = {
        {"chkBatchFlags", "site change bob flags 3\r\n"},
        {"chkBatchLogins", "site change bob logins 2 ftp\r\nsite change bob logins 4 http\r\n"},
        {"chkBatchHomePath", "site change bob homedir /home/%user\r\n"},
        {"chkBatchVFS", "site change bob vfsfile /vfs\r\n"},
        {"chkBatchTagLine", "site change bob tagline hi\r\n"},
        {"chkBatchSpeed", "site change bob speedlimits -1 9\r\n"},
        {"chkBatchCommand", "site change bob credits 45000\r\n"},
    };
    BatchForm performed;
    BatchPanel panel([&](const BatchForm& form) { performed = form; });
    DialogDriver driver(panel);
    for (const auto& [name, text] : boxes) {
        driver.type(name, QString::fromLatin1(text));
        EXPECT_FALSE(driver.find<QLineEdit>(name).accessibleName().isEmpty()) << name;
    }
    for (const auto& [tick, lines] : ticks) {
        driver.press(tick, Qt::Key_Space);
        driver.click("cmdBatchPerform");
        EXPECT_EQ(batchSequence(performed, Lines{"bob"})->sBatchLines, lines);
        driver.press(tick, Qt::Key_Space);
    }
}

TEST(BatchPanel, WhatWasTypedOutlivesAChangeOfSite) {
    BatchForm performed;
    BatchPanel panel([&](const BatchForm& form) { performed = form; });
    DialogDriver driver(panel);
    driver.find<QLineEdit>("txtBatchTagline").setText(QStringLiteral("\u00E9"));
    for (const auto& [encoding, bytes] :
         {std::pair(TextEncoding::windows1252, "\xE9"), std::pair(TextEncoding::utf8, "\xC3\xA9")}) {
        panel.setEncoding(encoding);
        driver.click("cmdBatchPerform");
        EXPECT_EQ(performed.txtBatchTagline, bytes);
    }
}

} // namespace
} // namespace corvel
