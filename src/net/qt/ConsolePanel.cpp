#include "net/qt/ConsolePanel.h"

#include "widgets/Forms.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace corvel {

namespace {

// The log on a page of its own, called name and the site's number.
LogPage newLogPage(mdlMain& program, int site, LogText SiteSession::*log, const char* name,
                   const QString& accessibleName) {
    const LogPage page = {.widget = new QWidget,
                          .log = new LogBox([&program, site, log] {
                              return fromCore((program.site(site).session.*log).text());
                          })};
    page.log->setObjectName(elementName(name, site));
    page.log->setAccessibleName(accessibleName);
    (new QVBoxLayout(page.widget))->addWidget(page.log, 1);
    page.log->scheduleUpdate();
    return page;
}

QLineEdit* newCommandLine(mdlMain& program, int site) {
    auto* const command = new OneLineEdit;
    command->setObjectName(elementName("txtSendFTP", site));
    command->setAccessibleName(LogBox::tr("Command"));
    command->setPlaceholderText(LogBox::tr("Type a command for the server and press Enter"));
    QObject::connect(command, &QLineEdit::returnPressed, command, [&program, site, command] {
        program.sendConsoleCommand(site, bytesOf(command->text(), program.site(site).session.encoding));
        command->selectAll();
    });
    return command;
}

LogPage newConsolePage(mdlMain& program, int site) {
    LogPage page =
        newLogPage(program, site, &SiteSession::consoleLog, "txtLogFTP", LogBox::tr("Console log"));
    const Settings& settings = program.settings();
    page.log->setLogFont(fromCore(settings.textbox_fontname), settings.textbox_fontsize.value_or(0));
    page.command = newCommandLine(program, site);
    auto* const label = new QLabel(LogBox::tr("Co&mmand:"));
    label->setBuddy(page.command);
    auto* const line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(page.command, 1);
    static_cast<QVBoxLayout*>(page.widget->layout())->addLayout(line);
    QWidget::setTabOrder(page.command, page.log);
    return page;
}

} // namespace

LogPages* newConsolePanel(mdlMain& program) {
    return new LogPages([&program](int site) { return newConsolePage(program, site); });
}

LogPages* newResultsPanel(mdlMain& program) {
    return new LogPages([&program](int site) {
        return newLogPage(program, site, &SiteSession::commandResultsLog, "txtCmdResults",
                          LogBox::tr("Command results"));
    });
}

} // namespace corvel
