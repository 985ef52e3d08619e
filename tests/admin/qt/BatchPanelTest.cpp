#include "admin/qt/BatchPanel.h"

#include "widgets/DialogDriver.h"

#include <QCheckBox>

#include <array>
#include <optional>
#include <string_view>

namespace corvel {
namespace {

constexpr std::array<std::string_view, 1> bobAlone = {"bob"};

struct Fixture {
    std::vector<BatchForm> performed;
    BatchPanel panel{[this](const BatchForm& form) { performed.push_back(form); }};
    DialogDriver driver{panel};

    // Fills every box with a text of its own.
    void fill() {
        const std::vector<std::pair<const char*, const char*>> boxes = {
            {"txtBatchFlags", "3"},    {"txtBatchLogins_0", "2"},           {"txtBatchLogins_1", ""},
            {"txtBatchLogins_2", "4"}, {"txtBatchHomePath", "/home/%user"}, {"txtBatchVFS", "/vfs"},
            {"txtBatchTagline", "hi"}, {"txtBatchSpeedDn", "-1"},           {"txtBatchSpeedUp", "9"},
        };
        for (const auto& [name, text] : boxes) {
            driver.type(name, QString::fromLatin1(text));
        }
    }
    std::string lines() {
        const std::optional<CommandSequence> sequence = batchSequence(performed.back(), bobAlone);
        return sequence ? sequence->sBatchLines : "";
    }
};

TEST(BatchPanel, ATickSendsItsOwnBoxesAlone) {
    struct Row {
        const char* tick;
        const char* lines;
    };
    const std::vector<Row> table = {
        {"chkBatchFlags", "site change bob flags 3\r\n"},
        {"chkBatchLogins", "site change bob logins 2 ftp\r\nsite change bob logins 4 http\r\n"},
        {"chkBatchHomePath", "site change bob homedir /home/%user\r\n"},
        {"chkBatchVFS", "site change bob vfsfile /vfs\r\n"},
        {"chkBatchTagLine", "site change bob tagline hi\r\n"},
        {"chkBatchSpeed", "site change bob speedlimits -1 9\r\n"},
        {"chkBatchCommand", "site change bob credits 45000\r\n"},
    };
    Fixture fixture;
    fixture.fill();
    fixture.driver.click("cmdBatchPerform");
    EXPECT_EQ(fixture.lines(), "") << "nothing ticked";
    for (const Row& row : table) {
        SCOPED_TRACE(row.tick);
        fixture.driver.press(row.tick, Qt::Key_Space);
        fixture.driver.click("cmdBatchPerform");
        EXPECT_EQ(fixture.lines(), row.lines);
        fixture.driver.press(row.tick, Qt::Key_Space);
    }
    EXPECT_EQ(fixture.performed.size(), table.size() + 1);
}

TEST(BatchPanel, WhatWasTypedOutlivesAChangeOfSite) {
    Fixture fixture;
    fixture.driver.find<QLineEdit>("txtBatchTagline").setText(QStringLiteral("\u00E9"));
    fixture.panel.setEncoding(TextEncoding::windows1252);
    fixture.driver.click("cmdBatchPerform");
    fixture.panel.setEncoding(TextEncoding::utf8);
    fixture.driver.click("cmdBatchPerform");
    ASSERT_EQ(fixture.performed.size(), 2U);
    EXPECT_EQ(fixture.performed[0].txtBatchTagline, "\xE9");
    EXPECT_EQ(fixture.performed[1].txtBatchTagline, "\xC3\xA9");
}

TEST(BatchPanel, EveryBoxSaysWhatItIs) {
    Fixture fixture;
    EXPECT_EQ(fixture.panel.objectName(), QStringLiteral("picUserBatchContainer"));
    for (const auto* const box : fixture.panel.findChildren<QLineEdit*>()) {
        EXPECT_FALSE(box->accessibleName().isEmpty()) << box->objectName().toStdString();
    }
    for (const char* const name : {"txtBatchSpeedDn", "txtBatchSpeedUp"}) {
        EXPECT_EQ(fixture.driver.find<QLineEdit>(name).toolTip().toStdString(),
                  "set this to -1 or 0 for uncapped speed");
    }
}

} // namespace
} // namespace corvel
