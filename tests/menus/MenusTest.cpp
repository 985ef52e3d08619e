#include "menus/mdlMenus.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

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
    };
    for (const auto& [line, command] : cases) {
        EXPECT_EQ(parseMenuCommand(line), command) << line;
    }
}

TEST(Menus, ArgumentsAreReadByTheirActions) {
    const std::vector<std::pair<const char*, const char*>> targets = {
        {"  notes.txt /x; rm", "notes.txt"},
        {"\"C:\\My Files\\a.exe\" b", "C:\\My Files\\a.exe"},
        {"\"/pub/x\" ; \"y\"", "/pub/x"},
        {"\"My Files", "\"My"}, // a quote that is not closed
        {"\"\" b", ""},
        {"", ""},
    };
    for (const auto& [argument, target] : targets) {
        EXPECT_EQ(execTarget(argument), target) << argument;
    }
    EXPECT_EQ(menuQuestion("site wipe a & b\r\n"),
              "Are u sure u want to perform this command?\r\n\r\nsite wipe a & b\xE2\x90\x8D\xE2\x90\x8A");
}

} // namespace
} // namespace corvel
