#include "demo/DemoWho.h"

#include "common/Text.h"

#include <array>
#include <string_view>

namespace corvel {

namespace {

struct WhoRow {
    int uid;
    std::string_view service;
    std::string_view address;
    std::string_view host;
    std::string_view dataAddress;
    std::string_view lastCommand;
    int lastReply;
    std::string_view path;
    int idleSeconds;
    int sessionSeconds;
    int state;
    std::int64_t bytes;
    int speed;
};

constexpr std::array<WhoRow, 12> rows = {{
    {1, "ftp", "127.0.0.1", "localhost", "", "SITE CorvelExt who", 200, "/", 0, 95, 0, 0, 0},
    {2, "ftp", "10.0.0.12", "desk12.example.net", "10.0.0.12", "RETR beach 7.jpg", 150,
     "/pub/Holiday pictures", 0, 310, 1, 1'048'576, 812},
    {3, "ftp", "10.0.0.31", "lab.example.net", "10.0.0.31", "STOR report-13.pdf", 150, "/archive/2021", 0, 44,
     2, 734'003'200, 2'450},
    {4, "ftp", "192.0.2.77", "", "192.0.2.78", "LIST", 150, "/music", 0, 12, 3, 0, 0},
    {5, "ftp", "192.0.2.14", "cable-14.example.org", "", "NOOP", 200, "/incoming", 845, 90'061, 0, 52'428'800,
     0},
    {6, "ftp", "198.51.100.9", "nine.example.com", "198.51.100.9", "RETR disc image.iso", 150, "/pub", 0,
     7'260, 1, 4'294'967'296, 10'240},
    {7, "telnet", "10.0.0.2", "gate.example.net", "", "SITE HELP", 214, "/", 61, 600, 0, 0, 0},
    {8, "http", "203.0.113.5", "five.example.org", "203.0.113.5", "RETR 01 - Track.flac", 150,
     "/music/Album 1", 0, 3, 1, 20'480, 96},
    {9, "ftp", "2001:db8::17", "v6.example.net", "2001:db8::17", "STOR Übersicht.txt", 150,
     "/pub/Größe und Maß", 1, 20, 2, 65'536, 33},
    {10, "ftp", "203.0.113.88", "", "", "PASS", 230, "/", 0, 1, 0, 0, 0},
    {2, "ftp", "10.0.0.12", "desk12.example.net", "10.0.0.12", "STAT -a", 211, "/pub/two  blanks", 2, 305, 3,
     0, 0},
    {12, "ftp", "198.51.100.200", "slow.example.com", "198.51.100.200", "STOR backup.tar", 150, "/incoming",
     0, 86'399, 2, 1'610'612'736, 1},
}};

} // namespace

std::string whoLines(const DemoAccounts& accounts) {
    std::string lines;
    int connection = 100;
    for (const WhoRow& row : rows) {
        ++connection;
        const DemoUser* user = accounts.findUser(row.uid);
        if (user == nullptr) {
            continue;
        }
        const std::string number = std::to_string(connection);
        const std::string lastReply = std::to_string(row.lastReply);
        const std::string realPath = "/srv/ftp" + std::string(row.path);
        const std::string idle = std::to_string(row.idleSeconds);
        const std::string session = std::to_string(row.sessionSeconds);
        const std::string state = std::to_string(row.state);
        const std::string bytes = std::to_string(row.bytes);
        const std::string speed = std::to_string(row.speed);
        const std::string& group = accounts.findGroup(user->groups.front())->name;
        lines += join({"200-cid", user->name, group, number, row.service, user->name, row.address, row.host,
                       row.dataAddress, row.lastCommand, lastReply, realPath, row.path, idle, session, state,
                       bytes, speed},
                      fieldSeparator);
        lines += lineEnd;
    }
    return lines;
}

} // namespace corvel
