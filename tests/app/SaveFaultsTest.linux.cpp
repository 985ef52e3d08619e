#include "app/SitesKeeper.h"
#include "config/PlatformFiles.h"
#include "support/FaultyCalls.h"
#include "support/TemporaryDirectory.h"
#include "support/TestPorts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

// The save of sites.ini on a disk that fails, and in a program that dies, at every call in turn.

namespace corvel::test {
namespace {

const std::vector<SiteConfig> edited = {{.name = "mine", .pass = "secret"}};
const std::string mine = sitesText(edited, "\n");
const std::string old = sitesText({{.name = "old"}}, "\n");
const std::string theirs = sitesText({{.name = "theirs"}}, "\n");

// A person has edited the sites, and the window closes. isConflict: another program has written the file in
// between, and the person wants the own text.
struct Saving {
    explicit Saving(bool conflict) : isConflict(conflict) {
        directory.write("sites.ini", old);
        keeper.load();
        if (isConflict) {
            directory.write("sites.ini", theirs);
            prompts.answers = {"yes"};
        }
    }

    void change() { problem = keeper.changed(edited); }
    void save() { isSaved = keeper.save(edited); }
    std::string file() const { return directory.read("sites.ini"); }

    // Whether a file of the folder, sites.ini or another, has the text.
    bool has(const std::string& text) const {
        const std::filesystem::directory_iterator files(filePath(directory.path()));
        return std::any_of(begin(files), end(files), [&](const auto& entry) {
            return directory.read(entry.path().filename().string()) == text;
        });
    }

    bool isConflict;
    TemporaryDirectory directory;
    RecordingPrompts prompts;
    FakeLock lock;
    FixedClock clock;
    SitesKeeper keeper{prompts, lock, clock, directory.fileNamed("sites.ini")};
    std::string problem;
    bool isSaved = false;
};

TEST(SaveFaults, CostNeitherTextNorSilence) {
    using enum Fault::Kind;
    for (const bool isConflict : {false, true}) {
        const std::string& before = isConflict ? theirs : old;
        for (const Fault& kind :
             {Fault{error, 0, ENOSPC}, Fault{error, 0, EIO}, Fault{lasting, 0, ENOSPC}, Fault{cut}}) {
            Fault fault = kind;
            int calls = 1;
            for (fault.at = 1; fault.at <= calls; ++fault.at) {
                SCOPED_TRACE(testing::Message()
                             << "call " << fault.at << " of kind " << static_cast<int>(fault.kind)
                             << (isConflict ? ", conflict" : ""));
                Saving at(isConflict);
                calls = withFault(fault, [&] { at.change(), at.save(); });
                const bool isNew = at.file() == mine;
                EXPECT_TRUE(isNew || at.file() == before);
                EXPECT_TRUE(!isConflict || at.has(theirs));
                EXPECT_TRUE(isNew || at.has(mine) || !at.isSaved);
                const bool isTold = std::ranges::any_of(at.prompts.asked, [](const std::string& text) {
                    return text.starts_with("Sites file ");
                });
                EXPECT_TRUE(isNew || isTold);

                at.prompts.answers = {"yes"};
                at.keeper.save(edited);
                EXPECT_EQ(at.file(), mine) << "the program goes on";
            }
            EXPECT_GT(fault.at, 5) << "there was something to fail";
        }
    }
}

TEST(SaveFaults, KilledAtAnyCallLeaveAWholeFile) {
    for (const bool isConflict : {false, true}) {
        int calls = 1;
        int callsOfChange = 0;
        {
            Saving whole(isConflict);
            const Fault none{Fault::Kind::cut, 0};
            callsOfChange = withFault(none, [&] { whole.change(); });
            calls = callsOfChange + withFault(none, [&] { whole.save(); });
        }
        for (int i = 1; i <= calls; ++i) {
            SCOPED_TRACE(testing::Message() << "call " << i << (isConflict ? ", conflict" : ""));
            Saving at(isConflict);
            if (const pid_t child = fork(); child == 0) {
                withFault({Fault::Kind::kill, i}, [&] { at.change(), at.save(); });
                std::_Exit(0);
            } else {
                int status = 0;
                ASSERT_EQ(waitpid(child, &status, 0), child);
                ASSERT_TRUE(WIFSIGNALED(status));
            }
            EXPECT_TRUE(at.file() == mine || at.file() == (isConflict ? theirs : old));
            EXPECT_TRUE(!isConflict || at.has(theirs));
            EXPECT_TRUE(i <= callsOfChange || at.has(mine)) << "what was kept at the change";

            SitesKeeper next(at.prompts, at.lock, at.clock, at.directory.fileNamed("sites.ini"));
            EXPECT_EQ(next.load().size(), 1U);
            EXPECT_TRUE(next.problems().empty());
            EXPECT_TRUE(!next.offer() || *next.offer() == edited);
            for (const auto& entry : std::filesystem::directory_iterator(filePath(at.directory.path()))) {
                EXPECT_NE(entry.path().extension(), ".tmp") << "a part of the passwords";
            }
        }
    }
}

} // namespace
} // namespace corvel::test
