#include "demo/DemoCommands.h"
#include "demo/DemoProperties.h"
#include "demo/DemoWords.h"

#include <array>

namespace corvel {

namespace {

std::string answerAddUser(DemoRequest& request) {
    const std::vector<std::string_view> parts = words(request.argument);
    if (parts.size() < 3) {
        return syntaxReply(request);
    }
    const Problem problem =
        request.world.accounts.addUser(parts[0], parts[1], parts[2], {parts.begin() + 3, parts.end()});
    return changeReply(problem, {"User '", parts[1], "' added to group '", parts[0], "'."});
}

std::string answerChange(DemoRequest& request) {
    const auto [name, rest] = cutWord(request.argument);
    const auto [property, value] = cutWord(rest);
    if (property.empty()) {
        return syntaxReply(request);
    }
    DemoAccounts& accounts = request.world.accounts;
    const Problem problem = isGroupProperty(property) ? accounts.changeGroup(name, property, value)
                                                      : accounts.changeUser(name, property, value);
    return changeReply(problem, {"Changed ", property, " of '", name, "'."});
}

// The commands of a user and a list of words.
std::string answerUserList(DemoRequest& request, std::string_view what,
                           Problem (DemoAccounts::*change)(std::string_view,
                                                           const std::vector<std::string_view>&)) {
    std::vector<std::string_view> parts = words(request.argument);
    if (parts.size() < 2) {
        return syntaxReply(request);
    }
    const std::string_view name = parts.front();
    parts.erase(parts.begin());
    return changeReply((request.world.accounts.*change)(name, parts), {what, " of '", name, "' changed."});
}

std::string answerAddIp(DemoRequest& request) {
    return answerUserList(request, "Masks", &DemoAccounts::addMasks);
}

std::string answerDelIp(DemoRequest& request) {
    return answerUserList(request, "Masks", &DemoAccounts::removeMasks);
}

std::string answerChangeGroups(DemoRequest& request) {
    return answerUserList(request, "Groups", &DemoAccounts::toggleGroups);
}

std::string answerRenameUser(DemoRequest& request) {
    const std::vector<std::string_view> parts = words(request.argument);
    if (parts.size() != 2) {
        return syntaxReply(request);
    }
    const Problem problem = request.world.accounts.renameUser(parts[0], parts[1]);
    if (problem.empty()) {
        request.world.tree.renameHolder(&TreeNode::owner, parts[0], parts[1]);
    }
    return changeReply(problem, {"User '", parts[0], "' is now '", parts[1], "'."});
}

std::string answerDeleteUser(DemoRequest& request) {
    const DemoUser* self = loggedInUser(request.world, request.client);
    if (self != nullptr && self->name == request.argument) {
        return reply(550, "You cannot delete your own account.");
    }
    return changeReply(request.world.accounts.removeUser(request.argument),
                       {"User '", request.argument, "' deleted."});
}

std::string answerAddGroup(DemoRequest& request) {
    const auto [name, description] = cutWord(request.argument);
    return changeReply(request.world.accounts.addGroup(name, description), {"Group '", name, "' added."});
}

std::string answerRenameGroup(DemoRequest& request) {
    const std::vector<std::string_view> parts = words(request.argument);
    if (parts.size() != 2) {
        return syntaxReply(request);
    }
    const Problem problem = request.world.accounts.renameGroup(parts[0], parts[1]);
    if (problem.empty()) {
        request.world.tree.renameHolder(&TreeNode::group, parts[0], parts[1]);
    }
    return changeReply(problem, {"Group '", parts[0], "' is now '", parts[1], "'."});
}

std::string answerDeleteGroup(DemoRequest& request) {
    return changeReply(request.world.accounts.removeGroup(request.argument),
                       {"Group '", request.argument, "' deleted."});
}

constexpr DemoCommand masterCommand(std::string_view verb, std::string (*answer)(DemoRequest&),
                                    std::string_view syntax) {
    return {.verb = verb, .answer = answer, .whoMay = WhoMay::masters, .syntax = syntax};
}

constexpr std::array commands = {
    masterCommand("GADDUSER", answerAddUser, "<group> <name> <password> [<ident@host>...]"),
    masterCommand("CHANGE", answerChange, "<user or group> <property> <value>"),
    masterCommand("ADDIP", answerAddIp, "<user> <ident@host>..."),
    masterCommand("DELIP", answerDelIp, "<user> <ident@host>..."),
    masterCommand("CHGRP", answerChangeGroups, "<user> <group>..."),
    masterCommand("RENUSER", answerRenameUser, "<user> <new name>"),
    masterCommand("DELUSER", answerDeleteUser, "<user>"),
    masterCommand("GRPADD", answerAddGroup, "<group> [<description>]"),
    masterCommand("GRPREN", answerRenameGroup, "<group> <new name>"),
    masterCommand("GRPDEL", answerDeleteGroup, "<group>"),
};

} // namespace

std::span<const DemoCommand> accountCommands() {
    return commands;
}

} // namespace corvel
