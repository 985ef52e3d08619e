// Replies with the details of a user or of a group, and what the editors make of them.
#include "admin/AccountEditors.h"
#include "admin/AdminForms.h"
#include "admin/mdlUsersGroups.h"
#include "common/Errors.h"
#include "common/Text.h"
#include "Fuzz.h"

#include <algorithm>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

using Lines = std::vector<std::string_view>;

// Whether the reply could be read to its end.
template <typename Record>
bool isRead(Record& record, const Lines& lines, void (Record::*parse)(std::span<const std::string_view>)) {
    try {
        (record.*parse)(lines);
    } catch (const ParseError& error) {
        require(error.lineNumber() >= 1 && error.lineNumber() <= lines.size(), "an error names its line");
        require(!record.got_info, "what was not read to its end is not known");
        return false;
    }
    require(record.got_info, "what was read to its end is known");
    return true;
}

// Each box alone, when something else is typed into it, has one command sent, which is one line where both
// texts are, and names the record.
template <typename Record, typename Form, typename Save>
void checkBoxes(const Record& record, const Form& shown, Save save) {
    require(save(record, shown).empty(), "what nobody has touched is not sent");
    for (std::size_t box = 0; box < Form::boxCount; ++box) {
        Form form = shown;
        form.box(box) = "17" + form.box(box);
        const std::vector<Command> commands = save(record, form);
        require(commands.size() <= 1, "a box is one command");
        for (const Command& command : commands) {
            const bool isClean = isOneLine(record.sName) && isOneLine(form.box(box));
            require(!isClean || isOneLine(command.sCommand), "a command is one line");
        }
    }
}

void checkUser(const Lines& lines) {
    clsUser user;
    if (!isRead(user, lines, &clsUser::ParseUserFile)) {
        return;
    }
    const UserDetails& details = user.details();
    require(!details.groups.empty() && !details.admingroups.empty(), "no list of ids is empty");
    require(std::ranges::all_of(details.groups, [&](std::int16_t id) { return user.IsMemberOf(id); }) &&
                std::ranges::all_of(details.admingroups, [&](std::int16_t id) { return user.IsAdminOf(id); }),
            "a user is a member of his groups");
    const GroupTable groups = emptyGroupTable();
    const UserForm form = InfoToForm(user, groups);
    require(form.lvwUserGroups.size() == details.groups.size(), "each group has a row");
    checkBoxes(user, form, [](const clsUser& record, const UserForm& typed) {
        return saveUserCommands(record, typed, true);
    });
    require(saveSectionsCommands(user, sectionsForm(user)).empty(), "sections that stay are not sent");
    clsUser again = user;
    require(isRead(again, lines, &clsUser::ParseUserFile) &&
                InfoToForm(again, groups).lvwUserGroups == form.lvwUserGroups &&
                again.details().ips == details.ips && sectionRows(again) == sectionRows(user),
            "the same reply gives the same record");
}

void checkGroup(const Lines& lines) {
    clsGroup group;
    if (!isRead(group, lines, &clsGroup::ParseGroupFile)) {
        return;
    }
    const GroupDetails& details = group.details();
    require(!details.members.empty() && !details.gadmins.empty(), "no list of ids is empty");
    require(std::ranges::all_of(details.gadmins, [&](std::int16_t id) { return group.IsGadmin(id); }),
            "who administers a group is known to");
    const GroupForm form = InfoToForm(group, emptyUserTable());
    require(form.lvwGroupMembers.size() == details.members.size(), "each member has a row");
    checkBoxes(group, form, saveGroupCommands);
    clsGroup again = group;
    require(isRead(again, lines, &clsGroup::ParseGroupFile) && again.details().members == details.members &&
                again.details().gadmins == details.gadmins,
            "the same reply gives the same record");
}

} // namespace

void check(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    checkUser(lines);
    checkGroup(lines);
}

void work(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    clsUser user;
    if (isRead(user, lines, &clsUser::ParseUserFile)) {
        InfoToForm(user, emptyGroupTable());
        changeUserGroupsForm(user, emptyGroupTable());
    }
    clsGroup group;
    if (isRead(group, lines, &clsGroup::ParseGroupFile)) {
        InfoToForm(group, emptyUserTable());
    }
}

} // namespace corvel::fuzz
