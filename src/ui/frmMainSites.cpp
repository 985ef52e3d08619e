#include "config/qt/ConfigDialogs.h"
#include "ui/desktop/Desktop.h"
#include "ui/frmMain.h"
#include "ui/GuideWindow.h"
#include "ui/SettingsPanel.h"
#include "ui/StartPage.h"
#include "widgets/CertificateDialogs.h"
#include "widgets/Forms.h"
#include "widgets/TextConversion.h"

#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include <array>

// What is done with the sites: their menus, their editor, and what the window shows while there are none.

namespace corvel {

namespace {

constexpr std::size_t shortcuts = 9; // Alt+1 to Alt+9

} // namespace

// The entries of the sites list, which keep their places; "Delete" does nothing.
void frmMain::createPopup() {
    // Null: a separator.
    static constexpr std::array<const char*, 11> captions = {QT_TR_NOOP("Connect"),
                                                             QT_TR_NOOP("Disconnect"),
                                                             nullptr,
                                                             QT_TR_NOOP("Edit..."),
                                                             QT_TR_NOOP("Delete"),
                                                             nullptr,
                                                             QT_TR_NOOP("Add new..."),
                                                             nullptr,
                                                             QT_TR_NOOP("Toggle Icon/Report view"),
                                                             nullptr,
                                                             QT_TR_NOOP("Certificate...")};
    mnuListSites_ = new QMenu(this);
    mnuListSites_->setObjectName(QStringLiteral("mnuListSites"));
    int index = 0;
    for (const char* const caption : captions) {
        QAction* const action =
            caption == nullptr ? mnuListSites_->addSeparator() : mnuListSites_->addAction(tr(caption));
        action->setObjectName(elementName("mnuListSites", index));
        connect(action, &QAction::triggered, this, [this, index] { sitesMenuTriggered(index); });
        ++index;
    }
    connect(lvwSites_, &SitesList::menuRequested, this,
            [this](const QPoint& position) { mnuListSites_->popup(position); });
}

void frmMain::createSitesMenu() {
    createPopup();
    sitesMenu_ = menuBar()->addMenu(tr("&Sites"));
    sitesMenu_->setObjectName(QStringLiteral("mnuSites"));
    // Entries beyond the screen's height would stand in columns.
    sitesMenu_->setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1 }"));
    const auto take = [this](int index) {
        QAction* const action = mnuListSites_->actions().at(index);
        sitesMenu_->addAction(action);
        return action;
    };
    const auto add = [this](const char* name, const QString& caption, auto act) {
        QAction* const action = sitesMenu_->addAction(caption);
        action->setObjectName(QLatin1String(name));
        connect(action, &QAction::triggered, this, act);
        return action;
    };
    needSite_ = {take(0), take(1)};
    needSites_ = {add("mnuSitesConnectAll", tr("Connect a&ll"), [this] { program_.connectAll(); }),
                  add("mnuSitesDisconnectAll", tr("D&isconnect all"), [this] { program_.disconnectAll(); })};
    sitesMenu_->addSeparator();
    take(6);
    needSite_.push_back(take(3));
    needSite_.push_back(add("mnuSitesDuplicate", tr("D&uplicate..."), [this] {
        openAddDialog(duplicateForm(program_.site(program_.currentSite()).config));
    }));
    needSite_.push_back(add("mnuSitesRemove", tr("&Remove site..."),
                            [this] { program_.removeSite(program_.currentSite()); }));
    needSite_.push_back(take(10));
    sitesMenu_->addSeparator();
    take(8);
    sitesMenu_->addSeparator();
    sitesEnd_ = sitesMenu_->addSeparator();
    QAction* const quit = add("mnuSitesQuit", tr("&Quit"), [this] { close(); });
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
    quit->setMenuRole(QAction::QuitRole);
    connect(sitesMenu_, &QMenu::aboutToShow, this, [this] { listSites(program_.siteIndexes().size()); });
}

// Those that have a shortcut have an entry always, the others while the menu is open.
void frmMain::listSites(std::size_t most) {
    const std::vector<int> sites = program_.siteIndexes();
    most = std::min(most, sites.size());
    for (std::size_t i = siteNames_.size(); i < most; ++i) {
        auto* const action = new QAction(this);
        action->setCheckable(true);
        if (i < shortcuts) {
            action->setShortcut(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(i)));
        }
        connect(action, &QAction::triggered, this, [this, action] {
            program_.selectSite(action->data().toInt());
            action->setChecked(true); // also where it was the current one
        });
        sitesMenu_->insertAction(sitesEnd_, action);
        siteNames_.push_back(action);
    }
    for (std::size_t i = 0; i < siteNames_.size(); ++i) {
        QAction& action = *siteNames_[i];
        action.setVisible(i < most);
        if (i < most) {
            action.setObjectName(elementName("mnuSites", sites[i]));
            action.setData(sites[i]);
            action.setText(captionTextOf(program_.site(sites[i]).config.name));
            action.setChecked(sites[i] == program_.currentSite());
        }
    }
}

