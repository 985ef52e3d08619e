#include "browser/BrowserCommands.h"

#include "common/Text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Navigation, LeadsWhereTheRowPoints) {
    struct Case {
        const char* current;
        const char* row;
        const char* access;
        std::optional<std::string> target;
    };
    const std::vector<Case> cases = {
        {"/", "..", "drwxr-xr-x", std::nullopt},
        {"/pub", "..", "drwxr-xr-x", "/"},
        {"/pub", "a -> b", "drwxr-xr-x", "/pub/a -> b"},
        {"/", "f", "-rw-r--r--", std::nullopt},
        {"/x", "lnk -> /site/incoming/", "lrwxrwxrwx", "/site/incoming"},
        {"/x", "lnk -> ", "lrwxrwxrwx", std::nullopt},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(navigationTarget(row.current, row.row, row.access), row.target) << row.row;
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

TEST(BrowserCommands, AreSentAsTheyStand) {
    EXPECT_EQ(sent(mkdirButtonCommands()), "STAT -a/100q0;NOOP/255q0;");
    EXPECT_EQ(sent(makeDirectoryCommands(" ")), "MKD  /108q0;");
    EXPECT_EQ(sent(renameCommands("a b", "c")), "RNFR a b/108q0;RNTO c/108q0;");
    const auto directory = deletion({.name = "\xE9\x1b", .type = BrowserEntryType::directory});
    EXPECT_EQ(directory->question, "Are u sure u want to delete this directory:\r\n\xC3\xA9\xE2\x90\x9B");
    EXPECT_EQ(sent({directory->command}), "RMD \xE9\x1b/108q0;") << "the bytes as they came";
    EXPECT_EQ(deletion({.name = ".."}), std::nullopt);
}

TEST(BrowserReplies, AreRecognised) {
    using enum BrowserReply;
    struct Case {
        const char* command;
        const char* reply;
        int code;
        BrowserReply recognised;
    };
    const std::vector<Case> cases = {
        {"STAT -a", "250 CWD command successful", 250, cwdSucceeded},
        {"cwd /x", "250-Read me\r\n250 OK. Current directory is /x", 250, cwdSucceeded},
        {"CWD /x", "550 /x: No such file or directory", 550, listing},
        {"STAT -a", "257 \"/\" is current directory", 257, directory},
        {"PWD", "257 \"/\"", 257, directory},
        {"PWD", "257 \"/pub", 257, directoryUnknown},
        {"PWD", "drwxr-xr-x 2 u g 1 Jan 5 12:00 a\r\n211 End", 211, directoryUnknown},
    };
    for (const Case& row : cases) {
        const std::string reply = std::string(row.reply) + "\r\n";
        EXPECT_EQ(recogniseBrowserReply(row.command, split(reply, lineEnd), row.code), row.recognised)
            << row.command << ": " << row.reply;
    }
    const std::vector<std::string_view> lines = {"550 /my al bum of 5 cd 1 a: No such file", ""};
    EXPECT_TRUE(listingLines("CWD /my al bum of 5 cd 1 a", lines, 550).empty()) << "a refusal has no entries";
    EXPECT_EQ(listingLines("STAT -a", lines, 550).size(), 2U);
}

TEST(BrowserReplies, NameTheDirectory) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"257 \"/\" is current directory.", "/"},
        {"257 \"/pub/\" is current directory.", "/pub"},
        {"257 \"/a \"\"b\"\" c\" is current directory.", "/a \"b\" c"},
        {"257 \"/a\"\" is current directory.", "/a"},
    };
    for (const auto& [line, directory] : cases) {
        EXPECT_EQ(directoryOf(line), directory) << line;
    }
}

} // namespace
} // namespace corvel
