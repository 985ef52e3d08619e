#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr unsigned readBit = 4;

// A path in double quotes, with the quotes in it doubled (RFC 959, appendix II).
std::string quotedPath(std::string_view path) {
    return concat({"\"", replaceAll(path, "\"", "\"\""), "\""});
}

std::string blanksFor(std::string_view text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ');
}

// The ten characters that open a listing line, such as "drwxr-xr-x".
std::string accessText(const TreeNode& node) {
    std::string text(10, '-');
    text[0] = node.type;
    for (std::size_t i = 0; i < 9; ++i) {
        if ((node.mode >> (8 - i) & 1U) != 0) {
            text[i + 1] = "rwx"[i % 3];
        }
    }
    // Set-user, set-group and sticky share the column of the execute bit; a capital says that it is off.
    for (std::size_t i = 0; i < 3; ++i) {
        if ((node.mode >> (11 - i) & 1U) != 0) {
            char& column = text[3 * i + 3];
            column = column == 'x' ? "sst"[i] : "SST"[i];
        }
    }
    return text;
}

// One long-format listing line for node under the given name, ended by CR LF: access, link count, owner,
// group, size and date with exactly one blank between the date's fields, then the name, and a link's target
// behind " -> ".
std::string listingLine(const TreeNode& node, std::string_view name) {
    const bool isLink = node.type == 'l';
    const std::string links = std::to_string(node.type == 'd' ? node.directoryCount + 2 : 1);
    const std::string size = std::to_string(isLink ? node.target.size() : node.size);
    return concat({accessText(node),
                   " ",
                   blanksFor(links, 3),
                   links,
                   " ",
                   node.owner,
                   blanksFor(node.owner, 8),
                   " ",
                   node.group,
                   blanksFor(node.group, 8),
                   " ",
                   blanksFor(size, 10),
                   size,
                   " ",
                   node.date,
                   " ",
                   name,
                   isLink ? " -> " : "",
                   node.target,
                   lineEnd});
}

// The lines for a directory's content: "." and ".." first, then the children by name. withDots: also the
// names that begin with a dot, those two included.
std::string directoryLines(const TreePlace& place, const DemoRequest& request, bool withDots) {
    std::string lines;
    if (withDots) {
        lines = listingLine(*place.node, ".") + listingLine(*place.parent, "..");
    }
    for (const auto& [name, child] : place.node->children) {
        if ((withDots || !name.starts_with('.')) &&
            isShownTo(request.world.accounts, *request.user, *child)) {
            lines += listingLine(*child, name);
        }
    }
    return lines;
}

std::string enterDirectory(DemoRequest& request, std::string_view path) {
    request.treePath = path;
    request.client.directory = request.world.tree.enter(request.viewer, path).path;
    return reply(250, {"CWD command successful"});
}

std::string answerCwd(DemoRequest& request) {
    return enterDirectory(request, request.argument);
}

std::string answerCdup(DemoRequest& request) {
    return enterDirectory(request, "..");
}

std::string answerPwd(DemoRequest& request) {
    return reply(257, {quotedPath(request.client.directory), " is current directory."});
}

// A listing over the control connection. An argument's first word of a dash and letters are options, of which
// "a" counts: names that begin with a dot are shown too.
std::string answerStat(DemoRequest& request) {
    if (request.argument.empty()) {
        return longReply(211, "Demo server status:",
                         " Logged in as " + request.viewer.user + "\r\n TYPE: ASCII, no data connection\r\n",
                         "End of status");
    }
    std::string_view options;
    if (request.argument.starts_with("-")) {
        const std::size_t blank = request.argument.find(' ');
        options = request.argument.substr(0, blank);
        request.treePath = blank == std::string_view::npos ? "." : request.argument.substr(blank + 1);
    }
    const TreePlace place = request.world.tree.find(request.viewer, request.treePath, true);
    std::string lines;
    if (place.node->type != 'd') {
        lines = listingLine(*place.node, request.treePath);
    } else {
        demand(request.viewer, *place.node, readBit);
        lines = directoryLines(place, request, options.find('a') != std::string_view::npos);
    }
    return longReply(211, "status of " + place.path + ":", lines, "End of Status");
}

std::string answerMkd(DemoRequest& request) {
    const std::string path = request.world.tree.makeDirectory(request.viewer, request.argument);
    return reply(257, {quotedPath(path), " directory created."});
}

std::string answerRmd(DemoRequest& request) {
    request.world.tree.remove(request.viewer, request.argument, true);
    return reply(250, {"RMD command successful"});
}

std::string answerDele(DemoRequest& request) {
    request.world.tree.remove(request.viewer, request.argument, false);
    return reply(250, {"DELE command successful"});
}

std::string answerRnfr(DemoRequest& request) {
    request.client.renameFrom.reset();
    request.world.tree.find(request.viewer, request.argument, false);
    request.client.renameFrom = request.argument;
    return reply(350, {"File or directory exists, ready for destination name."});
}

std::string answerRnto(DemoRequest& request) {
    const std::optional<std::string> from = std::exchange(request.client.renameFrom, std::nullopt);
    if (!from) {
        return reply(503, {"Bad sequence of commands: RNFR comes first."});
    }
    request.world.tree.rename(request.viewer, *from, request.argument);
    return reply(250, {"RNTO command successful"});
}

constexpr std::array fileTable = {
    DemoCommand{"CWD", answerCwd, WhoMay::users, "<path>"},
    DemoCommand{"CDUP", answerCdup},
    DemoCommand{"PWD", answerPwd},
    DemoCommand{"STAT", answerStat},
    DemoCommand{"MKD", answerMkd, WhoMay::users, "<path>"},
    DemoCommand{"RMD", answerRmd, WhoMay::users, "<path>"},
    DemoCommand{"DELE", answerDele, WhoMay::users, "<path>"},
    DemoCommand{"RNFR", answerRnfr, WhoMay::users, "<path>"},
    DemoCommand{"RNTO", answerRnto, WhoMay::users, "<path>"},
    DemoCommand{"XCWD", answerCwd, WhoMay::users, "<path>"},
    DemoCommand{"XPWD", answerPwd},
    DemoCommand{"XMKD", answerMkd, WhoMay::users, "<path>"},
    DemoCommand{"XRMD", answerRmd, WhoMay::users, "<path>"},
};

} // namespace

constinit const DemoTable fileCommands = fileTable;

} // namespace corvel
