#pragma once

#include "net/Statistics.h"

#include <QWidget>

class QPlainTextEdit;

namespace corvel {

class ReportView;

// The stats tab: the numbers of the current site as a list, lvwStats, and as text, txtStats.
class StatsPanel : public QWidget {
    Q_OBJECT

  public:
    explicit StatsPanel(QWidget* parent = nullptr);

    // Meant for changes alone: everything is written again.
    void showStatus(const Status& status);

  private:
    MenuVariables rows_;
    ReportView* list_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
};

} // namespace corvel
