#include "ui/QueueDialog.h"

#include "app/mdlMain.h"
#include "net/StatusTexts.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace corvel {

namespace {

constexpr int whatColumn = static_cast<int>(QueueColumn::what);
constexpr int tookColumn = static_cast<int>(QueueColumn::took);

} // namespace

QueueDialog::QueueDialog(mdlMain& program, QWidget* parent)
    : QDialog(parent), program_(program), list_(new ReportView) {
    setObjectName(QStringLiteral("frmQueue"));
    setAttribute(Qt::WA_DeleteOnClose);
    list_->setObjectName(QStringLiteral("lvwQueue"));
    list_->setAccessibleName(tr("Jobs and their commands"));
    list_->setPlaceholder(tr("Nothing was sent yet"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    cmdQueueCancelJob_ = buttons->addButton(tr("Cancel &job"), QDialogButtonBox::ActionRole);
    cmdQueueCancelJob_->setObjectName(QStringLiteral("cmdQueueCancelJob"));
    cmdQueueCancelJob_->setToolTip(tr("Takes the selected job back, or stops the batch that runs"));
    cmdQueueCancel_ = buttons->addButton(tr("Cancel &waiting"), QDialogButtonBox::ActionRole);
    cmdQueueCancel_->setObjectName(QStringLiteral("cmdQueueCancel"));
    cmdQueueCancel_->setToolTip(tr("Takes back everything that has not begun"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 130, fontMetrics().height() * 24);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(cmdQueueCancelJob_, &QPushButton::clicked, this, &QueueDialog::cancelJob);
    connect(cmdQueueCancel_, &QPushButton::clicked, this,
            [this] { program_.outbox().cancelWaiting(program_.currentSite()); });
    connect(list_, &ReportView::currentRowChanged, this, &QueueDialog::enableButtons);
    showJobs();
}

// The row that is selected stays so, wherever it stands then.
void QueueDialog::showJobs() {
    const int site = program_.currentSite();
    const QueueRows::Place selected = rows_.at(list_->currentRow());
    const bool isOther = site != site_;
    QueueRows rows =
        site > 0 ? QueueRows(program_.outbox().jobs(site), program_.outbox().journal(site)) : QueueRows();
    const int jobRow = selected.job == nullptr || isOther ? -1 : rows.rowOf(selected.job->id);
    const int row = jobRow + (selected.command ? static_cast<int>(*selected.command) + 1 : 0);
    const QueueRows before = std::exchange(rows_, std::move(rows)); // selected points into it
    if (isOther || before.count() != rows_.count()) {
        ReportSource source;
        source.rows = rows_.count();
        const QString wide(32, QLatin1Char('x'));
        source.columns = {
            {.header = tr("job and commands"), .room = {wide}},
            {.header = tr("answer"), .room = {wide}},
            {.header = tr("sent at"), .room = {QStringLiteral("00:00:00 PM")}},
            {.header = tr("took"), .alignment = Qt::AlignRight, .room = {fromCore(durationText(3599000))}}};
        source.text = [this](int at, int column) {
            return cellTextOf(rows_.text(at, static_cast<QueueColumn>(column), program_.settings()));
        };
        list_->setSource(std::move(source));
        if (isOther || before.count() == 0) {
            list_->fitColumns(whatColumn, tookColumn);
        }
    } else {
        list_->refresh();
    }
    if (jobRow >= 0 && row != list_->currentRow()) {
        list_->setCurrentRow(row);
    }
    site_ = site;
    setWindowTitle(site > 0 ? titleOf(tr("Queue of %1").arg(nameTextOf(program_.site(site).config.name)))
                            : tr("Queue"));
    enableButtons();
}

void QueueDialog::enableButtons() {
    const JobRecord* const job = rows_.at(list_->currentRow()).job;
    using State = JobRecord::State;
    cmdQueueCancelJob_->setEnabled(
        job != nullptr && (job->state == State::waiting || (job->state == State::running && job->isBatch)));
    cmdQueueCancel_->setEnabled(site_ > 0 && program_.outbox().isWaiting(site_));
}

void QueueDialog::cancelJob() {
    const JobRecord* const job = rows_.at(list_->currentRow()).job;
    if (job == nullptr) {
        return;
    }
    if (job->state == JobRecord::State::waiting) {
        program_.outbox().cancel(site_, job->id);
    } else if (job->isBatch) {
        program_.outbox().stopBatch(site_);
    }
}

} // namespace corvel
