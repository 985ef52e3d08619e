#include "demo/DemoCommands.h"

#include "browser/Listing.h"
#include "browser/Navigation.h"
#include "common/Text.h"
#include "common/TextEncoding.h"
#include "demo/Dialogue.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(DemoCommands, LogInAndStayInOrder) {
    const std::vector<DialogueCase> cases = {
        {"nothing before login", {{"CWD /", "530 *"}, {"STAT -a", "530 *"}, {"SITE CHMOD 755 /", "530 *"}}},
        {"password first", {{"PASS demo", "503 *"}}},
        {"wrong password, then the right one",
         {{"USER demo", "331 *"},
          {"PASS no", "530 *"},
          {"PASS demo", "503 *"},
          {"USER demo", "331 *"},
          {"PASS demo", "*230 *"}}},
        {"unknown user is not told apart",
         {{"USER nobody", "331 *"}, {"PASS nobody", "530 Login incorrect."}}},
        {"verbs in any case", {{"uSeR demo", "331 *"}, {"pass demo", "*230 *"}, {"noop", "200 *"}}},
    };
    play(cases, false);
}

TEST(DemoCommands, RefuseWhatIsNoCommand) {
    using namespace std::string_literals;
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    const std::vector<Exchange> rows = {
        {"", "500 *"},
        {" NOOP", "500 *"},
        {"FROB x", "500 'FROB': *"},
        {"SITE", "501 *"},
        {"CWD ", "501 *"},
        {"LIST", "502 *"},
        {"\x80\xff\x01\x02", "500 *"},
        {"CWD a\0b"s, "500 *"},
        {"CWD a\rb", "500 *"},
        {"MKD a\nb", "500 *"},
        {std::string(4096, 'A'), "500 *"},
    };
    for (const Exchange& row : rows) {
        const std::string reply = ask(world, client, row.command);
        EXPECT_TRUE(matchesPattern(reply, row.pattern)) << row.command << "\n" << reply;
        EXPECT_TRUE(isValidUtf8(reply)) << row.command;
        EXPECT_EQ(reply.find('\n'), std::string::npos) << row.command;
    }
}

TEST(DemoCommands, WalkTheTree) {
    play({
        {"above the root is the root", {{"CWD ../../..", "250 *"}, {"PWD", "257 \"/\" *"}}},
        {"blanks stay as they are",
         {{"CWD /pub/two  blanks", "250 *"},
          {"PWD", "257 \"/pub/two  blanks\" *"},
          {"CWD /pub/two blanks", "550 *"}}},
        {"names beyond ASCII", {{"CWD pub/日本語", "250 *"}, {"PWD", "257 \"/pub/日本語\" *"}}},
        {"relative link counts from where it lies",
         {{"CWD /pub/latest", "250 *"}, {"PWD", "257 \"/archive/2021\" *"}}},
        {"link to nothing", {{"CWD /pub/nowhere", "550 *: No such file or directory."}}},
        {"link to itself", {{"CWD /pub/circle", "550 *: Too many levels *"}}},
        {"file is no directory",
         {{"CWD /welcome.txt", "550 *: Not a directory."},
          {"CWD /welcome.txt/..", "550 *: Not a directory."}}},
        {"refused directory leaves the old one",
         {{"CWD /pub", "250 *"},
          {"CWD /private", "550 /private: Permission denied."},
          {"PWD", "257 \"/pub\" *"}}},
        {"nothing below a refused directory",
         {{"CWD /private/x", "550 *: Permission denied."}, {"STAT -a /private", "550 *"}}},
        {"quotes are doubled in replies",
         {{"MKD a\"b", "257 \"/a\"\"b\" *"},
          {"CWD a\"b", "250 *"},
          {"PWD", "257 \"/a\"\"b\" is current directory."}}},
    });
}

TEST(DemoCommands, ChangeTheTree) {
    play({
        {"made, renamed, removed",
         {{"MKD new one", "257 \"/new one\" *"},
          {"STAT -a", "*drwxr-xr-x   2 demo     staff * new one\r\n*"},
          {"MKD new one", "550 *: File exists."},
          {"RNFR new one", "350 *"},
          {"RNTO pub/newer", "250 *"},
          {"CWD new one", "550 *"},
          {"RMD /pub/newer/", "250 *"},
          {"RMD /pub/newer", "550 *: No such file *"}}},
        {"bytes that are no text",
         {{"MKD \xff\xfe", "257 *"}, {"CWD \xff\xfe", "250 *"}, {"PWD", "257 \"/\xff\xfe\" *"}}},
        {"directory is not deleted as a file",
         {{"DELE /pub/empty", "550 *: Is a directory."}, {"RMD /pub/zero", "550 *: Not a directory."}}},
        {"link is removed, not its target",
         {{"RMD /current", "550 *: Not a directory."},
          {"DELE /current", "250 *"},
          {"CWD /archive/2021", "250 *"}}},
        {"dots and nothing cannot be made or removed",
         {{"MKD .", "550 *"}, {"MKD /", "550 *"}, {"RMD /", "550 *"}, {"RMD /pub/empty/.", "550 *"}}},
        {"no room for names past the limit",
         {{"MKD " + std::string(255, 'y'), "257 *"},
          {"MKD " + std::string(256, 'y'), "550 *: File name too long."}}},
        {"other people's directories are theirs",
         {{"MKD /dev/x", "550 *: Permission denied."}, {"DELE /dev/null", "550 *: Permission denied."}}},
        {"renaming needs both steps", {{"RNTO x", "503 *"}, {"RNFR none", "550 *"}, {"RNTO x", "503 *"}}},
        {"renaming replaces nothing",
         {{"RNFR /pub/zero", "350 *"}, {"RNTO /welcome.txt", "550 *: File exists."}}},
        {"no directory moves into itself",
         {{"RNFR /pub", "350 *"},
          {"RNTO /pub/empty/x", "550 *: Invalid argument."},
          {"CWD /pub/empty", "250 *"}}},
        {"like names are no parents",
         {{"MKD /pub/emp", "257 *"}, {"RNFR /pub/emp", "350 *"}, {"RNTO /pub/empty/emp", "250 *"}}},
    });
}

