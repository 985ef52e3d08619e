#pragma once

#include "app/mdlMain.h"

#include <QWidget>

class QCheckBox;

namespace corvel {

// The settings tab: what concerns the window and the current site as a whole.
class SettingsPanel : public QWidget {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the panel.
    explicit SettingsPanel(mdlMain& program, QWidget* parent = nullptr);

    QCheckBox& chkAlwaysOnTop() { return *chkAlwaysOnTop_; }

  signals:
    void testWanted();
    void settingsWanted();

  private:
    QCheckBox* chkAlwaysOnTop_;
};

} // namespace corvel
