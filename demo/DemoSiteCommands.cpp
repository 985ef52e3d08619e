#include "common/Text.h"
#include "demo/DemoCommands.h"
#include "demo/DemoListing.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace corvel {

namespace {

constexpr std::string_view nukedPrefix = "NUKED-";

std::string answerChmod(DemoRequest& request) {
    const auto [digits, path] = cutWord(request.argument);
    unsigned mode = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), mode, 8);
    const bool isMode = error == std::errc() && end == digits.data() + digits.size() && mode <= 07777U;
    if (!isMode || path.empty()) {
        return syntaxReply(request);
    }
    const TreeError failure = request.world.tree.changeMode(request.viewer, path, mode);
    return failure == TreeError::none ? reply(200, "SITE CHMOD command successful")
                                      : treeReply(path, failure);
}

struct QuotedPath {
    std::string_view path;
    std::string_view rest; // what the second pair of quotes held
    bool hasRest = false;
};

// A path in double quotes, perhaps followed by a second text in double quotes; or a bare path. The path may
// hold quotes itself, so the last closing and opening quote with a blank between is where it ends.
QuotedPath readQuoted(std::string_view text) {
    if (text.size() < 2 || !text.starts_with('"') || !text.ends_with('"')) {
        return {.path = text, .rest = {}};
    }
    text = text.substr(1, text.size() - 2);
    const std::size_t middle = text.rfind("\" \"");
    if (middle == std::string_view::npos) {
        return {.path = text, .rest = {}};
    }
    return {.path = text.substr(0, middle), .rest = text.substr(middle + 3), .hasRest = true};
}

std::string hideDirectory(DemoRequest& request, TreeNode& directory, std::string_view hidingWords) {
    const Problem problem = hidingProblem(request.world.accounts, hidingWords);
    if (problem.empty()) {
        directory.hiddenText = trim(hidingWords);
    }
    return changeReply(problem, {"CHATTR command successful"});
}

// "+h" and a directory asks whom it is shown to, with a second text sets that; "-h" shows it to everybody
// again.
std::string answerChattr(DemoRequest& request) {
    const auto [option, text] = cutWord(request.argument);
    const QuotedPath quoted = readQuoted(text);
    const std::string wanted = toLower(option);
    if ((wanted != "+h" && wanted != "-h") || quoted.path.empty()) {
        return syntaxReply(request);
    }
    const TreePlace place = request.world.tree.enter(request.viewer, quoted.path);
    if (place.error != TreeError::none) {
        return treeReply(quoted.path, place.error);
    }
    if (wanted == "-h") {
        place.node->hiddenText.clear();
        return reply(200, "CHATTR command successful");
    }
    if (quoted.hasRest) {
        return hideDirectory(request, *place.node, quoted.rest);
    }
    const std::string& current = place.node->hiddenText;
    return longReply(200, concat({"CHATTR: ", current.empty() ? "<not set>" : current}), "",
                     "CHATTR command successful");
}

struct NukeOrder {
    std::string_view path;
    std::string_view multiplier;
    std::string_view reason;
};

// A path, a multiplier and a reason. The path is in quotes, or as many words as name a directory.
NukeOrder readNuke(const DemoRequest& request) {
    const std::string_view text = request.argument;
    const std::size_t close = text.starts_with('"') ? text.find("\" ", 1) : std::string_view::npos;
    if (close != std::string_view::npos) {
        const auto [multiplier, reason] = cutWord(text.substr(close + 2));
        return {.path = text.substr(1, close - 1), .multiplier = multiplier, .reason = reason};
    }
    std::size_t blank = text.find(' ');
    for (std::size_t at = blank; at != std::string_view::npos; at = text.find(' ', at + 1)) {
        if (request.world.tree.find(request.viewer, text.substr(0, at), false).error == TreeError::none) {
            blank = at;
        }
    }
    if (blank == std::string_view::npos) {
        return {.path = text, .multiplier = {}, .reason = {}};
    }
    const auto [multiplier, reason] = cutWord(text.substr(blank + 1));
    return {.path = text.substr(0, blank), .multiplier = multiplier, .reason = reason};
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
        return syntaxReply(request);
    }
    DemoTree& tree = request.world.tree;
    const TreePlace place = tree.enter(request.viewer, order.path);
    if (place.error != TreeError::none) {
        return treeReply(order.path, place.error);
    }
    const std::size_t nameStart = place.path.rfind('/') + 1;
    if (std::string_view(place.path).substr(nameStart).starts_with(nukedPrefix)) {
        return reply(550, {order.path, " is nuked already."});
    }
    const std::string owner = place.node->owner;
    const std::int64_t loss = kilobytesIn(*place.node) * *multiplier;
    std::string newPath = place.path;
    newPath.insert(nameStart, nukedPrefix);
    const TreeError error = tree.rename(request.viewer, place.path, newPath);
    if (error != TreeError::none) {
        return treeReply(order.path, error);
    }
    request.world.accounts.takeCredits(owner, loss);
    return longReply(200, concat({"NUKE of ", order.path, ": ", order.reason}),
                     concat({"200- ", owner, " loses ", std::to_string(loss), " kB.\r\n"}),
                     "NUKE command successful");
}

std::string answerConfig(DemoRequest& request) {
    return toUpper(request.argument) == "REHASH" ? reply(200, "Configuration read again.")
                                                 : syntaxReply(request);
}

std::string answerSiteHelp(DemoRequest&) {
    const std::array tables = {siteCommands(), accountCommands()};
    return helpReply(tables, "These SITE commands are understood:");
}

std::string answerExtension(DemoRequest& request) {
    const std::array tables = {extensionCommands()};
    return dispatch(tables, request, request.argument, "SITE CORVELEXT ");
}

constexpr std::array commands = {
    DemoCommand{.verb = "CHMOD", .answer = answerChmod, .syntax = "<octal mode> <path>"},
    DemoCommand{.verb = "HELP", .answer = answerSiteHelp, .argument = Argument::optional},
    DemoCommand{.verb = "CHATTR",
                .answer = answerChattr,
                .whoMay = WhoMay::masters,
                .syntax = "+h|-h \"<directory>\" [\"<flags> -<user> =<group>...\"]"},
    DemoCommand{.verb = "NUKE",
                .answer = answerNuke,
                .whoMay = WhoMay::masters,
                .syntax = "<directory> <multiplier, 1 to 100> <reason>"},
    DemoCommand{.verb = "CONFIG", .answer = answerConfig, .whoMay = WhoMay::masters, .syntax = "REHASH"},
    DemoCommand{.verb = "CORVELEXT", .answer = answerExtension, .syntax = "<command>"},
};

} // namespace

std::span<const DemoCommand> siteCommands() {
    return commands;
}

} // namespace corvel
