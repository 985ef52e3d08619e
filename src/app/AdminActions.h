#pragma once

#include "admin/ChangeUserGroups.h"
#include "admin/CopyUser.h"
#include "admin/GroupEditor.h"
#include "admin/Sections.h"
#include "admin/UserForm.h"
#include "app/Outbox.h"
#include "common/Command.h"
#include "common/ports/Prompts.h"
#include "common/ports/Views.h"
#include "net/SiteSession.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What a person can do with the accounts and groups of a site. Rows are rows as the lists show them, from 0;
// a row that is not there does nothing. One row of each list is the current one, and the editor acts on it:
// what an editor sends goes out only while its boxes show the current record. The tables change only when
// the server answers.
class AdminActions {
  public:
    // All are borrowed and must outlive the actions.
    AdminActions(Sites& sites, Outbox& outbox, Prompts& prompts, Views& views)
        : sites_(sites), outbox_(outbox), prompts_(prompts), views_(views) {}

    void reloadUsers(int site);
    void reloadGroups(int site);
    void sortUsers(int site, int column); // header click, column from 0
    void sortGroups(int site, int column);

    // A click on a row, or a key that goes to it: makes it the current one and has it shown, at once where
    // its details are known, else when the server has sent them.
    void openUser(int site, int row);
    void openGroup(int site, int row);
    // Delete key: asks, and deletes after a yes.
    void deleteUser(int site, int row);
    void deleteGroup(int site, int row);

    // The row of the current record and its index in the table; -1 where there is none.
    int currentUserRow(int site) const;
    int currentGroupRow(int site) const;
    int currentUser(int site) const;
    int currentGroup(int site) const;
    // The index of the current record while the box for its id shows it; -1 otherwise.
    int editedUser(int site, std::string_view txtUserUID) const;
    int editedGroup(int site, std::string_view txtGroupGID) const;

    // The buttons of the editors. A form holds what the editor's boxes show.
    void reloadUserfile(int site);
    void reloadGroupfile(int site);
    void saveUser(int site, const UserForm& form);
    void saveGroup(int site, const GroupForm& form);
    void addMask(int site, const UserForm& form);
    void deleteMask(int site, const UserForm& form);
    void resetPassword(int site, const UserForm& form);

    // Sends the changes that were made to a record, in their order, and has its details read again behind
    // them.
    void changeUser(int site, std::int16_t uid, std::vector<Command> changes);
    void changeGroup(int site, std::int16_t gid, std::vector<Command> changes);

    // What a dialog was confirmed with: nothing where the dialog may close, else why it could not be sent. A
    // person is told when the account has gone from the table meanwhile.
    std::optional<std::string> changeUserGroups(int site, std::int16_t uid, const ChangeUserGroupsForm& form);
    std::optional<std::string> changeSections(int site, std::int16_t uid,
                                              std::span<const UserSectionRow> rows, const SectionsForm& form);
    std::optional<std::string> copyUser(int site, const CopyUserForm& form);
    std::optional<std::string> startSequence(int site, const CommandSequence& sequence);
    // The same for a batch, which no dialog started: a person is told why it cannot be sent.
    void startBatch(int site, const CommandSequence& batch);
    // How far the site's batch has come, "41 of 300"; empty while none runs.
    std::string batchProgress(int site) const;

  private:
    void saveUser(int site, const UserForm& form, bool sendFlags);
    void send(int site, std::vector<Command> commands);
    void wish(int site, const Command& details);
    std::vector<Command> withDetails(int site, std::int16_t uid, std::vector<Command> changes) const;
    std::optional<std::string> sayGone(int site);

    Sites& sites_;
    Outbox& outbox_;
    Prompts& prompts_;
    Views& views_;
};

} // namespace corvel
