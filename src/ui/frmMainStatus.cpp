#include "net/CommandChannel.h"
#include "net/StatusTexts.h"
#include "ui/desktop/Desktop.h"
#include "ui/frmMain.h"
#include "ui/QueueDialog.h"
#include "ui/StatusLine.h"
#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/NoticeBar.h"
#include "widgets/TextConversion.h"

#include <QStatusBar>
#include <QTabWidget>
#include <QToolButton>

#include <iostream>
#include <utility>

// What the window shows of its connections: sites list, counters, statistics, caption, tray icon, status bar,
// of which nothing is written that has not changed; and what was wrong at the start.

namespace corvel {

void frmMain::createStatusBar() {
    status_ = new StatusLine(*statusBar(), program_, clock_);
    connect(status_, &StatusLine::queueWanted, this, &frmMain::openQueue);
}

// The tab of the results counts the current site's refusals that nobody has looked at.
void frmMain::showUnread() {
    const int site = program_.currentSite();
    if (site > 0 && tabMain_->currentWidget() == results_) {
        program_.markResultsRead(site);
    }
    const std::size_t unread = site > 0 ? program_.site(site).session.commandResultsLog.unreadRefusals() : 0;
    const int tab = tabMain_->indexOf(results_);
    const QString caption = tr("results");
    const QString wanted = unread == 0 ? caption : tr("%1 (%2)").arg(caption).arg(unread);
    if (tabMain_->tabText(tab) != wanted) {
        tabMain_->setTabText(tab, wanted);
        tabMain_->setTabToolTip(tab, unread == 0 ? QString() : tr("Refusals that were not looked at"));
    }
}

void frmMain::showJobs(int site) {
    if (queue_ != nullptr && site == program_.currentSite()) {
        queue_->showJobs();
    }
}

void frmMain::openQueue() {
    if (queue_ == nullptr) {
        queue_ = new QueueDialog(program_, this);
    }
    queue_->show();
    queue_->raise();
    queue_->activateWindow();
}

// Keeps what is seen in step with the sockets and the counters of the sessions.
void frmMain::tmrSocketStatus_Timer() {
    for (const int site : std::exchange(changedSockets_, {})) {
        const Socket& socket = *program_.site(site).wSock;
        lvwSites_->setState(site, cellTextOf(SocketStateText(socket)),
                            socket.state() == SocketState::connected, encryptionStatus(program_.site(site)));
        activity_->activityChanged(site);
        for (AccountsPanel* const panel : accountsPanels()) {
            panel->connectionChanged(site);
        }
        if (site == program_.currentSite()) {
            showClosed();
        }
    }
    status_->show();
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
        cellTextOf(statusText(status, settings.trayicon_text_online, settings.trayicon_text_offline)));
    stats_->showStatus(status);
    status_->showTransfers(status.activity);
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

// Above the tabs alone: the rows of the sites list stay where they are between the two clicks that connect
// one.
void frmMain::createClosedBar() {
    closed_ = new NoticeBar("barClosed", "lblClosed", area_);
    connect(closed_->addButton("cmdClosedConnect", tr("Connect")), &QToolButton::clicked, this,
            [this] { program_.connectSite(program_.currentSite()); });
}

// Says in place of a connection that there is none.
void frmMain::showClosed() {
    const int site = program_.currentSite();
    const bool isClosed = site > 0 && program_.site(site).wSock->state() == SocketState::closed;
    if (isClosed) {
        closed_->tell(tr("%1 is not connected.").arg(nameTextOf(program_.site(site).config.name)));
    } else {
        closed_->hide();
    }
    layoutWindow();
}

// What the status bar and the sites list say of a refusal, which a site keeps until it is in front.
void frmMain::showLastError(int site) {
    status_->show();
    lvwSites_->setMarked(site, site != program_.currentSite() && program_.site(site).session.isErrorUnseen);
}

// On the error stream all of them; in the window as many as can be read there.
void frmMain::showProblems(const std::vector<std::string>& problems) {
    constexpr qsizetype mostLines = 6;
    QStringList lines;
    for (const std::string& problem : problems) {
        std::cerr << problem << '\n';
        lines.append(cellTextOf(problem));
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
