#include "config/qt/frmSitesAddEdit.h"
#include "widgets/DialogDriver.h"

#include <QCheckBox>

#include <optional>
#include <string>
#include <vector>

namespace corvel {
namespace {

// Remembers the forms that the dialog gave and answers with problem.
struct Fixture {
    explicit Fixture(SiteForm form)
        : dialog({.caption = QStringLiteral("Editing site \"a[*]b\""),
                  .okCaption = QStringLiteral("Save changes"),
                  .form = std::move(form)},
                 [this](const SiteForm& given) {
                     forms.push_back(given);
                     return std::optional<std::string>();
                 }) {}

    std::vector<SiteForm> forms;
    frmSitesAddEdit dialog;
    DialogDriver driver{dialog};
};

const SiteForm& anyForm() {
    static const SiteForm form = {.txtSitename = "h\xC3\xB6me",
                                  .txtHostname = "ftp.example",
                                  .txtPort = "2121x",
                                  .txtUsername = "caf\xE9", // from a file in the ANSI code page
                                  .txtPassword = "\xEF\xBB\xBFp=\x01\xFF",
                                  .txtIdent = " i ",
                                  .chkConnectOnStartup = true,
                                  .chkUseSSLProxy = false};
    return form;
}

TEST(SiteEditor, GivesBackEveryByteThatWasLeftAlone) {
    Fixture fixture(anyForm());
    fixture.driver.click("OKButton");
    EXPECT_EQ(fixture.forms, std::vector<SiteForm>{anyForm()});
    EXPECT_FALSE(fixture.dialog.isVisible());
}

TEST(SiteEditor, CanBeUsedWithTheKeyboardAndAScreenReader) {
    Fixture fixture({});
    // Qt takes a single [*] for the place of a "modified" mark, and two of them for the text itself.
    EXPECT_EQ(fixture.dialog.windowTitle(), QStringLiteral("Editing site \"a[*][*]b\""));
    EXPECT_EQ(fixture.driver.find<QLineEdit>("txtPassword").echoMode(), QLineEdit::Password);
    QStringList mnemonics;
    for (const QLabel* label : fixture.dialog.findChildren<QLabel*>()) {
        EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
        mnemonics << label->text().section(u'&', 1).left(1).toLower();
    }
    for (const QCheckBox* box : fixture.dialog.findChildren<QCheckBox*>()) {
        mnemonics << box->text().section(u'&', 1).left(1).toLower();
    }
    EXPECT_FALSE(mnemonics.contains(QString()));
    EXPECT_EQ(mnemonics.removeDuplicates(), 0);
    EXPECT_EQ(mnemonics.size(), 8);
}

} // namespace
} // namespace corvel
