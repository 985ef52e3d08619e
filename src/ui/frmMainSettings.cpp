#include "config/qt/frmSettings.h"
#include "net/qt/LoadTest.h"
#include "ui/desktop/Stacking.h"
#include "ui/frmMain.h"
#include "ui/SettingsPanel.h"
#include "widgets/DialogParts.h"

#include <QCheckBox>

// The settings tab and its dialog, joined to the window.

namespace corvel {

void frmMain::createSettingsPanel() {
    settings_ = new SettingsPanel(program_);
    QCheckBox& chkAlwaysOnTop = settings_->chkAlwaysOnTop();
    connect(&chkAlwaysOnTop, &QCheckBox::toggled, this,
            [this](bool checked) { setAlwaysOnTop(*this, checked); });
    new TopmostDialogs(chkAlwaysOnTop, this);
    loadTest_ = new LoadTest(program_, chkAlwaysOnTop, this);
    connect(settings_, &SettingsPanel::testWanted, this, [this] {
        if (const int site = program_.currentSite(); site > 0) {
            loadTest_->start(*console_->at(site).command);
        }
    });
    connect(settings_, &SettingsPanel::settingsWanted, this, &frmMain::openSettings);
}

void frmMain::openSettings() {
    auto* const dialog = new frmSettings(
        settingsForm(program_.windowState(), program_.settings()),
        [this](const SettingsForm& form) {
            program_.windowState() = savedSettings(form, program_.windowState());
            activity_->applyColumns();
            activity_->applyColours();
        },
        this);
    corvel::openDialog(*dialog);
}

} // namespace corvel
