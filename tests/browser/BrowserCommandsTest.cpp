#include "browser/BrowserCommands.h"

#include "browser/FileDialogs.h"
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
        const std::vector<std::string_view> lines = split(row.reply, lineEnd);
        EXPECT_EQ(recogniseBrowserReply(row.command, lines.front(), lines.back(), row.code), row.recognised)
            << row.command << ": " << row.reply;
    }
    EXPECT_FALSE(mayList("CWD /my al bum of 5 cd 1 a", 550)) << "a refusal has no entries";
    EXPECT_TRUE(mayList("STAT -a", 550));
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

Command quietly(std::string line) {
    return {.sCommand = std::move(line), .bQuiet = true, .iHandler = 108, .iTag = 0};
}

TEST(Chattr, SendsWhatIsSelected) {
    struct Row {
        ChattrForm form;
        std::string line; // empty: nothing
        bool isUnseen = false;
    };
    const std::vector<Row> table = {
        {{.sName = "pub",
          .chkFlags = true,
          .txtFlags = "3M",
          .lstUsers = {{"zoe", true}, {"alice"}, {"bob", true}},
          .lstGroups = {{"b", true}, {"a", true}}},
         R"(site chattr +h "pub" " 3M -zoe -bob =b =a")"},
        {{.sName = "pub", .txtFlags = "3M", .lstGroups = {{"staff", true}}},
         R"(site chattr +h "pub" " =staff")"},
        {{.sName = "a \"b\" %(c) \xE4", .chkFlags = true, .txtFlags = "\xFC\""},
         "site chattr +h \"a \"b\" %(c) \xE4\" \" \xFC\"\""},
        {{.sName = "a b", .txtCurrent = "-bob"}, R"(site chattr -h "a b")"},
        {{.sName = "pub", .txtCurrent = "550 no", .isRefused = true}, R"(site chattr -h "pub")", true},
        {{.sName = "pub", .txtCurrent = "550 no", .isRefused = true, .lstUsers = {{"bob", true}}},
         R"(site chattr +h "pub" " -bob")"},
    };
    for (const Row& row : table) {
        EXPECT_EQ(chattrCommands(row.form),
                  row.line.empty() ? std::vector<Command>() : std::vector{quietly(row.line)});
        EXPECT_EQ(clearsUnseen(row.form), row.isUnseen) << row.line;
    }
}

TEST(Chmod, ShowsTheModeOfAnEntryAndSendsIt) {
    const ChmodForm link = chmodForm("/a", {.name = "l -> ../t", .access = "lrwsr-Sr-T"});
    EXPECT_EQ(chmodCommands(link), std::vector{quietly("SITE chmod 755 /a/l -> ../t")})
        << "other letters count";
    const ChmodForm form = chmodForm("/", {.name = "%(x) \xFF", .access = "d---r--r--"});
    EXPECT_EQ(chmodCommands(form), std::vector{quietly("SITE chmod 044 /%(x) \xFF")}) << "no zero is lost";
    EXPECT_EQ(form.chkX, (Permissions{false, false, false, true, false, false, true, false, false}));
    const BrowserEntry plain = {.name = "a", .access = "-rw-r--r--"};
    const BrowserEntry same = {.name = "b", .access = "drw-r--r--"};
    const BrowserEntry other = {.name = "c", .access = "-rw-------"};
    EXPECT_EQ(chmodForm("/", {&plain, &same}, "").modeOf, "");
    EXPECT_EQ(chmodForm("/", {&plain, &same, &other}, "").modeOf, "a");
}

TEST(Chmod, BoxesFollowATypedMode) {
    EXPECT_EQ(permissionsOf("4755"), permissionsOf("755"));
    EXPECT_EQ(chmodValue({true}, "4755"), "4400") << "a typed fourth digit stays";
    for (const char* const text : {"", "75", "758", " 755", "00755"}) {
        EXPECT_EQ(permissionsOf(text), std::nullopt) << text;
    }
}

TEST(Nuke, FillsTheTemplateOfTheSettings) {
    const NukeForm form{"/", "%(mult)\xE4\" b", "3", " b  %(name)"};
    EXPECT_EQ(nukeCommand(form, {"site nuke %(name) %(MULT,3,R,0) %(reason)", "_"}),
              quietly("site nuke %(mult)\xE4\" b 003 _b__%(name)"));
}

} // namespace
} // namespace corvel
