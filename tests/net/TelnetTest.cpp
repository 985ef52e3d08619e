#include "net/Telnet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

TEST(Telnet, CommandsInFrontOfALineAreTakenOffHoweverTheyAreCut) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"\xFF\xFC\x01\x35\x35\x30 no\r\n", "550 no\r\n"},
        {"211-a\r\n\xFF\xFB\x01\xFF\xF1\xFF\xFE\r211 b\r\n", "211-a\r\n211 b\r\n"},
        {"\xFF\xFA\x18\xFF\xFF\xF0x\xFF\xF0 200 ok\r\n", " 200 ok\r\n"}, // a negotiation with an FF in it
        {"211- \xFF\xFF\xFF\xFF x\r\n", "211- \xFF\xFF x\r\n"},
        // Inside a line, and where no command follows, everything else is text.
        {"-\xFF\xFC\x01 \xFF\xF1\r\n", "-\xFF\xFC\x01 \xFF\xF1\r\n"},
        {"\xFF x\r\n", "\xFF x\r\n"},
        {"-\n\xFF\xF1\r\n", "-\n\xFF\xF1\r\n"},
        {"-\xFF\r\n\xFF\xF1-\r\n", "-\xFF\r\n-\r\n"},
    };
    for (const auto& [bytes, plain] : rows) {
        TelnetReader byByte;
        std::string text;
        for (const char byte : bytes) {
            text += byByte.read({&byte, 1});
        }
        EXPECT_EQ(text, plain);
        for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
            TelnetReader reader;
            const std::string first = reader.read(bytes.substr(0, cut));
            EXPECT_EQ(first + reader.read(bytes.substr(cut)), plain) << "cut at " << cut;
        }
    }
}

TEST(Telnet, NoByteOfALineBeginsACommand) {
    EXPECT_EQ(telnetEscaped("DELE \xFF\xFE"), "DELE \xFF\xFF\xFE");
    EXPECT_EQ(telnetEscaped("DELE \xFF\xF0\xFF\xEF\xFF"), "DELE \xFF\xFF\xF0\xFF\xEF\xFF");
    EXPECT_EQ(telnetEscaped("\xFF\xFF x"), "\xFF\xFF\xFF x");
}

} // namespace
} // namespace corvel
