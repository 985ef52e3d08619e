#include "common/Template.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

const MenuVariables variables = {
    {"name", "file.txt"},
    {"User", "administrator"},
    {"credits", "2048000"},
    {"half", "1536"},
    {"odd", "2560"},
    {"nested", "%(name)"},
    {"empty", ""},
    {"umlaut", "\xC3\xA4\xC3\xB6\xC3\xBC"},
    {"latin", "\xE4\xF6\xFC"},
    {"name", "second"},
    {"hostile", "`x`; \"%d\" | y)"},
    {"huge", std::string(400, '9')},
};

struct Row {
    const char* name;
    std::string text;
    std::string expanded;
};

void expectExpanded(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(ExpandTemplate(row.text, variables), row.expanded) << row.name;
    }
}

TEST(Template, ReplacesPlaceholders) {
    expectExpanded({
        {"none", "chmod 100%", "chmod 100%"},
        {"several, side by side", "%(name)%(empty)%(name)!", "file.txtfile.txt!"},
        {"case does not count", "%(NAME) %(user)", "file.txt administrator"},
        {"unknown", "[%(unknown)]", "[]"},
        {"unknown, padded", "[%(unknown,5)]", "[     ]"},
        {"not expanded again", "%(nested) %(name)", "%(name) file.txt"},
        {"opened twice", "%(%(name)", ""},
        {"hostile values stay text", "site %(hostile)", "site `x`; \"%d\" | y)"},
        {"pieces past the fifth", "%(user,3,L,,1,x,9)", "adm"},
    });
}

TEST(Template, StopsAtABrokenPlaceholder) {
    expectExpanded({
        {"not closed", "%(name) %(name", "file.txt %(name"},
        {"nothing in it", "%(name) %() %(name)", "file.txt %() %(name)"},
    });
    EXPECT_EQ(ExpandTemplate("Quit %(name)", {}), "Quit %(name)") << "no variables, no expansion";
}

TEST(Template, FormatsFields) {
    expectExpanded({
        {"right", "[%(name,10,R)]", "[  file.txt]"},
        {"centre, the odd blank behind", "[%(name,11,C)]", "[ file.txt  ]"},
        {"another letter is left", "[%(name,10,r)]", "[file.txt  ]"},
        {"the first character of a longer fill", "[%(name,10,L,.-)]", "[file.txt..]"},
        {"a fill beyond ASCII", "[%(name,9,L,\xC2\xB7z)]", "[file.txt\xC2\xB7]"},
        {"too long is kept", "[%(user,3)]", "[administrator]"},
        {"cut and padded", "[%(name,10,R,,1)]", "[  file.txt]"},
        {"any other cut is none", "[%(user,3,L,,yes)]", "[administrator]"},
        {"cut to nothing", "[%(user,,L,,1)]", "[]"},
        {"negative width", "[%(user,-3,L,,1)%(name,-3)]", "[file.txt]"},
        {"width that starts with one", "[%(name,9px,R)]", "[ file.txt]"},
        {"UTF-8 counts in characters", "[%(umlaut,4,R)%(umlaut,2,L,,1)]",
         "[ \xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6]"},
        {"other bytes count singly", "[%(latin,4,R)%(latin,2,L,,1)]", "[ \xE4\xF6\xFC\xE4\xF6]"},
        {"megabytes", "%(credits,8,R,$)", "    2000"},
        {"megabytes, halves to even", "%(half,0,L,$) %(odd,0,L,$)", "2 2"},
        {"huge width", "%(empty,99999999999999999999,L,x)", std::string(4096, 'x')},
    });
    EXPECT_LT(ExpandTemplate("%(huge,0,L,$)", variables).size(), 400U);
    EXPECT_EQ(ExpandTemplate("%(huge,0,L,$)", variables).find_first_not_of("0123456789"), std::string::npos);
}

} // namespace
} // namespace corvel
