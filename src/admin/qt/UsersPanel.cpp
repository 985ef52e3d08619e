#include "admin/qt/UsersPanel.h"

#include "admin/AccountLists.h"
#include "admin/qt/AccountDialogs.h"
#include "admin/qt/BatchPanel.h"
#include "admin/qt/UserEditorPanel.h"
#include "widgets/Icons.h"
#include "widgets/TextConversion.h"

#include <QGridLayout>
#include <QPushButton>
#include <QStackedWidget>

#include <array>
#include <string>
#include <utility>

namespace corvel {

namespace {

// The field of a record that a column shows as the server sent it.
std::string_view sentText(const clsUser& user, int column) {
    static constexpr std::array<std::string clsUser::*, userColumnTitles.size()> members = {
        &clsUser::sUIDText, &clsUser::sName, &clsUser::sStdGroup, &clsUser::sFlags};
    return user.*members[static_cast<std::size_t>(column)];
}

ReportSource listSource(const SiteSession& session) {
    const auto userInRow = [&session](int row) -> const clsUser& {
        return session.Users[session.userView.rows[static_cast<std::size_t>(row)]];
    };
    ReportSource source;
    for (const std::string_view title : userColumnTitles) {
        source.columns.push_back({.header = fromCore(title)});
    }
    source.columns.front().alignment = Qt::AlignRight;
    source.text = [&session, userInRow](int row, int column) {
        return cellTextOf(rowText(userInRow(row), static_cast<UserColumn>(column)), session.encoding);
    };
    source.sentText = [userInRow](int row, int column) { return sentText(userInRow(row), column); };
    source.icon = [userInRow](int row) {
        const std::string_view key = userIconKey(userInRow(row).sFlags);
        return key.empty() ? QIcon() : icon("user-" + std::string(key));
    };
    return source;
}

} // namespace

UsersPanel::UsersPanel(mdlMain& program, QWidget* parent) : AccountsPanel(program, parent) {
    editor_ = new UserEditorPanel(program);
    batch_ = new BatchPanel([this](const BatchForm& form) { cmdBatchPerform_Click(form); });
    sides_ = new QStackedWidget;
    sides_->addWidget(editor_);
    sides_->addWidget(batch_);
    build(withTable({.listName = "lvwUsers",
                     .accessibleName = tr("Users"),
                     .isMultiple = true,
                     .refused = tr("The server did not send its users:\n%1"),
                     .none = tr("There are no users."),
                     .waiting = tr("The server has not sent its users yet."),
                     .source = [this](int site) { return listSource(session(site)); },
                     .insert = [this] { openAddUser(this->program(), this->program().currentSite(), this); }},
                    program.admin().users()),
          createButtons(), sides_);
}

// Two rows of two: four beside each other would take the editor its room in a small window.
QLayout* UsersPanel::createButtons() {
    auto* const buttons = new QGridLayout;
    buttons->addWidget(addButton("cmdUserReloadTable", tr("reload"),
                                 [this](int site) { program().admin().users().reload(site); }),
                       0, 0);
    buttons->addWidget(
        addButton("cmdUserAdd", tr("add..."), [this](int site) { openAddUser(program(), site, this); }), 0,
        1);
    cmdUserBatch_ = addButton("cmdUserBatch", tr("batch..."), [this](int /*site*/) { cmdUserBatch_Click(); });
    buttons->addWidget(cmdUserBatch_, 1, 0);
    buttons->addWidget(addButton("cmdUserCopy", tr("copy..."), [this](int site) { copyUser(site); }), 1, 1);
    buttons->setColumnStretch(2, 1);
    return buttons;
}

void UsersPanel::showEditor(int site) {
    batch_->setEncoding(site > 0 ? session(site).encoding : TextEncoding::utf8);
    editor_->showSite(site);
}

void UsersPanel::copyUser(int site) {
    if (const clsUser* const user = site > 0 ? program().admin().users().current(site) : nullptr) {
        openCopyUser(program(), site, *user, this);
    }
}

void UsersPanel::editGroups(int site) {
    if (const clsUser* const user = program().admin().users().current(site)) {
        openUserGroups(program(), site, *user, this);
    }
}

void UsersPanel::cmdUserBatch_Click() {
    const bool toBatch = sides_->currentWidget() == editor_;
    sides_->setCurrentWidget(toBatch ? static_cast<QWidget*>(batch_) : editor_);
    cmdUserBatch_->setText(toBatch ? tr("user...") : tr("batch..."));
}

void UsersPanel::cmdBatchPerform_Click(const BatchForm& form) {
    const int site = program().currentSite();
    if (site == 0) {
        return;
    }
    std::vector<std::string_view> names;
    for (const std::size_t index : selectedIndexes(site)) {
        names.push_back(session(site).Users[index].sName);
    }
    if (const std::optional<CommandSequence> sequence = batchSequence(form, names)) {
        program().admin().startBatch(site, *sequence);
    }
}

} // namespace corvel
