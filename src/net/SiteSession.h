#pragma once

#include "admin/AccountLists.h"
#include "admin/mdlUsersGroups.h"
#include "browser/FileDialogs.h"
#include "browser/RemoteList.h"
#include "common/Command.h"
#include "common/Ports.h"
#include "common/TextEncoding.h"
#include "config/Sites.h"
#include "net/ActivityRows.h"
#include "net/LogText.h"
#include "net/ReplyBuffer.h"
#include "net/ReplyReader.h"

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace corvel {

// A command that the server has answered, for whoever keeps count of them.
struct Answer {
    Command command; // a password masked
    int code = 0;
    std::string lastLine;           // of the reply
    std::string sentAt;             // the time of day as the command went out, UTF-8
    std::uint32_t milliseconds = 0; // from then to the reply
};

// The runtime record of one site is its parts. All texts are in the server's bytes unless a comment says
// otherwise.

// How far a connection has come that is to be encrypted (RFC 4217). Before it is, nothing but AUTH goes out.
enum class Encryption {
    none,     // it is not to be
    greeting, // waits for the server's greeting
    consent,  // has sent AUTH
    handshake,
    on,
};

// The control connection: CommandChannel does everything with it; the outbox takes
// the answers away.
struct ChannelState {
    static constexpr std::size_t queueSlots = 26;

    bool bLoggedIn = false;      // the server accepted the login
    bool bAwaitingReply = false; // a command is outstanding: at most one per site
    bool isGreeted = false;      // the connection has brought a reply
    bool isUserSent = false;     // and a user name was sent on it
    Encryption encryption = Encryption::none;
    TelnetReader telnet;
    SeenTexts seenTexts;
    TextEncoding encoding = TextEncoding::utf8; // of what is typed, as seenTexts has it
    ReplyBuffer sReplyBuffer;
    ReplyReader reader; // of the reply that is arriving, once bytes of it have come

    // Commands waiting to be sent; a slot whose command is empty is free.
    std::array<Command, queueSlots> CommandQueue;
    std::size_t iQueueHead = 0; // where the sender looks first

    // What stands from here to sConsolePartial outlives the connection. The command last sent has its
    // password masked.
    Command current{.bQuiet = false, .iHandler = 0};
    std::string currentSentAt;           // when it went out: the time of day, UTF-8,
    std::int64_t currentSentClock = 0;   // and in the clock's milliseconds
    std::deque<std::string> sBatchLines; // what is left of a sequence of commands
    std::string sConsolePartial;         // an incomplete last line held back from the console

    // Whether what is to be sent has to wait until the connection is encrypted.
    bool isHeldBack() const { return encryption != Encryption::none && encryption != Encryption::on; }

    std::vector<Answer> answers; // since they were last taken away
    // What the server, or the program itself, refused last, and when (UTF-8); empty once the person has done
    // something else.
    std::string lastErrorLine;
    std::string lastErrorTime;
    bool isErrorUnseen = false;      // it came since the site was in front
    std::string loginRefusal;        // the last line of the reply that kept the person out
    std::int64_t lastHeardClock = 0; // when bytes came last, in the clock's milliseconds
};

// Who is online. The replies to who write it; the list says which row is selected.
struct ActivityState {
    ActivityCounters activity;
    ActivityRows activityRows;
    int activityRow = -1;
};

// The tables of accounts and groups, and what the lists and editors show of them: AccountTable's.
struct AccountsState {
    UserTable Users = emptyUserTable();
    GroupTable Groups = emptyGroupTable();
    AccountView userView;
    AccountView groupView;
};

// The remote browser: BrowserActions', and that of the replies that list and name a directory.
struct BrowserState {
    std::string sCwd = "/"; // the current remote directory
    RemoteList browser;
    std::string sBrowserPWD;   // the text of the browser's path box
    ChattrAnswer chattrAnswer; // the last one
    bool padsListings = false; // the person has said so of the server
    std::string asked;         // which entries an open question is about, UTF-8; empty while none is
};

// The three logs, UTF-8: ConsoleLog's.
struct Logs {
    LogText consoleLog{25000, LogText::Style::linesEnd};
    LogText commandResultsLog{25000, LogText::Style::linesEnd};
    LogText browserReplyLog{8000, LogText::Style::linesPart};
    std::vector<std::string> typedCommands; // in the console: the last twenty, the newest first
};

inline LogText& logOf(Logs& logs, LogKind log) {
    return log == LogKind::console          ? logs.consoleLog
           : log == LogKind::commandResults ? logs.commandResultsLog
                                            : logs.browserReplyLog;
}
inline const LogText& logOf(const Logs& logs, LogKind log) {
    return logOf(const_cast<Logs&>(logs), log);
}

struct SiteSession : ChannelState, ActivityState, AccountsState, BrowserState, Logs {};

// Everything about one site: what is configured, what is going on, and its connection.
struct Site {
    SiteConfig config;
    SiteSession session;
    std::unique_ptr<Socket> wSock = std::make_unique<NoSocket>(); // which site 0 keeps
    bool isRemoved = false;                                       // by a person; its index is not used again
};

// The sites by index; element 0 is a placeholder, and a site never moves in memory.
using Sites = std::deque<Site>;

// The site of an index that is known to exist.
inline Site& at(Sites& sites, int site) {
    return sites[static_cast<std::size_t>(site)];
}
inline const Site& at(const Sites& sites, int site) {
    return sites[static_cast<std::size_t>(site)];
}

} // namespace corvel
