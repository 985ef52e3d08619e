#include "net/Connection.h"

#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel::test {
namespace {

TEST(Connection, ResetsAllButWhatOutlivesAConnection) {
    LoggedIn program;
    program.main.sendConsoleCommand(1, "loud");
    program.main.sendConsoleCommand(1, "waiting");
    program.main.wSock_DataArrival(1, "211-half a reply");
    program.main.disconnectSite(1);

    const SiteSession& session = program.session(1);
    EXPECT_EQ(program.socket(1).state(), SocketState::closed);
    EXPECT_FALSE(session.bLoggedIn || session.bAwaitingReply);
    EXPECT_EQ(session.sCwd, "/");
    EXPECT_TRUE(session.CommandQueue[0].sCommand.empty());
    EXPECT_TRUE(session.sReplyBuffer.text().empty());
    EXPECT_EQ(session.current.sCommand, "loud");
    EXPECT_FALSE(session.current.bQuiet);
    EXPECT_EQ(session.sConsolePartial, "211-half a reply");
}

TEST(Connection, ChoosesWhereToConnect) {
    struct Row {
        const char* name;
        std::string site;
        std::string settings;
        std::string connectedTo;
        std::string userCommand;
    };
    const std::vector<Row> rows = {
        {"direct", "name=a\nhost=h\nport=2121\nuser=u\npass=p\n", "", "h:2121", "USER u"},
        {"through the proxy", "name=a\nhost=h\nport=2121\nuser=u\npass=p\nusesslproxy=1\n",
         "ssl_tunnel_host=127.0.0.1\nssl_tunnel_port=4000\n", "127.0.0.1:4000", "USER u@h:2121"},
        {"port above 16 bits is no other port", "name=a\nhost=h\nport=65557\n", "", "", ""},
        {"no proxy is configured", "name=a\nhost=h\nport=21\nusesslproxy=1\n", "", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TestProgram program(row.site, row.settings);
        program.main.connectSite(1);
        EXPECT_EQ(program.socket(1).connectedTo, row.connectedTo) << row.name;
        if (row.connectedTo.empty()) {
            EXPECT_NE(program.console(1).find("is no port (1 - 65535)"), std::string::npos);
            EXPECT_EQ(program.console(1).find("ssl_tunnel_port") != std::string::npos,
                      row.site.find("usesslproxy") != std::string::npos);
        } else {
            play(program, 1, {send("220 hi\r\n"), expect(row.userCommand)}, {}, row.name);
        }
    }
}

TEST(SocketStateText, TellsEveryState) {
    const std::vector<std::string> texts = {"Socket closed",
                                            "Open",
                                            "Listening on port 4711 ...",
                                            "Pending...",
                                            "Resolving host...",
                                            "Host resolved",
                                            "Connecting... ( f\u00FC.example:21 )",
                                            "Connected (10.0.0.5:21)",
                                            "Closing socket...",
                                            "ERROR"};
    FakeSocket socket;
    socket.Connect("f\xFC.example", 21);
    for (std::size_t state = 0; state < texts.size(); ++state) {
        socket.current = static_cast<SocketState>(state);
        EXPECT_EQ(SocketStateText(socket), texts[state]);
    }
}

} // namespace
} // namespace corvel::test
