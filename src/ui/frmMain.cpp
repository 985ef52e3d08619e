#include "ui/frmMain.h"

#include "net/qt/wSock.h"
#include "ui/desktop/FrontDoor.h"
#include "ui/SettingsPanel.h"
#include "widgets/Colours.h"
#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/NoticeBar.h"
#include "widgets/TextConversion.h"

#include <QAction>
#include <QCoreApplication>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

namespace corvel {

namespace {

// In milliseconds.
constexpr int noopInterval = 13000;
constexpr int refreshWhoInterval = 1000;
constexpr int statusInterval = 50;

struct Tab {
    const char* key; // the panel's object name
    const char* caption;
    const char* icon;
};

constexpr std::array<Tab, 8> tabs = {{
    {"console", QT_TRANSLATE_NOOP("frmMain", "console"), "tab-console"},
    {"activity", QT_TRANSLATE_NOOP("frmMain", "activity"), "tab-activity"},
    {"browser", QT_TRANSLATE_NOOP("frmMain", "browser"), "tab-browser"},
    {"stats", QT_TRANSLATE_NOOP("frmMain", "stats"), "tab-stats"},
    {"users", QT_TRANSLATE_NOOP("frmMain", "users"), "tab-users"},
    {"groups", QT_TRANSLATE_NOOP("frmMain", "groups"), "tab-groups"},
    {"settings", QT_TRANSLATE_NOOP("frmMain", "settings"), "tab-settings"},
    {"cmdresult", QT_TRANSLATE_NOOP("frmMain", "results"), "tab-results"},
}};

// The empty place of a panel that is made later.
QWidget* newTabFor() {
    auto* const tab = new QWidget;
    (new QVBoxLayout(tab))->setContentsMargins(0, 0, 0, 0);
    return tab;
}

template <typename Panel>
void opensMenu(Panel& panel, CustomMenus& menus, MenuKind kind) {
    QObject::connect(&panel, &Panel::menuRequested, &menus,
                     [&menus, kind](const QPoint& position) { menus.ShowCustomMenu(kind, position); });
}

// A page that fills its place with content, and scrolls it where the place is smaller than content can be.
// Belongs to the caller, and content to it.
QWidget* newScrollPage(QWidget& content) {
    auto* const page = new QScrollArea;
    page->setFrameShape(QFrame::NoFrame);
    page->setFocusPolicy(Qt::NoFocus); // there is nothing to be seen of it
    page->setWidgetResizable(true);
    page->setWidget(&content);
    // The ground of the tab shows through, as it does under every other page.
    page->viewport()->setAutoFillBackground(false);
    content.setAutoFillBackground(false);
    return page;
}

} // namespace

frmMain::frmMain(StateStore& store, const std::string& directory)
    : views_([this](const ViewChange& change) { showChange(change); },
             [this](int site, Dialog dialog) { openDialog(site, dialog); }),
      prompts_(this), shell_(*this, QCoreApplication::applicationDirPath()), lock_(directory),
      program_({.views = views_,
                .prompts = prompts_,
                .store = store,
                .clock = clock_,
                .shell = shell_,
                .lock = lock_,
                .makeSocket = [this](int site) { return makeSocket(site); }},
               directory),
      customMenus_(program_, this) {
    keepPaletteReadable();
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Corvel"));
    setWindowIcon(icon("corvel"));
    setMinimumSize(480, 320);
    resize(1000, 640);
    move(screen()->availableGeometry().center() - rect().center());
    createPanels();
    createMenus();
    tmrSocketStatus_ = new QTimer(this);
    tmrSocketStatus_->setObjectName(QStringLiteral("tmrSocketStatus"));
    tmrSocketStatus_->setInterval(statusInterval);
    connect(tmrSocketStatus_, &QTimer::timeout, this, &frmMain::tmrSocketStatus_Timer);
    tmrSocketStatus_->start();
}

frmMain::~frmMain() {
    views_.stop();
}

void frmMain::start() {
    rememberGeometry();
    std::vector<std::string> problems = program_.LoadWindowState();
    const auto add = [&problems](const std::vector<std::string>& more) {
        problems.insert(problems.end(), more.begin(), more.end());
    };
    add(program_.LoadSettingsFile());
    showImages();
    applyWindowState();
    createTray();
    add(program_.LoadSites());
    program_.selectSite(std::min(1, program_.siteCount()));
    showProblems(problems);
    showReadableNotice();
    showFolderNotice();
    views_.tell();
    areSitesKnown_ = true;
    showSites();
    tmrSocketStatus_Timer();
}

// Before the first site, whose rows show images of the lists.
void frmMain::showImages() {
    images_.replaceImages(program_.settings());
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        const int tab = static_cast<int>(i);
        tabMain_->setTabIcon(tab, images_.image(tabs[i].icon));
        findChild<QAction*>(elementName("mnuViewTab", tab))->setIcon(tabMain_->tabIcon(tab));
    }
}

