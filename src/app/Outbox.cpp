#include "app/Outbox.h"

#include "admin/Batch.h"
#include "common/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvel {

namespace {

// Whether a job may begin on a connection in this state.
bool mayBegin(const SiteSession& session, const Job& job, bool isBatchRunning) {
    if (session.bLoggedIn) {
        return !isBatchRunning || !job.sequence;
    }
    return session.isGreeted && std::ranges::all_of(job.commands, [](const Command& command) {
               return command.iHandler == handler::console;
           });
}

std::string notSent(std::size_t commands) {
    return counted(commands, "command") + (commands == 1 ? " was" : " were") + " not sent";
}

} // namespace

Job jobOf(CommandSequence sequence) {
    Job job{.commands = {sequence.first},
            .title = std::move(sequence.sTitle),
            .accounts = std::move(sequence.accounts)};
    job.sequence = std::move(sequence);
    return job;
}

std::optional<std::string> Outbox::start(int site, Job job, Ended ended) {
    if (!isInEvent_ && !isFollowing_) {
        log_.tell(site, {});
    }
    std::erase_if(job.commands, [](const Command& command) { return command.sCommand.empty(); });
    const std::size_t commands = job.commands.size();
    auto record = std::make_shared<JobRecord>(jobs_ + 1, job);
    if (!std::ranges::all_of(job.commands, isOneLine, &Command::sCommand) ||
        !std::ranges::all_of(record->commands, isOneLine, &CommandRecord::command)) {
        if (record->isBatch) {
            keepUnsendable(site, std::move(record));
        }
        return std::string(notOneLine);
    }
    if (at(sites_, site).wSock->state() != SocketState::connected) {
        return "Command not sent: the site is not connected";
    }
    Box& box = boxes_[site];
    if (!job.wish.empty()) {
        const auto old =
            std::ranges::find(box.waiting, job.wish, [](const Started& waiting) { return waiting.job.wish; });
        if (old != box.waiting.end()) {
            old->receipt().end = Receipt::End::replaced;
            box.over.push_back(std::move(*old));
            box.waiting.erase(old);
        }
    }
    record->receipt.job = ++jobs_;
    record->receipt.commands = record->commands.size() + (record->isBatch ? commands : 0);
    box.waiting.push_back({.job = std::move(job), .ended = std::move(ended), .record = std::move(record)});
    views_.jobsChanged(site);
    if (!isInEvent_) {
        proceed(site);
    }
    return std::nullopt;
}

bool Outbox::startOrTell(int site, LogKind log, Job job, Ended ended) {
    const std::optional<std::string> problem = start(site, std::move(job), std::move(ended));
    if (problem) {
        log_.Log(site, log, *problem);
        log_.tell(site, *problem);
    }
    return !problem;
}

const Outbox::Box* Outbox::find(int site) const {
    const auto box = boxes_.find(site);
    return box == boxes_.end() ? nullptr : &box->second;
}

std::vector<JobHandle> Outbox::jobs(int site) const {
    std::vector<JobHandle> jobs;
    if (const Box* const box = find(site)) {
        for (const std::optional<Started>* const begun : {&box->running, &box->batch}) {
            if (*begun) {
                jobs.push_back((*begun)->record);
            }
        }
        for (const Started& waiting : box->waiting) {
            jobs.push_back(waiting.record);
        }
    }
    return jobs;
}

const Journal& Outbox::journal(int site) const {
    static const Journal nothing;
    const Box* const box = find(site);
    return box == nullptr ? nothing : box->journal;
}

bool Outbox::cancel(int site, std::uint64_t job) {
    Box& box = boxes_[site];
    const auto found =
        std::ranges::find(box.waiting, job, [](const Started& waiting) { return waiting.record->id; });
    if (found == box.waiting.end()) {
        return false;
    }
    std::vector<Started> taken;
    taken.push_back(std::move(*found));
    box.waiting.erase(found);
    takeBack(site, box, std::move(taken));
    return true;
}

std::size_t Outbox::cancelWaiting(int site) {
    Box& box = boxes_[site];
    std::vector<Started> taken(std::move_iterator(box.waiting.begin()),
                               std::move_iterator(box.waiting.end()));
    box.waiting.clear();
    return takeBack(site, box, std::move(taken));
}

