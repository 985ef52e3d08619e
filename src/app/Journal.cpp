#include "app/Journal.h"

#include "admin/ShownCommand.h"
#include "app/Outbox.h"
#include "common/ShownText.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t replyBytesKept = 400; // more than a row of a list can show

using SharedText = std::shared_ptr<const std::string>;

SharedText shared(std::string_view text, const SharedText& before) {
    return before != nullptr && *before == text ? before : std::make_shared<const std::string>(text);
}

// Whether the command only has something read again that the person sees.
bool isReading(const CommandRecord& command) {
    return command.iHandler == handler::userFile || command.iHandler == handler::groupFile ||
           command.iHandler == handler::userTable || command.iHandler == handler::groupTable;
}

// What a person calls a job that begins so, with what follows behind it.
std::string titleOf(const CommandRecord& first) {
    struct Title {
        std::string_view start;
        std::string_view words;
    };
    static constexpr std::array<Title, 10> titles = {{
        {"MKD ", "new directory "},
        {"RMD ", "delete directory "},
        {"DELE ", "delete "},
        {"RNFR ", "rename "},
        {"CWD ", "go to "},
        {"STAT -a", "list the directory"},
        {"SITE chmod ", "permissions "},
        {"SITE CorvelExt usertable", "read the users"},
        {"SITE CorvelExt grouptable", "read the groups"},
        {"SITE CorvelExt who", "ask who is online"},
    }};
    const bool isTyped = first.iHandler == handler::console || first.iHandler == handler::menuFtp;
    const auto* const title = std::ranges::find_if(
        titles, [&first](const Title& candidate) { return first.command.starts_with(candidate.start); });
    static const Settings masking{.mask_passwords = true}; // a title may stand anywhere
    const std::string shown = toUtf8(shownCommand(first.command, masking));
    return shortened(visibleText(isTyped || title == titles.end()
                                     ? shown
                                     : std::string(title->words) + shown.substr(title->start.size())),
                     longestLine);
}

} // namespace

JobRecord::JobRecord(std::uint64_t number, Job& job)
    : id(number), title(std::move(job.title)), isBatch(job.isBatch()), accounts_(std::move(job.accounts)),
      isInOrder_(job.sequence.has_value()), isStarterOpen_(isBatch) {
    std::vector<std::int32_t> handlers;
    for (const Command& command : job.commands) {
        if (!isBatch) {
            texts_.append(loggedCommand(command.sCommand)).append(lineEnd);
            handlers.push_back(command.iHandler);
        }
    }
    if (job.sequence) {
        texts_ = isBatch ? std::move(job.sequence->sBatchLines) : texts_ + job.sequence->sBatchLines;
    }
    std::vector<std::string_view> lines = split(texts_, lineEnd);
    std::erase(lines, "");
    handlers.resize(lines.size(), job.commands.empty() ? handler::console : job.commands.front().iHandler);
    commands.reserve(lines.size());
    for (const std::string_view line : lines) {
        commands.push_back({.command = line, .iHandler = handlers[commands.size()]});
    }
    if (title.empty() && !commands.empty()) {
        title = titleOf(commands.front());
    }
}

void JobRecord::answered(const Answer& answer, std::size_t sent) {
    if (std::exchange(isStarterOpen_, false)) {
        return;
    }
    const std::size_t end = std::min(std::max(sent, firstOpen_ + 1), commands.size());
    const auto found =
        std::find_if(commands.begin() + static_cast<std::ptrdiff_t>(firstOpen_),
                     commands.begin() + static_cast<std::ptrdiff_t>(end), [&](const CommandRecord& command) {
                         return command.code == 0 && command.iHandler == answer.command.iHandler &&
                                (isInOrder_ || command.command == answer.command.sCommand);
                     });
    if (found == commands.begin() + static_cast<std::ptrdiff_t>(end)) {
        return;
    }
    const CommandRecord& before = found == commands.begin() ? *found : *std::prev(found);
    found->code = answer.code;
    found->milliseconds = answer.milliseconds;
    found->time = shared(answer.sentAt, before.time);
    found->reply = shared(beginningOf(answer.lastLine, replyBytesKept), before.reply);
    ++answers_;
    refusals_ += found->isRefused() ? 1 : 0;
    while (firstOpen_ < commands.size() && commands[firstOpen_].code != 0) {
        ++firstOpen_;
    }
}

std::string_view JobRecord::accountOf(std::size_t command) const {
    return accounts_.empty() ? std::string_view() : accounts_[command * accounts_.size() / commands.size()];
}

void Journal::add(JobHandle job) {
    const std::size_t changes = changesOf(*job);
    std::deque<JobHandle>& kept = job->isBatch ? batches : changes > 1 ? others : history;
    const std::size_t most = &kept == &history ? historyKept : resultsKept;
    kept.push_back(std::move(job));
    if (kept.size() > most) {
        kept.pop_front();
    }
}

JobHandle Journal::find(std::uint64_t job) const {
    for (const std::deque<JobHandle>* const jobs : {&history, &others, &batches}) {
        const auto found = std::ranges::find(*jobs, job, &JobRecord::id);
        if (found != jobs->end()) {
            return *found;
        }
    }
    return nullptr;
}

std::size_t changesOf(const JobRecord& job) {
    return static_cast<std::size_t>(std::ranges::count_if(job.commands, std::not_fn(isReading)));
}

std::string outcomeText(const JobRecord& job, std::string_view done) {
    const std::string all = std::to_string(changesOf(job));
    std::size_t answers = 0;
    std::size_t refusals = 0;
    std::string_view refusal;
    for (const CommandRecord& command : job.commands) {
        if (!isReading(command) && command.code != 0) {
            ++answers;
            refusal = refusals == 0 && command.isRefused() ? *command.reply : refusal;
            refusals += command.isRefused() ? 1 : 0;
        }
    }
    if (refusals > 0) {
        return std::to_string(refusals) + " of " + all + " refused: " + shownLine(refusal);
    }
    switch (job.receipt.end) {
    case Receipt::End::notSent:
        return "the connection ended after " + std::to_string(answers) + " of " + all;
    case Receipt::End::cancelled:
        return "cancelled, nothing was sent";
    default:
        return std::string(done) + ": " + counted(answers, "command") + " accepted";
    }
}

std::string_view answerText(const JobRecord& job, std::size_t command) {
    const CommandRecord& record = job.commands[command];
    if (record.code != 0) {
        return *record.reply;
    }
    if (job.state != JobRecord::State::over) {
        return {};
    }
    if (!isOneLine(record.command)) {
        return "not sent: a line break or a NUL character is in it";
    }
    const std::size_t starters = job.receipt.commands - job.commands.size();
    return command + starters < job.receipt.sent ? "no answer" : "not sent";
}

std::vector<std::size_t> rowsOf(const JobRecord& job, bool refusedOnly) {
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < job.commands.size(); ++i) {
        if (!refusedOnly || job.commands[i].isRefused()) {
            rows.push_back(i);
        }
    }
    return rows;
}

std::unordered_set<std::string_view> refusedAccounts(const JobRecord& job) {
    std::unordered_set<std::string_view> accounts;
    for (const std::size_t row : rowsOf(job, true)) {
        if (const std::string_view account = job.accountOf(row); !account.empty()) {
            accounts.insert(account);
        }
    }
    return accounts;
}

std::string captionOf(const JobRecord& job) {
    return job.begun + " " + job.title +
           (job.refusals() == 0 ? std::string() : ", " + std::to_string(job.refusals()) + " refused");
}

} // namespace corvel
