#include "admin/qt/frmAddUser.h"

#include "admin/AdminSupport.h"
#include "widgets/DialogDriver.h"

#include <optional>

namespace corvel {
namespace {

// On a site with the user bob and the groups staff, guests and crew.
struct Fixture {
    std::optional<CommandSequence> started;
    frmAddUser dialog{{addUserForm(threeGroups()), TextEncoding::utf8}, [this](const AddUserForm& form) {
                          std::optional<std::string> problem = addUserProblem(form, {bob()});
                          if (!problem) {
                              started = addUserSequence(form);
                          }
                          return problem;
                      }};
    DialogDriver driver{dialog};

    void fill() {
        driver.type("txtUserName", QStringLiteral("carl"));
        driver.type("txtPassword", QStringLiteral("secret"));
        auto& group = driver.find<QComboBox>("txtMainGroup");
        group.setFocus();
        QTest::keyClick(&group, Qt::Key_Down);
        addMask(QStringLiteral("*@10.0.0.1"));
    }
    void addMask(const QString& mask) {
        driver.type("txtUserIP", mask);
        driver.press("txtUserIP", Qt::Key_Return);
    }
    Texts masks() {
        Texts texts;
        auto& list = driver.find<QListWidget>("lstUserIP");
        for (int i = 0; i < list.count(); ++i) {
            texts.push_back(list.item(i)->text().toStdString());
        }
        return texts;
    }
};

TEST(frmAddUser, EveryBoxReachesItsCommand) {
    Fixture fixture;
    fixture.fill();
    fixture.addMask(QStringLiteral("*@10.0.0.2 x@*"));
    fixture.driver.clickRow("lstAllGroup", 2);
    const std::vector<std::pair<const char*, const char*>> boxes = {
        {"txtUserFlags", "3"},     {"txtUserTagLine", "hello"}, {"txtUserCredits", "3"},
        {"txtRatio", "5"},         {"txtNumOfLogins_0", "2"},   {"txtNumOfLogins_1", "1"},
        {"txtNumOfLogins_2", "4"}, {"txtUserBwUp", "100"},      {"txtUserBwDn", "200"},
    };
    for (const auto& [name, text] : boxes) {
        fixture.driver.type(name, QString::fromLatin1(text));
    }
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(), "");
    EXPECT_FALSE(fixture.dialog.isVisible());
    ASSERT_TRUE(fixture.started);
    EXPECT_EQ(fixture.started->first.sCommand, "SITE gadduser staff carl secret *@10.0.0.1");
    EXPECT_EQ(fixture.started->sBatchLines, "site addip carl *@10.0.0.2 x@*\r\n"
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

TEST(frmAddUser, WhatIsWrongIsSaidAndTheDialogStays) {
    Fixture fixture;
    fixture.fill();
    fixture.driver.type("txtUserName", QStringLiteral("bob"));
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(), "This user already exists: bob\nGroup: staff\nFlags: 3");
    EXPECT_TRUE(fixture.dialog.isVisible());
    EXPECT_FALSE(fixture.started);
}

TEST(frmAddUser, AMasterIsAddedOnlyAfterAYes) {
    Fixture fixture;
    fixture.fill();
    fixture.driver.type("txtUserFlags", QStringLiteral("3M"));
    const char* const question = "Warning: you are adding a new [M]aster user. Continue?";
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(QMessageBox::No), question);
    EXPECT_FALSE(fixture.started);
    EXPECT_TRUE(fixture.dialog.isVisible());
    fixture.driver.click("cmdOK");
    auto* const box = fixture.dialog.findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(fixture.started) << "the default answer is no";
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    fixture.driver.click("cmdOK");
    EXPECT_EQ(fixture.driver.answer(QMessageBox::Yes), question);
    EXPECT_TRUE(fixture.started);
}

TEST(frmAddUser, MasksAreAddedAndDeletedByButtonsAndEnter) {
    Fixture fixture;
    fixture.addMask(QStringLiteral(" a@1 "));
    fixture.driver.press("txtUserIP", Qt::Key_Enter);
    EXPECT_EQ(fixture.masks(), (Texts{"a@1"})) << "a second Enter adds nothing";
    fixture.driver.type("txtUserIP", QStringLiteral("b@2"));
    fixture.driver.click("cmdUserAddDelIp_0");
    fixture.addMask(QStringLiteral("c@3"));
    fixture.addMask(QStringLiteral("  "));
    EXPECT_EQ(fixture.masks(), (Texts{"a@1", "b@2", "c@3"}));
    fixture.driver.clickRow("lstUserIP", 1);
    EXPECT_EQ(fixture.driver.text("txtUserIP"), "b@2");
    fixture.driver.click("cmdUserAddDelIp_1");
    EXPECT_EQ(fixture.masks(), (Texts{"a@1", "c@3"}));
    fixture.driver.clickRow("lstUserIP", 0);
    fixture.driver.press("lstUserIP", Qt::Key_Return);
    EXPECT_EQ(fixture.masks(), (Texts{"c@3"}));
    EXPECT_EQ(fixture.driver.answer(), "") << "Enter there is not OK";
}

// Group membership is toggled: asked for twice, the account would leave its main group.
TEST(frmAddUser, TheMainGroupIsNoneOfTheOthers) {
    Fixture fixture;
    fixture.fill();
    auto& groups = fixture.driver.find<QListWidget>("lstAllGroup");
    auto& mainGroup = fixture.driver.find<QComboBox>("txtMainGroup");
    EXPECT_FALSE(mainGroup.isEditable());
    EXPECT_TRUE(groups.item(0)->isHidden());
    fixture.driver.clickRow("lstAllGroup", 1);
    fixture.driver.clickRow("lstAllGroup", 2);
    QTest::keyClick(&mainGroup, Qt::Key_Down);
    EXPECT_FALSE(groups.item(0)->isHidden());
    fixture.driver.click("cmdOK");
    ASSERT_TRUE(fixture.started);
    EXPECT_TRUE(fixture.started->first.sCommand.starts_with("SITE gadduser guests carl"));
    EXPECT_TRUE(fixture.started->sBatchLines.starts_with("site chgrp carl crew\r\n"));
}

TEST(frmAddUser, SamplesAreSelectedUntilReplaced) {
    struct Row {
        const char* box;
        const char* sample;
    };
    for (const Row& row : {Row{"txtUserIP", "*@*"}, Row{"txtUserTagLine", "Too lame to have a tagline"}}) {
        SCOPED_TRACE(row.box);
        Fixture fixture;
        auto& box = fixture.driver.find<QLineEdit>(row.box);
        fixture.driver.click(row.box);
        EXPECT_EQ(box.selectedText().toStdString(), row.sample);
        fixture.driver.type(row.box, QStringLiteral("own text"));
        fixture.driver.click("txtPassword");
        fixture.driver.click(row.box);
        EXPECT_FALSE(box.hasSelectedText());
    }
}

TEST(frmAddUser, KeysReachEverything) {
    Fixture fixture;
    EXPECT_EQ(fixture.driver.tabOrder(),
              (Texts{"txtUserName", "txtPassword", "txtMainGroup", "txtUserFlags", "txtUserTagLine",
                     "txtUserCredits", "txtRatio", "txtNumOfLogins_0", "txtNumOfLogins_1", "txtNumOfLogins_2",
                     "txtUserBwUp", "txtUserBwDn", "lstAllGroup", "txtUserIP", "cmdUserAddDelIp_0",
                     "cmdUserAddDelIp_1", "lstUserIP", "cmdOK", "cmdCancel"}));
    EXPECT_EQ(fixture.driver.find<QLineEdit>("txtPassword").echoMode(), QLineEdit::Password);
    expectUsableByKeys(fixture.dialog);
}

} // namespace
} // namespace corvel
