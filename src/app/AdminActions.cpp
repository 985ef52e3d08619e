#include "app/AdminActions.h"

#include "admin/TableCommands.h"
#include "admin/UserEditor.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvel {

namespace {

template <typename Record>
const Record* recordAtRow(const std::vector<Record>& table, const TableView& view, int row) {
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < view.rows.size() ? &table[view.rows[index]] : nullptr;
}

int rowOfIndex(const TableView& view, int index) {
    const auto found = std::ranges::find(view.rows, static_cast<std::size_t>(index));
    return index < 0 || found == view.rows.end() ? -1 : static_cast<int>(found - view.rows.begin());
}

// A name of the server as a question shows it.
std::string shown(const std::string& name, TextEncoding encoding) {
    return visibleText(toUtf8(name, encoding));
}

} // namespace

void AdminActions::reloadUsers(int site) {
    send(site, {userTableCommand()});
}

void AdminActions::reloadGroups(int site) {
    send(site, {groupTableCommand()});
}

void AdminActions::sortUsers(int site, int column) {
    SiteSession& session = at(sites_, site).session;
    session.userView.order = afterHeaderClick(session.userView.order, column);
    session.userView.rows = orderedRows(session.Users, session.userView.order, session.encoding);
    views_.usersSorted(site);
}

void AdminActions::sortGroups(int site, int column) {
    SiteSession& session = at(sites_, site).session;
    session.groupView.order = afterHeaderClick(session.groupView.order, column);
    session.groupView.rows = orderedRows(session.Groups, session.groupView.order, session.encoding);
    views_.groupsSorted(site);
}

void AdminActions::openUser(int site, int row) {
    SiteSession& session = at(sites_, site).session;
    const clsUser* const user = recordAtRow(session.Users, session.userView, row);
    if (user == nullptr) {
        return;
    }
    session.userView.currentId = user->iUID;
    if (const std::optional<Command> command = openUserCommand(session.Users, user->iUID)) {
        wish(site, *command);
    } else {
        views_.userShown(site, currentUser(site));
    }
}

void AdminActions::openGroup(int site, int row) {
    SiteSession& session = at(sites_, site).session;
    const clsGroup* const group = recordAtRow(session.Groups, session.groupView, row);
    if (group == nullptr) {
        return;
    }
    session.groupView.currentId = group->iGID;
    if (const std::optional<Command> command = openGroupCommand(session.Groups, group->iGID)) {
        wish(site, *command);
    } else {
        views_.groupShown(site, currentGroup(site));
    }
}

void AdminActions::deleteUser(int site, int row) {
    const SiteSession& session = at(sites_, site).session;
    const clsUser* const user = recordAtRow(session.Users, session.userView, row);
    if (user == nullptr) {
        return;
    }
    prompts_.AskYesNo(
        deleteUserQuestion(shown(user->sName, session.encoding), shown(user->sStdGroup, session.encoding)),
        DefaultAnswer::no, [this, site, command = deleteUserCommand(user->sName)](bool yes) {
            if (yes) {
                send(site, {command});
            }
        });
}

void AdminActions::deleteGroup(int site, int row) {
    const SiteSession& session = at(sites_, site).session;
    const clsGroup* const group = recordAtRow(session.Groups, session.groupView, row);
    if (group == nullptr) {
        return;
    }
    prompts_.AskYesNo(deleteGroupQuestion(shown(group->sName, session.encoding)), DefaultAnswer::no,
                      [this, site, command = deleteGroupCommand(group->sName)](bool yes) {
                          if (yes) {
                              send(site, {command});
                          }
                      });
}

int AdminActions::currentUserRow(int site) const {
    return rowOfIndex(at(sites_, site).session.userView, currentUser(site));
}

int AdminActions::currentGroupRow(int site) const {
    return rowOfIndex(at(sites_, site).session.groupView, currentGroup(site));
}

