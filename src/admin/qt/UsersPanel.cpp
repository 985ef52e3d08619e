#include "admin/qt/UsersPanel.h"

#include "admin/AccountLists.h"
#include "admin/qt/AccountDialogs.h"
#include "admin/qt/BatchPanel.h"
#include "admin/qt/BatchResults.h"
#include "admin/qt/JobTable.h"
#include "widgets/Icons.h"

#include <QGridLayout>

#include <memory>
#include <string>
#include <utility>

namespace corvel {

UsersPanel::UsersPanel(mdlMain& program, QWidget* parent) : AccountsPanel(program, parent) {
    editor_ = new UserEditorPanel(program);
    connect(editor_->outcome(), &LinkLabel::clicked, this, &AccountsPanel::resultsWanted);
    createBatch();
    sides_ = new QStackedWidget;
    sides_->addWidget(editor_);
    sides_->addWidget(batch_);
    AccountsOutline outline = withTable<UserKind, UserColumn>(
        {.listName = "lvwUsers",
         .filterName = "txtUsersFilter",
         .countName = "lblUsersCount",
         .accessibleName = tr("Users"),
         .isMultiple = true,
         .refused = tr("The server did not send its users:\n%1"),
         .none = tr("There are no users."),
         .waiting = tr("The server has not sent its users yet."),
         .insert = [this, &program] { openAddUser(program, program.currentSite(), this); }},
        program, program.admin().users(), userColumnTitles,
        {&clsUser::sUIDText, &clsUser::sName, &clsUser::sStdGroup, &clsUser::sFlags},
        {Qt::AlignRight, Qt::AlignLeft, Qt::AlignLeft, Qt::AlignLeft});
    const auto keyOf = [this](int site, int row) {
        const SiteSession& shown = session(site);
        return userIconKey(shown.Users[shown.userView.rows[static_cast<std::size_t>(row)]].sFlags);
    };
    outline.icon = [keyOf](int site, int row) {
        const std::string_view key = keyOf(site, row);
        return key.empty() ? QIcon() : icon("user-" + std::string(key));
    };
    outline.iconText = [keyOf](int site, int row) {
        const std::string_view key = keyOf(site, row);
        return key.empty()
                   ? QString()
                   : tr("User with the flag %1").arg(key == "A" ? QStringLiteral("1") : fromCore(key));
    };
    build(std::move(outline), createButtons(), sides_);
}

// Two rows: all beside each other would take the editor its room in a small window.
QLayout* UsersPanel::createButtons() {
    const auto add = [this](const char* name, const QString& caption, std::function<void(int)> act) {
        return newSiteButton(program(), name, caption, std::move(act));
    };
    auto* const buttons = new QGridLayout;
    buttons->addWidget(
        add("cmdUserReloadTable", tr("reload"), [this](int site) { program().admin().users().reload(site); }),
        0, 0);
    buttons->addWidget(
        add("cmdUserAdd", tr("add..."), [this](int site) { openAddUser(program(), site, this); }), 0, 1);
    QPushButton* const remove =
        add("cmdUserDelete", tr("delete..."), [this](int site) { removeSelected(site); });
    remove->setToolTip(tr("Delete every user that is selected in the list"));
    buttons->addWidget(remove, 0, 2);
    cmdUserBatch_ = add("cmdUserBatch", tr("batch..."), [this](int /*site*/) { cmdUserBatch_Click(); });
    buttons->addWidget(cmdUserBatch_, 1, 0);
    buttons->addWidget(add("cmdUserCopy", tr("copy..."), [this](int site) { copyUser(site); }), 1, 1);
    cmdUserAdded_ = add("cmdUserAdded", {}, [this](int site) { program().admin().users().reload(site); });
    cmdUserAdded_->setFlat(true);
    cmdUserAdded_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a name may be of any length
    cmdUserAdded_->hide();
    buttons->addWidget(cmdUserAdded_, 2, 0, 1, 4);
    buttons->setColumnStretch(3, 1);
    return buttons;
}

void UsersPanel::showEditor(int site) {
    batch_->showSite(site, site > 0 ? &session(site).encoding : nullptr);
    results_->showSite(site);
    editor_->showSite(site);
    editor_->showSelected(selectedIndexes(site).size());
    const QString added = site > 0 ? fromCore(session(site).userView.added) : QString();
    if (added.isEmpty() && cmdUserAdded_->hasFocus()) {
        focusList(site); // or what is typed next would go into the editor
    }
    cmdUserAdded_->setVisible(!added.isEmpty());
    cmdUserAdded_->setText(
        tr("%1 - reload").arg(QString(added).replace(QLatin1Char('&'), QStringLiteral("&&"))));
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

void UsersPanel::createBatch() {
    const auto perform = [this](const BatchForm& form) {
        if (std::optional<CommandSequence> batch = batchOf(form)) {
            program().admin().startBatch(program().currentSite(), *std::move(batch));
        } else if (program().currentSite() > 0) {
            program().outbox().tell(program().currentSite(), selectedIndexes(program().currentSite()).empty()
                                                                 ? "Nothing was sent: no user is selected"
                                                                 : "Nothing was sent: nothing is ticked");
        }
    };
    const auto preview = [this](const BatchForm& form) {
        Job job = jobOf(batchOf(form).value_or(CommandSequence()));
        openBatchPreview(std::make_shared<JobRecord>(0, job),
                         fromCore(batchPlanText(form, selectedIndexes(program().currentSite()).size())),
                         program().settings(), this);
    };
    batch_ = new BatchPanel({.perform = perform, .preview = preview, .count = [this] {
                                 return selectedIndexes(program().currentSite()).size();
                             }});
    results_ =
        new BatchResults(program(), [this](int site, const std::unordered_set<std::string_view>& names) {
            selectNamed(site, names);
        });
    batch_->addBelow(results_);
}

// The batch for the selected users of the current site; nothing where it would hold no line.
std::optional<CommandSequence> UsersPanel::batchOf(const BatchForm& form) const {
    const int site = program().currentSite();
    std::vector<std::string_view> names;
    for (const std::size_t index : selectedIndexes(site)) {
        names.push_back(session(site).Users[index].sName);
    }
    return batchSequence(form, names);
}

void UsersPanel::selectNamed(int site, const std::unordered_set<std::string_view>& names) {
    const UserTable& users = session(site).Users;
    selectWhere(site, [&](std::size_t index) { return names.contains(users[index].sName); });
}

void UsersPanel::selectionChanged() {
    batch_->showPlan();
    editor_->showSelected(selectedIndexes(program().currentSite()).size());
}

void UsersPanel::save(int site) {
    if (sides_->currentWidget() == editor_) {
        AccountsPanel::save(site);
    }
}

void UsersPanel::goToUser(std::int16_t uid) {
    goTo(program().currentSite(), uid);
}

void UsersPanel::jobsChanged(int site) {
    results_->jobsChanged(site);
}

} // namespace corvel
