#pragma once

#include "net/Connection.h"
#include "net/SiteSession.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace corvel {

class CommandChannel;

// A complete reply on its way to its handler. What it points to is borrowed for the time of the call.
struct Reply {
    int site = 0;
    Command command; // that it answers, a password masked
    SiteSession& session;
    std::span<const std::string_view> lines; // split at CR LF; the last one is the empty text behind the end
    std::string_view lastChunk;              // the bytes that completed it
    std::string_view lastLine;               // the last one that is not empty
    int code = 0;                            // of that line
};

inline bool isSuccess(const Reply& reply) {
    return reply.code >= 200 && reply.code <= 299;
}

// What a handler may use.
struct ReplyServices {
    CommandChannel& channel;
    ConsoleLog& log;
    Views& views;
    const Settings& settings;
};

// Says on the console what is wrong with a reply, and which command it answers. problem: one line.
void reportProblem(const ReplyServices& services, const Reply& reply, std::string_view problem);

// What is said about a command that no line of a control connection can carry.
inline constexpr std::string_view notOneLine = "Command not sent: it holds a line break or a NUL character";

// One kind of reply: the log that shows its commands as they go out (the console no quiet ones), if any, and
// what is done with the answer. A handler may throw ParseError: the console says so, and the channel goes on.
struct ReplyHandler {
    std::int32_t code;
    std::optional<LogKind> echo;
    void (*handle)(const ReplyServices&, const Reply&);
};

// Queues, sends and answers: one command outstanding per site.
class CommandChannel {
  public:
    // All are borrowed and must outlive the channel. handlers: the table of reply kinds; a code that is not
    // in it is sent without echo, and its reply is shown on the console only.
    CommandChannel(Sites& sites, Connection& connection, ConsoleLog& log, Views& views,
                   const Settings& settings, std::span<const ReplyHandler> handlers)
        : sites_(sites), connection_(connection), services_{*this, log, views, settings},
          handlers_(handlers) {}

    // Puts the command into the first free slot of the ring, looking from its head, and sends it if nothing
    // is outstanding. False when it was dropped: not connected, all slots taken, nothing to send (then the
    // next one that waits goes out), or a line break or NUL in it, about which the console says one line.
    bool SendCommand(int site, const Command& command);

    // Sends the next waiting command if none is outstanding; ends the connection if there is none.
    void SendNext(int site);

    // Queues the next line of the site's batch; false when there is none left.
    bool SendNextBatchLine(int site, std::int32_t handler);

    // Takes bytes from the site's socket: shows them, and deals with the reply that they complete.
    void ReplyRouter(int site, std::string_view bytes);

  private:
    const ReplyHandler* handlerOf(std::int32_t code) const;
    void echo(int site);
    void showWholeLines(int site, std::string_view data);
    void routeReply(int site, std::string_view lastChunk);
    void logIn(int site, int code);

    Sites& sites_;
    Connection& connection_;
    ReplyServices services_;
    std::span<const ReplyHandler> handlers_;
};

} // namespace corvel