int AdminActions::currentUser(int site) const {
    const SiteSession& session = at(sites_, site).session;
    const std::optional<std::int16_t> uid = session.userView.currentId;
    return uid ? FindUserIndexByUID(session.Users, *uid) : -1;
}

int AdminActions::currentGroup(int site) const {
    const SiteSession& session = at(sites_, site).session;
    const std::optional<std::int16_t> gid = session.groupView.currentId;
    return gid ? FindGroupIndexByGID(session.Groups, *gid) : -1;
}

int AdminActions::editedUser(int site, std::string_view txtUserUID) const {
    const int index = findUserIndexByText(at(sites_, site).session.Users, txtUserUID);
    return index == currentUser(site) ? index : -1;
}

int AdminActions::editedGroup(int site, std::string_view txtGroupGID) const {
    const int index = findGroupIndexByText(at(sites_, site).session.Groups, txtGroupGID);
    return index == currentGroup(site) ? index : -1;
}

void AdminActions::reloadUserfile(int site) {
    if (const int index = currentUser(site); index >= 0) {
        const UserTable& users = at(sites_, site).session.Users;
        wish(site, userFileCommand(users, users[static_cast<std::size_t>(index)].iUID));
    }
}

void AdminActions::reloadGroupfile(int site) {
    if (const int index = currentGroup(site); index >= 0) {
        const GroupTable& groups = at(sites_, site).session.Groups;
        wish(site, groupFileCommand(groups, groups[static_cast<std::size_t>(index)].iGID));
    }
}

void AdminActions::saveUser(int site, const UserForm& form) {
    const int index = editedUser(site, form.txtUserUID);
    if (index < 0) {
        return;
    }
    const clsUser& user = at(sites_, site).session.Users[static_cast<std::size_t>(index)];
    const std::optional<std::string> question =
        user.got_info ? masterQuestion(user.sFlags, form.txtUserFlags) : std::nullopt;
    if (!question) {
        saveUser(site, form, true);
        return;
    }
    prompts_.AskYesNo(*question, DefaultAnswer::no,
                      [this, site, form](bool yes) { saveUser(site, form, yes); });
}

// The record is looked for again: the table may have been loaded anew while the question was open. A record
// without its details has nothing that the boxes could differ from.
void AdminActions::saveUser(int site, const UserForm& form, bool sendFlags) {
    const int index = editedUser(site, form.txtUserUID);
    if (index < 0) {
        return;
    }
    const clsUser& user = at(sites_, site).session.Users[static_cast<std::size_t>(index)];
    if (user.got_info) {
        changeUser(site, user.iUID, saveUserCommands(user, form, sendFlags));
    }
}

void AdminActions::saveGroup(int site, const GroupForm& form) {
    const int index = editedGroup(site, form.txtGroupGID);
    if (index < 0) {
        return;
    }
    const clsGroup& group = at(sites_, site).session.Groups[static_cast<std::size_t>(index)];
    if (group.got_info) {
        changeGroup(site, group.iGID, saveGroupCommands(group, form));
    }
}

void AdminActions::addMask(int site, const UserForm& form) {
    if (const int index = editedUser(site, form.txtUserUID); index >= 0) {
        const clsUser& user = at(sites_, site).session.Users[static_cast<std::size_t>(index)];
        changeUser(site, user.iUID, {addMaskCommand(user, form)});
    }
}

void AdminActions::deleteMask(int site, const UserForm& form) {
    if (const int index = editedUser(site, form.txtUserUID); index >= 0) {
        const clsUser& user = at(sites_, site).session.Users[static_cast<std::size_t>(index)];
        changeUser(site, user.iUID, {deleteMaskCommand(user, form)});
    }
}