// Ends jobs that nothing has gone out of, and says so in one line.
std::size_t Outbox::takeBack(int site, Box& box, std::vector<Started> jobs) {
    std::size_t commands = 0;
    const std::string what = jobs.size() == 1 ? jobs.front().record->title : counted(jobs.size(), "job");
    const std::size_t count = jobs.size();
    for (Started& job : jobs) {
        job.receipt().end = Receipt::End::cancelled;
        commands += job.record->commands.size();
        end(site, box, std::move(job));
    }
    if (count > 0) {
        log_.LogCommandResults(site, "cancelled: " + what + ", " + notSent(commands));
        if (!isInEvent_) {
            proceed(site);
        }
    }
    return count;
}

bool Outbox::stopBatch(int site) {
    Box& box = boxes_[site];
    std::optional<Started>& batch = box.batch ? box.batch : box.running;
    if (!batch || !batch->job.isBatch()) {
        return false;
    }
    batch->isStopping = true;
    views_.jobsChanged(site);
    return true;
}

bool Outbox::isStopping(int site) const {
    const Box* const box = find(site);
    return box != nullptr &&
           ((box->batch && box->batch->isStopping) || (box->running && box->running->isStopping));
}

bool Outbox::isWaiting(int site) const {
    const Box* const box = find(site);
    return box != nullptr && !box->waiting.empty();
}

JobHandle Outbox::runningBatch(int site) const {
    const Box* const box = find(site);
    if (box == nullptr) {
        return nullptr;
    }
    const std::optional<Started>& batch = box->batch ? box->batch : box->running;
    return batch && batch->job.isBatch() ? batch->record : nullptr;
}

std::string Outbox::batchProgress(int site) const {
    const JobHandle batch = runningBatch(site);
    return batch == nullptr
               ? std::string()
               : batchProgressText(batch->commands.size(), at(sites_, site).session.sBatchLines.size());
}

std::string Outbox::batchTimeLeft(int site) const {
    const JobHandle batch = runningBatch(site);
    return batch == nullptr ? std::string()
                            : timeLeftText(batch->answers(), batch->commands.size(),
                                           log_.clock().milliseconds() - batch->begunClock);
}

void Outbox::proceed(int site) {
    Box& box = boxes_[site];
    Site& target = at(sites_, site);
    if (readAnswers(target.session, box)) {
        views_.jobsChanged(site);
    }
    if (target.wSock->state() != SocketState::connected) {
        giveUp(site, box);
    }
    while (isChannelFree(site) && advance(site, box)) {
    }
    const bool wasFollowing = std::exchange(isFollowing_, true);
    for (const Started& started : std::exchange(box.over, {})) {
        if (started.ended) {
            started.ended(started.record->receipt);
        }
    }
    isFollowing_ = wasFollowing;
}

// Whether there were any.
bool Outbox::readAnswers(SiteSession& session, Box& box) {
    bool isAnswered = false;
    for (const Answer& answer : std::exchange(session.answers, {})) {
        const bool isLine = box.batch && answer.command.iHandler == handler::batch;
        std::optional<Started>& asked = isLine ? box.batch : box.running;
        if (!asked) {
            continue;
        }
        isAnswered = true;
        asked->record->answered(answer, asked->next);
        Receipt& receipt = asked->receipt();
        if (answer.code >= firstRefusal && receipt.end == Receipt::End::done) {
            receipt.end = Receipt::End::refused;
            receipt.refusedCommand = answer.command.sCommand;
            receipt.refusal = answer.lastLine;
        }
    }
    return isAnswered;
}

// One step on a free channel; false when there is nothing to do.
bool Outbox::advance(int site, Box& box) {
    if (box.running) {
        Started& running = *box.running;
        if (running.next < running.job.commands.size()) {
            do {
                channel_.SendCommand(site, running.job.commands[running.next++]);
            } while (running.job.isAtOnce && running.next < running.job.commands.size());
        } else if (running.job.isBatch()) {
            box.batch = std::exchange(box.running, std::nullopt);
            box.isGuestsTurn = true;
        } else {
            end(site, box, *std::exchange(box.running, std::nullopt));
        }
        return true;
    }
    if (!(box.batch && box.batch->isStopping) && beginNext(site, box)) {
        return true;
    }
    if (box.batch) {
        stepBatch(site, box);
        return true;
    }
    return false;
}

