#pragma once

#include "common/Command.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace corvel {

struct Answer;
struct Job;

// How a job ended.
struct Receipt {
    enum class End {
        done,       // every command was answered
        refused,    // the same, and the server refused at least one
        notSent,    // the connection ended before the last answer
        replaced,   // a newer wish took its place
        cancelled,  // a person did not want it any more
        unsendable, // one of the lines of a batch is none that can be sent, so that none was
    };
    End end = End::done;
    std::uint64_t job = 0;      // its id
    std::size_t commands = 0;   // how many there were, the lines of a sequence included
    std::size_t sent = 0;       // where it ended before the last answer: how many of them went out
    std::string refusedCommand; // the first that was refused, and the last line of the reply
    std::string refusal;
};

// What became of one command of a job. Texts are in the server's bytes; equal ones in a row are one.
struct CommandRecord {
    std::string_view command; // as it is logged; to be shown as shownCommand has it
    std::int32_t iHandler = handler::console;
    std::int32_t code = 0;                         // of the reply; 0: there is none (yet)
    std::uint32_t milliseconds = 0;                // from when it went out to its reply
    std::shared_ptr<const std::string> time = {};  // of day, as it went out; UTF-8
    std::shared_ptr<const std::string> reply = {}; // its last line, cut

    bool isRefused() const { return code >= firstRefusal; }
};

// A job as a person looks at it: what it is called, its commands, and what became of them. It stays as long
// as anybody holds it, and while the job is not over it goes on changing.
class JobRecord {
  public:
    enum class State { waiting, running, over };

    // Takes the texts of the job's sequence along. The NOOP that starts a batch is none of the commands.
    JobRecord(std::uint64_t id, Job& job);
    // The commands point into it.
    JobRecord(const JobRecord&) = delete;
    JobRecord& operator=(const JobRecord&) = delete;

    // The answer to one of the commands, or to what a handler asked for in turn, which is left out. sent: how
    // many commands the outbox has handed over.
    void answered(const Answer& answer, std::size_t sent);

    // The account (group) that the command is about, in the server's bytes; empty where none is known.
    std::string_view accountOf(std::size_t command) const;
    // How many commands the server has answered, and how many of these it has refused. The answers come in
    // the order of the commands, but for a job that hands them over together.
    std::size_t answers() const { return answers_; }
    std::size_t refusals() const { return refusals_; }

    const std::uint64_t id;
    std::string title; // UTF-8; what a person would call it
    State state = State::waiting;
    bool isBatch = false;
    std::string begun;           // the time of day as it got the floor; UTF-8
    std::int64_t begunClock = 0; // the same in the clock's milliseconds
    Receipt receipt;             // complete when it is over
    std::vector<CommandRecord> commands;

  private:
    std::string texts_; // of the commands, and lines behind them
    std::vector<std::string> accounts_;
    std::size_t answers_ = 0;
    std::size_t refusals_ = 0;
    std::size_t firstOpen_ = 0; // of the commands without an answer
    bool isInOrder_;            // a sequence, whose lines are answered one after the other
    bool isStarterOpen_;        // the NOOP of a batch is not answered
};

using JobHandle = std::shared_ptr<const JobRecord>;

// The jobs of a site that are over, the newest last: of batches, and of other jobs that sent more than one
// command to change something, a few whole ones; of the rest a few more.
struct Journal {
    static constexpr std::size_t resultsKept = 5; // batches, and as many others
    static constexpr std::size_t historyKept = 20;

    std::deque<JobHandle> batches;
    std::deque<JobHandle> others;
    std::deque<JobHandle> history;

    void add(JobHandle job);
    // The job with the id, or null.
    JobHandle find(std::uint64_t job) const;
};

// How many of a job's commands change something, and do not only have it read again.
std::size_t changesOf(const JobRecord& job);

// What became of a job that is over, for whoever started it: "saved: 2 commands accepted", where done says
// what it did, or how many of the commands that change something were refused, and the first refusal. UTF-8.
std::string outcomeText(const JobRecord& job, std::string_view done);

// What became of one of its commands, in the server's bytes: the last line of the reply, "no answer" or "not
// sent", with the reason where it is the command's own, where the job is over without one, and nothing while
// it may still come.
std::string_view answerText(const JobRecord& job, std::size_t command);

// The places of the commands that were refused, or of all of them.
std::vector<std::size_t> rowsOf(const JobRecord& job, bool refusedOnly);
// The accounts that a refused command was about, each once.
std::unordered_set<std::string_view> refusedAccounts(const JobRecord& job);
// The job in a list of several, UTF-8: "10:44:22 batch over 300 users, 2 refused".
std::string captionOf(const JobRecord& job);

} // namespace corvel
