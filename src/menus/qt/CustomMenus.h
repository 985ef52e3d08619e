#pragma once

#include "app/mdlMain.h"

#include <QObject>

#include <array>
#include <cstddef>

class QMenu;
class QPoint;

namespace corvel {

// The five pop-up menus that settings.ini defines: QMenus named mnuShowTray, mnuShowBrowser ..., with entries
// named mnuTray_0 ..., numbered as their lines are.
class CustomMenus : public QObject {
    Q_OBJECT

  public:
    // program: borrowed, must outlive the menus. window: owns the menus.
    CustomMenus(mdlMain& program, QWidget* window);

    // Pops the menu of that kind up at a place on screen. Its entries are made anew for the row that is
    // selected in its list of the current site. A menu without entries does not open.
    void ShowCustomMenu(MenuKind kind, const QPoint& globalPosition);

    // The menu with its entries as they are now, for whoever shows menus himself, as the tray does; nothing
    // where it has no entries.
    QMenu* prepare(MenuKind kind);

  private:
    mdlMain& program_;
    std::array<QMenu*, 5> menus_{}; // by kind, from the first
};

} // namespace corvel