// Gives the floor to the first job that may have it now.
bool Outbox::beginNext(int site, Box& box) {
    SiteSession& session = at(sites_, site).session;
    const auto next = std::ranges::find_if(box.waiting, [&](const Started& waiting) {
        return mayBegin(session, waiting.job, box.batch.has_value());
    });
    if (next == box.waiting.end() || (box.batch && !box.isGuestsTurn)) {
        return false;
    }
    box.isGuestsTurn = false;
    box.running = std::move(*next);
    box.waiting.erase(next);
    JobRecord& record = *box.running->record;
    record.state = JobRecord::State::running;
    record.begun = log_.clock().timeOfDay();
    record.begunClock = log_.clock().milliseconds();
    if (const std::optional<CommandSequence>& sequence = box.running->job.sequence) {
        log_.Log(site, sequence->beginLog, sequence->sBegin);
        session.sBatchLines.clear();
        for (std::size_t i = record.isBatch ? 0 : 1; i < record.commands.size(); ++i) {
            session.sBatchLines.emplace_back(record.commands[i].command);
        }
    }
    return true;
}

void Outbox::stepBatch(int site, Box& box) {
    Started& batch = *box.batch;
    std::deque<std::string>& lines = at(sites_, site).session.sBatchLines;
    if (batch.isStopping && !lines.empty()) {
        const std::size_t answers = batch.record->answers();
        batch.receipt().end = Receipt::End::cancelled;
        batch.receipt().sent = batch.job.commands.size() + answers;
        log_.LogCommandResults(site,
                               "stopped after " + batchProgressText(answers + lines.size(), lines.size()));
        lines.clear();
    }
    if (channel_.SendNextBatchLine(site, handler::batch)) {
        box.isGuestsTurn = true;
    } else {
        log_.LogCommandResults(site, "-------------[ END ]-[ BATCH COMMAND ]-------------");
        end(site, box, *std::exchange(box.batch, std::nullopt));
    }
}

// The connection has ended, and with it every job.
void Outbox::giveUp(int site, Box& box) {
    const std::size_t linesLeft = at(sites_, site).session.sBatchLines.size();
    std::size_t unsent = 0;
    std::string progress;
    const auto give = [&](Started started, bool hasBegun) {
        Receipt& receipt = started.receipt();
        const std::size_t lines = receipt.commands - started.job.commands.size();
        receipt.end = Receipt::End::notSent;
        receipt.sent = started.next + (hasBegun && lines > 0 ? lines - linesLeft : 0);
        unsent += started.job.wish.empty() ? receipt.commands - receipt.sent : 0;
        if (hasBegun && started.job.isBatch()) {
            progress = std::to_string(started.record->answers()) + " of " + std::to_string(lines) +
                       " lines of the batch are done";
        }
        end(site, box, std::move(started));
    };
    for (std::optional<Started>* const begun : {&box.batch, &box.running}) {
        if (*begun) {
            give(*std::exchange(*begun, std::nullopt), true);
        }
    }
    for (Started& waiting : std::exchange(box.waiting, {})) {
        give(std::move(waiting), false);
    }
    if (unsent > 0) {
        log_.LogCommandResults(site, notSent(unsent) + ": the connection ended" +
                                         (progress.empty() ? "" : ", " + progress));
    } else if (!progress.empty()) {
        log_.LogCommandResults(site, "The connection ended, " + progress);
    }
}

// So that the table of the results says which of the lines it is.
void Outbox::keepUnsendable(int site, std::shared_ptr<JobRecord> batch) {
    batch->state = JobRecord::State::over;
    batch->begun = log_.clock().timeOfDay();
    batch->receipt = {.end = Receipt::End::unsendable, .job = ++jobs_, .commands = batch->commands.size()};
    boxes_[site].journal.add(std::move(batch));
    views_.jobsChanged(site);
}

void Outbox::end(int site, Box& box, Started started) {
    started.record->state = JobRecord::State::over;
    box.journal.add(started.record);
    box.over.push_back(std::move(started));
    views_.jobsChanged(site);
}

bool Outbox::isChannelFree(int site) const {
    const Site& target = at(sites_, site);
    return target.wSock->state() == SocketState::connected && !target.session.bAwaitingReply &&
           !target.session.isHeldBack() &&
           std::ranges::all_of(target.session.CommandQueue,
                               [](const Command& slot) { return slot.sCommand.empty(); });
}

} // namespace corvel
