#include "browser/Nuke.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

TEST(Nuke, FillsTheTemplateOfTheSettings) {
    struct Row {
        const char* name;
        NukeForm form;
        NukeSyntax syntax;
        const char* sent;
    };
    const std::string usual = "site nuke %(name) %(mult) %(reason)";
    const std::vector<Row> table = {
        {"blanks of the reason alone", {"/", "a b", "3 x", " b  c"}, {usual, "_"}, "site nuke a b 3 x _b__c"},
        {"blanks stay", {"/", "x", "3", "bad release"}, {usual, " "}, "site nuke x 3 bad release"},
        {"blanks go", {"/", "x", "3", "bad release"}, {usual, ""}, "site nuke x 3 badrelease"},
        {"a character of two bytes", {"/", "x", "3", "a b"}, {usual, "\u00B7"}, "site nuke x 3 a\u00B7b"},
        {"no multiplier and no reason", {"/", "x", "", ""}, {usual, "_"}, "site nuke x  "},
        {"values stay text",
         {"/", "%(mult)\xE4\"", "%(name)", "%"},
         {usual, ""},
         "site nuke %(mult)\xE4\" %(name) %"},
        {"formats, unknown names", {"/", "x", "3", "y"}, {"n %(MULT,3,R,0) %(path)|", "_"}, "n 003 |"},
        {"no template", {"/", "x", "3", "y"}, {"", "_"}, ""},
    };
    for (const Row& row : table) {
        EXPECT_EQ(nukeCommand(row.form, row.syntax),
                  (Command{.sCommand = row.sent, .bQuiet = true, .iHandler = 108, .iTag = 0}))
            << row.name;
    }
}

} // namespace
} // namespace corvel
