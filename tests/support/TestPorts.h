#pragma once

#include "common/Ports.h"

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvel::test {

using Texts = std::vector<std::string>;

// A clock that stands still until the test moves it.
class FixedClock : public Clock {
  public:
    std::string timeOfDay() const override { return "12:34:56"; }
    std::string stamp() const override { return "2001-02-03-123456"; }
    std::int64_t milliseconds() const override { return now; }

    std::int64_t now = 0;
};

// A lock that the test gives to this copy of the program or to another.
class FakeLock : public FolderLock {
  public:
    FolderHold take() override { return hold; }

    FolderHold hold = FolderHold::ours;
};

// Remembers, in order, what the window was told, as "what site".
class RecordingViews : public Views {
  public:
    void changed(const ViewChange& change) override {
        static constexpr std::array names = {"siteAdded",
                                             "siteRenamed",
                                             "currentSiteChanged",
                                             "",
                                             "listingChanged",
                                             "pathChanged",
                                             "activityChanged",
                                             "chattrAnswered",
                                             "",
                                             "sessionReset",
                                             "encryptionChanged",
                                             "lastErrorChanged",
                                             "",
                                             "siteRemoved"};
        const std::string name = names[static_cast<std::size_t>(change.part)];
        const std::string site = " " + std::to_string(change.site);
        if (change.part == ViewPart::accounts) {
            note((change.accounts == Accounts::users ? "users" : "groups") + site + " " +
                 std::to_string(static_cast<int>(change.account)));
        } else if (!name.empty()) { // the logs speak for themselves
            note(name + site);
        }
    }
    void dialogWanted(int site, Dialog dialog) override {
        note("dialogWanted " + std::to_string(site) + " " + std::to_string(static_cast<int>(dialog)));
    }

    Texts calls;
    std::function<void(const std::string&)> whenTold; // with each call, once it is noted

  private:
    void note(const std::string& call) {
        calls.push_back(call);
        if (whenTold) {
            whenTold(call);
        }
    }
};

// Answers every question from a list given beforehand, at once; a question without an answer is cancelled.
class RecordingPrompts : public Prompts {
  public:
    void Message(const std::string& text) override { asked.push_back(text); }

    void AskChoice(const std::string& question, const ChoiceWords& /*words*/,
                   std::function<void(bool)> answer) override {
        asked.push_back(question);
        if (beforeAnswer) {
            beforeAnswer();
        }
        answer(!answers.empty() && next() == "yes");
    }

    void AskText(const std::string& /*title*/, const std::string& prompt,
                 std::function<void(std::optional<std::string>)> answer) override {
        asked.push_back(prompt);
        answer(answers.empty() ? std::nullopt : std::optional(next()));
    }

    void AskPassword(const std::string& title, const std::string& prompt,
                     std::function<void(std::optional<std::string>)> answer) override {
        AskText(title, prompt, std::move(answer));
    }

    void AskCertificate(const CertificateQuestion& question,
                        std::function<void(CertificateAnswer)> answer) override {
        asked.push_back(question.host + " " + question.certificate.fingerprint + " " + question.remembered);
        answerCertificate = std::move(answer); // the test gives it, or nobody
    }

    Texts asked;
    std::deque<std::string> answers;
    std::function<void(CertificateAnswer)> answerCertificate;
    std::function<void()> beforeAnswer; // what happens while a yes-or-no question is open

  private:
    std::string next() {
        std::string answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

// Remembers, in order, what it was asked to do, and does nothing. One process runs: number 7.
class RecordingShell : public Shell {
  public:
    void open(const std::string& target) override { calls.push_back("open " + target); }
    void setClipboardText(const std::string& text) override { calls.push_back("copy " + text); }
    ProcessId FindProcessByPath(const std::string& pattern) const override {
        return pattern == runningPath ? 7 : 0;
    }
    bool KillProcess(ProcessId id) override {
        calls.push_back("kill " + std::to_string(id));
        return true;
    }
    void quit() override { calls.emplace_back("quit"); }

    std::string runningPath;
    Texts calls;
};

// A socket without a network: the test sets its state and reads what was sent.
class FakeSocket : public Socket {
  public:
    SocketState state() const override { return current; }
    void Connect(const std::string& host, std::int32_t port, bool /*mayEncrypt*/) override {
        connectedTo = host + ":" + std::to_string(port);
        current = SocketState::connecting;
    }
    void StartEncryption(const std::string& trusted) override { sent += "(handshake)" + trusted + "\r\n"; }
    void AcceptCertificate() override { sent += "(accepted)\r\n"; }
    const EncryptionFacts& encryption() const override { return facts; }
    void Close() override { current = SocketState::closed; }
    void Send(std::string_view bytes) override { sent += bytes; }
    std::int32_t localPort() const override { return 4711; }
    std::string remoteHost() const override { return connectedTo.substr(0, connectedTo.find(':')); }
    std::string remoteAddress() const override { return address; }
    std::int32_t remotePort() const override { return 21; }

    // The lines sent since the last call, each without its CR LF; a line without one is marked as cut.
    Texts takeSentLines() {
        Texts lines;
        while (!sent.empty()) {
            const std::size_t end = sent.find("\r\n");
            lines.push_back(end == std::string::npos ? "(cut) " + sent : sent.substr(0, end));
            sent.erase(0, end == std::string::npos ? end : end + 2);
        }
        return lines;
    }

    SocketState current = SocketState::closed;
    std::string connectedTo;
    std::string address = "10.0.0.5"; // of the other end
    std::string sent;
    EncryptionFacts facts;
};

} // namespace corvel::test
