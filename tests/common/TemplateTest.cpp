#include "common/Template.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Template, ReplacesPlaceholders) {
    const MenuVariables variables = {
        {"name", "file.txt"}, {"User", "administrator"}, {"credits", "2048000"},
        {"half", "1536"},     {"odd", "2560"},           {"nested", "%(name)"},
        {"empty", ""},        {"umlaut", "äöü"},         {"latin", "\xE4\xF6\xFC"},
        {"name", "second"},   {"hostile", "`x`; y)"},    {"huge", std::string(400, '9')},
    };
    const std::vector<std::pair<const char*, std::string>> rows = {
        {"chmod 100%", "chmod 100%"},
        {"%(name)%(empty)%(NAME)!", "file.txtfile.txt!"},
        {"[%(unknown)%(unknown,5)]", "[     ]"},
        {"%(nested) %(name)", "%(name) file.txt"},
        {"%(%(name)", ""},
        {"site %(hostile)", "site `x`; y)"},
        {"%(user,3,L,,1,x,9)", "adm"},
        {"%(name) %(name", "file.txt %(name"},
        {"%(name) %() %(name)", "file.txt %() %(name)"},
        {"[%(name,10,R)]", "[  file.txt]"},
        {"[%(name,11,C)]", "[ file.txt  ]"},
        {"[%(name,10,r)]", "[file.txt  ]"},
        {"[%(name,10,L,.-)]", "[file.txt..]"},
        {"[%(name,9,L,·z)]", "[file.txt·]"},
        {"[%(user,3)]", "[administrator]"},
        {"[%(name,10,R,,1)]", "[  file.txt]"},
        {"[%(user,3,L,,yes)]", "[administrator]"},
        {"[%(user,-3,L,,1)%(name,-3)]", "[file.txt]"},
        {"[%(name,9px,R)]", "[ file.txt]"},
        {"[%(umlaut,4,R)%(umlaut,2,L,,1)]", "[ äöüäö]"},
        {"[%(latin,4,R)%(latin,2,L,,1)]", "[ \xE4\xF6\xFC\xE4\xF6]"},
        {"%(credits,8,R,$)", "    2000"},
        {"%(half,0,L,$) %(odd,0,L,$)", "2 2"},
        {"%(empty,99999999999999999999,L,x)", std::string(4096, 'x')},
    };
    for (const auto& [text, expanded] : rows) {
        EXPECT_EQ(ExpandTemplate(text, variables), expanded) << text;
    }
    EXPECT_LT(ExpandTemplate("%(huge,0,L,$)", variables).size(), 400U);
    EXPECT_EQ(ExpandTemplate("Quit %(name)", {}), "Quit %(name)") << "no variables, no expansion";
}

} // namespace
} // namespace corvel
