#include "ui/StatusLine.h"

#include "net/StatusTexts.h"
#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/LinkLabel.h"
#include "widgets/TextConversion.h"

#include <QStatusBar>

#include <algorithm>

namespace corvel {

namespace {

ElidedLabel* placed(ElidedLabel* label) {
    constexpr int gap = 6; // on either side
    label->setContentsMargins(gap, 0, gap, 0);
    return label;
}

ElidedLabel* newStatusLabel(const char* name) {
    return placed(new ElidedLabel(name));
}

std::size_t waitingJobs(const Outbox& outbox, int site) {
    const std::vector<JobHandle> jobs = outbox.jobs(site);
    return static_cast<std::size_t>(
        std::ranges::count(jobs, JobRecord::State::waiting, [](const JobHandle& job) { return job->state; }));
}

} // namespace

StatusLine::StatusLine(QStatusBar& bar, mdlMain& program, const Clock& clock)
    : QObject(&bar), program_(program), clock_(clock), lblConnection_(newStatusLabel("lblConnection")),
      lblLogin_(newStatusLabel("lblLogin")), lblEncryption_(newStatusLabel("lblEncryption")),
      lblTransfers_(newStatusLabel("lblTransfers")), lblLastError_(newStatusLabel("lblLastError")),
      lblWaiting_(new LinkLabel("lblWaiting", tr("Shows what runs and what waits"))),
      lblBatchProgress_(newStatusLabel("lblBatchProgress")) {
    placed(lblWaiting_);
    lblEncryption_->hide();
    lblLastError_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // what the others leave
    constexpr int widest = 64; // characters, so that no text takes the others their room
    for (ElidedLabel* const label : {lblConnection_, lblLogin_, lblEncryption_, lblTransfers_}) {
        label->setMaximumWidth(widest * label->fontMetrics().averageCharWidth());
        bar.addWidget(label);
    }
    bar.addWidget(lblLastError_, 1);
    bar.addPermanentWidget(lblWaiting_);
    bar.addPermanentWidget(lblBatchProgress_);
    connect(lblWaiting_, &LinkLabel::clicked, this, &StatusLine::queueWanted);
}

void StatusLine::show() {
    const int site = program_.currentSite();
    QString connection;
    QString login;
    QString error;
    QString waiting;
    QString batch;
    EncryptionStatus encryption;
    if (site > 0) {
        const Site& shown = program_.site(site);
        const Outbox& outbox = program_.outbox();
        connection =
            nameTextOf(shown.config.name) + QStringLiteral(": ") + fromCore(SocketStateText(*shown.wSock));
        login = fromCore(loginText(shown));
        error = fromCore(lastErrorText(shown));
        waiting = fromCore(
            waitingText(shown, clock_.milliseconds(), waitingJobs(outbox, site), program_.settings()));
        const std::string progress = outbox.batchProgress(site);
        batch = progress.empty() ? QString() : tr("batch: %1").arg(fromCore(progress));
        encryption = encryptionStatus(shown);
    }
    lblConnection_->showText(connection);
    lblLogin_->showText(login);
    showEncryption(encryption);
    if (lblLastError_->text().isEmpty() != error.isEmpty()) {
        lblLastError_->setIcon(error.isEmpty() ? QIcon() : icon("warning"));
    }
    lblLastError_->showText(error);
    lblWaiting_->showText(waiting);
    lblBatchProgress_->showText(batch);
}

void StatusLine::showTransfers(const ActivityCounters& activity) {
    lblTransfers_->showText(fromCore(transfersText(activity)));
}

void StatusLine::showEncryption(const EncryptionStatus& encryption) {
    if (encryption == shownEncryption_) {
        return;
    }
    const bool isEncrypted = encryption.lock == EncryptionStatus::Lock::closed;
    const std::string_view image = lockImage(encryption.lock);
    lblEncryption_->setIcon(image.empty() ? QIcon() : icon(image));
    const QString text = fromCore(encryption.text);
    lblEncryption_->showText(text);
    lblEncryption_->setAccessibleName(isEncrypted ? tr("Encrypted: %1").arg(text) : text);
    lblEncryption_->setVisible(!text.isEmpty());
    shownEncryption_ = encryption;
}

} // namespace corvel
