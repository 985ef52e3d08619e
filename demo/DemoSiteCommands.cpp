#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>

namespace corvel {

namespace {

constexpr std::string_view nukedPrefix = "NUKED-";

std::string answerChmod(DemoRequest& request) {
    const auto [digits, path] = cutWord(request.argument);
    const auto mode = numberWithin(digits, 0, 07777, 8);
    if (!mode || path.empty()) {
        refuseSyntax(request);
    }
    request.treePath = path;
    request.world.tree.changeMode(request.viewer, path, static_cast<unsigned>(*mode));
    return reply(200, {"SITE CHMOD command successful"});
}

struct QuotedPath {
    std::string_view path;
    std::optional<std::string_view> rest = {}; // what the second pair of quotes held
};

// A path in double quotes, perhaps followed by a second text in double quotes; or a bare path. The path may
// hold quotes itself, so the last closing and opening quote with a blank between is where it ends.
QuotedPath readQuoted(std::string_view text) {
    if (text.size() < 2 || !text.starts_with('"') || !text.ends_with('"')) {
        return {text};
    }
    text = text.substr(1, text.size() - 2);
    const std::size_t middle = text.rfind("\" \"");
    return middle == std::string_view::npos ? QuotedPath{text}
                                            : QuotedPath{text.substr(0, middle), text.substr(middle + 3)};
}

// Refuses words that say nothing that can be: none at all, an unknown user or group, bad flags.
void checkHiding(DemoAccounts& accounts, std::string_view hidingWords) {
    const std::vector<std::string_view> parts = words(hidingWords);
    for (const std::string_view part : parts) {
        if (part.starts_with('-')) {
            accounts.user(part.substr(1));
        } else if (part.starts_with('=')) {
            accounts.group(part.substr(1));
        } else if (!areFlags(part)) {
            refuse({"'", part, "' are no flags."});
        }
    }
    if (parts.empty()) {
        refuse({"Nobody is named to show it to."});
    }
}

// "+h" and a directory asks whom it is shown to, with a second text sets that; "-h" shows it to everybody
// again.
std::string answerChattr(DemoRequest& request) {
    const auto [option, text] = cutWord(request.argument);
    const QuotedPath quoted = readQuoted(text);
    const std::string wanted = toLower(option);
    if ((wanted != "+h" && wanted != "-h") || quoted.path.empty()) {
        refuseSyntax(request);
    }
    request.treePath = quoted.path;
    std::string& hiddenText = request.world.tree.enter(request.viewer, quoted.path).node->hiddenText;
    constexpr std::string_view done = "CHATTR command successful";
    if (wanted == "+h" && !quoted.rest) {
        return longReply(200, concat({"CHATTR: ", hiddenText.empty() ? "<not set>" : hiddenText}), "", done);
    }
    if (wanted == "+h") {
        checkHiding(request.world.accounts, *quoted.rest);
    }
    hiddenText = wanted == "+h" ? trim(*quoted.rest) : "";
    return reply(200, {done});
}

struct NukeOrder {
    std::string_view path;
    std::string_view multiplier = {};
    std::string_view reason = {};
};

NukeOrder nukeOrder(std::string_view path, std::string_view rest) {
    const auto [multiplier, reason] = cutWord(rest);
    return {path, multiplier, reason};
}

bool isThere(const DemoRequest& request, std::string_view path) {
    try {
        request.world.tree.find(request.viewer, path, false);
        return true;
    } catch (const TreeError&) {
        return false;
    }
}

// A path, a multiplier and a reason. The path is in quotes, or as many words as name a directory.
NukeOrder readNuke(const DemoRequest& request) {
    const std::string_view text = request.argument;
    const std::size_t close = text.starts_with('"') ? text.find("\" ", 1) : std::string_view::npos;
    if (close != std::string_view::npos) {
        return nukeOrder(text.substr(1, close - 1), text.substr(close + 2));
    }
    std::size_t blank = text.find(' ');
    for (std::size_t at = blank; at != std::string_view::npos; at = text.find(' ', at + 1)) {
        if (isThere(request, text.substr(0, at))) {
            blank = at;
        }
    }
    return blank == std::string_view::npos ? NukeOrder{text}
                                           : nukeOrder(text.substr(0, blank), text.substr(blank + 1));
}

std::int64_t kilobytesIn(const TreeNode& directory) {
    std::uint64_t bytes = 0;
    for (const auto& [name, child] : directory.children) {
        bytes += child->type == '-' ? child->size : 0;
    }
    return static_cast<std::int64_t>(bytes / 1024);
}

// Marks a directory as unwanted: it gets another name, and its owner loses its size times the multiplier.
std::string answerNuke(DemoRequest& request) {
    const NukeOrder order = readNuke(request);
    const auto multiplier = numberWithin(order.multiplier, 1, 100);
    if (!multiplier || trim(order.reason).empty()) {
        refuseSyntax(request);
    }
    request.treePath = order.path;
    DemoTree& tree = request.world.tree;
    const TreePlace place = tree.enter(request.viewer, order.path);
    const std::size_t nameStart = place.path.rfind('/') + 1;
    if (place.path.compare(nameStart, nukedPrefix.size(), nukedPrefix) == 0) {
        refuse({order.path, " is nuked already."});
    }
    const std::string owner = place.node->owner;
    const std::int64_t loss = kilobytesIn(*place.node) * *multiplier;
    std::string newPath = place.path;
    newPath.insert(nameStart, nukedPrefix);
    tree.rename(request.viewer, place.path, newPath);
    DemoAccounts& accounts = request.world.accounts;
    if (accounts.findUser(owner) != nullptr) {
        accounts.user(owner).credits.front() -= loss;
    }
    return longReply(200, concat({"NUKE of ", order.path, ": ", order.reason}),
                     concat({"200- ", owner, " loses ", std::to_string(loss), " kB.\r\n"}),
                     "NUKE command successful");
}

std::string answerConfig(DemoRequest& request) {
    if (toUpper(request.argument) != "REHASH") {
        refuseSyntax(request);
    }
    return reply(200, {"Configuration read again."});
}

std::string answerExtension(DemoRequest& request) {
    return dispatch({extensionCommands}, request, request.argument, "SITE CORVELEXT ");
}

constexpr std::array siteTable = {
    DemoCommand{"CHMOD", answerChmod, WhoMay::users, "<octal mode> <path>"},
    DemoCommand{"HELP", answerSiteHelp},
    DemoCommand{"CHATTR", answerChattr, WhoMay::masters,
                "+h|-h \"<directory>\" [\"<flags> -<user> =<group>...\"]"},
    DemoCommand{"NUKE", answerNuke, WhoMay::masters, "<directory> <multiplier, 1 to 100> <reason>"},
    DemoCommand{"CONFIG", answerConfig, WhoMay::masters, "REHASH"},
    DemoCommand{"CORVELEXT", answerExtension, WhoMay::users, "<command>"},
};

} // namespace

constinit const DemoTable siteCommands = siteTable;

bool isShownTo(const DemoAccounts& accounts, const DemoUser& user, const TreeNode& directory) {
    if (directory.hiddenText.empty() || directory.owner == user.name || user.isMaster()) {
        return true;
    }
    const std::vector<std::string> groups = accounts.groupNames(user);
    return std::ranges::any_of(words(directory.hiddenText), [&](std::string_view part) {
        const std::string_view name = part.substr(1);
        return part.starts_with('-')   ? name == user.name
               : part.starts_with('=') ? std::ranges::find(groups, name) != groups.end()
                                       : user.flags.find_first_of(part) != std::string::npos;
    });
}

} // namespace corvel
