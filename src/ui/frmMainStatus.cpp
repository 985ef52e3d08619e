#include "net/CommandChannel.h"
#include "ui/desktop/Desktop.h"
#include "ui/frmMain.h"
#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/NoticeBar.h"
#include "widgets/TextConversion.h"

#include <QStatusBar>
#include <QTabWidget>

#include <iostream>
#include <utility>

// What the window shows of its connections: sites list, counters, statistics, caption, tray icon, status bar,
// of which nothing is written that has not changed; and what was wrong at the start.

namespace corvel {

namespace {

ElidedLabel* newStatusLabel(const char* name) {
    constexpr int gap = 6; // on either side
    auto* const label = new ElidedLabel(name);
    label->setContentsMargins(gap, 0, gap, 0);
    return label;
}

} // namespace

void frmMain::createStatusBar() {
    statusConnection_ = newStatusLabel("lblConnection");
    statusEncryption_ = newStatusLabel("lblEncryption");
    statusEncryption_->hide();
    statusTransfers_ = newStatusLabel("lblTransfers");
    statusError_ = newStatusLabel("lblLastError");
    statusError_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // what the others leave
    statusBatch_ = newStatusLabel("lblBatchProgress");
    statusBar()->addWidget(statusConnection_);
    statusBar()->addWidget(statusEncryption_);
    statusBar()->addWidget(statusTransfers_);
    statusBar()->addWidget(statusError_, 1);
    statusBar()->addPermanentWidget(statusBatch_);
}

// Keeps what is seen in step with the sockets and the counters of the sessions.
void frmMain::tmrSocketStatus_Timer() {
    for (const int site : std::exchange(changedSockets_, {})) {
        const Socket& socket = *program_.site(site).wSock;
        lvwSites_->setState(site, fromCore(SocketStateText(socket)), socket.state() == SocketState::connected,
                            encryptionStatus(program_.site(site)));
        for (AccountsPanel* const panel : accountsPanels()) {
            panel->connectionChanged(site);
        }
        if (site == program_.currentSite()) {
            showStatus();
        }
    }
    showBatchProgress();
    if (tabMain_->currentWidget() == activity_) {
        activity_->restoreColumnWidths();
    }
    if (tabMain_->currentWidget() == browser_) {
        browser_->showCounts();
    }
    showActivity();
}

void frmMain::showActivity() {
    Status status = program_.status();
    if (status == shownStatus_) {
        return;
    }
    const Settings& settings = program_.settings();
    setWindowTitle(titleOf(
        displayTextOf(statusText(status, settings.window_caption_online, settings.window_caption_offline))));
    tray_.TrayModify(
        images_.image(trayImage(status)),
        displayTextOf(statusText(status, settings.trayicon_text_online, settings.trayicon_text_offline)));
    stats_->showStatus(status);
    statusTransfers_->showText(fromCore(transfersText(status.activity)));
    shownStatus_ = std::move(status);
}

// After the window is shown: one that starts minimised stays so, it is not hidden.
void frmMain::createTray() {
    shownStatus_.reset();
    if (program_.settings().show_trayicon) {
        connect(&tray_, &mdlTrayIcon::clicked, this, [this] { bringToFront(*this); });
        tray_.setMenu(customMenus_.prepare(MenuKind::tray));
        tray_.TrayAdd(images_.image("tray-idle"), QStringLiteral("Corvel"));
    }
    if (program_.settings().minimize_to_tray) {
        auto* const minimizing = new MinimizeToTray(*this, [this] { return tray_.isShown(); });
        connect(minimizing, &MinimizeToTray::hidden, this, [this] {
            bool& isHintGiven = program_.windowState().tray_hint_given;
            if (!std::exchange(isHintGiven, true)) {
                tray_.sayOnce(tr("Corvel is still running"),
                              tr("Click its icon here to bring the window back."));
            }
        });
    }
}

// The current site's state, and the last thing that its server refused.
void frmMain::showStatus() {
    const int site = program_.currentSite();
    QString connection;
    QString error;
    EncryptionStatus encryption;
    if (site > 0) {
        const SiteConfig& config = program_.site(site).config;
        const SiteSession& session = program_.site(site).session;
        connection = displayTextOf(config.name) + QStringLiteral(": ") +
                     fromCore(SocketStateText(*program_.site(site).wSock));
        error = displayTextOf(session.lastErrorLine);
        encryption = encryptionStatus(program_.site(site));
    }
    statusConnection_->showText(connection);
    showEncryption(encryption);
    statusError_->showText(error);
    showBatchProgress();
}

void frmMain::showEncryption(const EncryptionStatus& encryption) {
    if (encryption == shownEncryption_) {
        return;
    }
    const bool isEncrypted = encryption.lock == EncryptionStatus::Lock::closed;
    const std::string_view image = lockImage(encryption.lock);
    statusEncryption_->setIcon(image.empty() ? QIcon() : icon(image));
    const QString text = fromCore(encryption.text);
    statusEncryption_->showText(text);
    statusEncryption_->setAccessibleName(isEncrypted ? tr("Encrypted: %1").arg(text) : text);
    statusEncryption_->setVisible(!text.isEmpty());
    shownEncryption_ = encryption;
}

void frmMain::showBatchProgress() {
    const int site = program_.currentSite();
    const std::string progress = site > 0 ? program_.admin().batchProgress(site) : std::string();
    statusBatch_->showText(progress.empty() ? QString() : tr("batch: %1").arg(fromCore(progress)));
}

// On the error stream all of them; in the window as many as can be read there.
void frmMain::showProblems(const std::vector<std::string>& problems) {
    constexpr qsizetype mostLines = 6;
    QStringList lines;
    for (const std::string& problem : problems) {
        std::cerr << problem << '\n';
        lines.append(displayTextOf(problem));
    }
    if (const qsizetype more = lines.size() - mostLines; more > 0) {
        lines = lines.first(mostLines);
        lines.append(tr("... and %1 more").arg(more));
    }
    if (!lines.isEmpty()) {
        notice_->tell(lines.join(QLatin1Char('\n')));
    }
}

} // namespace corvel
