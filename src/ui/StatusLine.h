#pragma once

#include "app/mdlMain.h"
#include "net/Statistics.h"

#include <QObject>

class QStatusBar;

namespace corvel {

class ElidedLabel;
class LinkLabel;

// What the status bar says of the current site: its connection, who is logged in, what was refused last, for
// what the server is waited for, and how far a batch has come.
class StatusLine : public QObject {
    Q_OBJECT

  public:
    // bar takes the labels over. program: borrowed; both must outlive it. clock: the window's.
    StatusLine(QStatusBar& bar, mdlMain& program, const Clock& clock);

    // Writes what has changed. Cheap, to be called with every tick.
    void show();
    void showTransfers(const ActivityCounters& activity);

  signals:
    void queueWanted(); // a person asks what runs and what waits

  private:
    void showEncryption(const EncryptionStatus& encryption);

    mdlMain& program_;
    const Clock& clock_;
    ElidedLabel* lblConnection_;
    ElidedLabel* lblLogin_;
    ElidedLabel* lblEncryption_;
    ElidedLabel* lblTransfers_;
    ElidedLabel* lblLastError_;
    LinkLabel* lblWaiting_;
    ElidedLabel* lblBatchProgress_;
    EncryptionStatus shownEncryption_;
};

} // namespace corvel
