#include "net/ActivityRows.h"

#include "common/Numbers.h"
#include "common/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

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

} // namespace

// Reads one reply.
class WhoReader {
  public:
    WhoReader(ActivityRows& activity, ActivityCounters& counters) : activity_(activity), counters_(counters) {
        ++activity_.replies;
        counters_ = {};
    }

    // Takes a record's fields as the next row.
    void takeRecord(const Fields& fields, std::int32_t speed, double amount) {
        count(fields[statusField], speed);
        writeTexts(fields, speed, amount);
        if (next_ == activity_.rows.size()) {
            activity_.rows.emplace_back();
        }
        ActivityRow& row = activity_.rows[next_++];
        if (row.isStale_ || row.texts_ != texts_ || row.ends_ != ends_) {
            row.texts_ = texts_;
            row.ends_ = ends_;
            row.isStale_ = false;
            row.changedIn_ = activity_.replies;
        }
    }

    void markRestStale() {
        for (std::size_t i = next_; i < activity_.rows.size(); ++i) {
            ActivityRow& row = activity_.rows[i];
            if (!row.isStale_) {
                row.isStale_ = true;
                row.changedIn_ = activity_.replies;
            }
        }
    }

  private:
    void count(std::string_view status, std::int32_t speed) {
        if (const Action* const action = findAction(&Action::status, status)) {
            addWithin32Bits(counters_.*action->count, 1);
            if (action->speedSum != nullptr) {
                addWithin32Bits(counters_.*action->speedSum, speed);
            }
        }
    }

    // What the row reads from now on.
    void writeTexts(const Fields& fields, std::int32_t speed, double amount) {
        constexpr std::size_t cidWidth = 5;
        constexpr double bytesPerMegabyte = 1024.0 * 1024.0;
        texts_ = std::to_string(next_ + 1);
        for (std::size_t column = 0; column < activityColumnCount; ++column) {
            const std::string_view field = fields[shownFields[column]];
            switch (static_cast<ActivityCell>(column)) {
            case ActivityCell::icon:
                ends_[column] = 0;
                continue;
            case ActivityCell::position:
                break;
            case ActivityCell::cid:
                texts_.append(cidWidth - std::min(cidWidth, field.size()), ' ').append(field);
                break;
            case ActivityCell::action: {
                const Action* const action = findAction(&Action::status, field);
                texts_ += action == nullptr ? field : action->text;
                break;
            }
            case ActivityCell::speed:
                texts_.append(std::to_string(speed)).append(" kBps");
                break;
            case ActivityCell::transferred:
                texts_.append(numberText(amount / bytesPerMegabyte, 2)).append(" MB");
                break;
            default:
                texts_ += field;
                break;
            }
            ends_[column] = static_cast<std::uint32_t>(texts_.size());
        }
    }

    ActivityRows& activity_;
    ActivityCounters& counters_;
    std::size_t next_ = 0; // row
    std::string texts_;    // of the record in hand, as in its row
    decltype(ActivityRow::ends_) ends_{};
};

std::string_view ActivityRow::text(ActivityCell cell) const {
    const auto column = static_cast<std::size_t>(cell);
    if (column == 0) {
        return {};
    }
    if (isStale_ && column <= lastStaleColumn) {
        return "--";
    }
    return std::string_view(texts_).substr(ends_[column - 1], ends_[column] - ends_[column - 1]);
}

ActivityIcon ActivityRow::icon() const {
    const Action* const action = findAction(&Action::text, text(ActivityCell::action));
    return action == nullptr ? ActivityIcon::none : action->icon;
}

BadLines ParseWhoReply(std::span<const std::string_view> lines, ActivityRows& activity,
                       ActivityCounters& counters) {
    BadLines bad;
    WhoReader reader(activity, counters);
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
            reader.takeRecord(fields, *speed, amount);
        }
    }
    reader.markRestStale();
    return bad;
}

} // namespace corvel
