#include "admin/qt/frmCopyUser.h"

#include "admin/AdminSupport.h"
#include "widgets/DialogDriver.h"

#include <QTimer>

#include <optional>

namespace corvel {
namespace {

// Copies bob on a site where he is the only user.
struct Fixture {
    std::vector<Command> sent;
    frmCopyUser dialog{{copyUserForm(bob()), TextEncoding::utf8}, [this](const CopyUserForm& form) {
                           std::optional<std::string> problem = copyUserProblem(form, {bob()});
                           if (!problem) {
                               sent = {copyUserCommand(form)};
                           }
                           return problem;
                       }};
    DialogDriver driver{dialog};
};

TEST(frmCopyUser, NamesAreCheckedWithoutTheirBlanks) {
    struct Row {
        const char* name;
        const char* newName;
        const char* message;
        const char* box; // afterwards
        Texts sent;
    };
    const Texts copied = {"107 SITE CorvelExt copyuser 7 newuser"};
    const std::vector<Row> table = {
        {"blanks", " new user ", "", "newuser", copied},
        {"nothing but blanks", "  ", "Please enter a valid username.", "", {}},
        {"a taken name", "b ob", "This user already exists !", "bob", {}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        Fixture fixture;
        fixture.driver.find<QLineEdit>("txtNewUsername").setText(QString::fromLatin1(row.newName));
        fixture.driver.press("txtNewUsername", Qt::Key_Return);
        EXPECT_EQ(fixture.driver.answer(), row.message);
        EXPECT_EQ(fixture.driver.text("txtNewUsername"), row.box);
        EXPECT_EQ(written(fixture.sent), row.sent);
        EXPECT_EQ(fixture.dialog.isVisible(), row.sent.empty());
    }
}

TEST(frmCopyUser, SomeKeysDoNothingInTheNewName) {
    Fixture fixture;
    fixture.driver.type("txtNewUsername", QStringLiteral("[a b]-c_("));
    EXPECT_EQ(fixture.driver.text("txtNewUsername"), "ab-c_(");
    QTest::keyClick(&fixture.driver.find<QLineEdit>("txtNewUsername"), Qt::Key_Backspace);
    EXPECT_EQ(fixture.driver.text("txtNewUsername"), "ab-c_");
}

TEST(frmCopyUser, TheNewNameGetsTheFocusOnce) {
    Fixture fixture;
    auto& newName = fixture.driver.find<QLineEdit>("txtNewUsername");
    EXPECT_TRUE(QTest::qWaitFor([&] { return newName.hasFocus(); }));
    EXPECT_FALSE(fixture.driver.find<QTimer>("tmrSetfocus").isActive());
    EXPECT_EQ(fixture.driver.tabOrder(),
              (Texts{"txtNewUsername", "cmdOK", "cmdCancel", "txtSourceUsername", "txtSourceUID"}));
    EXPECT_EQ(fixture.driver.text("txtSourceUsername"), "bob");
    QTest::keyClicks(&fixture.driver.find<QLineEdit>("txtSourceUID"), QStringLiteral("9"));
    EXPECT_EQ(fixture.driver.text("txtSourceUID"), "7");
    expectUsableByKeys(fixture.dialog);
}

} // namespace
} // namespace corvel
