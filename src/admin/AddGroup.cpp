#include "admin/AddGroup.h"

#include "common/Numbers.h"

#include <algorithm>

namespace corvel {

bool isGroupName(std::string_view name) {
    const auto isForbidden = [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte < 0x20 || byte == 0x7F ||
               std::string_view(" :/\"").find(character) != std::string_view::npos;
    };
    return !name.empty() && std::ranges::none_of(name, isForbidden);
}

std::optional<std::string> addGroupProblem(const AddGroupForm& form, const GroupTable& groups) {
    if (!isGroupName(form.txtGroupname)) {
        return "Please enter a valid groupname.";
    }
    if (const clsGroup* group = findGroupByName(groups, form.txtGroupname)) {
        return "This group already exists: \r\nName: " + group->sName +
               "\r\nDescription: " + group->sDescription +
               "\r\nUsercount: " + std::to_string(group->iUserCount);
    }
    return std::nullopt;
}

CommandSequence addGroupSequence(const AddGroupForm& form) {
    const std::string change = "site change " + form.txtGroupname + " ";
    const std::string lines = batchText({change + "groupslots " + wholeNumberText(form.txtGroupGroupslots) +
                                             " " + wholeNumberText(form.txtGroupLeechslots),
                                         change + "groupdescription " + form.txtGroupdescr,
                                         change + "groupvfsfile " + form.txtGroupVFS});
    return {"-------------[ BEGIN ]-[ ADDGROUP ]-------------", LogKind::console, lines,
            Command{"SITE grpadd " + form.txtGroupname, false, handler::addGroup, -1}};
}

} // namespace corvel
