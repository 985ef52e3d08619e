#include "net/qt/ConsolePanel.h"

#include "admin/ShownCommand.h"
#include "widgets/Forms.h"
#include "widgets/LogTools.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace corvel {

namespace {

// The log on a page of its own, called name and the site's number.
LogPage newLogPage(mdlMain& program, int site, LogKind log, const char* name, const QString& accessibleName) {
    const LogPage page = {.widget = new QWidget, .log = new LogBox([&program, site, log]() -> const LogText& {
                                                     return logOf(program.site(site).session, log);
                                                 })};
    QObject::connect(page.log, &LogBox::clearWanted, page.log,
                     [&program, site, log] { program.clearLog(site, log); });
    page.log->setObjectName(elementName(name, site));
    page.log->setAccessibleName(accessibleName);
    auto* const layout = new QVBoxLayout(page.widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page.log, 1);
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

// The commands that were typed before; one that is chosen stands in the command line, to be changed or sent.
QPushButton* newHistoryButton(mdlMain& program, int site, QLineEdit& command) {
    auto* const button = new QPushButton;
    button->setObjectName(elementName("cmdHistory", site));
    button->setText(LogBox::tr("Last commands"));
    button->setToolTip(LogBox::tr("The last 20 commands that were typed here"));
    auto* const menu = new QMenu(button);
    menu->setObjectName(elementName("mnuHistory", site));
    button->setMenu(menu);
    QObject::connect(menu, &QMenu::aboutToShow, menu, [&program, site, menu, &command] {
        menu->clear();
        const std::vector<std::string>& typed = program.site(site).session.typedCommands;
        for (const std::string& text : typed) {
            QAction* const action = menu->addAction(captionTextOf(shownCommand(text, program.settings())));
            QObject::connect(action, &QAction::triggered, &command, [&command, whole = textOf(text)] {
                command.setText(whole);
                command.selectAll();
                command.setFocus();
            });
        }
        if (typed.empty()) {
            menu->addAction(LogBox::tr("Nothing was typed yet"))->setEnabled(false);
        }
    });
    return button;
}

LogPage newConsolePage(mdlMain& program, int site) {
    LogPage page = newLogPage(program, site, LogKind::console, "txtLogFTP", LogBox::tr("Console log"));
    const Settings& settings = program.settings();
    page.log->setLogFont(fromCore(settings.textbox_fontname), settings.textbox_fontsize.value_or(0));
    page.command = newCommandLine(program, site);
    auto* const label = new QLabel(LogBox::tr("Co&mmand:"));
    label->setBuddy(page.command);
    auto* const line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(page.command, 1);
    line->addWidget(newHistoryButton(program, site, *page.command));
    static_cast<QVBoxLayout*>(page.widget->layout())->addLayout(line);
    return page;
}

} // namespace

LogPanel::LogPanel(std::function<LogPage(int site)> makePage)
    : pages_(new SitePages<LogPage>(std::move(makePage))) {
    (new QVBoxLayout(this))->addWidget(pages_, 1);
}

void LogPanel::logChanged(int site) {
    if (const LogPage* const page = pages_->find(site)) {
        page->log->scheduleUpdate();
    }
}

void LogPanel::showEvent(QShowEvent* event) {
    if (tools_ == nullptr) {
        tools_ = new LogTools(*pages_, tr("Find:"));
        layout()->addWidget(tools_);
        auto* const find = new QShortcut(QKeySequence::Find, this);
        connect(find, &QShortcut::activated, tools_, &LogTools::startFind);
    }
    QWidget::showEvent(event);
}

LogPanel* newConsolePanel(mdlMain& program) {
    return new LogPanel([&program](int site) { return newConsolePage(program, site); });
}

LogPanel* newResultsPanel(mdlMain& program) {
    return new LogPanel([&program](int site) {
        return newLogPage(program, site, LogKind::commandResults, "txtCmdResults",
                          LogBox::tr("Command results"));
    });
}

} // namespace corvel
