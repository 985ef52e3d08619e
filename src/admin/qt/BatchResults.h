#pragma once

#include "app/Journal.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_set>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLayout;
class QProgressBar;
class QPushButton;
class QTimer;

namespace corvel {

class mdlMain;
class ReportView;

// What became of a site's batches, and of its other jobs of more than one command: how far the one that runs
// has come, with a button that stops it, and a table of the one that a person has chosen.
class BatchResults : public QWidget {
    Q_OBJECT

  public:
    // Selects the accounts of those names in the site's list.
    using Select = std::function<void(int site, const std::unordered_set<std::string_view>& names)>;

    // program: borrowed, must outlive the widget.
    BatchResults(mdlMain& program, Select select);

    // Shows the jobs of the site; 0 for none.
    void showSite(int site);
    // They have changed: shown soon, so that a batch costs no more for being looked at.
    void jobsChanged(int site);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QLayout* createProgress();
    QLayout* createTable();
    void show();
    void showProgress();
    void showChoice();
    void showTable();
    void chosen();
    JobHandle shownJob() const;

    mdlMain& program_;
    Select select_;
    int site_ = 0;
    std::vector<JobHandle> jobs_; // as the box lists them
    JobHandle table_;             // whose commands the table has
    std::size_t refusals_ = 0;    // as many as it has rows, where it shows these alone
    bool isOver_ = false;         // the job in the table was over as it was shown
    QTimer* soon_;
    QProgressBar* prgBatch_ = nullptr;
    QLabel* lblBatchTimeLeft_ = nullptr;
    QPushButton* cmdBatchStop_ = nullptr;
    QComboBox* cboBatchJob_ = nullptr;
    QCheckBox* chkBatchRefusedOnly_ = nullptr;
    QPushButton* cmdBatchSelectRefused_ = nullptr;
    QPushButton* cmdBatchCopy_ = nullptr;
    ReportView* lvwBatchResults_ = nullptr;
};

} // namespace corvel