TEST(DemoCommands, ChangePermissions) {
    play({
        {"access text follows",
         {{"SITE CHMOD 640 /pub/zero", "200 *"},
          {"STAT /pub/zero", "*\r\n-rw-r----- *"},
          {"site chmod 000 /pub/zero", "200 *"},
          {"STAT /pub/zero", "*\r\n---------- *"}}},
        {"permissions are obeyed",
         {{"SITE CHMOD 0 /pub", "200 *"},
          {"CWD /pub", "550 *"},
          {"STAT -a /pub", "550 *"},
          {"SITE CHMOD 755 /pub", "200 *"},
          {"CWD /pub", "250 *"}}},
        {"no mode",
         {{"SITE CHMOD 888 /pub", "501 *"},
          {"SITE CHMOD -1 /pub", "501 *"},
          {"SITE CHMOD u+w /pub", "501 *"},
          {"SITE CHMOD 755 ", "501 *"}}},
        {"owner alone", {{"SITE CHMOD 777 /dev/null", "550 *: Operation not permitted."}}},
    });
}

// Walks every directory that demo may see: what the server lists, the browser of the program reads.
TEST(DemoCommands, ListTheWholeTreeInLinesThatCanBeRead) {
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    std::vector<std::string> directories = {"/"};
    std::set<char> types;
    std::size_t entries = 0;
    for (std::size_t i = 0; i < directories.size(); ++i) {
        const std::string reply = ask(world, client, "STAT -a " + directories[i]);
        const std::vector<std::string_view> lines = split(reply, lineEnd);
        EXPECT_EQ(lines.front(), "211-status of " + directories[i] + ":");
        EXPECT_EQ(lines.back(), "211 End of Status");
        const BrowserListing listing = ParseDirectoryListing(lines, {.mergeBlanks = true});
        EXPECT_EQ(listing.entries.size(), lines.size() - 3) << "all but the first, the last and the dot";
        for (const BrowserEntry& entry : listing.entries) {
            EXPECT_TRUE(matchesPattern(entry.date, "##/* *#")) << entry.date;
            types.insert(entry.access.front());
            ++entries;
            const auto target = navigationTarget(directories[i], entry.name, entry.access);
            if (target && entry.access.front() == 'd' && entry.name != ".." && entry.name != "private" &&
                entry.name != "alice") {
                directories.push_back(*target);
            }
        }
    }
    EXPECT_TRUE(entries >= 200 && entries <= 999) << entries;
    EXPECT_EQ(types, (std::set<char>{'-', 'd', 'l', 'c', 'b', 'p', 's'}));
}

TEST(DemoCommands, ListWhatTheOptionsSay) {
    play({
        {"dot files need the option",
         {{"STAT -a /pub", "* .hidden notes\r\n*"}, {"STAT /pub", "211-*README\r\n*"}}},
        {"empty directory",
         {{"CWD /pub/empty", "250 *"},
          {"STAT -a", "211-status of /pub/empty:\r\nd* .\r\nd* ..\r\n211 End of Status"}}},
        {"links count the subdirectories",
         {{"STAT -a /archive", "*\r\ndrwxr-xr-x  10 * .\r\n*"},
          {"RMD /pub/empty", "250 *"},
          {"STAT -a /pub", "*\r\ndrwxrwxr-x   8 * .\r\n*"}}},
        {"status of the server", {{"STAT", "211-*Logged in as demo*211 *"}}},
    });
    DemoWorld world(60, 0);
    DemoClient client = loggedIn(world);
    EXPECT_EQ(ask(world, client, "STAT /pub").find(".hidden"), std::string::npos);
}

TEST(DemoCommands, ShareOneTreeAmongClients) {
    DemoWorld world(60, 0);
    DemoClient demo = loggedIn(world);
    DemoClient bob = loggedIn(world, "bob");
    EXPECT_TRUE(matchesPattern(ask(world, demo, "MKD /shared"), "257 *"));
    EXPECT_TRUE(matchesPattern(ask(world, bob, "CWD /shared"), "250 *"));
    EXPECT_TRUE(matchesPattern(ask(world, bob, "MKD mine"), "550 *: Permission denied."));
    EXPECT_TRUE(matchesPattern(ask(world, demo, "PWD"), "257 \"/\" *"));
    EXPECT_TRUE(matchesPattern(ask(world, demo, "RMD /shared"), "250 *"));
    EXPECT_TRUE(matchesPattern(ask(world, bob, "STAT -a"), "550 *: No such file or directory."));
    EXPECT_TRUE(matchesPattern(ask(world, bob, "CWD /"), "250 *"));
}

} // namespace
} // namespace corvel
