#include "browser/qt/BrowserDialogs.h"
#include "browser/qt/BrowserPanel.h"
#include "widgets/Forms.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include <array>

// What can be done in the browser by the menu bar.

namespace corvel {

namespace {

struct MenuLine {
    const char* name;
    const char* caption;
    int key; // that does the same in the list; 0 for none
    bool endsGroup;
};

// By the numbers of BrowserAct.
constexpr std::array<MenuLine, 9> menuLines = {{
    {"mnuBrowserNewDirectory", QT_TRANSLATE_NOOP("BrowserPanel", "&New directory..."), Qt::Key_Insert, false},
    {"mnuBrowserRename", QT_TRANSLATE_NOOP("BrowserPanel", "&Rename"), Qt::Key_F2, false},
    {"mnuBrowserDelete", QT_TRANSLATE_NOOP("BrowserPanel", "&Delete..."), Qt::Key_Delete, true},
    {"mnuBrowserPermissions", QT_TRANSLATE_NOOP("BrowserPanel", "&Permissions..."), 0, false},
    {"mnuBrowserHide", QT_TRANSLATE_NOOP("BrowserPanel", "&Hide..."), 0, false},
    {"mnuBrowserNuke", QT_TRANSLATE_NOOP("BrowserPanel", "Nu&ke..."), 0, true},
    {"mnuBrowserCopyPath", QT_TRANSLATE_NOOP("BrowserPanel", "&Copy path"), 0, true},
    {"mnuBrowserUp", QT_TRANSLATE_NOOP("BrowserPanel", "&Up"), Qt::Key_Backspace, false},
    {"mnuBrowserRefresh", QT_TRANSLATE_NOOP("BrowserPanel", "Re&fresh"), Qt::Key_F5, false},
}};

} // namespace

void BrowserPanel::fillMenu(QMenu& menu) {
    menu.setToolTipsVisible(true);
    for (std::size_t i = 0; i < menuLines.size(); ++i) {
        const MenuLine& line = menuLines[i];
        auto* const action = new QAction(tr(line.caption), this);
        action->setObjectName(QLatin1String(line.name));
        if (line.key != 0) {
            // To be read there: the list itself hears the key.
            action->setShortcut(static_cast<Qt::Key>(line.key));
            action->setShortcutContext(Qt::WidgetShortcut);
        }
        connect(action, &QAction::triggered, this, [this, i] { act(static_cast<BrowserAct>(i)); });
        actions_.push_back(action);
        menu.addAction(action);
        if (line.endsGroup) {
            menu.addSeparator();
        }
    }
    connect(&menu, &QMenu::aboutToShow, this, &BrowserPanel::showActions);
    showActions();
}

std::vector<int> BrowserPanel::selectedRows() const {
    const Page* const page = pages_->find(program_.currentSite());
    return page == nullptr ? std::vector<int>() : page->list->selectedRows();
}

QString BrowserPanel::whyNot(BrowserAct act, const std::vector<int>& rows) const {
    const int site = program_.currentSite();
    if (site == 0) {
        return tr("There are no sites yet");
    }
    if (!isVisible()) {
        return tr("The browser is not in front");
    }
    return displayTextOf(program_.browser().whyNot(site, act, rows));
}

void BrowserPanel::showActions() {
    const std::vector<int> rows = selectedRows();
    for (std::size_t i = 0; i < actions_.size(); ++i) {
        const QString reason = whyNot(static_cast<BrowserAct>(i), rows);
        actions_[i]->setEnabled(reason.isEmpty());
        actions_[i]->setToolTip(reason.isEmpty() ? plainCaption(tr(menuLines[i].caption))
                                                 : toolTipOf(reason));
    }
}

void BrowserPanel::act(BrowserAct act) {
    const int site = program_.currentSite();
    const std::vector<int> rows = selectedRows();
    if (!whyNot(act, rows).isEmpty()) {
        if (site > 0) {
            program_.browser().isUsable(site); // which says why, if it is that
        }
        return;
    }
    BrowserActions& browser = program_.browser();
    ReportView& list = *pages_->at(site).list;
    switch (act) {
    case BrowserAct::makeDirectory:
        browser.makeDirectory(site);
        break;
    case BrowserAct::rename:
        list.editLabel(rows.front());
        break;
    case BrowserAct::remove:
        browser.remove(site, rows);
        break;
    case BrowserAct::permissions:
        if (rows.size() == 1) {
            openBrowserDialog(program_, site, Dialog::chmod, rows.front(), *this);
        } else if (browser.isUsable(site)) {
            openChmodDialog(program_, site, rows, *this);
        }
        break;
    case BrowserAct::hide:
        list.setCurrentRow(rows.front());
        program_.menus().ExecuteMenuCommand(site, {.action = "chattr"});
        break;
    case BrowserAct::nuke:
        openBrowserDialog(program_, site, Dialog::nuke, rows.front(), *this);
        break;
    case BrowserAct::copyPath:
        QGuiApplication::clipboard()->setText(textOf(pathsOf(program_.site(site).session.browser, rows)));
        break;
    case BrowserAct::up:
        browser.up(site);
        break;
    case BrowserAct::refresh:
        browser.refresh(site);
        break;
    }
}

} // namespace corvel
