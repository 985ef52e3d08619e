#pragma once

#include "app/mdlMain.h"
#include "common/Ports.h"
#include "support/TemporaryDirectory.h"
#include "support/TestPorts.h"

#include <algorithm>
#include <string>
#include <string_view>
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

// A sites.ini with the sites "one", "two" ... on hosts host1, host2 ..., user "bob", password "secret".
std::string sitesFile(int count);

} // namespace corvel::test
