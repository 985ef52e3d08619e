#include "config/qt/ConfigDialogs.h"
#include "ui/desktop/Desktop.h"
#include "ui/frmMain.h"
#include "ui/SettingsPanel.h"
#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QMenuBar>
#include <QMessageBox>
#include <QSslSocket>
#include <QStatusBar>
#include <QSysInfo>
#include <QTabWidget>

// The menu bar, the settings tab, and what their entries and buttons do.

namespace corvel {

namespace {

// Gives the focus to where one works on a page: its command line or its list, the highest of several, or else
// the first control of all.
void focusWork(const QWidget& page) {
    QWidget* place = nullptr;
    std::pair<int, int> best; // worth, and how high it stands
    for (QWidget* const widget : page.findChildren<QWidget*>()) {
        const bool isWork = qobject_cast<const ReportView*>(widget) != nullptr ||
                            widget->objectName().startsWith(QLatin1String("txtSendFTP"));
        const std::pair<int, int> rank(isWork ? 1 : 0, -widget->mapTo(&page, QPoint()).y());
        if ((place == nullptr || rank > best) && widget->isVisibleTo(&page) && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0) {
            place = widget;
            best = rank;
        }
    }
    if (place != nullptr) {
        place->setFocus(Qt::ShortcutFocusReason);
    }
}

} // namespace

void frmMain::createMenus() {
    createSitesMenu();
    createViewMenu();
    browser_->fillMenu(*menuBar()->addMenu(tr("&Browser")));
    connect(browser_, &BrowserPanel::noteWanted, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    createHelpMenu();
}

void frmMain::createHelpMenu() {
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    QAction* const guide =
        help->addAction(tr("&Guide"), QKeySequence::HelpContents, this, &frmMain::openGuide);
    guide->setObjectName(QStringLiteral("mnuHelpGuide"));
    QAction* const folder =
        help->addAction(tr("&Folder of the files"), this, [this] { shell_.open(program_.directory()); });
    folder->setObjectName(QStringLiteral("mnuHelpFolder"));
    help->addSeparator();
    QAction* const about = help->addAction(tr("&About Corvel"));
    about->setObjectName(QStringLiteral("mnuHelpAbout"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &frmMain::openAboutBox);
}

void frmMain::openAboutBox() {
    auto* const box = new QMessageBox(this);
    box->setObjectName(QStringLiteral("frmAbout"));
    box->setWindowTitle(tr("About Corvel"));
    box->setIconPixmap(icon("corvel").pixmap(QSize(64, 64), devicePixelRatioF()));
    box->setTextFormat(Qt::PlainText);
    box->setText(QStringLiteral("Corvel %1").arg(QStringLiteral(CORVEL_VERSION)));
    box->setInformativeText(tr("Administers FTP servers over their control connections.") +
                            QStringLiteral("\n\n") + tr("Runs with Qt %1.").arg(QLatin1String(qVersion())) +
                            QLatin1Char('\n') +
                            tr("Encrypts with %1.").arg(QSslSocket::sslLibraryVersionString()) +
                            QLatin1Char('\n') + tr("System: %1.").arg(QSysInfo::prettyProductName()));
    box->setStandardButtons(QMessageBox::Ok);
    corvel::openDialog(*box);
}

void frmMain::createSettingsPanel() {
    settings_ = new SettingsPanel(program_);
    QCheckBox& chkAlwaysOnTop = settings_->chkAlwaysOnTop();
    connect(&chkAlwaysOnTop, &QCheckBox::toggled, this,
            [this](bool checked) { setAlwaysOnTop(*this, checked); });
    new TopmostDialogs(chkAlwaysOnTop, this);
    connect(settings_, &SettingsPanel::testWanted, this, [this] {
        if (const int site = program_.currentSite(); site > 0) {
            settings_->startTest(*console_->at(site).command);
        }
    });
    connect(settings_, &SettingsPanel::settingsWanted, this, &frmMain::openSettings);
}

void frmMain::openSettings() {
    openSettingsDialog(*this, settingsForm(program_.windowState(), program_.settings()),
                       [this](const SettingsForm& form) {
                           program_.windowState() = savedSettings(form, program_.windowState());
                           activity_->applyColumns();
                           activity_->applyColours();
                       });
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
    QAction* const queue = view->addAction(tr("&Queue..."));
    queue->setObjectName(QStringLiteral("mnuViewQueue"));
    connect(queue, &QAction::triggered, this, &frmMain::openQueue);
    QAction* const settings = view->addAction(tr("S&ettings..."));
    settings->setObjectName(QStringLiteral("mnuViewSettings"));
    connect(settings, &QAction::triggered, this, &frmMain::openSettings);
    view->addSeparator();
    for (int tab = 0; tab < tabMain_->count(); ++tab) {
        QAction* const action = view->addAction(tabMain_->tabText(tab));
        action->setObjectName(elementName("mnuViewTab", tab));
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + tab)));
        connect(action, &QAction::triggered, this, [this, tab] {
            tabMain_->setCurrentIndex(tab);
            focusWork(*tabMain_->currentWidget());
        });
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

} // namespace corvel
