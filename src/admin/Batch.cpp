#include "admin/Batch.h"

#include "common/Text.h"

#include <algorithm>
#include <vector>

namespace corvel {

namespace {

constexpr std::array<std::string_view, 3> loginEnds = {" ftp", " telnet", " http"};

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
            patterns.push_back({std::move(end), false});
        }
    };
    addWhen(form.chkBatchFlags, " flags " + form.txtBatchFlags);
    for (std::size_t i = 0; i < loginEnds.size(); ++i) {
        const std::string& logins = form.txtBatchLogins[i];
        addWhen(form.chkBatchLogins && !logins.empty(), (" logins " + logins).append(loginEnds[i]));
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
    return CommandSequence{"-------------[ BEGIN ]-[ BATCH COMMAND ]-------------", LogKind::commandResults,
                           std::move(lines), Command{"NOOP", true, handler::batch, 0}};
}

std::string batchProgressText(std::size_t lineCount, std::size_t linesLeft) {
    return std::to_string(lineCount - std::min(linesLeft, lineCount)) + " of " + std::to_string(lineCount);
}

} // namespace corvel
