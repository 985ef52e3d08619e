#include "menus/mdlMenus.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

using Items = std::vector<MenuItem>;

TEST(Menus, ExpandCaptionsAndCommands) {
    const std::vector<MenuEntry> entries = {
        {"CHMOD %(name)", "chmod %(name)"}, {"-", "null"}, {"%(user)", "copy %(GROUP)|%(pwd)/%(name)"}};
    EXPECT_EQ(
        expandMenu(entries, menuVariables(BrowserMenuRow{"/pub", "file.txt", "-", "staff"})),
        (Items{{"CHMOD file.txt", "chmod file.txt"}, {"-", "null", true}, {"-", "copy staff|/pub/file.txt"}}))
        << "a value that reads as a separator is none";
    EXPECT_EQ(expandMenu({entries.front()}, {}), (Items{{"CHMOD %(name)", "chmod %(name)"}}))
        << "the tray has no variables";
    EXPECT_EQ(expandMenu({entries.back()}, menuVariables(BrowserMenuRow{.pwd = "/"})),
              (Items{{"", "copy |//"}}))
        << "nothing selected";
}

TEST(Menus, HaveTheVariablesOfTheirRows) {
    struct Row {
        const char* name;
        MenuVariables variables;
        const char* text;
        const char* expanded;
    };
    const std::vector<Row> cases = {
        {"browser", menuVariables(BrowserMenuRow{"/a", "lnk -> /b", "bob", "staff"}),
         "%(pwd),%(name),%(user),%(group)", "/a,lnk -> /b,bob,staff"},
        {"users", menuVariables(UserMenuRow{"bob", "7", "staff"}), "%(name),%(user),%(uid),%(group)",
         "bob,bob,7,staff"},
        {"groups", menuVariables(GroupMenuRow{"staff", "12"}), "%(name),%(gid),%(user)", "staff,12,"},
        {"connections", menuVariables(ConnectionMenuRow{"101", "bob", "staff", "id", "10.0.0.1", "/pub"}),
         "%(cid),%(user),%(group),%(ident),%(clientip),%(pwd)", "101,bob,staff,id,10.0.0.1,/pub"},
    };
    for (const Row& row : cases) {
        EXPECT_EQ(ExpandTemplate(row.text, row.variables), row.expanded) << row.name;
    }
}

TEST(Menus, CommandLinesAreRead) {
    struct Row {
        const char* name;
        const char* line;
        MenuCommand command;
    };
    const std::vector<Row> cases = {
        {"null", "null", {MenuAction::null}},
        {"exec", "exec a b", {MenuAction::exec, false, "a b"}},
        {"exit, after a question", "%exit", {MenuAction::exit, true}},
        {"chmod with an argument", "chmod file.txt", {MenuAction::chmod, false, "file.txt"}},
        {"nuke", "nuke", {MenuAction::nuke}},
        {"copyuser", "copyuser", {MenuAction::copyUser}},
        {"chattr", "chattr", {MenuAction::chattr}},
        {"ftp keeps runs of blanks",
         "ftp site  change   bob ",
         {MenuAction::ftp, false, "site  change   bob "}},
        {"copy keeps a blank in front", "copy  x", {MenuAction::copy, false, " x"}},
        {"kill", "%kill *\\a b.exe", {MenuAction::kill, true, "*\\a b.exe"}},
        {"empty", "", {}},
        {"unknown", "format c:", {MenuAction::nothing, false, "c:"}},
        {"unknown, after a question", "%format c:", {MenuAction::nothing, true, "c:"}},
        {"capitals are another word", "EXIT", {}},
        {"a blank in front", " exit", {MenuAction::nothing, false, "exit"}},
        {"a single percent sign", "% exit", {MenuAction::nothing, false, "exit"}},
        {"two percent signs", "%%exit", {MenuAction::nothing, true}},
        {"tabs separate nothing", "exit\tnow", {}},
    };
    for (const Row& row : cases) {
        EXPECT_EQ(parseMenuCommand(row.line), row.command) << row.name;
    }
}

TEST(Menus, ArgumentsAreReadByTheirActions) {
    const std::vector<std::pair<const char*, const char*>> targets = {
        {"notes.txt /x; rm", "notes.txt"},
        {"  notes.txt", "notes.txt"},
        {"\"C:\\My Files\\a.exe\" b", "C:\\My Files\\a.exe"},
        {"\"/pub/x\" ; \"y\"", "/pub/x"},
        {"\"My Files", "\"My"}, // a quote that is not closed
        {"\"\" b", ""},
        {"", ""},
    };
    for (const auto& [argument, target] : targets) {
        EXPECT_EQ(execTarget(argument), target) << argument;
    }
    EXPECT_EQ(killPattern("  *\\My Program\\\xC3\x9C#?.EXE "), "*\\my program\\\xC3\xBC#?.exe");
    EXPECT_EQ(menuQuestion("site wipe a & b\r\n"),
              "Are u sure u want to perform this command?\r\n\r\nsite wipe a & b\xE2\x90\x8D\xE2\x90\x8A");
}

} // namespace
} // namespace corvel
