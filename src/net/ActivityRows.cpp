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

// The field that each column shows, the speed's and the amount's as numbers; the first two columns show none.
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
ActivityRow rowOf(const Fields& fields, std::size_t number, std::int32_t speed, double amount) {
    constexpr std::size_t cidWidth = 5;
    constexpr double bytesPerMegabyte = 1024.0 * 1024.0;
    ActivityRow row;
    for (std::size_t column = 0; column < activityColumnCount; ++column) {
        const std::string_view field = fields[shownFields[column]];
        switch (static_cast<ActivityCell>(column)) {
        case ActivityCell::icon:
            break;
        case ActivityCell::position:
            row.texts += std::to_string(number);
            break;
        case ActivityCell::cid:
            row.texts.append(cidWidth - std::min(cidWidth, field.size()), ' ').append(field);
            break;
        case ActivityCell::action: {
            const Action* const action = findAction(&Action::status, field);
            row.texts += action == nullptr ? field : action->text;
            break;
        }
        case ActivityCell::speed:
            row.texts.append(std::to_string(speed)).append(" kBps");
            break;
        case ActivityCell::transferred:
            row.texts.append(numberText(amount / bytesPerMegabyte, 2)).append(" MB");
            break;
        default:
            row.texts += field;
        }
        row.ends[column] = static_cast<std::uint32_t>(row.texts.size());
    }
    row.texts.shrink_to_fit();
    return row;
}

} // namespace

std::string_view ActivityRow::text(ActivityCell cell) const {
    const auto column = static_cast<std::size_t>(cell);
    if (isStale && column > 0 && column <= lastStaleColumn) {
        return "--";
    }
    const std::size_t start = column == 0 ? 0 : ends[column - 1];
    return std::string_view(texts).substr(start, ends[column] - start);
}

ActivityIcon ActivityRow::icon() const {
    const Action* const action = findAction(&Action::text, text(ActivityCell::action));
    return action == nullptr ? ActivityIcon::none : action->icon;
}

void WhoReader::read(std::string_view line) {
    ++lines_;
    Fields fields;
    if (!cutRecord(line, fields)) {
        return;
    }
    const std::optional<std::int32_t> speed = tryInt32(fields[speedField]);
    const double amount = leadingNumber(fields[amountField]);
    if (!speed) {
        bad_.note(lines_, fields[speedField], "32-bit number");
    } else if (!std::isfinite(amount)) {
        bad_.note(lines_, fields[amountField], "amount");
    } else {
        count(counters_, fields[statusField], *speed);
        if (next_ == mostConnections) {
            ++bad_.tooMany;
            return;
        }
        activity_->rows.resize(std::max(activity_->rows.size(), next_ + 1));
        ActivityRow& row = activity_->rows[next_++];
        ActivityRow read = rowOf(fields, next_, *speed, amount);
        if (row.isStale || row.texts != read.texts || row.ends != read.ends) {
            row = std::move(read);
            row.changedIn = activity_->replies + 1;
        }
    }
}

BadLines WhoReader::finish(ActivityCounters& counters) {
    ++activity_->replies;
    counters = counters_;
    for (ActivityRow& row : std::span(activity_->rows).subspan(next_)) {
        row.changedIn = row.isStale ? row.changedIn : activity_->replies;
        row.isStale = true;
    }
    return bad_;
}

BadLines ParseWhoReply(std::span<const std::string_view> lines, ActivityRows& activity,
                       ActivityCounters& counters) {
    WhoReader reader(activity);
    for (const std::string_view line : lines) {
        reader.read(line);
    }
    return reader.finish(counters);
}

} // namespace corvel