std::unique_ptr<Socket> frmMain::makeSocket(int site) {
    auto socket = std::make_unique<wSock>();
    connect(socket.get(), &wSock::stateChanged, this, [this, site] { changedSockets_.insert(site); });
    connect(socket.get(), &wSock::connected, this, [this, site] { program_.wSock_Connect(site); });
    connect(socket.get(), &wSock::encrypted, this, [this, site] { program_.wSock_Encrypted(site); });
    connect(socket.get(), &wSock::certificateDoubted, this,
            [this, site](const std::vector<std::string>& problems) {
                program_.wSock_Certificate(site, problems);
            });
    connect(socket.get(), &wSock::dataArrived, this, [this, site](const QByteArray& bytes) {
        program_.wSock_DataArrival(site, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    connect(socket.get(), &wSock::closedByPeer, this, [this, site] { program_.wSock_Close(site); });
    connect(socket.get(), &wSock::failed, this, [this, site](const QString& description, int number) {
        program_.wSock_Error(site, toCore(description), number);
    });
    return socket;
}

// Makes one of the large panels as it is first wanted.
template <typename Panel>
Panel& frmMain::madePanel(Panel*& panel, QWidget& tab, MenuKind menu) {
    if (panel == nullptr) {
        panel = new Panel(program_);
        opensMenu(*panel, customMenus_, menu);
        connect(panel, &AccountsPanel::resultsWanted, this, [this] { tabMain_->setCurrentWidget(results_); });
        if constexpr (std::is_same_v<Panel, GroupsPanel>) {
            connect(panel, &GroupsPanel::userWanted, this, [this](std::int16_t uid) {
                tabMain_->setCurrentWidget(usersTab_);
                users().goToUser(uid);
            });
        }
        QWidget* const page = newScrollPage(*panel);
        tab.layout()->addWidget(page);
        page->show(); // at once, not with the next turn of the loop
        panel->showSite(program_.currentSite());
    }
    return *panel;
}

UsersPanel& frmMain::users() {
    return madePanel(users_, *usersTab_, MenuKind::userList);
}

void frmMain::createArea() {
    notice_ = new NoticeBar("fraNotice", "lblNotice");
    connect(notice_->addButton("cmdNoticeClose", tr("Close")), &QToolButton::clicked, notice_,
            &QWidget::hide);
    area_ = new QWidget;
    area_->installEventFilter(this);
    auto* const center = new QWidget;
    auto* const layout = new QVBoxLayout(center);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(notice_);
    layout->addWidget(area_, 1);
    setCentralWidget(center);
}

void frmMain::createPanels() {
    createArea();
    lvwSites_ = new SitesList(images_, area_);
    createClosedBar();
    lvwSites_->setObjectName(QStringLiteral("lvwSites"));
    connect(lvwSites_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { program_.selectSite(SitesList::siteAt(current)); });
    connect(lvwSites_, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        // Connecting ends a connection that is there: a double click must not.
        const int site = SitesList::siteAt(index);
        if (program_.site(site).wSock->state() == SocketState::closed) {
            program_.connectSite(site);
        }
    });

    imgSplit_ = new QWidget(area_);
    imgSplit_->setObjectName(QStringLiteral("imgSplit"));
    imgSplit_->setCursor(Qt::SplitHCursor);
    imgSplit_->installEventFilter(this);

    console_ = newConsolePanel(program_);
    activity_ = new ActivityPanel(program_, images_);
    browser_ = new BrowserPanel(program_);
    stats_ = new StatsPanel;
    createSettingsPanel();
    results_ = newResultsPanel(program_);
    opensMenu(*browser_, customMenus_, MenuKind::browser);
    opensMenu(*activity_, customMenus_, MenuKind::activity);
    usersTab_ = newTabFor();
    groupsTab_ = newTabFor();
    tabMain_ = new QTabWidget(area_);
    tabMain_->setObjectName(QStringLiteral("tabMain"));
    // In the order of the tabs.
    const std::array<QWidget*, tabs.size()> panels = {console_,  activity_,  browser_,  stats_,
                                                      usersTab_, groupsTab_, settings_, results_};
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        panels[i]->setObjectName(QLatin1String(tabs[i].key));
        tabMain_->addTab(panels[i], tr(tabs[i].caption));
    }
    connect(tabMain_, &QTabWidget::currentChanged, this, [this] {
        showStartPage();
        if (tabMain_->currentWidget() == usersTab_) {
            users();
        } else if (tabMain_->currentWidget() == groupsTab_) {
            madePanel(groups_, *groupsTab_, MenuKind::groupList);
        }
        showUnread();
        tmrSocketStatus_Timer();
    });

    createStatusBar();
}

void frmMain::showAddedSite(int site) {
    lvwSites_->addSite(site, cellTextOf(program_.site(site).config.name));
    changedSockets_.insert(site);
    showSites();

    addTimer("tmrNoop", site, noopInterval, [this, site] { program_.tmrNoop_Timer(site); }).start();
    // Never started: the activity is not asked for by itself.
    addTimer("tmrRefreshWho", site, refreshWhoInterval,
             [this, site] { program_.tmrRefreshWho_Timer(site, activity_->isFrozen()); });
}

QTimer& frmMain::addTimer(const char* name, int site, int interval, std::function<void()> tick) {
    auto* const timer = new QTimer(this);
    timer->setObjectName(elementName(name, site));
    timer->setInterval(interval);
    connect(timer, &QTimer::timeout, this, std::move(tick));
    return *timer;
}

void frmMain::showChange(const ViewChange& change) {
    const int site = change.site;
    if (site > 0 && !program_.isThere(site) && change.part != ViewPart::removed) {
        return; // it was told before the site went
    }
    switch (change.part) {
    case ViewPart::added:
        showAddedSite(site);
        break;
    case ViewPart::renamed:
        lvwSites_->setName(site, cellTextOf(program_.site(site).config.name));
        showSites();
        showClosed();
        break;
    case ViewPart::removed:
        dropSite(site);
        break;
    case ViewPart::current:
        showCurrentSite();
        break;
    case ViewPart::log:
        showLog(site, change.log);
        break;
    case ViewPart::listing:
        browser_->listingChanged(site);
        break;
    case ViewPart::path:
        browser_->pathChanged(site);
        break;
    case ViewPart::activity:
        activity_->activityChanged(site);
        showActivity();
        break;
    case ViewPart::chattr:
        emit browser_->chattrAnswered(site);
        break;
    case ViewPart::accounts:
        for (AccountsPanel* const panel : accountsPanels()) {
            panel->accountsChanged(site, change.accounts, change.account);
        }
        break;
    case ViewPart::session:
        prompts_.dropCertificate(site);
        showChange({.part = ViewPart::activity, .site = site});
        showChange({.part = ViewPart::accounts, .site = site, .accounts = Accounts::users});
        showChange({.part = ViewPart::accounts, .site = site, .accounts = Accounts::groups});
        break;
    case ViewPart::encryption:
        changedSockets_.insert(site);
        break;
    case ViewPart::lastError:
        showLastError(site);
        break;
    case ViewPart::jobs:
        if (users_ != nullptr) {
            users_->jobsChanged(site);
        }
        showJobs(site);
        break;
    }
}

void frmMain::showLog(int site, LogKind log) {
    switch (log) {
    case LogKind::console:
        console_->logChanged(site);
        break;
    case LogKind::commandResults:
        results_->logChanged(site);
        showUnread();
        break;
    case LogKind::browserReply:
        browser_->logChanged(site);
        break;
    }
}

void frmMain::openDialog(int site, Dialog dialog) {
    switch (dialog) {
    case Dialog::chmod:
    case Dialog::chattr:
    case Dialog::nuke:
        browser_->openDialog(site, dialog);
        break;
    case Dialog::copyUser:
        users().copyUser(site);
        break;
    case Dialog::userGroups:
        users().editGroups(site);
        break;
    }
}

std::vector<AccountsPanel*> frmMain::accountsPanels() const {
    std::vector<AccountsPanel*> panels = {users_, groups_};
    std::erase(panels, nullptr);
    return panels;
}

void frmMain::showCurrentSite() {
    const int site = program_.currentSite();
    lvwSites_->select(site);
    showSites();
    console_->showSite(site);
    activity_->showSite(site);
    browser_->showSite(site);
    for (AccountsPanel* const panel : accountsPanels()) {
        panel->showSite(site);
    }
    results_->showSite(site);
    settings_->showSite(site);
    showClosed();
    showLastError(site);
    showJobs(site);
    showUnread();
}

} // namespace corvel
