#include "app/QueueRows.h"

#include "admin/ShownCommand.h"
#include "common/ShownText.h"
#include "common/Text.h"
#include "net/StatusTexts.h"

#include <algorithm>

namespace corvel {

namespace {

std::string receiptText(const JobRecord& job) {
    using End = Receipt::End;
    switch (job.receipt.end) {
    case End::done:
        return "done";
    case End::refused:
        return std::to_string(job.refusals()) + " of " + std::to_string(job.commands.size()) + " refused";
    case End::notSent:
        return "not sent: the connection ended";
    case End::replaced:
        return "replaced by a newer one";
    case End::cancelled:
        return "cancelled";
    case End::unsendable:
        return "not sent: a line break or a NUL character is in a line";
    }
    return {};
}

std::string jobState(const JobRecord& job) {
    switch (job.state) {
    case JobRecord::State::waiting:
        return "waits";
    case JobRecord::State::running:
        return "runs, " + std::to_string(job.answers()) + " of " + std::to_string(job.commands.size());
    case JobRecord::State::over:
        return receiptText(job);
    }
    return {};
}

std::string commandText(const JobRecord& job, std::size_t place, QueueColumn column,
                        const Settings& settings) {
    const CommandRecord& command = job.commands[place];
    const bool isAnswered = command.code != 0;
    switch (column) {
    case QueueColumn::what:
        return "    " + shownLine(shownCommand(command.command, settings));
    case QueueColumn::state:
        return shownLine(answerText(job, place));
    case QueueColumn::time:
        return isAnswered ? *command.time : "";
    case QueueColumn::took:
        return isAnswered ? durationText(command.milliseconds) : "";
    }
    return {};
}

} // namespace

QueueRows::QueueRows(std::vector<JobHandle> open, const Journal& journal) : jobs_(std::move(open)) {
    const auto running = static_cast<std::ptrdiff_t>(jobs_.size());
    for (const std::deque<JobHandle>* const over : {&journal.batches, &journal.others, &journal.history}) {
        jobs_.insert(jobs_.end(), over->begin(), over->end());
    }
    std::ranges::sort(jobs_.begin() + running, jobs_.end(), std::ranges::greater(), &JobRecord::id);
    for (const JobHandle& job : jobs_) {
        starts_.push_back(count_);
        count_ += 1 + (job->commands.size() > 1 ? static_cast<int>(job->commands.size()) : 0);
    }
}

QueueRows::Place QueueRows::at(int row) const {
    const auto next = std::ranges::upper_bound(starts_, row);
    if (row < 0 || row >= count_) {
        return {};
    }
    const auto job = static_cast<std::size_t>(next - starts_.begin()) - 1;
    const int within = row - starts_[job];
    return {.job = jobs_[job].get(),
            .command = within == 0 ? std::nullopt : std::optional(static_cast<std::size_t>(within) - 1)};
}

int QueueRows::rowOf(std::uint64_t job) const {
    const auto found = std::ranges::find(jobs_, job, &JobRecord::id);
    return found == jobs_.end() ? -1 : starts_[static_cast<std::size_t>(found - jobs_.begin())];
}

std::string QueueRows::text(int row, QueueColumn column, const Settings& settings) const {
    const Place place = at(row);
    if (place.job == nullptr) {
        return {};
    }
    const JobRecord& job = *place.job;
    if (place.command) {
        return commandText(job, *place.command, column, settings);
    }
    const bool isOne = job.commands.size() == 1;
    switch (column) {
    case QueueColumn::what:
        return job.title + (isOne ? "" : ", " + counted(job.commands.size(), "command"));
    case QueueColumn::state:
        return isOne && job.commands[0].code != 0 ? commandText(job, 0, column, settings) : jobState(job);
    case QueueColumn::time:
        return isOne ? commandText(job, 0, column, settings) : job.begun;
    case QueueColumn::took:
        return isOne ? commandText(job, 0, column, settings) : "";
    }
    return {};
}

} // namespace corvel
