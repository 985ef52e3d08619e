#pragma once

#include "admin/AdminForms.h"
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
};

Job jobOf(const CommandSequence& sequence);

// How a job ended.
struct Receipt {
    enum class End {
        done,     // every command was answered
        refused,  // the same, and the server refused at least one
        notSent,  // the connection ended before the last answer
        replaced, // a newer wish took its place
    };
    End end = End::done;
    std::size_t commands = 0;   // how many there were, the lines of a sequence included
    std::size_t sent = 0;       // where the connection ended: how many of them went out
    std::string refusedCommand; // the first that was refused, and the last line of the reply
    std::string refusal;
};

// What a person has confirmed and the servers have not answered yet: any number of jobs for every site, one
// after the other. A job hands a command over when the reply to the one before is in, with all that the
// reply's handler asked for in turn; so the ring of the channel never holds more than one of them. Between
// two lines of a batch one waiting job may go, so that a long batch locks nobody out. Before the login only
// lines of the console go out, and not while the dialogue goes on by itself.
class Outbox {
  public:
    using Ended = std::function<void(const Receipt&)>;

    // All are borrowed and must outlive the outbox.
    Outbox(Sites& sites, CommandChannel& channel, ConsoleLog& log)
        : sites_(sites), channel_(channel), log_(log) {}

    // Takes a job on: nothing, or why it cannot go out, as a message; then it is forgotten. Commands without
    // a text count for nothing. ended is called once, from a turn of the event loop.
    std::optional<std::string> start(int site, Job job, Ended ended = {});
    // The same for what has no dialog that could stay open: the message goes to the log and to the status
    // bar. False when the job was not taken on.
    bool startOrTell(int site, LogKind log, Job job, Ended ended = {});

    // Whether a job has not begun yet.
    bool isWaiting(int site) const;
    // How far the site's batch has come, "41 of 300"; empty while none runs.
    std::string batchProgress(int site) const;

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
        Receipt receipt;
        std::size_t next = 0;     // of job.commands
        std::size_t answered = 0; // commands of a batch
    };
    struct Box {
        std::deque<Started> waiting;
        std::optional<Started> running; // has the floor
        std::optional<Started> batch;   // goes on when nothing is running
        bool isGuestsTurn = false;      // one that waits may go before the batch's next line
        std::vector<Started> over;      // whoever started them does not know yet
    };

    void proceed(int site);
    static void readAnswers(SiteSession& session, Box& box);
    bool advance(int site, Box& box);
    bool beginNext(int site, Box& box);
    void stepBatch(int site, Box& box);
    void giveUp(int site, Box& box);
    static void end(Box& box, std::optional<Started>& started);
    bool isChannelFree(int site) const;

    Sites& sites_;
    CommandChannel& channel_;
    ConsoleLog& log_;
    std::map<int, Box> boxes_;
    bool isInEvent_ = false;
};

} // namespace corvel
