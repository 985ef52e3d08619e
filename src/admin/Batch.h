#pragma once

#include "admin/AdminForms.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvel {

// The batch panel: one member for each of its controls. A check box decides whether the boxes beside it
// count.
struct BatchForm {
    bool chkBatchFlags = false;
    bool chkBatchLogins = false;
    bool chkBatchHomePath = false;
    bool chkBatchVFS = false;
    bool chkBatchTagLine = false;
    bool chkBatchSpeed = false;
    bool chkBatchCommand = false;
    std::string txtBatchFlags;
    std::array<std::string, 3> txtBatchLogins; // FTP, telnet, HTTP; an empty box is passed over
    std::string txtBatchHomePath;
    std::string txtBatchVFS;
    std::string txtBatchTagline;
    std::string txtBatchSpeedDn; // kB/s; -1 or 0 for no limit
    std::string txtBatchSpeedUp;
    std::string txtBatchCommand = "site change %user credits 45000";
};

// The batch for the users of these names, in their order; nothing where it would hold no line.
std::optional<CommandSequence> batchSequence(const BatchForm& form,
                                             std::span<const std::string_view> userNames);

// What would go out, "300 users, 600 commands", the NOOP that starts the batch aside.
std::string batchPlanText(const BatchForm& form, std::size_t userCount);

// How far a batch has come, "41 of 300", from the number of its lines and of those not yet sent.
std::string batchProgressText(std::size_t lineCount, std::size_t linesLeft);

// How long the rest of a batch takes that has come so far in so many milliseconds, "about 2 min left"; empty
// where it cannot be told yet, or nothing is left.
std::string timeLeftText(std::size_t done, std::size_t lineCount, std::int64_t milliseconds);

} // namespace corvel
