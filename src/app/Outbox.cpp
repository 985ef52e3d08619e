#include "app/Outbox.h"

#include "admin/AdminForms.h"
#include "common/Text.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr int firstRefusal = 400;

bool isBatch(const Job& job) {
    return job.sequence && job.sequence->first.iHandler == handler::batch;
}

// The lines of a sequence behind its first command.
std::vector<std::string_view> linesOf(const Job& job) {
    std::vector<std::string_view> lines =
        job.sequence ? split(job.sequence->sBatchLines, lineEnd) : std::vector<std::string_view>();
    std::erase(lines, "");
    return lines;
}

// Whether a job may begin on a connection in this state.
bool mayBegin(const SiteSession& session, const Job& job, bool isBatchRunning) {
    if (session.bLoggedIn) {
        return !isBatchRunning || !job.sequence;
    }
    return session.isGreeted && std::ranges::all_of(job.commands, [](const Command& command) {
               return command.iHandler == handler::console;
           });
}

} // namespace

Job jobOf(const CommandSequence& sequence) {
    return {.commands = {sequence.first}, .sequence = sequence};
}

std::optional<std::string> Outbox::start(int site, Job job, Ended ended) {
    std::erase_if(job.commands, [](const Command& command) { return command.sCommand.empty(); });
    const std::vector<std::string_view> lines = linesOf(job);
    if (!std::ranges::all_of(job.commands, isOneLine, &Command::sCommand) ||
        !std::ranges::all_of(lines, isOneLine)) {
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
            old->receipt.end = Receipt::End::replaced;
            box.over.push_back(std::move(*old));
            box.waiting.erase(old);
        }
    }
    const Receipt receipt{.commands = job.commands.size() + lines.size()};
    box.waiting.push_back({.job = std::move(job), .ended = std::move(ended), .receipt = receipt});
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

bool Outbox::isWaiting(int site) const {
    const auto box = boxes_.find(site);
    return box != boxes_.end() && !box->second.waiting.empty();
}

std::string Outbox::batchProgress(int site) const {
    const auto found = boxes_.find(site);
    if (found == boxes_.end()) {
        return {};
    }
    const Box& box = found->second;
    const std::optional<Started>& batch = box.batch ? box.batch : box.running;
    return batch && isBatch(batch->job)
               ? batchProgressText(batch->receipt.commands - 1, at(sites_, site).session.sBatchLines.size())
               : std::string();
}

void Outbox::proceed(int site) {
    Box& box = boxes_[site];
    Site& target = at(sites_, site);
    readAnswers(target.session, box);
    if (target.wSock->state() != SocketState::connected) {
        giveUp(site, box);
    }
    while (isChannelFree(site) && advance(site, box)) {
    }
    for (const Started& started : std::exchange(box.over, {})) {
        if (started.ended) {
            started.ended(started.receipt);
        }
    }
}

void Outbox::readAnswers(SiteSession& session, Box& box) {
    for (const Answer& answer : std::exchange(session.answers, {})) {
        const bool isLine = box.batch && answer.command.iHandler == handler::batch;
        std::optional<Started>& asked = isLine ? box.batch : box.running;
        if (!asked) {
            continue;
        }
        ++asked->answered;
        Receipt& receipt = asked->receipt;
        if (answer.code >= firstRefusal && receipt.end == Receipt::End::done) {
            receipt.end = Receipt::End::refused;
            receipt.refusedCommand = answer.command.sCommand;
            receipt.refusal = answer.lastLine;
        }
    }
}

// One step on a free channel; false when there is nothing to do.
bool Outbox::advance(int site, Box& box) {
    if (box.running) {
        Started& running = *box.running;
        if (running.next < running.job.commands.size()) {
            do {
                channel_.SendCommand(site, running.job.commands[running.next++]);
            } while (running.job.isAtOnce && running.next < running.job.commands.size());
        } else if (isBatch(running.job)) {
            box.batch = std::exchange(box.running, std::nullopt);
            box.isGuestsTurn = true;
        } else {
            end(box, box.running);
        }
        return true;
    }
    if (beginNext(site, box)) {
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
    if (const std::optional<CommandSequence>& sequence = box.running->job.sequence) {
        log_.Log(site, sequence->beginLog, sequence->sBegin);
        const std::vector<std::string_view> lines = linesOf(box.running->job);
        session.sBatchLines.assign(lines.begin(), lines.end());
    }
    return true;
}

void Outbox::stepBatch(int site, Box& box) {
    if (channel_.SendNextBatchLine(site, handler::batch)) {
        box.isGuestsTurn = true;
    } else {
        log_.LogCommandResults(site, "-------------[ END ]-[ BATCH COMMAND ]-------------");
        end(box, box.batch);
    }
}

// The connection has ended, and with it every job.
void Outbox::giveUp(int site, Box& box) {
    const std::size_t linesLeft = at(sites_, site).session.sBatchLines.size();
    std::size_t unsent = 0;
    std::string progress;
    const auto give = [&](std::optional<Started>& started, bool hasBegun) {
        Receipt& receipt = started->receipt;
        const std::size_t lines = receipt.commands - started->job.commands.size();
        receipt.end = Receipt::End::notSent;
        receipt.sent = started->next + (hasBegun && lines > 0 ? lines - linesLeft : 0);
        unsent += started->job.wish.empty() ? receipt.commands - receipt.sent : 0;
        if (hasBegun && isBatch(started->job)) {
            const std::size_t done = std::max<std::size_t>(started->answered, 1) - 1;
            progress = std::to_string(done) + " of " + std::to_string(lines) + " lines of the batch are done";
        }
        end(box, started);
    };
    for (std::optional<Started>* const begun : {&box.batch, &box.running}) {
        if (*begun) {
            give(*begun, true);
        }
    }
    for (Started& waiting : std::exchange(box.waiting, {})) {
        std::optional<Started> started = std::move(waiting);
        give(started, false);
    }
    if (unsent > 0) {
        log_.LogCommandResults(
            site, std::to_string(unsent) + (unsent == 1 ? " command was" : " commands were") +
                      " not sent: the connection ended" + (progress.empty() ? "" : ", " + progress));
    } else if (!progress.empty()) {
        log_.LogCommandResults(site, "The connection ended, " + progress);
    }
}

void Outbox::end(Box& box, std::optional<Started>& started) {
    box.over.push_back(std::move(*started));
    started.reset();
}

bool Outbox::isChannelFree(int site) const {
    const Site& target = at(sites_, site);
    return target.wSock->state() == SocketState::connected && !target.session.bAwaitingReply &&
           !target.session.isHeldBack() &&
           std::ranges::all_of(target.session.CommandQueue,
                               [](const Command& slot) { return slot.sCommand.empty(); });
}

} // namespace corvel
