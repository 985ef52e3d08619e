#include "net/Telnet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Telnet, CommandsInFrontOfALineAreTakenOffHoweverTheyAreCut) {
    struct Row {
        const char* name;
        std::string bytes;
        std::string text;
    };
    const std::vector<Row> rows = {
        {"none", "200 ok\r\n", "200 ok\r\n"},
        {"an offer",
         "\xFF\xFC\x01"
         "550 no\r\n",
         "550 no\r\n"},
        {"several, behind a line", "211-a\r\n\xFF\xFB\x01\xFF\xF1\xFF\xFE\r211 b\r\n", "211-a\r\n211 b\r\n"},
        {"a negotiation with an FF in it",
         "\xFF\xFA\x18\xFF\xFF\xF0x\xFF\xF0"
         "200 ok\r\n",
         "200 ok\r\n"},
        {"a name with an FF",
         "211- \xFF\xFF"
         "a\r\n",
         "211- \xFF"
         "a\r\n"},
        {"two of them", "\xFF\xFF\xFF\xFF\r\n", "\xFF\xFF\r\n"},
        {"inside a line everything else is text",
         "a\xFF\xFC\x01"
         "b\xFF\xF1\r\n",
         "a\xFF\xFC\x01"
         "b\xFF\xF1\r\n"},
        {"no command",
         "\xFF"
         "a\r\n",
         "\xFF"
         "a\r\n"},
        {"a lone line feed starts no line", "a\n\xFF\xF1\r\n", "a\n\xFF\xF1\r\n"},
        {"an FF at the end of a line",
         "a\xFF\r\n\xFF\xF1"
         "b\r\n",
         "a\xFF\r\nb\r\n"},
    };
    for (const Row& row : rows) {
        TelnetReader byByte;
        std::string text;
        for (const char byte : row.bytes) {
            text += byByte.read({&byte, 1});
        }
        EXPECT_EQ(text, row.text) << row.name << ", byte by byte";
        for (std::size_t cut = 0; cut < row.bytes.size(); ++cut) {
            TelnetReader reader;
            const std::string first = reader.read(row.bytes.substr(0, cut));
            EXPECT_EQ(first + reader.read(row.bytes.substr(cut)), row.text) << row.name << ", at " << cut;
        }
    }
}

TEST(Telnet, NoByteOfALineBeginsACommand) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"DELE a", "DELE a"},
        {"DELE \xFF\xFE", "DELE \xFF\xFF\xFE"},
        {"DELE \xFF\xF0\xFF\xEF\xFF", "DELE \xFF\xFF\xF0\xFF\xEF\xFF"},
        {"\xFF\xFF"
         "a",
         "\xFF\xFF\xFF"
         "a"},
    };
    for (const auto& [line, sent] : rows) {
        EXPECT_EQ(telnetEscaped(line), sent);
    }
}

} // namespace
} // namespace corvel
