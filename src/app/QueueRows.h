#pragma once

#include "app/Outbox.h"
#include "config/Settings.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvel {

enum class QueueColumn { what, state, time, took };

// A site's jobs as the rows of a list: what runs, what waits, and then what is over, the newest first. A job
// of several commands has a row of its own and one for each of them below it.
class QueueRows {
  public:
    QueueRows() = default;
    QueueRows(std::vector<JobHandle> open, const Journal& journal);

    struct Place {
        const JobRecord* job = nullptr;
        std::optional<std::size_t> command = {}; // none: the job's own row
    };
    int count() const { return count_; }
    Place at(int row) const;
    // The row of the job itself, -1 where it has none.
    int rowOf(std::uint64_t job) const;

    // UTF-8. settings: how commands are shown.
    std::string text(int row, QueueColumn column, const Settings& settings) const;

  private:
    std::vector<JobHandle> jobs_;
    std::vector<int> starts_; // the row of each
    int count_ = 0;
};

} // namespace corvel
