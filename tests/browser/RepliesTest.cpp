#include "browser/Replies.h"

#include "common/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(BrowserReplies, AreRecognised) {
    using enum BrowserReply;
    struct Case {
        const char* name;
        const char* command;
        const char* reply;
        int code;
        BrowserReply recognised;
    };
    const std::vector<Case> cases = {
        {"known success", "CWD /", "250 CWD command successful.", 250, cwdSucceeded},
        {"known success to another command", "STAT -a", "250 CWD command successful", 250, cwdSucceeded},
        {"other success behind a message", "CWD /x", "250-Read me\r\n250 OK. Current directory is /x", 250,
         cwdSucceeded},
        {"lower-case command", "cwd /x", "250 Okay", 250, cwdSucceeded},
        {"refused", "CWD /x", "550 /x: No such file or directory", 550, listing},
        {"250 to the listing", "STAT -a", "250 done", 250, listing},
        {"known directory", "PWD", "257 \"/\" is current directory.", 257, directory},
        {"known directory to another command", "STAT -a", "257 \"/\" is current directory", 257, directory},
        {"bare directory", "PWD", "257 \"/\"", 257, directory},
        {"directory without quotes", "PWD", "257 /pub", 257, directoryUnknown},
        {"directory with one quote", "PWD", "257 \"/pub", 257, directoryUnknown},
        {"quoted, but to the listing", "STAT -a", "257 \"/pub\" created", 257, listing},
        {"listing to PWD", "PWD", "drwxr-xr-x 2 u g 1 Jan 5 12:00 a\r\n211 End", 211, directoryUnknown},
        {"listing of the other code", "STAT -a", "213-Status follows:\r\n213 End of status", 213, listing},
        {"command that only begins alike", "CWDX", "250 fine", 250, listing},
        {"nothing", "STAT -a", "", 0, listing},
    };
    for (const Case& row : cases) {
        const std::string reply = std::string(row.reply) + "\r\n";
        EXPECT_EQ(recogniseBrowserReply(row.command, split(reply, lineEnd), row.code), row.recognised)
            << row.name;
    }
    EXPECT_EQ(recogniseBrowserReply("CWD /", {}, 0), listing) << "no lines at all";
}

TEST(BrowserReplies, RefusalsHaveNoEntries) {
    const std::vector<std::string_view> lines = {"550 /my al bum of 5 cd 1 a: No such file", ""};
    EXPECT_TRUE(listingLines("CWD /my al bum of 5 cd 1 a", lines, 550).empty());
    EXPECT_EQ(listingLines("CWD /", lines, 212).size(), 2U);
    EXPECT_EQ(listingLines("STAT -a", lines, 550).size(), 2U);
}

TEST(BrowserReplies, NameTheDirectory) {
    struct Case {
        const char* name;
        const char* line;
        const char* directory;
    };
    const std::vector<Case> cases = {
        {"root", "257 \"/\" is current directory.", "/"},
        {"slash at the end", "257 \"/pub/\" is current directory.", "/pub"},
        {"doubled quote", "257 \"/a \"\"b\"\" c\" is current directory.", "/a \"b\" c"},
        {"doubled quote at the end", "257 \"/a\"\"\" is current directory.", "/a\""},
        {"doubled quote that never closes", "257 \"/a\"\" is current directory.", "/a"},
        {"empty", "257 \"\" is current directory.", ""},
        {"no quotes", "257 /a is current directory", "257 /a is current directory"},
        {"one quote", "257 \"/a is current directory/", "257 \"/a is current directory"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(directoryOf(row.line), row.directory) << row.name;
    }
}

} // namespace
} // namespace corvel
