#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

// The local time.
class Clock {
  public:
    virtual ~Clock() = default;

    // The time of day as the system's settings write it, long and without time zone; UTF-8.
    virtual std::string timeOfDay() const = 0;

    // Date and time for the name of a file: digits and "-", such that later ones sort behind.
    virtual std::string stamp() const = 0;

    // Milliseconds since some moment, for durations: they never go back.
    virtual std::int64_t milliseconds() const = 0;
};

// Whose the folder of the configuration is to write to.
enum class FolderHold { ours, anotherCopys, nobodys };

// The lock on the folder of the configuration, by which copies of the program that share it know of each
// other. It is held until the object ends.
class FolderLock {
  public:
    virtual ~FolderLock() = default;

    // Takes the lock unless it is held already. A folder that cannot be written is nobody's; one in which
    // nothing can be locked for another reason counts as this copy's.
    virtual FolderHold take() = 0;
};

// The per-user settings store of the platform: one text value per key.
class StateStore {
  public:
    virtual ~StateStore() = default;

    // The stored value, or nothing when the key was never written.
    virtual std::optional<std::string> value(std::string_view key) const = 0;
    virtual void setValue(std::string_view key, std::string_view value) = 0;
};

// A store that lasts as long as the program: for the demo and for tests.
class MemoryStore : public StateStore {
  public:
    std::optional<std::string> value(std::string_view key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void setValue(std::string_view key, std::string_view value) override {
        values_[std::string(key)] = value;
    }

    const auto& values() const { return values_; }

  private:
    std::map<std::string, std::string, std::less<>> values_;
};

// What a certificate (RFC 5280) says, in UTF-8. The texts are its owner's and may be of any length.
struct Certificate {
    std::string subject;
    std::string issuer;
    std::string names; // of the hosts that it is for, with ", " between them
    std::string validFrom;
    std::string validUntil;
    std::string fingerprint; // SHA-256, in lower-case hexadecimal digits

    bool operator==(const Certificate&) const = default;
};

// A certificate for which nobody vouches, and what is to be said about it.
struct CertificateQuestion {
    int site = 0;
    std::string siteName;
    std::string host; // as configured
    std::int32_t port = 0;
    std::vector<std::string> problems; // sentences; UTF-8
    Certificate certificate;
    std::string remembered; // the fingerprint that was trusted before; empty where none was
};

enum class CertificateAnswer { connectOnce, alwaysTrust, disconnect };

// The words of a question's two buttons, with "&" before a letter; empty for "yes" and "no".
struct ChoiceWords {
    std::string yes;
    std::string no;
};

// What the program asks a person. Every call returns at once: the window shows a modal box and goes on with
// its events, and the answer comes later, on the user-interface thread. All texts are UTF-8; line breaks
// in them are CR LF.
class Prompts {
  public:
    virtual ~Prompts() = default;

    // A message with one OK button.
    virtual void Message(const std::string& text) = 0;

    // A yes/no question; answer is called once, with true for yes. Closing the box is a no, and so is Enter.
    void AskYesNo(const std::string& question, std::function<void(bool)> answer) {
        AskChoice(question, {}, std::move(answer));
    }

    // The same with other words on the two buttons.
    virtual void AskChoice(const std::string& question, const ChoiceWords& words,
                           std::function<void(bool)> answer) = 0;

    // An input box; answer is called once, with nothing when the person cancels.
    virtual void AskText(const std::string& title, const std::string& prompt,
                         std::function<void(std::optional<std::string>)> answer) = 0;

    // The same for a password, which nobody can read while it is typed.
    virtual void AskPassword(const std::string& title, const std::string& prompt,
                             std::function<void(std::optional<std::string>)> answer) = 0;

    // Whether to go on with a certificate, in a window of its own for each site, which holds up nothing else.
    // answer is called once, or never where the site's connection ends before: the question closes then.
    virtual void AskCertificate(const CertificateQuestion& question,
                                std::function<void(CertificateAnswer)> answer) = 0;
};

// A process id of the platform; 0 for none.
using ProcessId = std::uint32_t;

// The desktop that the program runs on. All texts are UTF-8. Nothing here says when it fails, and nothing
// is ever read by a command interpreter.
class Shell {
  public:
    virtual ~Shell() = default;

    // Opens a program, a document or an address, as a double click on it would. A relative name is looked for
    // beside the running program first. A program gets no arguments.
    virtual void open(const std::string& target) = 0;

    virtual void setClipboardText(const std::string& text) = 0;

    // As the functions of the same names in menus/mdlProcesses.
    virtual ProcessId FindProcessByPath(const std::string& pattern) const = 0;
    virtual bool KillProcess(ProcessId id) = 0;

    // Ends the program, the same way as closing the main window does.
    virtual void quit() = 0;
};

// The states of a socket, with the numbers of the socket control.
enum class SocketState {
    closed = 0,
    open = 1,
    listening = 2,
    connectionPending = 3,
    resolvingHost = 4,
    hostResolved = 5,
    connecting = 6,
    connected = 7,
    closing = 8,
    error = 9,
};

// How a connection is encrypted.
struct EncryptionFacts {
    std::string protocol;           // as "TLS 1.3"; empty where nothing is encrypted
    std::string cipher;             // as "TLS_AES_256_GCM_SHA384"; empty where the system does not tell it
    std::vector<Certificate> chain; // of the server; its own first

    bool operator==(const EncryptionFacts&) const = default;
};

// One asynchronous TCP client connection. Its events (connected, encrypted, certificate, data, closed, error)
// reach the program through mdlMain's wSock functions, always from the event loop and never from inside a
// call made here.
class Socket {
  public:
    virtual ~Socket() = default;

