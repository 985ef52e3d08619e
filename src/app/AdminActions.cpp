#include "app/AdminActions.h"

#include "admin/AccountLists.h"
#include "common/Numbers.h"
#include "common/ShownText.h"
#include "common/TextEncoding.h"

#include <utility>

namespace corvel {

void AdminActions::resetPassword(int site) {
    const clsUser* const user = users_.current(site);
    if (user == nullptr) {
        return;
    }
    UserForm form = users_.typedForm(site);
    if (form.txtUserName.empty()) {
        return;
    }
    const std::string prompt =
        "Enter new password for " + shownName(form.txtUserName) + "@" + shownName(user->sStdGroup);
    services_.prompts.AskPassword(
        "Change user password", prompt,
        [this, site, uid = user->iUID, form = std::move(form)](std::optional<std::string> answer) {
            if (!answer || answer->empty()) {
                return;
            }
            const TextEncoding now = at(services_.sites, site).session.encoding;
            const std::string password = fromUtf8(*answer, now);
            const auto problem =
                users_.find(site, uid) == nullptr
                    ? sayGone(site)
                    : users_.change(site, uid, {passwordCommand(form, password)}, "password of ");
            if (problem) {
                services_.prompts.Message(*problem);
            }
        });
}

void AdminActions::editGroups(int site) {
    const clsUser* const user = users_.current(site);
    if (user == nullptr) {
        return;
    }
    const std::optional<std::string> problem = users_.change(
        site, user->iUID, {}, "groups of ", [this, site, uid = user->iUID](const Receipt& receipt) {
            const clsUser* const current = users_.current(site);
            if (receipt.end == Receipt::End::done && current != nullptr && current->iUID == uid &&
                current->got_info) {
                services_.views.dialogWanted(site, Dialog::userGroups);
            }
        });
    if (problem) {
        services_.prompts.Message(*problem);
    }
}

std::optional<std::string> AdminActions::changeUserGroups(int site, std::int16_t uid,
                                                          const ChangeUserGroupsForm& form) {
    const clsUser* const user = users_.find(site, uid);
    return user == nullptr ? sayGone(site)
                           : users_.change(site, uid, changeUserGroupsCommands(*user, form), "groups of ");
}

std::optional<std::string> AdminActions::changeSections(int site, std::int16_t uid,
                                                        const SectionsForm& form) {
    const clsUser* const user = users_.find(site, uid);
    if (user == nullptr) {
        return sayGone(site);
    }
    std::vector<Command> changes = saveSectionsCommands(*user, form);
    return changes.empty() ? std::nullopt : users_.change(site, uid, std::move(changes), "sections of ");
}

std::optional<std::string> AdminActions::copyUser(int site, const CopyUserForm& form) {
    return users_.find(site, toInt16(form.txtSourceUID)) == nullptr
               ? sayGone(site)
               : services_.outbox.start(site, {.commands = {copyUserCommand(form), userTableCommand()},
                                               .title = "copy " + shownName(form.txtSourceUsername) + " to " +
                                                        shownName(withoutBlanks(form.txtNewUsername))});
}

AddUserForm AdminActions::newUserForm(int site) const {
    return addUserForm(at(services_.sites, site).session.Groups, lastAdded_ ? &*lastAdded_ : nullptr);
}

std::optional<std::string> AdminActions::addUser(int site, const AddUserForm& form) {
    const auto ended = [this, site, form](const Receipt& receipt) {
        if (receipt.end == Receipt::End::done || receipt.end == Receipt::End::refused) {
            at(services_.sites, site).session.userView.added =
                addedText(form, receipt.refusedCommand, receipt.refusal);
            services_.views.accountsChanged(site, Accounts::users, AccountChange::editor);
        }
    };
    std::optional<std::string> problem = services_.outbox.start(site, jobOf(addUserSequence(form)), ended);
    if (!problem) {
        lastAdded_ = form;
        lastAdded_->txtPassword.clear();
    }
    return problem;
}

void AdminActions::startBatch(int site, CommandSequence batch) {
    services_.outbox.startOrTell(site, LogKind::commandResults, jobOf(std::move(batch)),
                                 [this, site](const Receipt& receipt) {
                                     if (receipt.end != Receipt::End::cancelled || receipt.sent > 0) {
                                         forgetDetails(site);
                                     }
                                 });
}

void AdminActions::forgetDetails(int site) {
    users_.forgetDetails(site);
    groups_.forgetDetails(site);
}

void AdminActions::proceed(int site) {
    users_.proceed(site);
    groups_.proceed(site);
}

void AdminActions::changeMask(int site, Command (*make)(const clsUser&, std::string_view),
                              const std::string& mask) {
    const clsUser* const user = users_.current(site);
    if (user == nullptr) {
        return;
    }
    const Command command = make(*user, fromUtf8(mask, at(services_.sites, site).session.encoding));
    if (const auto problem = users_.change(site, user->iUID, {command}, "addresses of ")) {
        services_.prompts.Message(*problem);
    }
}

// The end of a connection empties the table too, and then the dialog waits for the next one.
std::optional<std::string> AdminActions::sayGone(int site) {
    std::optional<std::string> problem = services_.outbox.start(site, {});
    if (!problem) {
        services_.prompts.Message("The user is not in the table any more. Nothing was sent.");
    }
    return problem;
}

} // namespace corvel
