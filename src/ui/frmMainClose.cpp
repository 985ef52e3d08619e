#include "ui/desktop/Desktop.h"
#include "ui/frmMain.h"
#include "ui/SettingsPanel.h"
#include "widgets/TextConversion.h"

#include <QCloseEvent>
#include <QGuiApplication>

#include <utility>

// How the window closes, and the program ends with it.

namespace corvel {

// Whether the window stays open for now, because a batch runs and a person is asked about it.
bool frmMain::asksAboutBatch() {
    QStringList running;
    for (int site = 1; site <= program_.siteCount(); ++site) {
        if (const std::string progress = program_.admin().batchProgress(site); !progress.empty()) {
            running.append(tr("%1: %2").arg(nameTextOf(program_.site(site).config.name), fromCore(progress)));
        }
    }
    if (running.isEmpty() || isBatchGivenUp_ || property(endedBySystem).toBool() ||
        qGuiApp->isSavingSession()) {
        return false;
    }
    if (!std::exchange(isBatchAsked_, true)) {
        const QString question =
            tr("A batch is running. Close the window all the same? What has not gone out by "
               "then is not sent.");
        prompts_.AskYesNo(
            toCore(question + QStringLiteral("\r\n\r\n") + running.join(QStringLiteral("\r\n"))),
            [this](bool yes) {
                isBatchAsked_ = false;
                isBatchGivenUp_ = yes;
                if (yes) {
                    close();
                }
            });
    }
    return true;
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (asksAboutBatch()) {
        event->ignore();
        return;
    }
    settings_->stopTest();
    const bool hasToTell = !std::exchange(isSavingTried_, true) && !program_.SaveSites();
    gatherWindowState();
    program_.SaveWindowState();
    if (hasToTell) {
        // The program ends with its window; what is told is to be read before, and what is asked answered.
        prompts_.whenAnswered([this] { close(); });
        event->ignore();
        return;
    }
    tray_.TrayDelete();
    event->accept();
    if (!isVisible()) {
        QCoreApplication::quit(); // by itself it would end with a window that is seen to close
    }
}

} // namespace corvel
