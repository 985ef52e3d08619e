#include "browser/Navigation.h"

#include "browser/FileOperations.h"
#include "browser/Listing.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Navigation, LeadsWhereTheRowPoints) {
    struct Case {
        const char* name;
        const char* current;
        const char* row;
        const char* access;
        std::optional<std::string> target;
    };
    const std::vector<Case> cases = {
        {"up at the root", "/", "..", "drwxr-xr-x", std::nullopt},
        {"up to the root", "/pub", "..", "drwxr-xr-x", "/"},
        {"up from a relative directory", "a/b", "..", "drwxr-xr-x", "a"},
        {"up from nowhere", "", "..", "drwxr-xr-x", "/"},
        {"itself", "/a", ".", "drwxr-xr-x", std::nullopt},
        {"directory", "/pub", "dir", "drwxr-xr-x", "/pub/dir"},
        {"directory with an arrow in its name", "/pub", "a -> b", "drwxr-xr-x", "/pub/a -> b"},
        {"file", "/", "f", "-rw-r--r--", std::nullopt},
        {"no access", "/", "d", "", std::nullopt},
        {"link", "/x", "lnk -> /site/incoming/", "lrwxrwxrwx", "/site/incoming"},
        {"link with one slash left", "/x", "lnk -> /site//", "lrwxrwxrwx", "/site/"},
        {"arrow in the target", "/x", "a -> b -> c", "lrwxrwxrwx", "b -> c"},
        {"link without a target", "/x", "lnk", "lrwxrwxrwx", "/x/lnk"},
        {"link with an empty target", "/x", "lnk -> ", "lrwxrwxrwx", std::nullopt},
        {"arrow at the start is a name", "/x", " -> y", "lrwxrwxrwx", "/x/ -> y"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(navigationTarget(row.current, row.row, row.access), row.target) << row.name;
    }
}

std::string sent(const std::vector<Command>& commands) {
    std::string text;
    for (const Command& command : commands) {
        text += command.sCommand + "/" + std::to_string(command.iHandler) + (command.bQuiet ? "q" : "") +
                std::to_string(command.iTag) + ";";
    }
    return text;
}

TEST(FileOperations, SendTheirCommands) {
    struct Case {
        const char* name;
        std::vector<Command> commands;
        const char* sent;
    };
    const std::vector<Case> cases = {
        {"refresh", refreshCommands(), "STAT -a/100q0;"},
        {"the button called mkdir", mkdirButtonCommands(), "STAT -a/100q0;NOOP/255q0;"},
        {"directory", changeDirectoryCommands("/a b"), "CWD /a b/100q0;"},
        {"new directory", makeDirectoryCommands(" "), "MKD  /108q0;"},
        {"rename", renameCommands("a b", "c"), "RNFR a b/108q0;RNTO c/108q0;"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(sent(row.commands), row.sent) << row.name;
    }
}

TEST(FileOperations, DeleteTheBytesAsTheyCameAndAskInVisibleLetters) {
    const auto directory =
        deletion({.name = "\xE9\x1b", .type = BrowserEntryType::directory}, TextEncoding::windows1252);
    ASSERT_TRUE(directory);
    EXPECT_EQ(directory->question, "Are u sure u want to delete this directory:\r\n\xC3\xA9\xE2\x90\x9B");
    EXPECT_EQ(sent({directory->command}), "RMD \xE9\x1b/108q0;");
}

TEST(ColumnFit, GivesTheNameWhatIsLeft) {
    const std::array<int, 5> others = {1000, 1000, 500, 500, 600};
    EXPECT_EQ(FitBrowserColumns(9000, others), 5000);
    EXPECT_EQ(FitBrowserColumns(6001, others), 2001);
    EXPECT_EQ(FitBrowserColumns(6000, others), 2000);
    EXPECT_EQ(FitBrowserColumns(0, others), 2000);
}

} // namespace
} // namespace corvel
