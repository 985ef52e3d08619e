// What the server of a site sends, with the whole program behind it but for the window. A NUL begins an act
// of the person or of a timer: the byte behind it says which, and the next one is its argument. A T in front
// of all makes the site one that is to be encrypted.
#include "app/mdlMain.h"
#include "common/Text.h"
#include "Fuzz.h"
#include "net/ReplyBuffer.h"
#include "support/TestPorts.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace corvel::fuzz {

namespace {

// In no password that a server could send by chance, and long enough not to be guessed.
constexpr const char* password = "Pa5s-w0rd;of:bob";
constexpr int site = 1;

// The other end of the connection: looks at each line that is sent.
class Peer : public test::FakeSocket {
  public:
    void Connect(const std::string& host, std::int32_t port, bool mayEncrypt) override {
        FakeSocket::Connect(host, port, mayEncrypt);
        replies = lines = 0;
        isUserSent = isInHandshake = false;
    }
    void StartEncryption(const std::string& trusted) override {
        FakeSocket::StartEncryption(trusted);
        isInHandshake = true;
    }
    void Send(std::string_view bytes) override {
        require(bytes.size() > lineEnd.size() && bytes.ends_with(lineEnd), "what is sent is a line");
        const std::string_view line = bytes.substr(0, bytes.size() - lineEnd.size());
        require(isOneLine(line), "no line that is sent has a CR, an LF or a NUL in it");
        require(!isInHandshake, "nothing is sent in clear while the connection is being encrypted");
        isUserSent = isUserSent || line.starts_with("USER ");
        require(isUserSent || !line.starts_with("PASS "), "a password follows a user name");
        require(++lines <= replies, "one command at a time is under way");
        FakeSocket::Send(bytes);
    }

    std::size_t replies = 0; // on this connection
    std::size_t lines = 0;
    bool isUserSent = false;
    bool isInHandshake = false;
};

class Unseen : public Views {
  public:
    void changed(const ViewChange& /*change*/) override {}
    void dialogWanted(int /*site*/, Dialog /*dialog*/) override {}
};

// How what the server sends is cut.
enum class Cut { atReplies, everywhere, atRandom };

// The program, a site, and what has happened.
class Session {
  public:
    Session(bool isEncrypted, Cut cut)
        : main({.views = views_,
                .prompts = prompts,
                .store = store_,
                .clock = clock_,
                .shell = shell,
                .lock = lock_,
                .makeSocket =
                    [this](int /*site*/) {
                        auto made = std::make_unique<Peer>();
                        peer = made.get();
                        return made;
                    }},
               "/nowhere"),
          cut_(cut) {
        main.addSite({.txtSitename = "site",
                      .txtHostname = "host",
                      .txtPort = "21",
                      .txtUsername = "bob",
                      .txtPassword = password,
                      .chkUseSSLProxy = isEncrypted,
                      .cmdAddConnect = true});
        established();
    }

    // The next byte of the server's. One that comes while there is no connection, or none in clear, is lost.
    void receive(char byte);
    // Hands over what waits.
    void flush() {
        if (!held_.empty()) {
            main.wSock_DataArrival(site, std::exchange(held_, {}));
        }
    }
    void established() {
        if (peer->current == SocketState::connecting) {
            peer->current = SocketState::connected;
            telnet_ = {};
            framer_ = {};
            main.wSock_Connect(site);
        }
    }
    const SiteSession& state() const { return main.site(site).session; }

  private:
    Unseen views_;
    MemoryStore store_;
    test::FixedClock clock_;
    test::FakeLock lock_;

  public:
    test::RecordingPrompts prompts;
    test::RecordingShell shell;
    Peer* peer = nullptr;
    std::string received;
    mdlMain main;

