#include "admin/qt/UsersPanel.h"

#include "admin/Batch.h"
#include "admin/ListRows.h"
#include "admin/qt/AccountDialogs.h"
#include "admin/qt/BatchPanel.h"
#include "admin/qt/UserDialogs.h"
#include "admin/qt/UserEditorPanel.h"
#include "widgets/DialogParts.h"
#include "widgets/Icons.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QGridLayout>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace corvel {

namespace {

constexpr int lastColumn = static_cast<int>(userColumnTitles.size()) - 1;

const clsUser& userAt(const SiteSession& session, int index) {
    return session.Users[static_cast<std::size_t>(index)];
}

// The field of a record that a column shows as the server sent it.
std::string_view sentText(const clsUser& user, int column) {
    static constexpr std::array<std::string clsUser::*, userColumnTitles.size()> members = {
        &clsUser::sUIDText, &clsUser::sName, &clsUser::sStdGroup, &clsUser::sFlags};
    return user.*members[static_cast<std::size_t>(column)];
}

// The list's content. The functions look at the session whenever they are asked, so the source stays good
// until the number of rows changes.
ReportSource listSource(const SiteSession& session) {
    const auto userInRow = [&session](int row) -> const clsUser& {
        return session.Users[session.userView.rows[static_cast<std::size_t>(row)]];
    };
    ReportSource source;
    source.rows = static_cast<int>(session.userView.rows.size());
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

// Why a list without rows has none.
QString emptyListText(const Site& site) {
    if (!site.session.userView.problem.empty()) {
        return UsersPanel::tr("The server did not send its users:\n%1")
            .arg(displayTextOf(site.session.userView.problem, site.session.encoding));
    }
    if (site.wSock->state() != SocketState::connected) {
        return UsersPanel::tr("Not connected.");
    }
    return site.session.userView.isRead ? UsersPanel::tr("There are no users.")
                                        : UsersPanel::tr("The server has not sent its users yet.");
}

} // namespace

UsersPanel::UsersPanel(mdlMain& program, QWidget* parent) : QWidget(parent), program_(program) {
    editor_ = new UserEditorPanel;
    connectEditor();
    batch_ = new BatchPanel([this](const BatchForm& form) { cmdBatchPerform_Click(form); });
    sides_ = new QStackedWidget;
    sides_->addWidget(editor_);
    sides_->addWidget(batch_);
    auto* const splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(createLists());
    splitter->addWidget(sides_);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
}

QWidget* UsersPanel::createLists() {
    lists_ = new SitePages<ReportView*>([this](int site) { return createList(site); });
    // Two rows of two: four beside each other would take the editor its room in a small window.
    auto* const buttons = new QGridLayout;
    const auto addButton = [this, buttons](const char* name, const QString& caption, auto act) {
        auto* const button = new QPushButton(caption);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, act);
        buttons->addWidget(button, buttons->count() / 2, buttons->count() % 2);
        return button;
    };
    addButton("cmdUserReloadTable", tr("reload"), [this] {
        if (program_.currentSite() > 0) {
            program_.admin().reloadUsers(program_.currentSite());
        }
    });
    addButton("cmdUserAdd", tr("add..."), [this] { cmdUserAdd_Click(); });
    cmdUserBatch_ = addButton("cmdUserBatch", tr("batch..."), [this] { cmdUserBatch_Click(); });
    addButton("cmdUserCopy", tr("copy..."), [this] { copyUser(program_.currentSite()); });
    buttons->setColumnStretch(2, 1);
    auto* const area = new QWidget;
    area->setMinimumWidth(fontMetrics().averageCharWidth() * 35); // the columns of usual names, sorted
    auto* const layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lists_, 1);
    layout->addLayout(buttons);
    return area;
}

