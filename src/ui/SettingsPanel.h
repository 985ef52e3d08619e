#pragma once

#include "app/mdlMain.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace corvel {

// The settings tab: what concerns the window and the current site as a whole; and the load test, which sends
// one command to the current site, round after round, for as long as chkAlwaysOnTop is checked, and gives way
// to every other event between the rounds.
class SettingsPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit SettingsPanel(mdlMain& program, QWidget* parent = nullptr);

    QCheckBox& chkAlwaysOnTop() { return *chkAlwaysOnTop_; }

    // Puts the test command into entry; each round sends what entry says then, and selects it. The test ends
    // with the entry.
    void startTest(QLineEdit& entry);
    void stopTest() { test_.stop(); }

    // The current site, 0 for none: what needs one cannot be pressed without it.
    void showSite(int site);

  signals:
    void testWanted();
    void settingsWanted();

  private:
    void nextRound();
    void showTest();

    mdlMain& program_;
    QCheckBox* chkAlwaysOnTop_;
    QPushButton* rehash_;
    QPushButton* command1_;
    QLabel* testState_;
    QPointer<QLineEdit> entry_;
    QTimer test_;
    int sent_ = 0; // since it was started
};

} // namespace corvel