  private:
    Cut cut_;
    std::string held_;
    // What tells where a reply ends: the same that the program has, fed byte by byte.
    TelnetReader telnet_;
    ReplyBuffer framer_;
    std::uint32_t random_ = 1;
};

void Session::receive(char byte) {
    if (peer->current != SocketState::connected || peer->isInHandshake) {
        return;
    }
    held_ += byte;
    received += byte;
    const ReplyProgress progress = framer_.append(telnet_.read({&byte, 1}));
    if (progress == ReplyProgress::complete) {
        framer_ = {};
        ++peer->replies;
    }
    random_ = random_ * 1664525 + 1013904223;
    if (progress != ReplyProgress::incomplete || cut_ == Cut::everywhere ||
        (cut_ == Cut::atRandom && random_ >> 29U == 0)) {
        flush();
    }
}

// What a person or a timer does between two bytes of the server's.
struct Act {
    char key;
    void (*run)(Session& session, unsigned argument);
};

// Something to type: plain, beyond ASCII, or with what no line can carry.
std::string typedText(unsigned argument) {
    static const std::array<std::string, 6> texts = {"x",         "new name",       "gr\xC3\xBC\xC3\x9F",
                                                     "NOOP\r\nX", "stat \xC2\xA0*", std::string("a\0b", 3)};
    return texts[argument % texts.size()];
}

template <typename Table>
void change(Table& table, unsigned argument) {
    table.open(site, static_cast<int>(argument % 4));
    table.typed(site, argument / 4 % 5, typedText(argument / 32));
    table.save(site);
}

constexpr std::array<Act, 21> acts = {{
    {'c', [](Session& s, unsigned n) { s.main.sendConsoleCommand(site, typedText(n)); }},
    {'n', [](Session& s, unsigned) { s.main.tmrNoop_Timer(site); }},
    {'w', [](Session& s, unsigned) { s.main.tmrRefreshWho_Timer(site, false); }},
    {'W', [](Session& s, unsigned) { s.main.askWho(site); }},
    {'o', [](Session& s, unsigned n) { s.main.browser().open(site, static_cast<int>(n)); }},
    {'r', [](Session& s, unsigned) { s.main.browser().refreshAndNoop(site); }},
    {'^', [](Session& s, unsigned) { s.main.browser().up(site); }},
    {'d',
     [](Session& s, unsigned n) {
         s.main.browser().remove(site, {static_cast<int>(n), 1, 2});
     }},
    {'m', [](Session& s, unsigned) { s.main.browser().makeDirectory(site); }},
    {'R', [](Session& s, unsigned n) { s.main.browser().rename(site, 1, typedText(n)); }},
    {'a', [](Session& s, unsigned n) { s.main.browser().sortBy(site, static_cast<int>(n % 7)); }},
    {'h', [](Session& s, unsigned) { s.main.menus().ExecuteMenuCommand(site, menuCommand("chattr", {})); }},
    {'f', [](Session& s, unsigned) { s.main.menus().ExecuteMenuCommand(site, menuCommand("ftp help", {})); }},
    {'s', [](Session& s, unsigned n) { s.main.browser().selectRow(site, static_cast<int>(n)); }},
    {'u', [](Session& s, unsigned n) { change(s.main.admin().users(), n); }},
    {'g', [](Session& s, unsigned n) { change(s.main.admin().groups(), n); }},
    {'p', [](Session& s, unsigned) { s.main.admin().resetPassword(site); }},
    {'b',
     [](Session& s, unsigned n) {
         const Command noop{"NOOP", true, handler::batch, -1};
         s.main.admin().startBatch(site,
                                   {"", LogKind::console, "site a\r\nsite " + typedText(n) + "\r\n", noop});
     }},
    {'q', [](Session& s, unsigned) { s.main.wSock_Close(site); }},
    {'C',
     [](Session& s, unsigned) {
         s.main.connectSite(site);
         s.established();
     }},
    {'E',
     [](Session& s, unsigned) {
         if (std::exchange(s.peer->isInHandshake, false) && s.peer->current == SocketState::connected) {
             s.main.wSock_Encrypted(site);
         }
     }},
}};

void play(Session& session, std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\0' || i + 2 >= bytes.size()) {
            session.receive(bytes[i]);
            continue;
        }
        const auto* const act = std::ranges::find(acts, bytes[i + 1], &Act::key);
        if (act != acts.end()) {
            session.flush();
            session.prompts.answers = {"yes"};
            act->run(session, static_cast<unsigned char>(bytes[i + 2]));
        }
        i += 2;
    }
    session.flush();
}

// The lines of a log but for what the server said: the logs of replies have its last chunk alone.
std::string ownLines(const LogText& log) {
    std::string own;
    for (const LogText::Line& line : log.lines()) {
        own += line.kind == LogLine::command || line.kind == LogLine::event ? line.text : std::string();
    }
    return own;
}

void checkSame(const Session& one, const Session& other) {
    const SiteSession& left = one.state();
    const SiteSession& right = other.state();
    require(one.peer->sent == other.peer->sent, "however it is cut, the same is sent");
    require(left.consoleLog.text() == right.consoleLog.text(),
            "however it is cut, the console says the same");
    require(ownLines(left.commandResultsLog) == ownLines(right.commandResultsLog),
            "however it is cut, the results have the same commands");
    require(left.lastErrorLine == right.lastErrorLine && left.loginRefusal == right.loginRefusal,
            "however it is cut, the same is refused");
    require(left.bLoggedIn == right.bLoggedIn && left.sCwd == right.sCwd && left.encoding == right.encoding,
            "however it is cut, the session stands where it does");
    require(left.Users.size() == right.Users.size() && left.Groups.size() == right.Groups.size() &&
                left.browser.order == right.browser.order && left.activity == right.activity,
            "however it is cut, the lists are the same");
    require(one.prompts.asked == other.prompts.asked, "however it is cut, the same is asked");
}

void checkSecret(const Session& session) {
    const SiteSession& state = session.state();
    const std::string all = state.consoleLog.text() + state.commandResultsLog.text() +
                            state.browserReplyLog.text() + state.lastErrorLine + state.loginRefusal;
    require(all.find(password) == std::string::npos || session.received.find(password) != std::string::npos,
            "no log shows a password that the server has not said");
}

bool isEncrypted(std::string_view& bytes) {
    const bool result = bytes.starts_with('T');
    bytes.remove_prefix(result ? 1 : 0);
    return result;
}

} // namespace

void check(std::string_view bytes) {
    const bool encrypts = isEncrypted(bytes);
    Session whole(encrypts, Cut::atReplies);
    play(whole, bytes);
    checkSecret(whole);
    Session cut(encrypts, bytes.size() % 8 == 0 ? Cut::everywhere : Cut::atRandom);
    play(cut, bytes);
    checkSame(whole, cut);
}

// What a person does costs what it costs: the server's bytes are counted.
void work(std::string_view bytes) {
    Session session(isEncrypted(bytes), Cut::atRandom);
    for (const char byte : bytes) {
        session.receive(byte);
    }
    session.flush();
}

} // namespace corvel::fuzz
