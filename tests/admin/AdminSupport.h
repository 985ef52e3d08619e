#pragma once

#include "admin/mdlUsersGroups.h"
#include "common/Command.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

using Lines = std::vector<std::string_view>;
using Texts = std::vector<std::string>;

// Each command as one text: "107 SITE change bob flags 3", with " quiet" behind the handler where it is
// quiet and " tag N" where its tag is not 0.
inline Texts written(const std::vector<Command>& commands) {
    Texts texts;
    for (const Command& command : commands) {
        texts.push_back(std::to_string(command.iHandler) + (command.bQuiet ? " quiet" : "") +
                        (command.iTag == 0 ? "" : " tag " + std::to_string(command.iTag)) + " " +
                        command.sCommand);
    }
    return texts;
}

// The account of the tests.
inline clsUser bob() {
    clsUser user = ParseUserTable(1, Lines{"p | 7 | bob | staff | 3"}).table[0];
    user.ParseUserFile(Lines{"200-tagline | hello", "200-homepath | /home", "200-vfs | /vfs",
                             "200-ips | *@10.*", "200-limits | 100 | 200 | 1 | 2 | 3",
                             "200-groups | 1 | 3 | 9", "200-admingroups | 3",
                             "200-ratios | 5 | 0 | 0 | 3 | 0 | 0 | 0 | 0 | 0 | 0",
                             "200-credits | 1536 | -1 | 1023.9999 | 2048 | 0 | 0 | 0 | 0 | 0 | -1024"});
    return user;
}

inline GroupTable threeGroups() {
    return ParseGroupTable(1, Lines{"p | 1 | staff | 2", "p | 2 | guests | 0", "p | 3 | crew | 12"}).table;
}

} // namespace corvel
