#include "net/qt/ConsolePanel.h"

#include "widgets/ElementName.h"
#include "widgets/LogBox.h"
#include "widgets/OneLineEdit.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace corvel {

LogPages::LogPages(mdlMain& program, QWidget* parent) : QStackedWidget(parent), program_(program), boxes_(1) {
    addWidget(new QWidget);
}

void LogPages::logChanged(int site) {
    boxes_[static_cast<std::size_t>(site)]->scheduleUpdate();
}

LogBox* LogPages::createLogBox(int site, SessionLog log, const char* name, const QString& accessibleName) {
    auto* const box =
        new LogBox([this, site, log] { return fromCore((program_.site(site).session.*log).text()); });
    box->setObjectName(elementName(name, site));
    box->setAccessibleName(accessibleName);
    boxes_.push_back(box);
    return box;
}

void ConsolePanel::addSite(int site) {
    LogBox* const log = createLogBox(site, &SiteSession::consoleLog, "txtLogFTP", tr("Console log"));
    const Settings& settings = program_.settings();
    log->setLogFont(fromCore(settings.textbox_fontname), settings.textbox_fontsize.value_or(0));
    QLineEdit* const command = createCommandLine(site);
    commandLines_.push_back(command);
    auto* const label = new QLabel(tr("Co&mmand:"));
    label->setBuddy(command);

    auto* const line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(command, 1);
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(log, 1);
    layout->addLayout(line);
    insertWidget(site, page);
    setTabOrder(command, log);
}

QLineEdit* ConsolePanel::createCommandLine(int site) {
    auto* const command = new OneLineEdit;
    command->setObjectName(elementName("txtSendFTP", site));
    command->setAccessibleName(tr("Command"));
    command->setPlaceholderText(tr("Type a command for the server and press Enter"));
    connect(command, &QLineEdit::returnPressed, this, [this, site, command] {
        program_.sendConsoleCommand(site, bytesOf(command->text(), program_.site(site).session.encoding));
        command->selectAll();
    });
    return command;
}

void ResultsPanel::addSite(int site) {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(
        createLogBox(site, &SiteSession::commandResultsLog, "txtCmdResults", tr("Command results")));
    insertWidget(site, page);
}

} // namespace corvel
