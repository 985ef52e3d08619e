#include "demo/DemoHiding.h"

#include "demo/DemoProperties.h"
#include "demo/DemoWords.h"

#include <algorithm>

namespace corvel {

Problem hidingProblem(const DemoAccounts& accounts, std::string_view hidingWords) {
    const std::vector<std::string_view> parts = words(hidingWords);
    for (const std::string_view part : parts) {
        const std::string_view name = part.substr(1);
        if (part.starts_with('-') && accounts.findUser(name) == nullptr) {
            return concat({"User '", name, "' does not exist."});
        }
        if (part.starts_with('=') && accounts.findGroup(name) == nullptr) {
            return concat({"Group '", name, "' does not exist."});
        }
        if (!part.starts_with('-') && !part.starts_with('=') && !areFlags(part)) {
            return concat({"'", part, "' are no flags."});
        }
    }
    return parts.empty() ? "Nobody is named to show it to." : "";
}

bool isShownTo(const DemoAccounts& accounts, const DemoUser& user, const TreeNode& directory) {
    if (directory.hiddenText.empty() || directory.owner == user.name ||
        user.flags.find('M') != std::string::npos) {
        return true;
    }
    const std::vector<std::string> groups = accounts.groupNames(user);
    const std::vector<std::string_view> parts = words(directory.hiddenText);
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) {
        const std::string_view name = part.substr(1);
        if (part.starts_with('-')) {
            return name == user.name;
        }
        if (part.starts_with('=')) {
            return std::find(groups.begin(), groups.end(), name) != groups.end();
        }
        return user.flags.find_first_of(part) != std::string::npos;
    });
}

} // namespace corvel
