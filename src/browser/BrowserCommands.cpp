#include "browser/BrowserCommands.h"

#include "common/ShownText.h"
#include "common/Text.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr std::string_view root = "/";

Command quietCommand(std::string_view verb, std::string_view argument, std::int32_t iHandler) {
    std::string sCommand(verb);
    sCommand += argument;
    return {.sCommand = std::move(sCommand), .bQuiet = true, .iHandler = iHandler, .iTag = 0};
}

constexpr char quote = '"';
constexpr int fileActionDone = 250;
constexpr int pathCreated = 257;
constexpr int firstError = 400;

bool isCwd(std::string_view command) {
    return toUpper(command.substr(0, 4)) == "CWD ";
}

bool isPwd(std::string_view command) {
    return toUpper(command) == "PWD";
}

// The text behind an opening quote, up to the quote that closes it; nothing when none does.
std::optional<std::string> unquoted(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == quote) {
            const bool isDoubled = i + 1 < text.size() && text[i + 1] == quote;
            if (!isDoubled) {
                return result;
            }
            ++i;
        }
        result += text[i];
    }
    return std::nullopt;
}

// Between the first and the second double quote of line; nothing when it lacks two.
std::optional<std::string> quotedPath(std::string_view line) {
    const std::size_t open = line.find(quote);
    if (open == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = line.substr(open + 1);
    if (std::optional<std::string> path = unquoted(rest)) {
        return path;
    }
    const std::size_t close = rest.find(quote);
    return close == std::string_view::npos ? std::nullopt : std::optional<std::string>(rest.substr(0, close));
}

} // namespace

Command fileCommand(std::string_view verb, std::string_view argument) {
    return quietCommand(verb, argument, handler::browserFile);
}

std::vector<Command> changeDirectoryCommands(std::string_view directory) {
    return {quietCommand("CWD ", directory, handler::browser)};
}

std::vector<Command> mkdirButtonCommands() {
    return {listCommand(), quietCommand("NOOP", "", handler::console)};
}

std::optional<Deletion> deletion(const BrowserEntry& entry) {
    if (entry.type == BrowserEntryType::file) {
        return Deletion{"Are u sure u want to delete this file:", fileCommand("DELE ", entry.name)};
    }
    if (entry.type != BrowserEntryType::directory || entry.name == "..") {
        return std::nullopt;
    }
    return Deletion{"Are u sure u want to delete this directory:\r\n" + shownLine(entry.name),
                    fileCommand("RMD ", entry.name)};
}

Deletions deletions(const std::vector<const BrowserEntry*>& entries, std::string_view names) {
    Deletions wanted;
    for (const BrowserEntry* const entry : entries) {
        wanted.commands.push_back(deletion(*entry).value().command);
    }
    wanted.question.append("Are u sure u want to delete ")
        .append(entries.size() == 1 ? "this entry:" : "these " + std::to_string(entries.size()) + " entries:")
        .append(lineEnd)
        .append(names);
    return wanted;
}

std::vector<Command> makeDirectoryCommands(std::string_view name) {
    return name.empty() ? std::vector<Command>() : std::vector{fileCommand("MKD ", name)};
}

std::vector<Command> renameCommands(std::string_view oldName, std::string_view newName) {
    if (oldName == newName) {
        return {};
    }
    const Command from = fileCommand("RNFR ", oldName);
    const Command to = fileCommand("RNTO ", newName);
    if (!isOneLine(oldName)) {
        return {from};
    }
    return isOneLine(newName) ? std::vector{from, to} : std::vector{to};
}

std::optional<std::string> navigationTarget(std::string_view current, std::string_view name,
                                            std::string_view access) {
    const bool isLink = access.starts_with('l');
    if (name == "." || (!isLink && !access.starts_with('d'))) {
        return std::nullopt;
    }
    if (name == "..") {
        return current == root ? std::nullopt : std::optional(parentDirectory(current));
    }
    if (isLink && name.find(linkArrow, 1) != std::string_view::npos) {
        std::string_view target = name.substr(name.find(linkArrow) + linkArrow.size());
        if (target.size() > 1 && target.ends_with('/')) {
            target.remove_suffix(1);
        }
        return target.empty() ? std::nullopt : std::optional<std::string>(target);
    }
    return pathIn(current, name);
}

std::string pathIn(std::string_view directory, std::string_view name) {
    std::string path(directory == root ? std::string_view() : directory);
    path += '/';
    path += name;
    return path;
}

BrowserReply recogniseBrowserReply(std::string_view lastCommand, std::string_view first,
                                   std::string_view last, int code) {
    if (matchesPattern(toLower(last), "250 cwd command suc*es*ful*")) {
        return BrowserReply::cwdSucceeded;
    }
    if (matchesPattern(toLower(first), "257 * is current directory*")) {
        return BrowserReply::directory;
    }
    if (isCwd(lastCommand) && code == fileActionDone) {
        return BrowserReply::cwdSucceeded;
    }
    if (isPwd(lastCommand)) {
        const bool isNamed = code == pathCreated && quotedPath(first).has_value();
        return isNamed ? BrowserReply::directory : BrowserReply::directoryUnknown;
    }
    return BrowserReply::listing;
}

bool mayList(std::string_view lastCommand, int code) {
    return !isCwd(lastCommand) || code < firstError;
}

std::string parentDirectory(std::string_view directory) {
    const std::size_t slash = directory.rfind('/');
    const bool isTop = slash == std::string_view::npos || slash == 0;
    return std::string(isTop ? root : directory.substr(0, slash));
}

std::string_view nameInParent(std::string_view directory) {
    return directory.substr(std::min(directory.rfind('/') + 1, directory.size()));
}

std::string directoryOf(std::string_view line) {
    std::string directory = quotedPath(line).value_or(std::string(line));
    if (directory.size() > 1 && directory.ends_with('/')) {
        directory.pop_back();
    }
    return directory;
}

} // namespace corvel
