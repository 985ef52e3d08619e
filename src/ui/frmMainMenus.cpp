#include "config/qt/frmSitesAddEdit.h"
#include "ui/AboutBox.h"
#include "ui/frmMain.h"
#include "ui/SettingsPanel.h"
#include "widgets/DialogParts.h"
#include "widgets/ElementName.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QMenuBar>
#include <QTabWidget>

#include <array>

// The menu bar, the sites menu, and what their entries do.

namespace corvel {

void frmMain::createMenus() {
    createSitesMenu();
    createViewMenu();
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    QAction* const about = help->addAction(tr("&About Corvel"));
    about->setObjectName(QStringLiteral("mnuHelpAbout"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, [this] { openAboutBox(*this); });
}

void frmMain::createSitesMenu() {
    struct Entry {
        const char* caption; // null: a separator
    };
    static constexpr std::array<Entry, 9> entries = {{
        {QT_TRANSLATE_NOOP("frmMain", "Connect")},
        {QT_TRANSLATE_NOOP("frmMain", "Disconnect")},
        {nullptr},
        {QT_TRANSLATE_NOOP("frmMain", "Edit...")},
        {QT_TRANSLATE_NOOP("frmMain", "Delete")},
        {nullptr},
        {QT_TRANSLATE_NOOP("frmMain", "Add new...")},
        {nullptr},
        {QT_TRANSLATE_NOOP("frmMain", "Toggle Icon/Report view")},
    }};
    mnuListSites_ = menuBar()->addMenu(tr("&Sites"));
    mnuListSites_->setObjectName(QStringLiteral("mnuListSites"));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const int index = static_cast<int>(i);
        QAction* const action = entries[i].caption == nullptr
                                    ? mnuListSites_->addSeparator()
                                    : mnuListSites_->addAction(tr(entries[i].caption));
        action->setObjectName(QStringLiteral("mnuListSites_%1").arg(index));
        connect(action, &QAction::triggered, this, [this, index] { sitesMenuTriggered(index); });
    }
    connect(lvwSites_, &SitesList::menuRequested, this,
            [this](const QPoint& position) { mnuListSites_->popup(position); });
}

void frmMain::createViewMenu() {
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    showSitesList_ = view->addAction(tr("&Sites list"));
    showSitesList_->setObjectName(QStringLiteral("mnuViewSitesList"));
    showSitesList_->setCheckable(true);
    showSitesList_->setShortcut(Qt::Key_F9);
    connect(showSitesList_, &QAction::toggled, this, &frmMain::showSitesList);
    QAction* const onTop = view->addAction(tr("&Always on top"));
    onTop->setObjectName(QStringLiteral("mnuViewAlwaysOnTop"));
    onTop->setCheckable(true);
    connect(onTop, &QAction::toggled, &settings_->chkAlwaysOnTop(), &QCheckBox::setChecked);
    connect(&settings_->chkAlwaysOnTop(), &QCheckBox::toggled, onTop, &QAction::setChecked);
    QAction* const settings = view->addAction(tr("S&ettings..."));
    settings->setObjectName(QStringLiteral("mnuViewSettings"));
    connect(settings, &QAction::triggered, this, &frmMain::openSettings);
    view->addSeparator();
    for (int tab = 0; tab < tabMain_->count(); ++tab) {
        QAction* const action = view->addAction(tabMain_->tabText(tab));
        action->setObjectName(elementName("mnuViewTab", tab));
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + tab)));
        connect(action, &QAction::triggered, this, [this, tab] { tabMain_->setCurrentIndex(tab); });
    }
    view->addSeparator();
    const auto addTabStep = [this, view](const QString& caption, const QList<QKeySequence>& shortcuts,
                                         int step) {
        QAction* const action = view->addAction(caption);
        action->setShortcuts(shortcuts);
        connect(action, &QAction::triggered, this, [this, step] {
            tabMain_->setCurrentIndex((tabMain_->currentIndex() + step + tabMain_->count()) %
                                      tabMain_->count());
        });
    };
    addTabStep(tr("&Next tab"), {QKeySequence(tr("Ctrl+PgDown")), QKeySequence(tr("Ctrl+Tab"))}, 1);
    addTabStep(tr("&Previous tab"), {QKeySequence(tr("Ctrl+PgUp")), QKeySequence(tr("Ctrl+Shift+Tab"))}, -1);
}

void frmMain::sitesMenuTriggered(int index) {
    const int site = program_.currentSite();
    switch (index) {
    case 0:
        program_.connectSite(site);
        break;
    case 1:
        program_.disconnectSite(site);
        break;
    case 3:
        if (site > 0) {
            editSite(site);
        }
        break;
    case 6:
        editSite(0);
        break;
    case 8:
        toggleSitesView();
        break;
    default: // "Delete" does nothing
        break;
    }
}

void frmMain::editSite(int site) {
    const bool isNew = site == 0;
    frmSitesAddEdit::Opening opening;
    opening.form = isNew ? SiteForm{} : siteForm(program_.site(site).config);
    const std::string& name = opening.form.txtSitename;
    opening.caption = isNew
                          ? tr("Add new site")
                          : QStringLiteral("Editing site \"%1\"").arg(displayTextOf(name, encodingOf(name)));
    opening.okCaption = isNew ? tr("Add and close") : tr("Save changes");
    auto* const dialog = new frmSitesAddEdit(
        opening,
        [this, site, isNew](const SiteForm& form) {
            std::optional<std::string> problem =
                isNew ? program_.addSite(form) : program_.changeSite(site, form);
            if (isNew && !problem) {
                program_.selectSite(program_.siteCount());
            }
            return problem;
        },
        this);
    corvel::openDialog(*dialog);
}

} // namespace corvel
