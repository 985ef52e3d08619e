#pragma once

#include "admin/AdminForms.h"
#include "app/AccountTable.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What a person can do with the accounts and groups of a site: the two tables, and what only users have.
class AdminActions {
  public:
    // All are borrowed and must outlive the actions.
    explicit AdminActions(const AccountServices& services)
        : services_(services), users_(services), groups_(services) {}

    AccountTable<UserKind>& users() { return users_; }
    const AccountTable<UserKind>& users() const { return users_; }
    AccountTable<GroupKind>& groups() { return groups_; }
    const AccountTable<GroupKind>& groups() const { return groups_; }

    // Adds a mask (UTF-8) to the current user, or takes it away.
    void addMask(int site, const std::string& mask) { changeMask(site, addMaskCommand, mask); }
    void deleteMask(int site, const std::string& mask) { changeMask(site, deleteMaskCommand, mask); }
    // Asks for a new password of the current user, and sets it.
    void resetPassword(int site);
    // Reads the current user again and then has the dialog of his groups opened: toggles work on what is so
    // now.
    void editGroups(int site);

    // What a dialog was confirmed with: nothing where the dialog may close, else why it could not be sent. A
    // person is told when the account has gone from the table meanwhile.
    std::optional<std::string> changeUserGroups(int site, std::int16_t uid, const ChangeUserGroupsForm& form);
    std::optional<std::string> changeSections(int site, std::int16_t uid, const SectionsForm& form);
    std::optional<std::string> copyUser(int site, const CopyUserForm& form);
    std::optional<std::string> startSequence(int site, const CommandSequence& sequence) {
        return services_.outbox.start(site, jobOf(sequence));
    }
    // The form that the dialog of a new user opens with, and what it was confirmed with. The list does not
    // show him by itself, and AccountView::added says so.
    AddUserForm newUserForm(int site) const;
    std::optional<std::string> addUser(int site, const AddUserForm& form);
    // The same for a batch, which no dialog started: a person is told why it cannot be sent. Behind its end
    // nothing is known of the records' details any more.
    void startBatch(int site, CommandSequence batch);
    // How far the site's batch has come, "41 of 300"; empty while none runs.
    std::string batchProgress(int site) const { return services_.outbox.batchProgress(site); }

    // Both tables': forgets all details, and asks for those that are wanted by now.
    void forgetDetails(int site);
    void proceed(int site);

  private:
    std::optional<std::string> sayGone(int site);
    void changeMask(int site, Command (*make)(const clsUser&, std::string_view), const std::string& mask);

    AccountServices services_;
    std::optional<AddUserForm> lastAdded_;
    AccountTable<UserKind> users_;
    AccountTable<GroupKind> groups_;
};

} // namespace corvel