void AdminActions::resetPassword(int site, const UserForm& form) {
    if (editedUser(site, form.txtUserUID) < 0) {
        return;
    }
    const TextEncoding encoding = at(sites_, site).session.encoding;
    UserForm asShown = form;
    asShown.txtUserName = shown(form.txtUserName, encoding);
    asShown.txtUserGroup = shown(form.txtUserGroup, encoding);
    const std::optional<PasswordPrompt> prompt = passwordPrompt(asShown);
    if (!prompt) {
        return;
    }
    prompts_.AskPassword(
        prompt->sTitle, prompt->sPrompt, [this, site, form](std::optional<std::string> answer) {
            const int index = editedUser(site, form.txtUserUID);
            if (!answer || answer->empty() || index < 0) {
                return;
            }
            const SiteSession& session = at(sites_, site).session;
            changeUser(site, session.Users[static_cast<std::size_t>(index)].iUID,
                       {passwordCommand(form, fromUtf8(*answer, session.encoding).value_or(*answer))});
        });
}

void AdminActions::changeUser(int site, std::int16_t uid, std::vector<Command> changes) {
    send(site, withDetails(site, uid, std::move(changes)));
}

void AdminActions::changeGroup(int site, std::int16_t gid, std::vector<Command> changes) {
    changes.push_back(groupFileCommand(at(sites_, site).session.Groups, gid));
    send(site, std::move(changes));
}

std::optional<std::string> AdminActions::changeUserGroups(int site, std::int16_t uid,
                                                          const ChangeUserGroupsForm& form) {
    const UserTable& users = at(sites_, site).session.Users;
    const int index = FindUserIndexByUID(users, uid);
    return index < 0 ? sayGone(site)
                     : outbox_.start(site, {withDetails(site, uid,
                                                        changeUserGroupsCommands(
                                                            users[static_cast<std::size_t>(index)], form))});
}

std::optional<std::string> AdminActions::changeSections(int site, std::int16_t uid,
                                                        std::span<const UserSectionRow> rows,
                                                        const SectionsForm& form) {
    const UserTable& users = at(sites_, site).session.Users;
    const int index = FindUserIndexByUID(users, uid);
    if (index < 0) {
        return sayGone(site);
    }
    std::vector<Command> changes = saveSectionsCommands(users[static_cast<std::size_t>(index)], rows, form);
    return changes.empty() ? std::nullopt : outbox_.start(site, {withDetails(site, uid, std::move(changes))});
}

std::optional<std::string> AdminActions::copyUser(int site, const CopyUserForm& form) {
    return findUserIndexByText(at(sites_, site).session.Users, form.txtSourceUID) < 0
               ? sayGone(site)
               : outbox_.start(site, {{copyUserCommand(form), userTableCommand()}});
}

std::optional<std::string> AdminActions::startSequence(int site, const CommandSequence& sequence) {
    return outbox_.start(site, jobOf(sequence));
}

void AdminActions::startBatch(int site, const CommandSequence& batch) {
    outbox_.startOrTell(site, LogKind::commandResults, jobOf(batch));
}

std::string AdminActions::batchProgress(int site) const {
    return outbox_.batchProgress(site);
}

void AdminActions::send(int site, std::vector<Command> commands) {
    outbox_.startOrTell(site, LogKind::commandResults, {std::move(commands)});
}

void AdminActions::wish(int site, const Command& details) {
    const bool isUser = details.iHandler == handler::userFile;
    outbox_.startOrTell(site, LogKind::commandResults, {{details}, isUser ? "user" : "group"});
}

// The one place where the details of an account are read behind its changes.
std::vector<Command> AdminActions::withDetails(int site, std::int16_t uid,
                                               std::vector<Command> changes) const {
    changes.push_back(userFileCommand(at(sites_, site).session.Users, uid));
    return changes;
}

// The end of a connection empties the table too, and then the dialog waits for the next one.
std::optional<std::string> AdminActions::sayGone(int site) {
    std::optional<std::string> problem = outbox_.start(site, {});
    if (!problem) {
        prompts_.Message("The user is not in the table any more. Nothing was sent.");
    }
    return problem;
}

} // namespace corvel
