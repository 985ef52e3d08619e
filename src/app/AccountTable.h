#pragma once

#include "admin/AccountEditors.h"
#include "admin/AccountLists.h"
#include "app/Outbox.h"
#include "common/Ports.h"
#include "common/ShownText.h"
#include "net/CommandChannel.h"
#include "net/SiteSession.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvel {

// What makes an AccountTable one of users or one of groups: the records and forms, where a session keeps
// them, and what is sent, asked and read. Everything else is the same for both.
struct UserKind {
    using Record = clsUser;
    using Form = UserForm;
    static constexpr Accounts accounts = Accounts::users;
    static constexpr std::string_view noun = "user";
    static constexpr auto id = &clsUser::iUID;
    static constexpr auto table = &SiteSession::Users;
    static constexpr auto view = &SiteSession::userView;
    static constexpr auto tableCommand = &userTableCommand;
    static constexpr auto detailsCommand = &userFileCommand;
    static constexpr auto deleteCommand = &deleteUserCommand;
    static constexpr auto saveCommands = &saveUserCommands;
    static std::string deleteQuestion(const clsUser& user);
    static std::string nameInQuestion(const clsUser& user) {
        return shownName(user.sName) + "@" + shownName(user.sStdGroup);
    }
    static std::optional<std::string> saveQuestion(const clsUser& user, const UserForm& form) {
        return masterQuestion(user.sFlags, form.txtUserFlags);
    }
    static Form form(const SiteSession& session, const clsUser& user) {
        return InfoToForm(user, session.Groups);
    }
};

struct GroupKind {
    using Record = clsGroup;
    using Form = GroupForm;
    static constexpr Accounts accounts = Accounts::groups;
    static constexpr std::string_view noun = "group";
    static constexpr auto id = &clsGroup::iGID;
    static constexpr auto table = &SiteSession::Groups;
    static constexpr auto view = &SiteSession::groupView;
    static constexpr auto tableCommand = &groupTableCommand;
    static constexpr auto detailsCommand = &groupFileCommand;
    static constexpr auto deleteCommand = &deleteGroupCommand;
    static std::string deleteQuestion(const clsGroup& group);
    static std::string nameInQuestion(const clsGroup& group) { return shownName(group.sName); }
    static std::optional<std::string> saveQuestion(const clsGroup& /*group*/, const GroupForm& /*form*/) {
        return std::nullopt;
    }
    static std::vector<Command> saveCommands(const clsGroup& group, const GroupForm& form,
                                             bool /*sendFlags*/) {
        return saveGroupCommands(group, form);
    }
    static Form form(const SiteSession& session, const clsGroup& group) {
        return InfoToForm(group, session.Users);
    }
};

// The record with the id, or null; as constant as the session is.
template <typename Kind, typename Session>
auto* findRecord(Session& session, std::optional<std::int16_t> id) {
    auto& table = session.*Kind::table;
    const auto found =
        id && !isPlaceholder(table.front()) ? std::ranges::find(table, *id, Kind::id) : table.end();
    return found == table.end() ? nullptr : &*found;
}

// What a table works with. All are borrowed and must outlive it.
struct AccountServices {
    Sites& sites;
    Outbox& outbox;
    ConsoleLog& log;
    Prompts& prompts;
    Views& views;
};

// What an editor shows.
template <typename Form>
struct AccountEditor {
    std::optional<std::int16_t> id; // of the current record; nothing is shown without one
    Form form;                      // as the server has it; without details the name alone
    Details details = Details::none;
    std::string problem;          // why there are no details
    std::string outcome;          // of the last change that was sent from here, UTF-8
    const Draft* draft = nullptr; // what is typed and not saved; null for nothing. Good until the next call
};

// What a person can do with the users (the groups) of a site. Rows are rows as the list shows them, from 0; a
// row that is not there does nothing. One row is the current one, and the editor acts on it. The table
// changes only when the server answers; what is typed is a draft of its record until it is saved or thrown
// away.
template <typename Kind>
class AccountTable {
  public:
    using Record = typename Kind::Record;
    using Form = typename Kind::Form;

    explicit AccountTable(const AccountServices& services) : services_(services) {}

    void reload(int site);
    void sortBy(int site, int column); // header click, column from 0

    // A click on a row, or a key that goes to it: makes it the current one and has it shown, at once where
    // its details are known, else when the server has sent them. The newest wish counts.
    void open(int site, int row);
    // Delete key: asks one question about all of the rows, and deletes after a yes, as one job.
    void remove(int site, const std::vector<int>& rows);

    // The row of the current record, -1 where there is none; the record, or null.
    int currentRow(int site) const;
    int rowOf(int site, std::int16_t id) const; // -1 where there is no such record
    const Record* current(int site) const;
    // The record with the id, or null.
    const Record* find(int site, std::int16_t id) const;
    bool hasDraft(int site, std::size_t index) const; // of the record at index in the table

    AccountEditor<Form> editor(int site) const;
    // The editor's form with what is typed in it, as it would be sent.
    Form typedForm(int site) const;
    // A person has typed text (UTF-8) into a box of the editor, or what stood there before: nothing.
    void typed(int site, std::size_t box, std::optional<std::string> text);

    void save(int site);
    // Reads the current record again; asks first where that throws a draft away.
    void reloadDetails(int site);
    // Forgets all that is known of the records' details, and has the open one read again.
    void forgetDetails(int site);

    // Sends changes of a record and has it read again behind them. Gives why nothing was sent, if so. what:
    // the person calls the job so, with the name behind it.
    std::optional<std::string> change(int site, std::int16_t id, std::vector<Command> changes,
                                      std::string_view what, Outbox::Ended ended = {});

    // Asks for the details that are wanted. To be called after everything that can want them.
    void proceed(int site);

    // What is done with the replies. A table reply replaces the whole table, whatever its code: a refused one
    // leaves it empty, and the list says why. A details reply is read only with a code of 200 to 299, into
    // the record that the command asked about; where the table does not have that any more, the console says
    // so and nothing changes. Throws as the parser does.
    static void tableReply(const ReplyServices& services, Reply& reply);
    static void detailsReply(const ReplyServices& services, Reply& reply);
    // What reads them until then.
    static ReplyReader beginTable(const ReplyServices& services, int site, SiteSession& session);
    static ReplyReader beginDetails(const ReplyServices& services, int site, SiteSession& session);

  private:
    SiteSession& session(int site) const { return at(services_.sites, site).session; }
    void keepOutcome(int site, std::int16_t id, std::string_view what, const Receipt& receipt);
    void keepOutcome(int site, std::int16_t id, std::string_view text);
    void saveNow(int site, std::int16_t id, bool sendFlags);
    std::string nameOf(int site, std::int16_t id) const;
    void dropSaved(int site, std::int16_t id, const Draft& saved);
    void changed(int site, AccountChange change) const {
        services_.views.accountsChanged(site, Kind::accounts, change);
    }
    void say(int site, const std::string& problem) const;

    AccountServices services_;
};

extern template class AccountTable<UserKind>;
extern template class AccountTable<GroupKind>;

} // namespace corvel
