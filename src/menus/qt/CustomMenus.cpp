#include "menus/qt/CustomMenus.h"

#include "widgets/Forms.h"
#include "widgets/TextConversion.h"

#include <QMenu>
#include <QScreen>

#include <vector>

using namespace Qt::StringLiterals;

namespace corvel {

namespace {

struct MenuName {
    const char* menu;
    const char* item;
};

constexpr std::array<MenuName, 5> names = {{
    {"mnuShowTray", "mnuTray"},
    {"mnuShowBrowser", "mnuBrowser"},
    {"mnuShowUserlist", "mnuUserlist"},
    {"mnuShowGrouplist", "mnuGrouplist"},
    {"mnuShowActivity", "mnuActivity"},
}};

// The caption as an action wants it, on which "&" marks a letter. One that no screen could show is cut.
QString actionText(const std::string& caption, const QMenu& menu) {
    const int widest = menu.screen()->availableGeometry().width() * 3 / 4;
    return menu.fontMetrics()
        .elidedText(cellTextOf(caption), Qt::ElideMiddle, widest)
        .replace('&'_L1, "&&"_L1);
}

} // namespace

CustomMenus::CustomMenus(mdlMain& program, QWidget* window) : QObject(window), program_(program) {
    for (std::size_t i = 0; i < menus_.size(); ++i) {
        menus_[i] = new QMenu(window);
        menus_[i]->setObjectName(QLatin1String(names[i].menu));
        // Entries beyond the screen's height would stand in columns, the last of them beyond its width.
        menus_[i]->setStyleSheet(u"QMenu { menu-scrollable: 1 }"_s);
    }
}

QMenu* CustomMenus::prepare(MenuKind kind) {
    const int site = program_.currentSite();
    const std::vector<MenuItem> items = program_.menus().ShowCustomMenu(site, kind);
    if (items.empty()) {
        return nullptr;
    }
    const auto element = static_cast<std::size_t>(kind) - 1;
    QMenu& menu = *menus_[element];
    menu.clear();
    const std::optional<std::string> directory = program_.menus().directoryOf(site, kind);
    int index = 0;
    for (const MenuItem& item : items) {
        QAction* const action =
            item.isSeparator ? menu.addSeparator() : menu.addAction(actionText(item.caption, menu));
        action->setObjectName(elementName(names[element].item, index++));
        action->setMenuRole(QAction::NoRole);
        // What was made for a row stays with its site. The tray's menu is of no row, and stays as it is while
        // the current site becomes another one.
        const bool isOfRow = kind != MenuKind::tray;
        connect(action, &QAction::triggered, this, [this, site, isOfRow, directory, command = item.action] {
            program_.menus().ExecuteMenuCommand(isOfRow ? site : program_.currentSite(), command, directory);
        });
    }
    return &menu;
}

void CustomMenus::ShowCustomMenu(MenuKind kind, const QPoint& globalPosition) {
    if (QMenu* const menu = prepare(kind)) {
        menu->popup(globalPosition);
    }
}

} // namespace corvel
