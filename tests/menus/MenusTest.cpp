#include "menus/mdlMenus.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

const MenuVariables none;

TEST(Menus, CommandLinesAreRead) {
    const std::vector<std::pair<const char*, MenuCommand>> cases = {
        {"", {}},
        {"exit", {"exit"}},
        {"%exit", {"exit", true}},
        {"% exit", {"%", false, "exit"}},
        {"%%exit", {"%exit", true}},
        {" exit", {"", false, "exit"}},
        {"exit\tnow", {"exit\tnow"}},
        {"ftp site  change   bob ", {"ftp", false, "site  change   bob "}},
        {"%copy  x", {"copy", true, " x"}},
        {"kill  /Opt/* ", {"kill", false, " /Opt/* ", "/Opt/*"}},
    };
    for (const auto& [line, command] : cases) {
        EXPECT_EQ(menuCommand(line, none), command) << line;
    }
    const std::vector<std::pair<const char*, const char*>> targets = {
        {"  notes.txt /x; rm", "notes.txt"},
        {"\"C:\\My Files\\a.exe\" b", "C:\\My Files\\a.exe"},
        {"\"/pub/x\" ; \"y\"", "/pub/x"},
        {"\"My Files", "\"My"}, // a quote that is not closed
        {"\"\" b", ""},
        {"", ""},
        {"../x -y", "../x"}, // the author may
    };
    for (const auto& [argument, target] : targets) {
        EXPECT_EQ(menuCommand(std::string("exec ") + argument, none).target, target) << argument;
    }
    EXPECT_EQ(menuQuestion("site wipe a & b\r\n"),
              "Are u sure u want to perform this command?\r\n\r\nsite wipe a & b\xE2\x90\x8D\xE2\x90\x8A");
}

// What a server can do by the names that it gives.
TEST(Menus, ValuesStayWithinWhatTheAuthorWrote) {
    struct Row {
        const char* line;
        std::string value;
        const char* target;
        const char* problem; // "?": the person is asked
    };
    const std::vector<Row> rows = {
        {"%(v)", "exec halt", "", ""},
        {"%(v) x", "exec", "", ""},
        {"exec %(v)", "halt", "halt", "?"},
        {"exec h%(v)", "alt", "halt", "?"},
        {"exec /%(v)", "sbin/halt", "/sbin/halt", "?"},
        {"exec \\\\%(v)", "evil\\x.exe", "\\\\evil\\x.exe", "?"},
        {"exec %(v)", "--help", "--help", "begins with a dash"},
        {"exec %(v)", "file:///etc", "file:///etc", "is an address"},
        {"exec %(v)", "www.example.net", "www.example.net", "is an address"},
        {"exec %(v)", "C:\\x.txt", "C:\\x.txt", "?"},
        {"exec %(v)", "", "", ""},
        {"exec %(v)/bin/x", "", "/bin/x", "?"},
        {"exec %(v) halt", " ", "halt", "?"},
        {"exec hal%(v)t", "", "halt", "?"},
        {"exec http://wiki/%(v)", "a/b", "http://wiki/a/b", ""},
        {"exec http://wiki/x/%(v)", "%2E./y", "http://wiki/x/%2E./y", "leaves its folder"},
        {"exec \"/opt/my %(v)\"", "a \" b", "/opt/my a \" b", ""},
        {"exec \"/opt/my %(v)\"", "/../../bin/sh", "/opt/my /../../bin/sh", "leaves its folder"},
        {"exec \"/opt/.%(v)/x\"", ". ", "/opt/.. /x", "leaves its folder"},
        {"exec C:\\a\\%(v)", "b\\..\\..\\c", "C:\\a\\b\\..\\..\\c", "leaves its folder"},
        {"exec ../a/%(v)", "..b...", "../a/..b...", ""},
        {"exec /a/%(v)../c", "", "/a/../c", "leaves its folder"},
        {"exec %(v)../c", " ", "../c", "leaves its folder"},
        {"exec /a/.%(v)./c", "", "/a/../c", "leaves its folder"},
        {"exec /a/%(v)../c", "b/", "/a/b/../c", "leaves its folder"},
        {"exec /a/%(v)%2e%2E/c", "b\\", "/a/b\\%2e%2E/c", "leaves its folder"},
        {"exec /a/..%(v)", "/c", "/a/../c", "leaves its folder"},
        {"exec /a/..%(v)", " b", "/a/..", "leaves its folder"},
        {"exec /a/..%(v)", "b", "/a/..b", ""},
        {"exec \"/a/../c/%(v)\" d", "", "/a/../c/", ""},
        {"exec /opt/%(v)", "a\x1B", "/opt/a\x1B", "holds a control character"},
        {"exec \"/opt/%(v)\"", "a\nb", "/opt/a\nb", "holds a line break or a NUL character"},
        {"copy %(v)", "rm -r\n", "", "holds a control character"},
        {"copy\t%(v)", "x", "", ""},
        {"ftp site %(v)", "\x1B", "", ""},
        {"kill %(v)", "*", "*", "holds a wildcard that the server chose"},
        {"kill */%(v)", "", "*/", "has a value that is empty"},
        {"kill */%(v)", "sh", "*/sh", "?"},
        {"kill */my%(v)", "sh", "*/mysh", ""},
    };
    for (const Row& row : rows) {
        const MenuCommand command = menuCommand(row.line, {{"v", row.value}});
        EXPECT_EQ(command.target, row.target) << row.line << ' ' << row.value;
        EXPECT_EQ(command.isServersChoice && command.problem.empty() ? "?" : command.problem, row.problem)
            << row.line << ' ' << row.value;
    }
    EXPECT_EQ(menuCommand("%(v)", {{"v", "exec halt"}}).action, "(v)") << "which is none";
}

} // namespace
} // namespace corvel
