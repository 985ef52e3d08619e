// What the dialogs of the sites and of the browser have in common: how keys go through them, and what their
// buttons do.

#include "browser/qt/frmBrowserCHATTR.h"
#include "browser/qt/frmBrowserCHMOD.h"
#include "browser/qt/frmBrowserNUKE.h"
#include "config/qt/frmSitesAddEdit.h"
#include "widgets/DialogDriver.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvel {
namespace {

using Problem = std::optional<std::string>;
using Texts = std::vector<std::string>;

// The dialogs, each with what is answered when it is confirmed.
struct Row {
    const char* name;
    std::function<std::unique_ptr<QDialog>(std::function<Problem()>)> make;
    Texts tabOrder; // the confirming button is the last but one, or names itself
    const char* confirm = "cmdOK";
    const char* cancel = "cmdCancel";
    std::function<void(QDialog&, DialogDriver&)> prepare = [](QDialog&, DialogDriver&) {};
};

template <typename Dialog, typename Form, typename Opening>
auto maker(Opening opening) {
    return [opening](std::function<Problem()> answer) {
        return std::make_unique<Dialog>(opening, [answer](const Form&) { return answer(); });
    };
}

std::vector<Row> dialogs() {
    constexpr TextEncoding utf8 = TextEncoding::utf8;
    return {
        {"frmSitesAddEdit",
         maker<frmSitesAddEdit, SiteForm>(frmSitesAddEdit::Opening{}),
         {"txtSitename", "txtHostname", "txtPort", "txtUsername", "txtPassword", "txtIdent",
          "chkConnectOnStartup", "chkUseSSLProxy", "OKButton", "CancelButton"},
         "OKButton",
         "CancelButton"},
        {"frmBrowserCHMOD",
         maker<frmBrowserCHMOD, ChmodForm>(frmBrowserCHMOD::Opening{{.txtPath = "/a"}, utf8}),
         {"chkX_0", "chkX_1", "chkX_2", "chkX_3", "chkX_4", "chkX_5", "chkX_6", "chkX_7", "chkX_8",
          "txtCHMODval", "cmdOK", "cmdCancel", "txtPath"}},
        {"frmBrowserCHATTR",
         maker<frmBrowserCHATTR, ChattrForm>(frmBrowserCHATTR::Opening{{.sName = "a"}, utf8}),
         {"chkFlags", "lstUsers", "lstGroups", "Command1", "cmdCancel", "txtDirectory", "txtCurrent"},
         "Command1",
         "cmdCancel",
         [](QDialog& dialog, DialogDriver&) {
             static_cast<frmBrowserCHATTR&>(dialog).setAnswer({.txtCurrent = "<not set>"}, utf8);
         }},
        {"frmBrowserNUKE",
         maker<frmBrowserNUKE, NukeForm>(
             frmBrowserNUKE::Opening{{.txtPath = "/", .txtName = "a"}, true, utf8}),
         {"txtMultip", "txtReason", "cmdOK", "cmdCancel", "txtPath", "txtName"}},
    };
}

TEST(Dialogs, AreUsedWithKeysAndClosedByTheirButtons) {
    for (const Row& row : dialogs()) {
        SCOPED_TRACE(row.name);
        int confirmed = 0;
        Problem problem;
        const std::unique_ptr<QDialog> dialog = row.make([&] {
            ++confirmed;
            return problem;
        });
        EXPECT_EQ(dialog->objectName().toStdString(), row.name);
        DialogDriver driver(*dialog);
        row.prepare(*dialog, driver);
        driver.find<QWidget>(row.tabOrder.front().c_str()).setFocus();
        EXPECT_EQ(driver.tabOrder(), row.tabOrder);
        expectUsableByKeys(*dialog);
        dialog->show();
        driver.click(row.cancel);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(confirmed, 0);

        dialog->show();
        problem = "not <b>sent";
        driver.click(row.confirm);
        EXPECT_EQ(driver.answer(), "not <b>sent");
        problem = ""; // the person was told
        driver.click(row.confirm);
        EXPECT_EQ(driver.answer(), "");
        EXPECT_TRUE(dialog->isVisible());
        problem.reset();
        driver.click(row.confirm);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(confirmed, 3);
    }
}

} // namespace
} // namespace corvel
