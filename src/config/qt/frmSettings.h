#pragma once

#include "config/SettingsForm.h"

#include <QDialog>

#include <array>
#include <functional>

class QCheckBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;

namespace corvel {

class ReportView;

// The settings dialog: the activity list's columns and colours to change, and what settings.ini says to see.
class frmSettings : public QDialog {
    Q_OBJECT

  public:
    // What becomes of the form when cmdSave is pressed; the dialog closes then.
    using Accept = std::function<void(const SettingsForm&)>;

    frmSettings(SettingsForm form, Accept accept, QWidget* parent = nullptr);

  private:
    QGroupBox* createColumns();
    QGroupBox* createColors();
    QHBoxLayout* createColorRow(std::size_t sample, const QString& name);
    QGroupBox* createTunnelor();
    QGroupBox* createTray();
    void showColumns();
    void toggleAutosize(int row);
    void cmdLvwMove_Click(int step);
    void cmdColorPickers_Click(int index);
    void showSample(std::size_t sample);

    SettingsForm form_;
    Accept accept_;
    ReportView* lvwAL_ = nullptr;
    QCheckBox* chkALUseColors_ = nullptr;
    std::array<QLabel*, 3> lblSampleColors_ = {};
};

} // namespace corvel
