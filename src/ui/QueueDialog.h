#pragma once

#include "app/QueueRows.h"

#include <QDialog>

class QPushButton;

namespace corvel {

class mdlMain;
class ReportView;

// frmQueue: what runs and what waits on the current site, and what its server has answered, as it goes on.
// Deletes itself when it is closed.
class QueueDialog : public QDialog {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the dialog.
    QueueDialog(mdlMain& program, QWidget* parent);

    // Shows what has become of the current site's jobs.
    void showJobs();

  private:
    void enableButtons();
    void cancelJob();

    mdlMain& program_;
    int site_ = 0; // whose jobs are shown
    QueueRows rows_;
    ReportView* list_;
    QPushButton* cmdQueueCancel_;
    QPushButton* cmdQueueCancelJob_;
};

} // namespace corvel
