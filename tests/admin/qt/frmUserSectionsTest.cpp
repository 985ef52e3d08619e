#include "admin/qt/frmUserSections.h"

#include "admin/AdminSupport.h"
#include "widgets/DialogDriver.h"

#include <optional>

namespace corvel {
namespace {

// Section 0 of bob has the ratio 5, section 3 has 3 and a credit of 2 MB.
struct Fixture {
    UserForm shown = InfoToForm(bob(), threeGroups());
    std::optional<SectionsForm> accepted;
    std::optional<std::string> problem;
    frmUserSections dialog{{"bob", sectionsForm(shown.lvwUserSections), TextEncoding::utf8},
                           [this](const SectionsForm& form) {
                               accepted = form;
                               return problem;
                           }};
    DialogDriver driver{dialog};

    Texts sent() { return written(saveSectionsCommands(bob(), shown.lvwUserSections, accepted.value())); }
};

TEST(frmUserSections, ChangedBoxesAreSent) {
    struct Row {
        const char* name;
        const char* box;
        const char* typed;
        Texts sent;
    };
    const std::vector<Row> table = {
        {"nothing", "txtRatio_0", "5", {}},
        {"a ratio that reads the same", "txtRatio_0", "05", {"107 SITE change bob ratio 5 0"}},
        {"credits", "txtCredits_4", "2", {"107 SITE change bob credits 2048 4"}},
        {"no number", "txtRatio_3", "x", {"107 SITE change bob ratio 0 3"}},
        {"half a megabyte", "txtCredits_3", "0.5", {"107 SITE change bob credits 512 3"}},
        {"written in full",
         "txtCredits_9",
         "900719925474099.3",
         {"107 SITE change bob credits 922337203685477683 9"}},
        {"the last section", "txtRatio_9", "1", {"107 SITE change bob ratio 1 9"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        Fixture fixture;
        fixture.driver.type(row.box, QString::fromLatin1(row.typed));
        fixture.driver.press(row.box, Qt::Key_Return);
        EXPECT_FALSE(fixture.dialog.isVisible());
        ASSERT_TRUE(fixture.accepted);
        EXPECT_EQ(fixture.sent(), row.sent);
    }
}

TEST(frmUserSections, BoxesStandInRowsAndSelectTheirText) {
    Fixture fixture;
    Texts expected;
    for (int i = 0; i < 10; ++i) {
        const std::string element = "_" + std::to_string(i);
        expected.insert(expected.end(), {"txtRatio" + element, "txtCredits" + element});
        EXPECT_EQ(fixture.driver.find<QLabel>(("lbl" + element).c_str()).text().toStdString(),
                  std::to_string(i));
    }
    expected.insert(expected.end(), {"cmdSave", "cmdCancel"});
    EXPECT_EQ(fixture.driver.tabOrder(), expected);
    EXPECT_EQ(fixture.driver.text("txtRatio_3"), "3");
    EXPECT_EQ(fixture.driver.text("txtCredits_3"), "2");
    fixture.driver.click("txtCredits_3");
    EXPECT_EQ(fixture.driver.find<QLineEdit>("txtCredits_3").selectedText(), QStringLiteral("2"));
    fixture.driver.type("txtCredits_3", QStringLiteral("9"));
    expectUsableByKeys(fixture.dialog);
    EXPECT_FALSE(fixture.accepted);
}

} // namespace
} // namespace corvel
