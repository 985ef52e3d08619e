#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/DemoListing.h"
#include "demo/DemoWords.h"

#include <array>

namespace corvel {

std::string treeReply(std::string_view path, TreeError error) {
    return reply(550, {path, ": ", treeErrorText(error), "."});
}

namespace {

// A path in double quotes, with the quotes in it doubled (RFC 959, appendix II).
std::string quoted(std::string_view path) {
    return concat({"\"", replaceAll(path, "\"", "\"\""), "\""});
}

std::string enterDirectory(DemoRequest& request, std::string_view path) {
    const TreePlace place = request.world.tree.enter(request.viewer, path);
    if (place.error != TreeError::none) {
        return treeReply(path, place.error);
    }
    request.client.directory = place.path;
    return reply(250, "CWD command successful");
}

std::string answerCwd(DemoRequest& request) {
    return enterDirectory(request, request.argument);
}

std::string answerCdup(DemoRequest& request) {
    return enterDirectory(request, "..");
}

std::string answerPwd(DemoRequest& request) {
    return reply(257, {quoted(request.client.directory), " is current directory."});
}

// A listing over the control connection. An argument's first word of a dash and letters are options, of which
// "a" counts: names that begin with a dot are shown too.
std::string answerStat(DemoRequest& request) {
    std::string_view path = request.argument;
    if (path.empty()) {
        return longReply(211, "Demo server status:",
                         " Logged in as " + request.viewer.user + "\r\n TYPE: ASCII, no data connection\r\n",
                         "End of status");
    }
    std::string_view options;
    if (path.starts_with("-")) {
        const std::size_t blank = path.find(' ');
        options = path.substr(0, blank);
        path = blank == std::string_view::npos ? "." : path.substr(blank + 1);
    }
    const TreePlace place = request.world.tree.find(request.viewer, path, true);
    if (place.error != TreeError::none) {
        return treeReply(path, place.error);
    }
    const TreePlace parent = request.world.tree.find(request.viewer, joinPath(place.path, ".."), true);
    const DemoAccounts& accounts = request.world.accounts;
    const DemoUser* user = loggedInUser(request.world, request.client);
    std::string lines;
    if (place.node->type != 'd') {
        lines = listingLine(*place.node, path).append(lineEnd);
    } else if (isAllowed(request.viewer, *place.node, 4)) {
        lines = directoryLines(*place.node, *parent.node, options.find('a') != std::string_view::npos,
                               [&](const TreeNode& child) { return isShownTo(accounts, *user, child); });
    } else {
        return treeReply(path, TreeError::denied);
    }
    return longReply(211, "status of " + place.path + ":", lines, "End of Status");
}

std::string answerMkd(DemoRequest& request) {
    const TreePlace place = request.world.tree.makeDirectory(request.viewer, request.argument);
    return place.error == TreeError::none ? reply(257, {quoted(place.path), " directory created."})
                                          : treeReply(request.argument, place.error);
}

std::string answerRmd(DemoRequest& request) {
    const TreeError error = request.world.tree.removeDirectory(request.viewer, request.argument);
    return error == TreeError::none ? reply(250, "RMD command successful")
                                    : treeReply(request.argument, error);
}

std::string answerDele(DemoRequest& request) {
    const TreeError error = request.world.tree.removeFile(request.viewer, request.argument);
    return error == TreeError::none ? reply(250, "DELE command successful")
                                    : treeReply(request.argument, error);
}

std::string answerRnfr(DemoRequest& request) {
    request.client.renameFrom.reset();
    const TreePlace place = request.world.tree.find(request.viewer, request.argument, false);
    if (place.error != TreeError::none) {
        return treeReply(request.argument, place.error);
    }
    request.client.renameFrom = request.argument;
    return reply(350, "File or directory exists, ready for destination name.");
}

std::string answerRnto(DemoRequest& request) {
    if (!request.client.renameFrom) {
        return reply(503, "Bad sequence of commands: RNFR comes first.");
    }
    const std::string from = *request.client.renameFrom;
    request.client.renameFrom.reset();
    const TreeError error = request.world.tree.rename(request.viewer, from, request.argument);
    return error == TreeError::none ? reply(250, "RNTO command successful")
                                    : treeReply(request.argument, error);
}

constexpr std::array commands = {
    DemoCommand{.verb = "CWD", .answer = answerCwd, .syntax = "<path>"},
    DemoCommand{.verb = "CDUP", .answer = answerCdup, .argument = Argument::optional},
    DemoCommand{.verb = "PWD", .answer = answerPwd, .argument = Argument::optional},
    DemoCommand{.verb = "STAT", .answer = answerStat, .argument = Argument::optional},
    DemoCommand{.verb = "MKD", .answer = answerMkd, .syntax = "<path>"},
    DemoCommand{.verb = "RMD", .answer = answerRmd, .syntax = "<path>"},
    DemoCommand{.verb = "DELE", .answer = answerDele, .syntax = "<path>"},
    DemoCommand{.verb = "RNFR", .answer = answerRnfr, .syntax = "<path>"},
    DemoCommand{.verb = "RNTO", .answer = answerRnto, .syntax = "<path>"},
    DemoCommand{.verb = "XCWD", .answer = answerCwd, .syntax = "<path>"},
    DemoCommand{.verb = "XPWD", .answer = answerPwd, .argument = Argument::optional},
    DemoCommand{.verb = "XMKD", .answer = answerMkd, .syntax = "<path>"},
    DemoCommand{.verb = "XRMD", .answer = answerRmd, .syntax = "<path>"},
};

} // namespace

std::span<const DemoCommand> fileCommands() {
    return commands;
}

} // namespace corvel