    virtual SocketState state() const = 0;
    // Starts a connection; returns at once. host is a name or an address, port 1 to 65535. mayEncrypt:
    // whether StartEncryption may follow.
    virtual void Connect(const std::string& host, std::int32_t port, bool mayEncrypt) = 0;
    // Begins the TLS handshake (1.2 or later) as a client of the host that was given to Connect. It ends with
    // the event wSock_Encrypted or wSock_Error. Where the system does not vouch for the server's certificate
    // and its fingerprint is not the trusted one (which may be empty), the event wSock_Certificate comes
    // before, and the handshake waits for AcceptCertificate. Until it is over nothing that is sent here goes
    // out, and no byte that arrives in clear is an event. A certificate that is another one later ends the
    // connection.
    virtual void StartEncryption(const std::string& trusted) = 0;
    virtual void AcceptCertificate() = 0;
    // What was agreed; before the end of the handshake the chain alone, as soon as it is known.
    virtual const EncryptionFacts& encryption() const = 0;
    // Ends the connection at once and without an event; unsent and unread bytes are dropped.
    virtual void Close() = 0;
    // Hands bytes over for sending; does not wait for them to go out.
    virtual void Send(std::string_view bytes) = 0;

    // The two ends, as far as they are known; empty or 0 otherwise.
    virtual std::int32_t localPort() const = 0;
    virtual std::string remoteHost() const = 0;    // as given to Connect
    virtual std::string remoteAddress() const = 0; // the address that it was resolved to
    virtual std::int32_t remotePort() const = 0;
};

// The socket of no site: it is closed, and whatever is asked of it does nothing.
class NoSocket : public Socket {
  public:
    SocketState state() const override { return SocketState::closed; }
    void Connect(const std::string& /*host*/, std::int32_t /*port*/, bool /*mayEncrypt*/) override {}
    void StartEncryption(const std::string& /*trusted*/) override {}
    void AcceptCertificate() override {}
    const EncryptionFacts& encryption() const override { return nothing_; }
    void Close() override {}
    void Send(std::string_view /*bytes*/) override {}
    std::int32_t localPort() const override { return 0; }
    std::string remoteHost() const override { return {}; }
    std::string remoteAddress() const override { return {}; }
    std::int32_t remotePort() const override { return 0; }

  private:
    EncryptionFacts nothing_;
};

// Makes the socket of a site. The caller owns it.
using SocketFactory = std::function<std::unique_ptr<Socket>(int site)>;

// The three text logs of a site.
enum class LogKind { console, commandResults, browserReply };

// The dialogs that open when the core says so: an entry of a custom menu asks for them, or the server has
// sent what they need.
enum class Dialog { chmod, chattr, nuke, copyUser, userGroups };

// The two tables of a site.
enum class Accounts { users, groups };

// What has changed about a table: its records; what one of them shows in its row; the order of the rows;
// which of them are marked; what its editor shows. The first two concern the editors of both tables too.
enum class AccountChange { table, record, order, marks, editor };

// What of a site has changed.
enum class ViewPart {
    added,
    renamed,
    current, // another site is the current one; of no site
    log,
    // The browser's rows, their order, the counts, or whether anything can be done with them. Where the rows
    // are not arranged, the window has them arranged when it finds the time.
    listing,
    path,     // the browser's path box
    activity, // who is online, and the counters of it
    chattr,   // to whom a directory is shown
    accounts,
    session,    // the connection has ended; tables and activity are empty
    encryption, // whether and how the connection is encrypted
    lastError,  // what the server refused last
    jobs,       // those that run or wait, what became of their commands, or the journal
    removed     // the site itself; nothing follows that is about it
};

struct ViewChange {
    ViewPart part = ViewPart::added;
    int site = 0;
    LogKind log = LogKind::console;      // of the part log
    Accounts accounts = Accounts::users; // this and the next: of the part accounts
    AccountChange account = AccountChange::table;

    bool operator==(const ViewChange&) const = default;
};

// What the core tells the window: that something has changed. The window reads the new state from mdlMain
// when it next shows it. Calls are cheap and may be frequent: an implementation gathers them and shows each
// once per turn of the event loop.
class Views {
  public:
    virtual ~Views() = default;

    virtual void changed(const ViewChange& change) = 0;
    // A dialog is to open for the row selected in the site's list: the users for the last two, else the
    // browser. Without one, none opens.
    virtual void dialogWanted(int site, Dialog dialog) = 0;

    // The changes by their names. Sites count from 1.
    void siteAdded(int site) { changed({.part = ViewPart::added, .site = site}); }
    void siteRemoved(int site) { changed({.part = ViewPart::removed, .site = site}); }
    void siteRenamed(int site) { changed({.part = ViewPart::renamed, .site = site}); }
    void currentSiteChanged() { changed({.part = ViewPart::current}); }
    void logChanged(int site, LogKind log) { changed({.part = ViewPart::log, .site = site, .log = log}); }
    void listingChanged(int site) { changed({.part = ViewPart::listing, .site = site}); }
    void pathChanged(int site) { changed({.part = ViewPart::path, .site = site}); }
    void activityChanged(int site) { changed({.part = ViewPart::activity, .site = site}); }
    void chattrAnswered(int site) { changed({.part = ViewPart::chattr, .site = site}); }
    void accountsChanged(int site, Accounts accounts, AccountChange change) {
        changed({.part = ViewPart::accounts, .site = site, .accounts = accounts, .account = change});
    }
    void sessionReset(int site) { changed({.part = ViewPart::session, .site = site}); }
    void encryptionChanged(int site) { changed({.part = ViewPart::encryption, .site = site}); }
    void lastErrorChanged(int site) { changed({.part = ViewPart::lastError, .site = site}); }
    void jobsChanged(int site) { changed({.part = ViewPart::jobs, .site = site}); }
};

} // namespace corvel
