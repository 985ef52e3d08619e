#include "admin/GroupEditor.h"

#include "admin/TableCommands.h"
#include "common/Numbers.h"

#include <array>
#include <cstdint>
#include <unordered_set>

namespace corvel {

namespace {

std::vector<GroupMemberRow> memberRows(const clsGroup& group, const UserTable& users) {
    const auto names = namesById(users, &clsUser::iUID);
    const std::unordered_set<std::int16_t> gadmins(group.gadmins.begin(), group.gadmins.end());
    std::vector<GroupMemberRow> rows;
    rows.reserve(group.members.size());
    for (const std::int16_t uid : group.members) {
        const auto name = names.find(uid);
        rows.push_back({std::to_string(uid), std::string(name == names.end() ? unknownUID : name->second),
                        gadmins.contains(uid) ? "Yes" : "No"});
    }
    return rows;
}

} // namespace

std::string& GroupForm::box(std::size_t number) {
    static constexpr std::array<std::string GroupForm::*, boxCount> members = {
        &GroupForm::txtGroupname, &GroupForm::txtGroupdescr, &GroupForm::txtGroupGroupslots,
        &GroupForm::txtGroupLeechslots, &GroupForm::txtGroupVFS};
    return this->*members.at(number);
}

GroupForm InfoToForm(const clsGroup& group, const UserTable& users) {
    GroupForm form;
    form.txtGroupGID = std::to_string(group.iGID);
    form.txtGroupname = group.sName;
    form.txtGroupdescr = group.sDescription;
    form.txtGroupGroupslots = std::to_string(group.iGroupSlots);
    form.txtGroupLeechslots = std::to_string(group.iLeechSlots);
    form.txtGroupVFS = group.sVFSFile;
    form.lvwGroupMembers = memberRows(group, users);
    form.lblGroupMembers = std::to_string(form.lvwGroupMembers.size());
    return form;
}

std::vector<Command> saveGroupCommands(const clsGroup& group, const GroupForm& form) {
    std::vector<Command> commands;
    const std::string change = "SITE change " + group.sName + " ";
    if (leadingNumber(form.txtGroupGroupslots) != group.iGroupSlots ||
        leadingNumber(form.txtGroupLeechslots) != group.iLeechSlots) {
        commands.push_back(groupChange(change + "groupslots " + wholeNumberText(form.txtGroupGroupslots) +
                                       " " + wholeNumberText(form.txtGroupLeechslots)));
    }
    if (form.txtGroupVFS != group.sVFSFile) {
        commands.push_back(groupChange(change + "groupvfsfile " + form.txtGroupVFS));
    }
    if (form.txtGroupdescr != group.sDescription) {
        commands.push_back(groupChange(change + "groupdescription " + form.txtGroupdescr));
    }
    if (form.txtGroupname != group.sName) {
        commands.push_back(groupChange("SITE grpren " + group.sName + " " + form.txtGroupname));
    }
    return commands;
}

} // namespace corvel
