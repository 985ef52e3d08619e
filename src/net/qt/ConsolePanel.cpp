#include "net/qt/ConsolePanel.h"

#include "widgets/LogBox.h"
#include "widgets/OneLineEdit.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace corvel {

namespace {

QString numbered(const char* name, int site) {
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(site);
}

// A log box of the site that shows log, with the given name.
LogBox* createLogBox(const mdlMain& program, int site, LogText SiteSession::*log, const char* name,
                     const QString& accessibleName) {
    auto* box =
        new LogBox([&program, site, log] { return fromCore((program.site(site).session.*log).text()); });
    box->setObjectName(numbered(name, site));
    box->setAccessibleName(accessibleName);
    return box;
}

} // namespace

ConsolePanel::ConsolePanel(mdlMain& program, QWidget* parent) : QStackedWidget(parent), program_(program) {
    addWidget(new QWidget);
    logs_.push_back(nullptr);
}

void ConsolePanel::addSite(int site) {
    auto* const page = new QWidget;
    auto* const log = createLogBox(program_, site, &SiteSession::consoleLog, "txtLogFTP", tr("Console log"));
    const Settings& settings = program_.settings();
    log->setLogFont(fromCore(settings.textbox_fontname), settings.textbox_fontsize.value_or(0));

    auto* const command = new OneLineEdit;
    command->setObjectName(numbered("txtSendFTP", site));
    command->setAccessibleName(tr("Command"));
    command->setPlaceholderText(tr("Type a command for the server and press Enter"));
    auto* const label = new QLabel(tr("Co&mmand:"));
    label->setBuddy(command);
    connect(command, &QLineEdit::returnPressed, this, [this, site, command] {
        program_.sendConsoleCommand(site, bytesOf(command->text(), program_.site(site).session.encoding));
        command->selectAll();
    });

    auto* const line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(command, 1);
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(log, 1);
    layout->addLayout(line);
    insertWidget(site, page);
    setTabOrder(command, log);
    logs_.push_back(log);
}

void ConsolePanel::logChanged(int site) {
    logs_[static_cast<std::size_t>(site)]->scheduleUpdate();
}

ResultsPanel::ResultsPanel(mdlMain& program, QWidget* parent) : QStackedWidget(parent), program_(program) {
    addWidget(new QWidget);
    logs_.push_back(nullptr);
}

void ResultsPanel::addSite(int site) {
    auto* const page = new QWidget;
    auto* const log =
        createLogBox(program_, site, &SiteSession::commandResultsLog, "txtCmdResults", tr("Command results"));
    (new QVBoxLayout(page))->addWidget(log);
    insertWidget(site, page);
    logs_.push_back(log);
}

void ResultsPanel::logChanged(int site) {
    logs_[static_cast<std::size_t>(site)]->scheduleUpdate();
}

} // namespace corvel
