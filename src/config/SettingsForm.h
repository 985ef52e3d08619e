#pragma once

#include "config/Settings.h"
#include "config/WindowState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvel {

// A column of the activity list as the settings dialog shows it. Its row says where it stands.
struct ColumnRow {
    std::size_t id = firstMovableColumn;
    bool show = true;
    bool autosize = true;

    bool operator==(const ColumnRow&) const = default;
};

// The header of the column.
std::string_view columnName(const ColumnRow& row);

// Red in the low byte, as the store has them.
struct SampleColors {
    std::int32_t text = 0;
    std::int32_t background = 0;

    bool operator==(const SampleColors&) const = default;
};

// The settings dialog as a record, a member per control. Row r of lvwAL is position r + firstMovableColumn.
struct SettingsForm {
    std::array<ColumnRow, activityColumnCount - firstMovableColumn> lvwAL = {};
    bool chkALUseColors = false;
    std::array<SampleColors, 3> lblSampleColors = {}; // of a connection that idles, uploads, downloads
    // Shown only: settings.ini is for the person to edit.
    std::string txtSSLHost;
    std::string txtSSLPort;
    bool chkShowTrayIcon = false;
    bool chkMinimizeToTray = false;

    bool operator==(const SettingsForm&) const = default;
};

// What the dialog opens with.
SettingsForm settingsForm(const WindowState& state, const Settings& settings);

// Moves the column of the row one place up (step -1) or down (step 1). Gives the row in which it stands
// then; past either end nothing moves.
std::size_t moveColumn(SettingsForm& form, std::size_t row, int step);

// state as the dialog leaves it: the columns' places, whether they are shown and size themselves, and the
// colours.
WindowState savedSettings(const SettingsForm& form, WindowState state);

} // namespace corvel
