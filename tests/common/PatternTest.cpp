#include "common/Pattern.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

struct PatternCase {
    const char* name;
    std::string text;
    const char* pattern;
    bool matches;
};

TEST(Pattern, MatchesTheWholeText) {
    const std::vector<PatternCase> cases = {
        {"literal", "abc", "abc", true},
        {"literal is not a prefix", "abcd", "abc", false},
        {"case counts", "Abc", "abc", false},
        {"question mark is exactly one", "ac", "a?c", false},
        {"question mark is a character, not a byte", "/größe", "/gr??e", true},
        {"and no two", "/größe", "/gr????e", false},
        {"hash is no letter", "abc", "a#c", false},
        {"star goes back", "a1b2b", "a*b", true},
        {"star spans line ends", "220-x\r\n220 y\r\n", "*\r\n### *\r\n", true},
        {"empty pattern", "a", "", false},
        {"star alone matches nothing", "", "*", true},
        {"text ends inside pattern", "ab", "ab?", false},
        {"many stars stay quick", std::string(5000, 'a'), "*a*a*a*a*a*a*b", false},
    };
    for (const PatternCase& row : cases) {
        EXPECT_EQ(matchesPattern(row.text, row.pattern), row.matches) << row.name;
    }
}

} // namespace
} // namespace corvel
