#include "ui/frmMain.h"

#include "net/qt/LoadTest.h"
#include "net/qt/wSock.h"
#include "ui/NoticeBar.h"
#include "ui/SettingsPanel.h"
#include "widgets/ElementName.h"
#include "widgets/Icons.h"
#include "widgets/ScrollPage.h"
#include "widgets/TextConversion.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <iostream>
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

} // namespace

frmMain::frmMain(StateStore& store, const std::string& directory)
    : prompts_(this), shell_(*this, QCoreApplication::applicationDirPath()), lock_(directory),
      program_({.views = *this,
                .prompts = prompts_,
                .store = store,
                .clock = clock_,
                .shell = shell_,
                .lock = lock_,
                .makeSocket = [this](int site) { return makeSocket(site); }},
               directory),
      customMenus_(program_, this), sitesModel_(images_) {
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

frmMain::~frmMain() = default;

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
    connect(socket.get(), &wSock::dataArrived, this, [this, site](const QByteArray& bytes) {
        program_.wSock_DataArrival(site, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    connect(socket.get(), &wSock::closedByPeer, this, [this, site] { program_.wSock_Close(site); });
    connect(socket.get(), &wSock::failed, this, [this, site](const QString& description, int number) {
        program_.wSock_Error(site, toCore(description), number);
    });
    return socket;
}

void frmMain::createArea() {
    notice_ = new NoticeBar;
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
    lvwSites_ = new SitesList(sitesModel_, area_);
    lvwSites_->setObjectName(QStringLiteral("lvwSites"));
    connect(lvwSites_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { program_.selectSite(current.row() + 1); });
    connect(lvwSites_, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        // Connecting ends a connection that is there: a double click must not.
        const int site = index.row() + 1;
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
    users_ = new UsersPanel(program_);
    groups_ = new GroupsPanel(program_);
    createSettingsPanel();
    results_ = newResultsPanel(program_);
    const auto opensMenu = [this](auto* panel, MenuKind kind) {
        connect(panel, &std::remove_pointer_t<decltype(panel)>::menuRequested, &customMenus_,
                [this, kind](const QPoint& position) {
                    customMenus_.ShowCustomMenu(static_cast<int>(kind), position);
                });
    };
    opensMenu(browser_, MenuKind::browser);
    opensMenu(users_, MenuKind::userList);
    opensMenu(groups_, MenuKind::groupList);
    opensMenu(activity_, MenuKind::activity);
    tabMain_ = new QTabWidget(area_);
    tabMain_->setObjectName(QStringLiteral("tabMain"));
    // In the order of the tabs.
    const std::array<QWidget*, tabs.size()> panels = {
        console_,  activity_, browser_, stats_, newScrollPage(*users_), newScrollPage(*groups_),
        settings_, results_};
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        panels[i]->setObjectName(QLatin1String(tabs[i].key));
        tabMain_->addTab(panels[i], tr(tabs[i].caption));
    }
    connect(tabMain_, &QTabWidget::currentChanged, this, &frmMain::tmrSocketStatus_Timer);

    createStatusBar();
}

void frmMain::siteAdded(int site) {
    const std::string& name = program_.site(site).config.name;
    sitesModel_.addSite(displayTextOf(name, encodingOf(name)));
    changedSockets_.insert(site);

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

void frmMain::siteRenamed(int site) {
    const std::string& name = program_.site(site).config.name;
    sitesModel_.setName(site - 1, displayTextOf(name, encodingOf(name)));
    showStatus();
}

void frmMain::currentSiteChanged() {
    showCurrentSite();
}

void frmMain::logChanged(int site, LogKind log) {
    switch (log) {
    case LogKind::console:
        console_->logChanged(site);
        break;
    case LogKind::commandResults:
        results_->logChanged(site);
        break;
    case LogKind::browserReply:
        browser_->logChanged(site);
        break;
    }
}

void frmMain::listingChanged(int site) {
    browser_->listingChanged(site);
}

void frmMain::pathChanged(int site) {
    browser_->pathChanged(site);
}

void frmMain::activityChanged(int site) {
    activity_->activityChanged(site);
    if (site == program_.currentSite()) {
        showActivity();
    }
}

void frmMain::chattrAnswered(int site) {
    emit browser_->chattrAnswered(site);
}

void frmMain::accountsChanged(int site, Accounts accounts, AccountChange change) {
    users_->accountsChanged(site, accounts, change);
    groups_->accountsChanged(site, accounts, change);
}

void frmMain::sessionReset(int site) {
    activityChanged(site);
    accountsChanged(site, Accounts::users, AccountChange::table);
    accountsChanged(site, Accounts::groups, AccountChange::table);
}

void frmMain::lastErrorChanged(int /*site*/) {
    showStatus();
}

void frmMain::dialogWanted(int site, Dialog dialog) {
    switch (dialog) {
    case Dialog::chmod:
    case Dialog::chattr:
    case Dialog::nuke:
        browser_->openDialog(site, dialog);
        break;
    case Dialog::copyUser:
        users_->copyUser(site);
        break;
    case Dialog::userGroups:
        users_->editGroups(site);
        break;
    }
}

void frmMain::showCurrentSite() {
    const int site = program_.currentSite();
    lvwSites_->setCurrentIndex(sitesModel_.index(site - 1, 0));
    console_->showSite(site);
    activity_->showSite(site);
    browser_->showSite(site);
    users_->showSite(site);
    groups_->showSite(site);
    results_->showSite(site);
    showStatus();
}

void frmMain::closeEvent(QCloseEvent* event) {
    loadTest_->stop();
    const bool hasToTell = !std::exchange(isSavingTried_, true) && !program_.SaveSites();
    gatherWindowState();
    program_.SaveWindowState();
    if (hasToTell) {
        // The program ends with its window; what is told is to be read before, and what is asked answered.
        prompts_.whenAnswered([this] { close(); });
        event->ignore();
        return;
    }
    tray_.TrayDelete();
    event->accept();
    if (!isVisible()) {
        QCoreApplication::quit(); // by itself it would end with a window that is seen to close
    }
}

// On the error stream all of them; in the window as many as can be read there.
void frmMain::showProblems(const std::vector<std::string>& problems) {
    constexpr qsizetype mostLines = 6;
    QStringList lines;
    for (const std::string& problem : problems) {
        std::cerr << problem << '\n';
        lines.append(displayTextOf(problem, TextEncoding::utf8));
    }
    if (const qsizetype more = lines.size() - mostLines; more > 0) {
        lines = lines.first(mostLines);
        lines.append(tr("... and %1 more").arg(more));
    }
    if (!lines.isEmpty()) {
        notice_->show(lines.join(QLatin1Char('\n')));
    }
}

} // namespace corvel
