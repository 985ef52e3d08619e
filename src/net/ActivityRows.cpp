#include "net/ActivityRows.h"

#include "common/Numbers.h"
#include "common/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace corvel {

namespace {

// The fields of a record that are not shown as they came.
enum Field : std::size_t { cidField = 3, statusField = 15, amountField = 16, speedField = 17 };

constexpr std::size_t fieldCount = 18;
using Fields = std::array<std::string_view, fieldCount>;

// The field that each column shows; the first two columns show none.
constexpr std::array<std::size_t, activityColumnCount> shownFields = {
    0, 0, cidField, 1, 2, 5, 7, 6, 8, 4, statusField, speedField, 9, 12, 11, amountField, 13, 14};

constexpr std::size_t lastStaleColumn = static_cast<std::size_t>(ActivityCell::ip);

struct Action {
    std::string_view status;
    std::string_view text;
    ActivityIcon icon;
    std::int32_t ActivityCounters::*count;
    std::int32_t ActivityCounters::*speedSum; // null where the speed is not summed
};

constexpr std::array<Action, 4> actions = {{
    {"0", "idle", ActivityIcon::idle, &ActivityCounters::idlers, nullptr},
    {"3", "LIST", ActivityIcon::idle, &ActivityCounters::idlers, nullptr},
    {"1", "downloading", ActivityIcon::down, &ActivityCounters::downloaders,
     &ActivityCounters::downloadSpeed},
    {"2", "uploading", ActivityIcon::up, &ActivityCounters::uploaders, &ActivityCounters::uploadSpeed},
}};

const Action* findAction(std::string_view Action::*key, std::string_view wanted) {
    const auto found = std::ranges::find(actions, wanted, key);
    return found == actions.end() ? nullptr : found;
}

void addWithin32Bits(std::int32_t& sum, std::int32_t summand) {
    using Limits = std::numeric_limits<std::int32_t>;
    sum = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(std::int64_t{sum} + summand, Limits::min(), Limits::max()));
}

bool cutRecord(std::string_view line, Fields& fields) {
    return line.starts_with("200-cid") && cutLeadingFields(line, fields) && fields.front() == "200-cid";
}

void count(ActivityCounters& counters, std::string_view status, std::int32_t speed) {
    if (const Action* const action = findAction(&Action::status, status)) {
        addWithin32Bits(counters.*action->count, 1);
        if (action->speedSum != nullptr) {
            addWithin32Bits(counters.*action->speedSum, speed);
        }
    }
}

// What the row of a record reads. number: its place, from 1.
std::array<std::string, activityColumnCount> textsOf(const Fields& fields, std::size_t number,
                                                     std::int32_t speed, double amount) {
    constexpr std::size_t cidWidth = 5;
    constexpr double bytesPerMegabyte = 1024.0 * 1024.0;
    std::array<std::string, activityColumnCount> texts;
    const auto at = [&texts](ActivityCell cell) -> std::string& {
        return texts[static_cast<std::size_t>(cell)];
    };
    for (std::size_t column = firstMovableColumn; column < activityColumnCount; ++column) {
        texts[column] = fields[shownFields[column]];
    }
    const Action* const action = findAction(&Action::status, fields[statusField]);
    const std::string_view cid = fields[cidField];
    at(ActivityCell::position) = std::to_string(number);
    at(ActivityCell::cid).insert(0, cidWidth - std::min(cidWidth, cid.size()), ' ');
    at(ActivityCell::action) = action == nullptr ? fields[statusField] : action->text;
    at(ActivityCell::speed) = std::to_string(speed) + " kBps";
    at(ActivityCell::transferred) = numberText(amount / bytesPerMegabyte, 2) + " MB";
    return texts;
}

} // namespace

std::string_view ActivityRow::text(ActivityCell cell) const {
    const auto column = static_cast<std::size_t>(cell);
    return isStale && column > 0 && column <= lastStaleColumn ? std::string_view("--") : texts[column];
}

ActivityIcon ActivityRow::icon() const {
    const Action* const action = findAction(&Action::text, text(ActivityCell::action));
    return action == nullptr ? ActivityIcon::none : action->icon;
}

BadLines ParseWhoReply(std::span<const std::string_view> lines, ActivityRows& activity,
                       ActivityCounters& counters) {
    BadLines bad;
    ++activity.replies;
    counters = {};
    std::size_t next = 0; // row
    Fields fields;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!cutRecord(lines[i], fields)) {
            continue;
        }
        const std::optional<std::int32_t> speed = tryInt32(fields[speedField]);
        const double amount = leadingNumber(fields[amountField]);
        if (!speed) {
            bad.note(i + 1, fields[speedField], "32-bit number");
        } else if (!std::isfinite(amount)) {
            bad.note(i + 1, fields[amountField], "amount");
        } else {
            count(counters, fields[statusField], *speed);
            activity.rows.resize(std::max(activity.rows.size(), next + 1));
            ActivityRow& row = activity.rows[next++];
            std::array<std::string, activityColumnCount> texts = textsOf(fields, next, *speed, amount);
            if (row.isStale || row.texts != texts) {
                row = {.texts = std::move(texts), .changedIn = activity.replies};
            }
        }
    }
    for (ActivityRow& row : std::span(activity.rows).subspan(next)) {
        row.changedIn = row.isStale ? row.changedIn : activity.replies;
        row.isStale = true;
    }
    return bad;
}

} // namespace corvel
