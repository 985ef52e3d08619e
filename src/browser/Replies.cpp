#include "browser/Replies.h"

#include "common/Text.h"

#include <optional>

namespace corvel {

namespace {

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

BrowserReply recogniseBrowserReply(std::string_view lastCommand, std::span<const std::string_view> lines,
                                   int code) {
    const std::string_view first = lines.empty() ? std::string_view() : lines.front();
    if (matchesPattern(toLower(lastLine(lines)), "250 cwd command suc*es*ful*")) {
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

std::span<const std::string_view> listingLines(std::string_view lastCommand,
                                               std::span<const std::string_view> lines, int code) {
    return isCwd(lastCommand) && code >= firstError ? lines.first(0) : lines;
}

std::string directoryOf(std::string_view line) {
    std::string directory = quotedPath(line).value_or(std::string(line));
    if (directory.size() > 1 && directory.ends_with('/')) {
        directory.pop_back();
    }
    return directory;
}

} // namespace corvel