ReportView* UsersPanel::createList(int site) {
    auto* const list = new ReportView;
    list->setObjectName(elementName("lvwUsers", site));
    list->setAccessibleName(tr("Users"));
    list->setMultiSelection(true);
    AdminActions& admin = program_.admin();
    connect(list, &ReportView::rowPicked, this, [&admin, site](int row) { admin.openUser(site, row); });
    connect(list, &ReportView::headerClicked, this, [this, site](int column) { sortUsers(site, column); });
    connect(list, &ReportView::keyPressed, this,
            [this, site](Qt::Key key, int row) { keyPressed(site, key, row); });
    connect(list, &ReportView::contextMenuRequested, this,
            [this](int /*row*/, const QPoint& position) { emit menuRequested(position); });
    fill(*list, site);
    return list;
}

ReportView& UsersPanel::list(int site) {
    return *lists_->at(site);
}

void UsersPanel::connectEditor() {
    using Act = void (AdminActions::*)(int, const UserForm&);
    const auto sends = [this](auto signal, Act act) {
        connect(editor_, signal, this, [this, act] {
            if (program_.currentSite() > 0) {
                (program_.admin().*act)(program_.currentSite(), editor_->form());
            }
        });
    };
    sends(&UserEditorPanel::saveRequested, &AdminActions::saveUser);
    sends(&UserEditorPanel::passwordRequested, &AdminActions::resetPassword);
    sends(&UserEditorPanel::addMaskRequested, &AdminActions::addMask);
    sends(&UserEditorPanel::deleteMaskRequested, &AdminActions::deleteMask);
    connect(editor_, &UserEditorPanel::reloadRequested, this, [this] {
        if (program_.currentSite() > 0) {
            program_.admin().reloadUserfile(program_.currentSite());
        }
    });
    connect(editor_, &UserEditorPanel::groupsRequested, this, &UsersPanel::cmdUserEditGroups_Click);
    connect(editor_, &UserEditorPanel::sectionsRequested, this, &UsersPanel::lvwUserSections_DblClick);
}

void UsersPanel::showSite(int site) {
    lists_->showSite(site);
    batch_->setEncoding(site > 0 ? session(site).encoding : TextEncoding::utf8);
    const int index = site > 0 ? program_.admin().currentUser(site) : -1;
    if (index >= 0 && userAt(session(site), index).got_info) {
        showInEditor(site, index);
    } else {
        editor_->clear();
    }
}

void UsersPanel::fill(ReportView& list, int site) {
    list.setSource(listSource(session(site)));
    list.setPlaceholder(emptyListText(program_.site(site)));
    list.fitColumns(0, lastColumn);
    selectCurrent(list, site);
}

void UsersPanel::usersChanged(int site) {
    if (ReportView** const shown = lists_->find(site)) {
        fill(**shown, site);
    }
    const bool isInFront = site == program_.currentSite();
    if (isInFront) {
        batch_->setEncoding(session(site).encoding);
    }
    // A new table knows no details: an account that is open, or will be when its site comes back to the
    // front, is asked for again.
    AdminActions& admin = program_.admin();
    if (!isInFront || isOpen(site)) {
        admin.openUser(site, admin.currentUserRow(site));
    } else if (admin.currentUser(site) < 0) {
        editor_->clear();
    }
}

void UsersPanel::connectionChanged(int site) {
    if (ReportView** const shown = lists_->find(site)) {
        (*shown)->setPlaceholder(emptyListText(program_.site(site)));
    }
}