void frmMain::showSites() {
    if (!areSitesKnown_) {
        return;
    }
    listSites(shortcuts);
    const bool hasSites = !program_.siteIndexes().empty();
    const bool hasSite = program_.currentSite() > 0;
    for (QAction* const action : needSites_) {
        action->setEnabled(hasSites);
    }
    for (QAction* const action : needSite_) {
        action->setEnabled(hasSite);
    }
    showStartPage();
}

// In the place of every page that has nothing to show without a site.
void frmMain::showStartPage() {
    const bool isWanted =
        areSitesKnown_ && program_.siteIndexes().empty() && tabMain_->currentWidget() != settings_;
    if (isWanted && startPage_ == nullptr) {
        startPage_ = new StartPage(*tabMain_->currentWidget()->parentWidget());
        startPage_->hide();
        connect(startPage_, &StartPage::addWanted, this, [this] { editSite(0); });
        connect(startPage_, &StartPage::demoWanted, this, &frmMain::startDemo);
        connect(startPage_, &StartPage::guideWanted, this, &frmMain::openGuide);
    }
    if (startPage_ == nullptr) {
        return;
    }
    const bool isNew = isWanted && startPage_->isHidden();
    startPage_->setVisible(isWanted);
    tabMain_->currentWidget()->setVisible(!isWanted);
    if (isNew && !tabMain_->tabBar()->hasFocus()) {
        startPage_->setFocus();
    }
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
    case 10:
        if (site > 0) {
            openCertificate(site);
        }
        break;
    default: // "Delete" does nothing
        break;
    }
}

void frmMain::openCertificate(int site) {
    const Site& shown = program_.site(site);
    const bool isConnected = shown.wSock->state() == SocketState::connected;
    const std::string encryption = encryptionStatus(shown).text;
    openCertificateDialog(*this,
                          {.siteName = shown.config.name,
                           .host = shown.config.host,
                           .port = shown.config.port,
                           .connection = !isConnected         ? "not connected"
                                         : encryption.empty() ? "not encrypted"
                                                              : encryption,
                           .chain = shown.wSock->encryption().chain,
                           .remembered = program_.trustedFingerprint(site)},
                          [this, site] { program_.forgetFingerprint(site); });
}

void frmMain::editSite(int site) {
    if (site == 0) {
        openAddDialog({});
        return;
    }
    const SiteForm form = siteForm(program_.site(site).config);
    openSiteDialog(*this,
                   {.title = QStringLiteral("Editing site \"%1\"").arg(nameTextOf(form.txtSitename)),
                    .okCaption = tr("Save changes"),
                    .folder = fromCore(program_.directory())},
                   form, [this, site](const SiteForm& filled) { return program_.changeSite(site, filled); });
}

void frmMain::openAddDialog(const SiteForm& form) {
    openSiteDialog(*this,
                   {.title = tr("Add new site"),
                    .okCaption = tr("Add and close"),
                    .connectCaption = tr("Add and connect"),
                    .folder = fromCore(program_.directory())},
                   form, [this](const SiteForm& filled) {
                       std::optional<std::string> problem = program_.addSite(filled);
                       if (!problem) {
                           program_.selectSite(program_.siteCount());
                       }
                       return problem;
                   });
}

// What there is of a site that was removed.
void frmMain::dropSite(int site) {
    for (const char* const name : {"tmrNoop", "tmrRefreshWho"}) {
        if (auto* const timer = findChild<QTimer*>(elementName(name, site))) {
            timer->stop();
            timer->deleteLater();
        }
    }
    changedSockets_.erase(site);
    prompts_.dropCertificate(site);
    lvwSites_->removeSite(site);
    console_->drop(site);
    results_->drop(site);
    activity_->dropSite(site);
    browser_->dropSite(site);
    for (AccountsPanel* const panel : accountsPanels()) {
        panel->dropSite(site);
    }
    shownStatus_.reset();
    showSites();
}

void frmMain::openGuide() {
    if (const QString problem = showGuide(*this); !problem.isEmpty()) {
        prompts_.Message(toCore(problem));
    }
}

void frmMain::startDemo() {
    if (!startProgramAgain({QStringLiteral("--demo")})) {
        prompts_.Message("The demo can't be started.");
    }
}

} // namespace corvel
