#include "app/WindowPlacement.h"
#include "ui/frmMain.h"
#include "ui/SettingsPanel.h"
#include "widgets/Colours.h"
#include "widgets/NoticeBar.h"
#include "widgets/StoreValues.h"

#include <QAction>
#include <QCheckBox>
#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTabWidget>

#include <algorithm>

// How the window's parts are laid out beside each other, and what of it is remembered.

namespace corvel {

namespace {

// In units of 1/1440 inch.
constexpr Grip windowGrip = {.width = 1500, .titleHeight = 450};
constexpr int barWidth = 75; // of the bar between the sites list and the tabs

} // namespace

// The list's width and view as they are stored, for the two views apart.
void frmMain::toggleSitesView() {
    WindowState& state = program_.windowState();
    const bool toIcons = lvwSites_->isReportView();
    (toIcons ? state.splitbar_left_wide : state.splitbar_left_narrow) = splitter_.listWidth;
    const int width = toIcons ? state.splitbar_left_narrow : state.splitbar_left_wide;
    state.sites_list_viewmode = static_cast<std::int32_t>(toIcons ? SitesView::icons : SitesView::report);
    lvwSites_->setReportView(!toIcons);
    splitter_ = {.listWidth = width};
    layoutWindow();
}

void frmMain::showSitesList(bool visible) {
    program_.windowState().show_sites_list = visible;
    layoutWindow();
}

void frmMain::layoutWindow() {
    const QRect area = area_->rect();
    const bool withList = showSitesList_->isChecked();
    const SplitterLayout shown = splitterWithin(splitter_, unitsFromPixels(area.width()));
    lvwSites_->setVisible(withList);
    imgSplit_->setVisible(withList);
    lvwSites_->setGeometry(0, 0, pixelsFromUnits(shown.listWidth), area.height());
    imgSplit_->setGeometry(pixelsFromUnits(shown.listWidth - 1), 0, pixelsFromUnits(barWidth), area.height());
    const int tabLeft = withList ? pixelsFromUnits(shown.listWidth + barWidth) : 0;
    const int tabWidth = area.width() - tabLeft;
    const int barHeight =
        closed_->isHidden() ? 0 : std::max(closed_->sizeHint().height(), closed_->heightForWidth(tabWidth));
    closed_->setGeometry(tabLeft, 0, tabWidth, barHeight);
    tabMain_->setGeometry(tabLeft, barHeight, tabWidth, area.height() - barHeight);
}

void frmMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        keepPaletteReadable();
    }
    QMainWindow::changeEvent(event);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == area_ && event->type() == QEvent::Resize) {
        layoutWindow();
    }
    return (watched == imgSplit_ && dragSplitter(*event)) || QMainWindow::eventFilter(watched, event);
}

bool frmMain::dragSplitter(const QEvent& event) {
    const auto x = [&event] { return static_cast<const QMouseEvent&>(event).position().x() * unitsPerPixel; };
    const int windowWidth = unitsFromPixels(area_->width());
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        splitter_ = splitterPressed(splitterWithin(splitter_, windowWidth), x());
        return true;
    case QEvent::MouseMove:
        splitter_ = splitterMoved(splitter_, x(), windowWidth);
        break;
    case QEvent::MouseButtonRelease:
        splitter_.dragOffset = 0;
        break;
    default:
        return false;
    }
    layoutWindow();
    return true;
}

// The window's geometry in its normal state, for the store.
void frmMain::rememberGeometry() {
    WindowState& state = program_.windowState();
    const QRect geometry = normalGeometry();
    state.window_left = unitsFromPixels(geometry.left());
    state.window_top = unitsFromPixels(geometry.top());
    state.window_width = unitsFromPixels(geometry.width());
    state.window_height = unitsFromPixels(geometry.height());
}

// Puts the window where the store says, or as near to it as the screens of today allow.
void frmMain::placeWindow() {
    std::vector<Rectangle> screens;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        screens.push_back({unitsFromPixels(area.left()), unitsFromPixels(area.top()),
                           unitsFromPixels(area.width()), unitsFromPixels(area.height())});
    }
    const WindowState& state = program_.windowState();
    const Rectangle place = placedOnScreens(
        {state.window_left, state.window_top, state.window_width, state.window_height}, screens, windowGrip);
    setGeometry(pixelsFromUnits(place.left), pixelsFromUnits(place.top), pixelsFromUnits(place.width),
                pixelsFromUnits(place.height));
}

void frmMain::applyWindowState() {
    const WindowState& state = program_.windowState();
    const bool isReport = state.sites_list_viewmode != static_cast<std::int32_t>(SitesView::icons);
    lvwSites_->setReportView(isReport);
    splitter_ = {.listWidth = std::max(0, isReport ? state.splitbar_left_wide : state.splitbar_left_narrow)};
    showSitesList_->setChecked(state.show_sites_list);
    tabMain_->setCurrentIndex(std::clamp(state.selected_tab, 1, tabMain_->count()) - 1);
    settings_->chkAlwaysOnTop().setChecked(state.always_on_top);
    placeWindow();
    switch (static_cast<WindowMode>(state.window_state)) {
    case WindowMode::normal:
        show();
        break;
    case WindowMode::minimised:
        showMinimized();
        break;
    case WindowMode::maximised:
    default:
        showMaximized();
        break;
    }
    layoutWindow();
}

void frmMain::gatherWindowState() {
    WindowState& state = program_.windowState();
    state.window_state = static_cast<std::int32_t>(isMinimized()   ? WindowMode::minimised
                                                   : isMaximized() ? WindowMode::maximised
                                                                   : WindowMode::normal);
    rememberGeometry();
    (lvwSites_->isReportView() ? state.splitbar_left_wide : state.splitbar_left_narrow) = splitter_.listWidth;
    state.sites_list_viewmode =
        static_cast<std::int32_t>(lvwSites_->isReportView() ? SitesView::report : SitesView::icons);
    state.selected_tab = tabMain_->currentIndex() + 1;
    state.always_on_top = settings_->chkAlwaysOnTop().isChecked();
}

} // namespace corvel
