#include "admin/qt/BatchResults.h"

#include "admin/qt/JobTable.h"
#include "app/mdlMain.h"
#include "common/ShownText.h"
#include "widgets/Forms.h"
#include "widgets/ReportView.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <utility>

namespace corvel {

namespace {

constexpr int soonMilliseconds = 50;
constexpr int fewRows = 4;

QPushButton* newButton(const char* name, const QString& caption, const QString& tip) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    button->setToolTip(tip);
    return button;
}

// The jobs of a site that have a table, the newest first.
std::vector<JobHandle> listedJobs(mdlMain& program, int site) {
    std::vector<JobHandle> jobs;
    if (site > 0) {
        const Journal& journal = program.outbox().journal(site);
        jobs.assign(journal.batches.begin(), journal.batches.end());
        jobs.insert(jobs.end(), journal.others.begin(), journal.others.end());
        if (JobHandle running = program.outbox().runningBatch(site)) {
            jobs.push_back(std::move(running));
        }
    }
    std::ranges::sort(jobs, std::greater(), [](const JobHandle& job) { return job->id; });
    return jobs;
}

} // namespace

BatchResults::BatchResults(mdlMain& program, Select select)
    : program_(program), select_(std::move(select)), soon_(new QTimer(this)) {
    soon_->setSingleShot(true);
    soon_->setInterval(soonMilliseconds);
    connect(soon_, &QTimer::timeout, this, &BatchResults::show);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(createProgress());
    layout->addLayout(createTable(), 1);
    show();
}

QLayout* BatchResults::createProgress() {
    prgBatch_ = new QProgressBar;
    prgBatch_->setObjectName(QStringLiteral("prgBatch"));
    prgBatch_->setAccessibleName(tr("Progress of the batch"));
    prgBatch_->setFormat(QStringLiteral("%v / %m"));
    lblBatchTimeLeft_ = new QLabel;
    lblBatchTimeLeft_->setObjectName(QStringLiteral("lblBatchTimeLeft"));
    cmdBatchStop_ = newButton("cmdBatchStop", tr("stop"), tr("End the batch after the command that runs"));
    connect(cmdBatchStop_, &QPushButton::clicked, this, [this] {
        program_.outbox().stopBatch(site_);
        showProgress();
    });
    auto* const layout = new QHBoxLayout;
    layout->addWidget(prgBatch_, 1);
    layout->addWidget(lblBatchTimeLeft_);
    layout->addWidget(cmdBatchStop_);
    return layout;
}

QLayout* BatchResults::createTable() {
    cboBatchJob_ = new QComboBox;
    cboBatchJob_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboBatchJob_->setMinimumContentsLength(12);
    connect(cboBatchJob_, &QComboBox::activated, this, &BatchResults::chosen);
    QLabel* const caption = labelFor(*cboBatchJob_, "cboBatchJob", tr("results:"));
    chkBatchRefusedOnly_ = new QCheckBox(tr("refused only"));
    chkBatchRefusedOnly_->setObjectName(QStringLiteral("chkBatchRefusedOnly"));
    connect(chkBatchRefusedOnly_, &QCheckBox::toggled, this, &BatchResults::chosen);
    auto* const head = new QHBoxLayout;
    head->addWidget(caption);
    head->addWidget(cboBatchJob_, 1);
    head->addWidget(chkBatchRefusedOnly_);

    lvwBatchResults_ = new ReportView;
    lvwBatchResults_->setObjectName(QStringLiteral("lvwBatchResults"));
    lvwBatchResults_->setAccessibleName(tr("Results"));
    lvwBatchResults_->setMultiSelection(true);
    lvwBatchResults_->header()->setStretchLastSection(true); // the replies come later than the columns
    lvwBatchResults_->setMinimumHeight(fontMetrics().height() * (fewRows + 2));

    cmdBatchSelectRefused_ = newButton("cmdBatchSelectRefused", tr("select the refused users"),
                                       tr("Select in the list the users of whom a command was refused"));
    connect(cmdBatchSelectRefused_, &QPushButton::clicked, this, [this] {
        if (table_ != nullptr) {
            select_(site_, refusedAccounts(*table_));
        }
    });
    cmdBatchCopy_ = newButton("cmdBatchCopy", tr("copy"), tr("Copy the rows that are shown"));
    connect(cmdBatchCopy_, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(tableText(lvwBatchResults_->source())); });
    auto* const foot = new QHBoxLayout;
    foot->addWidget(cmdBatchSelectRefused_);
    foot->addWidget(cmdBatchCopy_);
    foot->addStretch(1);

    auto* const layout = new QVBoxLayout;
    layout->addLayout(head);
    layout->addWidget(lvwBatchResults_, 1);
    layout->addLayout(foot);
    return layout;
}

