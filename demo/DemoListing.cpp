#include "demo/DemoListing.h"

#include "common/Text.h"
#include "demo/DemoProperties.h"
#include "demo/DemoWords.h"

#include <algorithm>

namespace corvel {

namespace {

void appendLeft(std::string& line, std::string_view text, std::size_t width) {
    line.append(text);
    line.append(width - std::min(width, text.size()), ' ');
}

void appendRight(std::string& line, std::string_view text, std::size_t width) {
    line.append(width - std::min(width, text.size()), ' ');
    line.append(text);
}

void appendLine(std::string& lines, const TreeNode& node, std::string_view name) {
    lines += accessText(node);
    lines += ' ';
    appendRight(lines, std::to_string(node.type == 'd' ? node.directoryCount + 2 : 1), 3);
    lines += ' ';
    appendLeft(lines, node.owner, 8);
    lines += ' ';
    appendLeft(lines, node.group, 8);
    lines += ' ';
    appendRight(lines, std::to_string(node.type == 'l' ? node.target.size() : node.size), 10);
    lines += ' ';
    lines += node.date;
    lines += ' ';
    lines += name;
    if (node.type == 'l') {
        lines.append(" -> ").append(node.target);
    }
}

} // namespace

std::string accessText(const TreeNode& node) {
    std::string text(10, '-');
    text[0] = node.type;
    for (std::size_t i = 0; i < 9; ++i) {
        if ((node.mode >> (8 - i) & 1U) != 0) {
            text[i + 1] = "rwx"[i % 3];
        }
    }
    // Set-user, set-group and sticky share the column of the execute bit; a capital says that it is off.
    static constexpr std::string_view special = "sst";
    static constexpr std::string_view specialAlone = "SST";
    for (std::size_t i = 0; i < 3; ++i) {
        if ((node.mode >> (11 - i) & 1U) != 0) {
            char& column = text[3 * i + 3];
            column = column == 'x' ? special[i] : specialAlone[i];
        }
    }
    return text;
}

std::string listingLine(const TreeNode& node, std::string_view name) {
    std::string line;
    appendLine(line, node, name);
    return line;
}

std::string directoryLines(const TreeNode& directory, const TreeNode& parent, bool withDots,
                           const ListingFilter& isShown) {
    std::string lines;
    if (withDots) {
        appendLine(lines, directory, ".");
        lines += lineEnd;
        appendLine(lines, parent, "..");
        lines += lineEnd;
    }
    for (const auto& [name, child] : directory.children) {
        if ((withDots || !name.starts_with('.')) && isShown(*child)) {
            appendLine(lines, *child, name);
            lines += lineEnd;
        }
    }
    return lines;
}

Problem hidingProblem(const DemoAccounts& accounts, std::string_view hidingWords) {
    const std::vector<std::string_view> parts = words(hidingWords);
    for (const std::string_view part : parts) {
        const std::string_view name = part.substr(1);
        if (part.starts_with('-') && accounts.findUser(name) == nullptr) {
            return concat({"User '", name, "' does not exist."});
        }
        if (part.starts_with('=') && accounts.findGroup(name) == nullptr) {
            return concat({"Group '", name, "' does not exist."});
        }
        if (!part.starts_with('-') && !part.starts_with('=') && !areFlags(part)) {
            return concat({"'", part, "' are no flags."});
        }
    }
    return parts.empty() ? "Nobody is named to show it to." : "";
}

bool isShownTo(const DemoAccounts& accounts, const DemoUser& user, const TreeNode& directory) {
    if (directory.hiddenText.empty() || directory.owner == user.name ||
        user.flags.find('M') != std::string::npos) {
        return true;
    }
    const std::vector<std::string> groups = accounts.groupNames(user);
    const std::vector<std::string_view> parts = words(directory.hiddenText);
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) {
        const std::string_view name = part.substr(1);
        if (part.starts_with('-')) {
            return name == user.name;
        }
        if (part.starts_with('=')) {
            return std::find(groups.begin(), groups.end(), name) != groups.end();
        }
        return user.flags.find_first_of(part) != std::string::npos;
    });
}

} // namespace corvel
