#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace corvel {

// Which reply handler gets the answer to a command. The numbers are the program's own; app/ReplyHandlers
// maps each to its parser.
namespace handler {
inline constexpr std::int32_t browser = 100;
inline constexpr std::int32_t who = 101;
inline constexpr std::int32_t userTable = 102;
inline constexpr std::int32_t groupTable = 103;
inline constexpr std::int32_t userFile = 104;
inline constexpr std::int32_t groupFile = 105;
inline constexpr std::int32_t groupChange = 106;
inline constexpr std::int32_t userChange = 107;
inline constexpr std::int32_t browserFile = 108;
inline constexpr std::int32_t addUser = 109;
inline constexpr std::int32_t addGroup = 110;
inline constexpr std::int32_t menuFtp = 111;
inline constexpr std::int32_t chattrQuery = 112;
inline constexpr std::int32_t batch = 113;
inline constexpr std::int32_t console = 255;
} // namespace handler

// The first code of a reply that refuses something (RFC 959, section 4.2.1).
inline constexpr std::int32_t firstRefusal = 400;

// A command to send on a control connection, as a value: whoever wants something sent returns these, and the
// reply brings it back.
struct Command {
    std::string sCommand;                     // the line without its line end, in the server's bytes
    bool bQuiet = true;                       // the console shows neither the command nor its reply
    std::int32_t iHandler = handler::console; // one of the codes above
    std::int16_t iTag = 0; // table index (104, 105), -1 to stop on failure (109, 110) or for silence (113)

    std::optional<std::int16_t> recordId = {}; // the account (group) whose details it asks for; not sent

    bool operator==(const Command&) const = default;
};

} // namespace corvel