void BatchResults::showSite(int site) {
    if (site != site_) {
        site_ = site;
        table_ = nullptr;
        jobs_ = {};
        show();
    }
}

void BatchResults::jobsChanged(int site) {
    if (site == site_ && isVisible() && !soon_->isActive()) {
        soon_->start();
    }
}

void BatchResults::showEvent(QShowEvent* event) {
    show();
    QWidget::showEvent(event);
}

void BatchResults::show() {
    showProgress();
    showChoice();
    showTable();
}

void BatchResults::showProgress() {
    const JobHandle batch = site_ > 0 ? program_.outbox().runningBatch(site_) : nullptr;
    const bool isStopping = site_ > 0 && program_.outbox().isStopping(site_);
    for (QWidget* const widget :
         std::initializer_list<QWidget*>{prgBatch_, lblBatchTimeLeft_, cmdBatchStop_}) {
        widget->setVisible(batch != nullptr);
    }
    if (batch != nullptr) {
        prgBatch_->setMaximum(std::max(1, static_cast<int>(batch->commands.size())));
        prgBatch_->setValue(static_cast<int>(batch->answers()));
        lblBatchTimeLeft_->setText(isStopping ? tr("stopping ...")
                                              : fromCore(program_.outbox().batchTimeLeft(site_)));
        cmdBatchStop_->setEnabled(!isStopping);
    }
}

// A batch that has begun is chosen by itself; else what is chosen stays so for as long as it is kept.
void BatchResults::showChoice() {
    std::vector<JobHandle> jobs = listedJobs(program_, site_);
    JobHandle wanted = table_;
    for (const JobHandle& job : jobs) {
        const bool isNew = job->isBatch && std::ranges::find(jobs_, job) == jobs_.end();
        if (isNew && (wanted == nullptr || job->id > wanted->id)) {
            wanted = job;
        }
    }
    jobs_ = std::move(jobs);
    while (cboBatchJob_->count() > static_cast<int>(jobs_.size())) {
        cboBatchJob_->removeItem(cboBatchJob_->count() - 1);
    }
    int current = jobs_.empty() ? -1 : 0;
    for (std::size_t i = 0; i < jobs_.size(); ++i) {
        const int row = static_cast<int>(i);
        const QString caption = shortenedText(fromCore(captionOf(*jobs_[i])), longestName);
        if (row == cboBatchJob_->count()) {
            cboBatchJob_->addItem(caption);
        } else if (cboBatchJob_->itemText(row) != caption) {
            cboBatchJob_->setItemText(row, caption);
        }
        current = jobs_[i] == wanted ? row : current;
    }
    cboBatchJob_->setCurrentIndex(current);
    cboBatchJob_->setEnabled(!jobs_.empty());
}

JobHandle BatchResults::shownJob() const {
    const int row = cboBatchJob_->currentIndex();
    return row < 0 || row >= static_cast<int>(jobs_.size()) ? nullptr : jobs_[static_cast<std::size_t>(row)];
}

void BatchResults::chosen() {
    table_ = nullptr;
    showTable();
}

// Only a table that has gained or lost rows is made anew: what else becomes of a job is painted in place.
void BatchResults::showTable() {
    const JobHandle job = shownJob();
    const bool refusedOnly = chkBatchRefusedOnly_->isChecked();
    const bool isOver = job != nullptr && job->state == JobRecord::State::over;
    if (job == nullptr) {
        lvwBatchResults_->setSource({});
    } else if (job != table_ || isOver != isOver_ || (refusedOnly && job->refusals() != refusals_)) {
        lvwBatchResults_->setSource(
            jobSource(job, rowsOf(*job, refusedOnly), JobColumns::results, program_.settings()),
            job == table_ ? ReportView::CurrentRow::keep : ReportView::CurrentRow::clear);
        lvwBatchResults_->fitColumns(0, 3);
    } else {
        lvwBatchResults_->refresh();
    }
    lvwBatchResults_->setPlaceholder(job == nullptr ? tr("No batch has run yet.")
                                     : refusedOnly  ? tr("Nothing was refused.")
                                                    : QString());
    table_ = job;
    isOver_ = isOver;
    refusals_ = job == nullptr ? 0 : job->refusals();
    cmdBatchSelectRefused_->setEnabled(job != nullptr && !refusedAccounts(*job).empty());
    cmdBatchCopy_->setEnabled(job != nullptr);
}

} // namespace corvel
