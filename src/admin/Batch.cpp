#include "admin/Batch.h"

#include "common/Text.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace corvel {

namespace {

// What the batch sends for each user, with %user in the place of the name. The texts of the boxes may hold
// %user themselves, which only the free command replaces: so the two are kept apart.
struct LinePattern {
    std::string sEnd;     // what follows "site change NAME"
    bool bIsFree = false; // sEnd is the whole line
};

std::vector<LinePattern> linePatterns(const BatchForm& form) {
    std::vector<LinePattern> patterns;
    const auto addWhen = [&](bool isTicked, std::string end) {
        if (isTicked) {
            patterns.push_back({std::move(end)});
        }
    };
    addWhen(form.chkBatchFlags, " flags " + form.txtBatchFlags);
    for (std::size_t i = 0; i < loginServices.size(); ++i) {
        const std::string& logins = form.txtBatchLogins[i];
        addWhen(form.chkBatchLogins && !logins.empty(), (" logins " + logins + " ").append(loginServices[i]));
    }
    addWhen(form.chkBatchHomePath, " homedir " + form.txtBatchHomePath);
    addWhen(form.chkBatchVFS, " vfsfile " + form.txtBatchVFS);
    addWhen(form.chkBatchTagLine, " tagline " + form.txtBatchTagline);
    addWhen(form.chkBatchSpeed, " speedlimits " + form.txtBatchSpeedDn + " " + form.txtBatchSpeedUp);
    if (form.chkBatchCommand) {
        patterns.push_back({form.txtBatchCommand, true});
    }
    return patterns;
}

void appendLine(std::string& lines, const LinePattern& pattern, std::string_view userName) {
    if (pattern.bIsFree) {
        lines += replaceAll(pattern.sEnd, "%user", userName);
    } else {
        lines.append("site change ").append(userName).append(pattern.sEnd);
    }
    lines += lineEnd;
}

} // namespace

std::optional<CommandSequence> batchSequence(const BatchForm& form,
                                             std::span<const std::string_view> userNames) {
    const std::vector<LinePattern> patterns = linePatterns(form);
    std::string lines;
    for (const std::string_view userName : userNames) {
        for (const LinePattern& pattern : patterns) {
            appendLine(lines, pattern, userName);
        }
    }
    if (lines.empty()) {
        return std::nullopt;
    }
    return CommandSequence{"-------------[ BEGIN ]-[ BATCH COMMAND ]-------------",
                           LogKind::commandResults,
                           std::move(lines),
                           Command{"NOOP", true, handler::batch, 0},
                           "batch over " + counted(userNames.size(), "user"),
                           {userNames.begin(), userNames.end()}};
}

std::string batchProgressText(std::size_t lineCount, std::size_t linesLeft) {
    return std::to_string(lineCount - std::min(linesLeft, lineCount)) + " of " + std::to_string(lineCount);
}

std::string batchPlanText(const BatchForm& form, std::size_t userCount) {
    const std::vector<LinePattern> patterns = linePatterns(form);
    const auto commands = static_cast<std::size_t>(std::ranges::count_if(
        patterns, [](const LinePattern& pattern) { return !pattern.bIsFree || !pattern.sEnd.empty(); }));
    return counted(userCount, "user") + ", " + counted(userCount * commands, "command");
}

std::string timeLeftText(std::size_t done, std::size_t lineCount, std::int64_t milliseconds) {
    if (done == 0 || done >= lineCount) {
        return {};
    }
    const double each = static_cast<double>(milliseconds) / static_cast<double>(done);
    const double left = each * static_cast<double>(lineCount - done) / 1000;
    const auto seconds = std::max<std::int64_t>(std::llround(left), 1);
    constexpr std::int64_t minute = 60;
    return "about " +
           (seconds < 2 * minute     ? std::to_string(seconds) + " s"
            : seconds < 120 * minute ? std::to_string((seconds + minute - 1) / minute) + " min"
                                     : std::to_string(seconds / (60 * minute)) + " h") +
           " left";
}

} // namespace corvel
