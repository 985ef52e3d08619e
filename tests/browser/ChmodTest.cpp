#include "browser/Chmod.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

TEST(Chmod, ShowsTheModeOfAnEntryAndSendsIt) {
    struct Row {
        const char* name;
        const char* cwd;
        BrowserEntry entry;
        const char* path;
        const char* value;
    };
    const std::vector<Row> table = {
        {"a file", "/pub", {.name = "a b.txt", .access = "-rw-r--r--"}, "/pub/a b.txt", "644"},
        {"in the root", "/", {.name = "pub", .access = "drwxr-xr-x"}, "/pub", "755"},
        {"nothing is given", "/a", {.name = "x", .access = "----------"}, "/a/x", "000"},
        {"no zero is lost", "/a", {.name = "x", .access = "d---r--r--"}, "/a/x", "044"},
        {"each right alone", "/a", {.name = "x", .access = "-r---w---x"}, "/a/x", "421"},
        {"other letters count", "/a", {.name = "l -> ../t", .access = "lrwsr-Sr-T"}, "/a/l -> ../t", "755"},
        {"hostile bytes",
         "/\xE4",
         {.name = "\"%(name)\" \xFF", .access = "-rw-------"},
         "/\xE4/\"%(name)\" \xFF",
         "600"},
    };
    for (const Row& row : table) {
        const ChmodForm form = chmodForm(row.cwd, row.entry);
        EXPECT_EQ(form.txtPath, row.path) << row.name;
        EXPECT_EQ(form.txtCHMODval, row.value) << row.name;
        EXPECT_EQ(chmodCommand(form),
                  (Command{.sCommand = std::string("SITE chmod ") + row.value + " " + row.path,
                           .bQuiet = true,
                           .iHandler = 108,
                           .iTag = 0}))
            << row.name;
    }
    const ChmodForm form = chmodForm("/", {.name = "x", .access = "-rw-r--r--"});
    EXPECT_EQ(form.chkX, (Permissions{true, true, false, true, false, false, true, false, false}));
}

TEST(Chmod, BoxesFollowATypedMode) {
    for (unsigned mode = 0; mode < 512; ++mode) {
        Permissions permissions = {};
        for (std::size_t i = 0; i < permissionCount; ++i) {
            permissions[i] = (mode >> (permissionCount - 1 - i) & 1U) != 0;
        }
        EXPECT_EQ(permissionsOf(chmodValue(permissions)), permissions) << mode;
    }
    EXPECT_EQ(permissionsOf("4755"), permissionsOf("755"));
    const Permissions readable = {true, false, false, true};
    for (const auto& [mode, value] :
         {std::pair("4755", "4440"), {"755", "440"}, {"9755", "440"}, {"", "440"}}) {
        EXPECT_EQ(chmodValue(readable, mode), value) << mode;
    }
    for (const char* const text : {"", "75", "758", "75x", " 755", "00755"}) {
        EXPECT_EQ(permissionsOf(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace corvel
