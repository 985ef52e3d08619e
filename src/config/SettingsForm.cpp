#include "config/SettingsForm.h"

#include <utility>

namespace corvel {

namespace {

struct SamplePlace {
    std::int32_t WindowState::*text;
    std::int32_t WindowState::*background;
};

constexpr std::array<SamplePlace, 3> samplePlaces = {{
    {&WindowState::activitylist_color_idle_fg, &WindowState::activitylist_color_idle_bg},
    {&WindowState::activitylist_color_up_fg, &WindowState::activitylist_color_up_bg},
    {&WindowState::activitylist_color_dn_fg, &WindowState::activitylist_color_dn_bg},
}};

} // namespace

std::string_view columnName(const ColumnRow& row) {
    return activityColumnHeaders[row.id - firstMovableColumn];
}

SettingsForm settingsForm(const WindowState& state, const Settings& settings) {
    SettingsForm form;
    std::size_t row = 0;
    for (const std::size_t id : activityColumnOrder(state)) {
        if (id >= firstMovableColumn) {
            const ActivityColumn& column = state.columns[id];
            form.lvwAL[row++] = {.id = id, .show = column.shown, .autosize = column.autosize};
        }
    }
    form.chkALUseColors = state.activitylist_use_colors;
    for (std::size_t i = 0; i < samplePlaces.size(); ++i) {
        form.lblSampleColors[i] = {.text = state.*samplePlaces[i].text,
                                   .background = state.*samplePlaces[i].background};
    }
    form.txtSSLHost = settings.ssl_tunnel_host;
    form.txtSSLPort = std::to_string(settings.ssl_tunnel_port);
    form.chkShowTrayIcon = settings.show_trayicon;
    form.chkMinimizeToTray = settings.minimize_to_tray;
    return form;
}

std::size_t moveColumn(SettingsForm& form, std::size_t row, int step) {
    const std::size_t target = row + static_cast<std::size_t>(step);
    if (row >= form.lvwAL.size() || target >= form.lvwAL.size()) {
        return row;
    }
    std::swap(form.lvwAL[row], form.lvwAL[target]);
    return target;
}

WindowState savedSettings(const SettingsForm& form, WindowState state) {
    for (std::size_t row = 0; row < form.lvwAL.size(); ++row) {
        ActivityColumn& column = state.columns[form.lvwAL[row].id];
        column.position = static_cast<std::int16_t>(row + firstMovableColumn);
        column.shown = form.lvwAL[row].show;
        column.autosize = form.lvwAL[row].autosize;
    }
    state.activitylist_use_colors = form.chkALUseColors;
    for (std::size_t i = 0; i < samplePlaces.size(); ++i) {
        state.*samplePlaces[i].text = form.lblSampleColors[i].text;
        state.*samplePlaces[i].background = form.lblSampleColors[i].background;
    }
    return state;
}

} // namespace corvel
