#include "browser/Chattr.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Chattr, SendsWhatIsSelected) {
    struct Row {
        const char* name;
        ChattrForm form;
        std::string sent; // empty: nothing
        bool isUnseen = false;
    };
    const std::vector<Row> table = {
        {"a user and a group",
         {.sName = "pub", .lstUsers = {{"alice"}, {"bob", true}}, .lstGroups = {{"staff", true}}},
         R"(site chattr +h "pub" " -bob =staff")"},
        {"flags come first, lists keep their order",
         {.sName = "pub",
          .chkFlags = true,
          .txtFlags = "3M",
          .lstUsers = {{"zoe", true}, {"bob", true}},
          .lstGroups = {{"b", true}, {"a", true}}},
         R"(site chattr +h "pub" " 3M -zoe -bob =b =a")"},
        {"flags that are not checked",
         {.sName = "pub", .txtFlags = "3M", .lstGroups = {{"staff", true}}},
         R"(site chattr +h "pub" " =staff")"},
        {"checked without flags", {.sName = "pub", .chkFlags = true}, R"(site chattr +h "pub" " ")"},
        {"quotes, blanks, percent signs and other bytes",
         {.sName = "a \"b\" %(c) \xE4", .chkFlags = true, .txtFlags = "\xFC\""},
         "site chattr +h \"a \"b\" %(c) \xE4\" \" \xFC\"\""},
        {"nothing, where something is set",
         {.sName = "a b", .txtCurrent = "-bob"},
         R"(site chattr -h "a b")"},
        {"nothing, where the answer is no",
         {.sName = "pub", .txtCurrent = "550 no", .isRefused = true},
         R"(site chattr -h "pub")",
         true},
        {"a user, where the server did not say what is set",
         {.sName = "pub", .txtCurrent = "550 no", .isRefused = true, .lstUsers = {{"bob", true}}},
         R"(site chattr +h "pub" " -bob")"},
        {"nothing, where nothing is set", {.sName = "pub", .txtCurrent = "<not set>"}, ""},
        {"nothing is set, in other words", {.sName = "pub", .txtCurrent = "<is not yet set.>"}, ""},
        {"the words alone are a name", {.sName = "pub", .txtCurrent = "-not set"}, R"(site chattr -h "pub")"},
        {"text behind the words", {.sName = "pub", .txtCurrent = "<not set> -x"}, R"(site chattr -h "pub")"},
    };
    for (const Row& row : table) {
        std::vector<Command> expected;
        if (!row.sent.empty()) {
            expected.push_back({.sCommand = row.sent, .bQuiet = true, .iHandler = 108, .iTag = 0});
        }
        EXPECT_EQ(chattrCommands(row.form), expected) << row.name;
        EXPECT_EQ(clearsUnseen(row.form), row.isUnseen) << row.name;
    }
}

TEST(Chattr, ShowsTheFirstLineOfTheAnswer) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"200-CHATTR: <not set>", "<not set>"},
        {"200-CHATTR:  -bob =staff", " -bob =staff"},
        {"200-CHATTR: ", ""},
        {"200-CHATTR:", "200-CHATTR:"},
        {"200-chattr: x", "200-chattr: x"},
        {"550 200-CHATTR: x", "550 200-CHATTR: x"},
        {"", ""},
    };
    for (const auto& [line, shown] : table) {
        EXPECT_EQ(chattrText(line), shown);
    }
}

} // namespace
} // namespace corvel
