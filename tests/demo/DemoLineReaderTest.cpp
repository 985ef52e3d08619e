#include "demo/DemoLineReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

// The lines that come out, "!" for one that is too long.
std::vector<std::string> linesOf(DemoLineReader& reader) {
    std::vector<std::string> lines;
    while (const auto line = reader.next()) {
        lines.push_back(line->isLong ? "!" : line->text);
    }
    return lines;
}

struct LineCase {
    const char* name;
    std::string bytes;
    std::vector<std::string> lines;
};

TEST(DemoLineReader, GivesTheSameLinesHoweverTheBytesAreCut) {
    const std::string longest(DemoLineReader::longestLine - 1, 'x');
    const std::vector<LineCase> cases = {
        {"unfinished line waits", "A\r\nB", {"A"}},
        {"empty lines are lines", "\r\n\r\nA\r\n", {"", "", "A"}},
        {"only the last carriage return goes", "A\r\r\nB\rC\r\n", {"A\r", "B\rC"}},
        {"zero bytes are kept", std::string("A\0B\r\n", 5), {std::string("A\0B", 3)}},
        {"longest line passes", longest + "\r\nB\r\n", {longest, "B"}},
        {"longer line is dropped to its end", longest + "xx\r\nB\r\n", {"!", "B"}},
        {"endless line is told of once", std::string(100'000, 'x'), {"!"}},
    };
    for (const LineCase& row : cases) {
        for (const std::size_t size : {std::size_t{1}, std::size_t{3}, std::size_t{4096}, row.bytes.size()}) {
            DemoLineReader reader;
            std::vector<std::string> lines;
            for (std::size_t start = 0; start < row.bytes.size(); start += size) {
                reader.add(std::string_view(row.bytes).substr(start, size));
                for (std::string& line : linesOf(reader)) {
                    lines.push_back(std::move(line));
                }
            }
            EXPECT_EQ(lines, row.lines) << row.name << ", pieces of " << size;
        }
    }
}

} // namespace
} // namespace corvel
