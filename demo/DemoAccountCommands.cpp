#include "demo/DemoCommands.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t mostMasks = 10;

bool isMask(std::string_view text) {
    const std::size_t at = text.find('@');
    return at != std::string_view::npos && at > 0 && at + 1 < text.size();
}

// The masks there with more behind them; refused where one cannot be added.
std::vector<std::string> withMasks(std::vector<std::string> there, std::span<const std::string_view> more) {
    for (const std::string_view mask : more) {
        if (!isMask(mask)) {
            refuse({"'", mask, "' is no ident@host mask."});
        }
        if (std::ranges::find(there, mask) != there.end()) {
            refuse({"Mask '", mask, "' is there already."});
        }
        there.emplace_back(mask);
    }
    if (there.size() > mostMasks) {
        refuse({"A user can have ten masks."});
    }
    return there;
}

// The words of the argument, least to most of them.
std::vector<std::string_view> argumentWords(const DemoRequest& request, std::size_t least, std::size_t most) {
    std::vector<std::string_view> parts = words(request.argument);
    if (parts.size() < least || parts.size() > most) {
        refuseSyntax(request);
    }
    return parts;
}

constexpr std::size_t anyNumber = -1;

std::string answerAddUser(DemoRequest& request) {
    const std::vector<std::string_view> parts = argumentWords(request, 3, anyNumber);
    DemoAccounts& accounts = request.world.accounts;
    DemoUser user;
    user.groups = {accounts.group(parts[0]).id};
    user.password = parts[2];
    user.homePath = concat({"/home/", parts[1]});
    user.masks = withMasks({}, std::span(parts).subspan(3));
    user.ratios.front() = 3;
    accounts.addUser(std::move(user), parts[1]);
    return reply(200, {"User '", parts[1], "' added to group '", parts[0], "'."});
}

std::string answerChange(DemoRequest& request) {
    const auto [name, rest] = cutWord(request.argument);
    const auto [property, value] = cutWord(rest);
    if (property.empty()) {
        refuseSyntax(request);
    }
    request.world.accounts.change(name, property, value);
    return reply(200, {"Changed ", property, " of '", name, "'."});
}

std::string answerAddIp(DemoRequest& request) {
    const std::vector<std::string_view> parts = argumentWords(request, 2, anyNumber);
    DemoUser& user = request.world.accounts.user(parts[0]);
    user.masks = withMasks(user.masks, std::span(parts).subspan(1));
    return reply(200, {"Masks of '", parts[0], "' changed."});
}

std::string answerDelIp(DemoRequest& request) {
    const std::vector<std::string_view> parts = argumentWords(request, 2, anyNumber);
    DemoUser& user = request.world.accounts.user(parts[0]);
    std::vector<std::string> left = user.masks;
    for (const std::string_view mask : std::span(parts).subspan(1)) {
        if (std::erase(left, mask) == 0) {
            refuse({"User '", parts[0], "' has no mask '", mask, "'."});
        }
    }
    user.masks = std::move(left);
    return reply(200, {"Masks of '", parts[0], "' changed."});
}

// Makes the user a member of each group that he is not in and takes him out of each that he is in.
std::string answerChangeGroups(DemoRequest& request) {
    const std::vector<std::string_view> parts = argumentWords(request, 2, anyNumber);
    DemoAccounts& accounts = request.world.accounts;
    DemoUser& user = accounts.user(parts[0]);
    std::vector<int> groups = user.groups;
    for (const std::string_view name : std::span(parts).subspan(1)) {
        toggle(groups, accounts.group(name).id);
    }
    if (groups.empty()) {
        refuse({"User '", parts[0], "' has to stay in one group."});
    }
    user.groups = std::move(groups);
    return reply(200, {"Groups of '", parts[0], "' changed."});
}

std::string answerRenameUser(DemoRequest& request) {
    const std::vector<std::string_view> parts = argumentWords(request, 2, 2);
    request.world.accounts.renameUser(parts[0], parts[1]);
    request.world.tree.renameHolder(&TreeNode::owner, parts[0], parts[1]);
    return reply(200, {"User '", parts[0], "' is now '", parts[1], "'."});
}

std::string answerDeleteUser(DemoRequest& request) {
    DemoAccounts& accounts = request.world.accounts;
    const DemoUser& removed = accounts.user(request.argument);
    if (&removed == request.user) {
        refuse({"You cannot delete your own account."});
    }
    accounts.users.erase(accounts.users.begin() + (&removed - accounts.users.data()));
    return reply(200, {"User '", request.argument, "' deleted."});
}

std::string answerAddGroup(DemoRequest& request) {
    const auto [name, description] = cutWord(request.argument);
    request.world.accounts.addGroup({.description = std::string(description)}, name);
    return reply(200, {"Group '", name, "' added."});
}

std::string answerRenameGroup(DemoRequest& request) {
    const std::vector<std::string_view> parts = argumentWords(request, 2, 2);
    request.world.accounts.renameGroup(parts[0], parts[1]);
    request.world.tree.renameHolder(&TreeNode::group, parts[0], parts[1]);
    return reply(200, {"Group '", parts[0], "' is now '", parts[1], "'."});
}

// Only a group without members can go.
std::string answerDeleteGroup(DemoRequest& request) {
    DemoAccounts& accounts = request.world.accounts;
    const DemoGroup& removed = accounts.group(request.argument);
    const int id = removed.id;
    const auto members = std::ranges::count_if(accounts.users, [id](const DemoUser& user) {
        return std::ranges::find(user.groups, id) != user.groups.end();
    });
    if (members > 0) {
        refuse({"Group '", request.argument, "' still has members: ", std::to_string(members), "."});
    }
    for (DemoUser& user : accounts.users) {
        std::erase(user.adminGroups, id);
    }
    accounts.groups.erase(accounts.groups.begin() + (&removed - accounts.groups.data()));
    return reply(200, {"Group '", request.argument, "' deleted."});
}

constexpr std::array accountTable = {
    DemoCommand{"GADDUSER", answerAddUser, WhoMay::masters, "<group> <name> <password> [<ident@host>...]"},
    DemoCommand{"CHANGE", answerChange, WhoMay::masters, "<user or group> <property> <value>"},
    DemoCommand{"ADDIP", answerAddIp, WhoMay::masters, "<user> <ident@host>..."},
    DemoCommand{"DELIP", answerDelIp, WhoMay::masters, "<user> <ident@host>..."},
    DemoCommand{"CHGRP", answerChangeGroups, WhoMay::masters, "<user> <group>..."},
    DemoCommand{"RENUSER", answerRenameUser, WhoMay::masters, "<user> <new name>"},
    DemoCommand{"DELUSER", answerDeleteUser, WhoMay::masters, "<user>"},
    DemoCommand{"GRPADD", answerAddGroup, WhoMay::masters, "<group> [<description>]"},
    DemoCommand{"GRPREN", answerRenameGroup, WhoMay::masters, "<group> <new name>"},
    DemoCommand{"GRPDEL", answerDeleteGroup, WhoMay::masters, "<group>"},
};

} // namespace

constinit const DemoTable accountCommands = accountTable;

} // namespace corvel
