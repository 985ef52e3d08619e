#pragma once

#include "admin/AdminForms.h"
#include "app/Journal.h"
#include "common/Command.h"
#include "common/Ports.h"
#include "net/CommandChannel.h"
#include "net/SiteSession.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

// What a person confirmed with one click or one key: commands that go out in their order, with nothing of
// anybody else's between them.
struct Job {
    std::vector<Command> commands;
    // A newer job with the same wish takes the place of one that waits; an empty wish takes nobody's.
    std::string wish = {};
    // Of a sequence, which runs its lines behind the one command.
    std::optional<CommandSequence> sequence = {};
    // The commands are handed over together, no more than the ring holds, so that what a reply asks for in
    // turn goes out behind them.
    bool isAtOnce = false;
    // What a person would call it, UTF-8; where it is empty, its first command stands for it.
    std::string title = {};
    // The accounts (groups) that the commands, or the lines of a batch, are about: as many of them each, in
    // their order. In the server's bytes; may be empty.
    std::vector<std::string> accounts = {};

    bool isBatch() const { return sequence && sequence->first.iHandler == handler::batch; }
};

// The sequence as a job; the texts of its lines and of its accounts are taken along.
Job jobOf(CommandSequence sequence);

// What a person has confirmed and the servers have not answered yet: any number of jobs for every site, one
// after the other. A job hands a command over when the reply to the one before is in, with all that the
// reply's handler asked for in turn; so the ring of the channel never holds more than one of them. Between
// two lines of a batch one waiting job may go, so that a long batch locks nobody out. Before the login only
// lines of the console go out, and not while the dialogue goes on by itself.
class Outbox {
  public:
    using Ended = std::function<void(const Receipt&)>;

    // All are borrowed and must outlive the outbox.
    Outbox(Sites& sites, CommandChannel& channel, ConsoleLog& log, Views& views)
        : sites_(sites), channel_(channel), log_(log), views_(views) {}

    // Takes a job on, which ends what the status bar says of the one before, unless nobody but the program
    // wanted it. Gives nothing, or why it cannot go out, as a message; then it is forgotten. Commands without
    // a text count for nothing. ended is called once, from a turn of the event loop.
    std::optional<std::string> start(int site, Job job, Ended ended = {});
    // The same for what has no dialog that could stay open: the message goes to the log and to the status
    // bar. False when the job was not taken on.
    bool startOrTell(int site, LogKind log, Job job, Ended ended = {});

    // Has the status bar say something about what the person wanted.
    void tell(int site, std::string_view line) const { log_.tell(site, line); }

    // The jobs of a site that are not over, in the order in which they go on: the one that has the floor, the
    // batch that goes on behind it, and those that wait. The first command without an answer of the first
    // job is the one under way, unless it is what a handler asked for.
    std::vector<JobHandle> jobs(int site) const;
    // Those that are over.
    const Journal& journal(int site) const;

    // Takes a job back that waits, or all of a site: they end as cancelled, and the command results say so.
    // False, or 0, where there is none any more.
    bool cancel(int site, std::uint64_t job);
    std::size_t cancelWaiting(int site);
    // Has the batch that runs end, as cancelled, once the command that is under way is answered; a line that
    // says how far it came goes before its end marker. False where none runs.
    bool stopBatch(int site);
    bool isStopping(int site) const;

    // Whether a job has not begun yet.
    bool isWaiting(int site) const;
    // The site's batch that runs, or null; how far it has come, "41 of 300", and how long it will take, as
    // timeLeftText has it. Both are empty while none runs.
    JobHandle runningBatch(int site) const;
    std::string batchProgress(int site) const;
    std::string batchTimeLeft(int site) const;

    // Runs an event of the site, and sends what has become due. Nothing goes out from inside the event, where
    // the handler of a reply may have more to ask.
    template <typename Event>
    void during(int site, Event event) {
        const bool isNested = std::exchange(isInEvent_, true);
        event();
        isInEvent_ = isNested;
        if (!isNested) {
            proceed(site);
        }
    }

  private:
    struct Started {
        Job job;
        Ended ended;
        std::shared_ptr<JobRecord> record;
        std::size_t next = 0; // of job.commands
        bool isStopping = false;

        Receipt& receipt() { return record->receipt; }
    };
    struct Box {
        std::deque<Started> waiting;
        std::optional<Started> running; // has the floor
        std::optional<Started> batch;   // goes on when nothing is running
        bool isGuestsTurn = false;      // one that waits may go before the batch's next line
        std::vector<Started> over;      // whoever started them does not know yet
        Journal journal;
    };

    void proceed(int site);
    static bool readAnswers(SiteSession& session, Box& box);
    bool advance(int site, Box& box);
    bool beginNext(int site, Box& box);
    void stepBatch(int site, Box& box);
    void giveUp(int site, Box& box);
    void keepUnsendable(int site, std::shared_ptr<JobRecord> batch);
    void end(int site, Box& box, Started started);
    std::size_t takeBack(int site, Box& box, std::vector<Started> jobs);
    const Box* find(int site) const;
    bool isChannelFree(int site) const;

    Sites& sites_;
    CommandChannel& channel_;
    ConsoleLog& log_;
    Views& views_;
    std::map<int, Box> boxes_;
    std::uint64_t jobs_ = 0; // that were started
    bool isInEvent_ = false;
    bool isFollowing_ = false; // what starts now follows from a job that is over
};

} // namespace corvel
