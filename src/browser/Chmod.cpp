#include "browser/Chmod.h"

#include "browser/FileOperations.h"
#include "browser/Navigation.h"
#include "common/Template.h"

#include <algorithm>

namespace corvel {

namespace {

constexpr char notGiven = '-';

// The permissions in a listed access text, behind the letter of the type.
Permissions permissionsIn(std::string_view access) {
    Permissions permissions = {};
    for (std::size_t i = 0; i < permissionCount && i + 1 < access.size(); ++i) {
        permissions[i] = access[i + 1] != notGiven;
    }
    return permissions;
}

bool isOctalDigit(char character) {
    return character >= '0' && character <= '7';
}

} // namespace

ChmodForm chmodForm(std::string_view cwd, const BrowserEntry& entry) {
    const Permissions permissions = permissionsIn(entry.access);
    return {.txtPath = pathIn(cwd, entry.name), .chkX = permissions, .txtCHMODval = chmodValue(permissions)};
}

// The decimal digits of the sum are the octal digits of the mode.
std::string chmodValue(const Permissions& permissions, std::string_view mode) {
    static constexpr std::array<int, permissionCount> worth = {400, 200, 100, 40, 20, 10, 4, 2, 1};
    int total = 0;
    for (std::size_t i = 0; i < permissionCount; ++i) {
        total += permissions[i] ? worth[i] : 0;
    }
    const bool hasFirst = mode.size() == 4 && permissionsOf(mode);
    return std::string(mode.substr(0, hasFirst ? 1 : 0)) +
           FormatField(std::to_string(total), 3, FieldAlign::right, "0", false);
}

std::optional<Permissions> permissionsOf(std::string_view value) {
    if (value.size() < 3 || value.size() > 4 || !std::ranges::all_of(value, isOctalDigit)) {
        return std::nullopt;
    }
    value.remove_prefix(value.size() - 3);
    Permissions permissions = {};
    for (std::size_t i = 0; i < permissionCount; ++i) {
        permissions[i] = ((value[i / 3] - '0') >> (2 - i % 3) & 1) != 0;
    }
    return permissions;
}

Command chmodCommand(const ChmodForm& form) {
    return fileCommand("SITE chmod " + form.txtCHMODval + " ", form.txtPath);
}

} // namespace corvel
