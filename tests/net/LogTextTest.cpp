#include "net/LogText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(LogText, KeepsTheLastCharacters) {
    struct Row {
        const char* name;
        std::vector<std::string> appended;
        std::string kept;
    };
    const std::vector<Row> rows = {
        {"below the limit", {"abc"}, "abc"},
        {"at the limit", {"abc", "de"}, "abcde"},
        {"past the limit", {"abc", "defg"}, "cdefg"},
        {"one long text", {"abcdefghij"}, "fghij"},
        {"characters, not bytes", {"äöüß€"}, "äöüß€"},
        {"never half a character", {"€€€", "abc"}, "€€abc"},
        {"cut inside a line end", {"1\r\n23", "4"}, "\r\n234"},
    };
    for (const Row& row : rows) {
        LogText log(5);
        for (const std::string& text : row.appended) {
            log.append(text);
        }
        EXPECT_EQ(log.text(), row.kept) << row.name;
    }
}

} // namespace
} // namespace corvel