void UsersPanel::usersSorted(int site) {
    const ListOrder order = session(site).userView.order;
    list(site).setSortArrow(order.column, order.isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    list(site).refresh();
    selectCurrent(list(site), site);
}

// The accounts that are selected stay so, in whichever rows they stand then.
void UsersPanel::sortUsers(int site, int column) {
    const std::vector<std::size_t>& indexes = session(site).userView.rows;
    std::vector<bool> isSelected(session(site).Users.size());
    for (const int row : list(site).selectedRows()) {
        isSelected[indexes[static_cast<std::size_t>(row)]] = true;
    }
    program_.admin().sortUsers(site, column);
    std::vector<int> selected;
    for (std::size_t row = 0; row < indexes.size(); ++row) {
        if (isSelected[indexes[row]]) {
            selected.push_back(static_cast<int>(row));
        }
    }
    list(site).setSelectedRows(selected);
}

void UsersPanel::groupsChanged(int site) {
    if (site == program_.currentSite() && isOpen(site)) {
        const clsUser& user = userAt(session(site), program_.admin().currentUser(site));
        if (user.got_info) {
            editor_->setGroups(InfoToForm(user, session(site).Groups).lvwUserGroups);
        }
    }
}

// Late details of another account do not take the current one out of the editor.
void UsersPanel::userShown(int site, int index) {
    if (ReportView** const shown = lists_->find(site)) {
        (*shown)->refresh();
    }
    if (site == program_.currentSite() && (index == program_.admin().currentUser(site) || !isOpen(site))) {
        showInEditor(site, index);
    }
}

void UsersPanel::keyPressed(int site, int key, int row) {
    switch (key) {
    case Qt::Key_Delete:
        // Not the row that only has the focus: nobody has picked it.
        if (const int current = program_.admin().currentUserRow(site); list(site).isSelected(current)) {
            program_.admin().deleteUser(site, current);
        }
        break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        program_.admin().openUser(site, row);
        break;
    case Qt::Key_Insert:
        cmdUserAdd_Click();
        break;
    case Qt::Key_F5:
        program_.admin().reloadUsers(site);
        break;
    default:
        break;
    }
}

void UsersPanel::selectCurrent(ReportView& list, int site) {
    list.setCurrentRow(program_.admin().currentUserRow(site));
}

bool UsersPanel::isOpen(int site) const {
    return program_.admin().editedUser(site, editor_->txtUserUID()) >= 0;
}

void UsersPanel::showInEditor(int site, int index) {
    editor_->setForm(InfoToForm(userAt(session(site), index), session(site).Groups), session(site).encoding);
}

void UsersPanel::cmdUserAdd_Click() {
    if (program_.currentSite() > 0) {
        openAddUser(program_, program_.currentSite(), this);
    }
}

void UsersPanel::copyUser(int site) {
    const int index = site > 0 ? program_.admin().currentUser(site) : -1;
    if (index >= 0) {
        openCopyUser(program_, site, index, this);
    }
}

void UsersPanel::cmdUserBatch_Click() {
    const bool toBatch = sides_->currentWidget() == editor_;
    sides_->setCurrentWidget(toBatch ? static_cast<QWidget*>(batch_) : editor_);
    cmdUserBatch_->setText(toBatch ? tr("user...") : tr("batch..."));
}

void UsersPanel::cmdBatchPerform_Click(const BatchForm& form) {
    const int site = program_.currentSite();
    if (site == 0) {
        return;
    }
    std::vector<std::string_view> names;
    for (const int row : list(site).selectedRows()) {
        const std::size_t index = session(site).userView.rows[static_cast<std::size_t>(row)];
        names.push_back(session(site).Users[index].sName);
    }
    if (const std::optional<CommandSequence> sequence = batchSequence(form, names)) {
        program_.admin().startBatch(site, *sequence);
    }
}

void UsersPanel::cmdUserEditGroups_Click() {
    const int site = program_.currentSite();
    const int index = site > 0 ? program_.admin().editedUser(site, editor_->txtUserUID()) : -1;
    // Without its details the record would seem to be in no group.
    if (index >= 0 && userAt(session(site), index).got_info) {
        openUserGroups(program_, site, index, this);
    }
}

void UsersPanel::lvwUserSections_DblClick() {
    const int site = program_.currentSite();
    const int index = site > 0 ? program_.admin().editedUser(site, editor_->txtUserUID()) : -1;
    if (index >= 0) {
        openUserSections(program_, site, index, editor_->form(), this);
    }
}

} // namespace corvel
