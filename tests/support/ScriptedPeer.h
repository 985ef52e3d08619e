#pragma once

#include "app/mdlMain.h"
#include "support/TemporaryDirectory.h"
#include "support/TestPorts.h"

#include <algorithm>
#include <string>
#include <vector>

namespace corvel::test {

// The whole program with test ports and a directory of its own.
class TestProgram {
  public:
    // sitesFile, settingsFile: the texts of the two files; an empty one means no file. Starts up as the
    // window does.
    explicit TestProgram(const std::string& sitesFile, const std::string& settingsFile = {});

    FakeSocket& socket(int site) { return *sockets[static_cast<std::size_t>(site) - 1]; }
    const SiteSession& session(int site) const { return main.site(site).session; }

    // The text of a log without the fixed time in front of each line.
    std::string console(int site) const;
    std::string commandResults(int site) const;

    // Whether the window was told so, as RecordingViews writes it.
    bool told(const std::string& call) const { return std::ranges::count(views.calls, call) > 0; }

    TemporaryDirectory directory;
    RecordingViews views;
    RecordingPrompts prompts;
    MemoryStore store;
    FixedClock clock;
    RecordingShell shell;
    FakeLock lock;
    std::vector<FakeSocket*> sockets; // of sites 1 and up; owned by the program
    mdlMain main;
};
// One line of a script, from the server's point of view.
struct Step {
    enum class Kind { expect, send, encrypted, close };
    Kind kind;
    std::string text; // expect: a line without CR LF; send: bytes as they are
};

inline Step expect(std::string line) {
    return {Step::Kind::expect, std::move(line)};
}
inline Step send(std::string bytes) {
    return {Step::Kind::send, std::move(bytes)};
}
inline Step encrypted() {
    return {Step::Kind::encrypted, {}};
}
inline Step hangUp() {
    return {Step::Kind::close, {}};
}

using Script = std::vector<Step>;

// Plays the server of a site that is connecting or connected. Fails the test when the client sends another
// line than the script expects, or any line more. name: which conversation, for the failure's text. cutAt:
// where everything that the server sends is cut in two; otherwise each text of the script arrives as a whole.
void play(TestProgram& program, int site, const Script& script, const std::string& name,
          std::size_t cutAt = std::string::npos);

// The login of "bob" up to the point where the client's own commands are answered: the tables with
// "500 Unknown" and the root directory as empty.
Script loginScript();

// What is asked for and answered where a directory is listed that is then "/pub". listing: the reply.
Script listingScript(const std::string& listing);

Script operator+(Script first, const Script& second);

// A sites.ini with the sites "site1", "site2" ... on hosts host1, host2 ..., user "bob", password "secret".
std::string sitesFile(int count);

// A program of so many sites, of which site 1 has logged in.
struct LoggedIn : TestProgram {
    explicit LoggedIn(int sites = 1, const std::string& settingsFile = {});

    void logIn();

    // Plays the server of site 1.
    void answer(const Script& script, const std::string& name) { play(*this, 1, script, name); }
};

} // namespace corvel::test
