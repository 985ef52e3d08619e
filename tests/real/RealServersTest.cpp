#include "real/RealServer.h"

#include <QDir>
#include <QFile>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace corvel::test {
namespace {

// A control connection, one line and one reply at a time.
class Dialogue {
  public:
    explicit Dialogue(std::uint16_t port) {
        socket_.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(socket_.waitForConnected(5000));
        greeting_ = reply();
    }

    const std::string& greeting() const { return greeting_; }

    // The whole reply to line, its lines ending in LF; what came so far if the server falls silent for 5
    // seconds.
    std::string say(std::string_view line) {
        socket_.write(QByteArray(line.data(), static_cast<qsizetype>(line.size())) + "\r\n");
        return reply();
    }

  private:
    // A reply ends at the line that has a blank behind the code of its first line (RFC 959, section 4.2).
    std::string reply() {
        std::string text;
        std::string last;
        do {
            while (!socket_.canReadLine()) {
                if (!socket_.waitForReadyRead(5000)) {
                    return text;
                }
            }
            last = socket_.readLine().toStdString();
            last.erase(last.find_last_not_of("\r\n") + 1);
            text += last + '\n';
        } while (last.substr(0, 3) != text.substr(0, 3) || last.substr(3, 1) != " ");
        return text;
    }

    QTcpSocket socket_;
    std::string greeting_;
};

// What one server says, in its own words; {work} stands for the path of the directory work.
struct Wording {
    std::string name;
    ServerKind kind;
    std::string greeting;
    std::string loggedIn;
    std::string refused;
    std::string entered;
    std::string notEntered;
    std::string made;
    std::string listingHead;
    std::string listingEnd;
    std::string linePrefix;
    std::string oldDate;
};

void PrintTo(const Wording& wording, std::ostream* out) {
    *out << wording.name;
}

const std::vector<Wording> wordings{
    {.name = "ProFTPD",
     .kind = ServerKind::proftpd,
     .greeting = "220 ProFTPD Server (scratch) [127.0.0.1]\n",
     .loggedIn = "230 User corvel logged in\n",
     .refused = "530 Login incorrect.\n",
     .entered = "250 CWD command successful\n",
     .notEntered = "550 nope: No such file or directory\n",
     .made = "257 \"{work}/My Docs/a\"\"b\" - Directory successfully created\n",
     .listingHead = "212-Status of .:\n",
     .listingEnd = "212 End of status\n",
     .linePrefix = " ",
     .oldDate = "Jan  5  2020"},
    {.name = "vsftpd",
     .kind = ServerKind::vsftpd,
     .greeting = "220 (vsFTPd 3.0.3)\n",
     .loggedIn = "230 Login successful.\n",
     .refused = "530 Login incorrect.\n",
     .entered = "250 Directory successfully changed.\n",
     .notEntered = "550 Failed to change directory.\n",
     .made = "257 \"{work}/My Docs/a\"\"b\" created\n",
     .listingHead = "213-Status follows:\n",
     .listingEnd = "213 End of status\n",
     .linePrefix = "",
     .oldDate = "Jan 05  2020"},
};

class RealServers : public testing::TestWithParam<Wording> {
  protected:
    std::string inPlace(std::string wording) const {
        const std::string_view place = "{work}";
        return wording.replace(wording.find(place), place.size(), server_.serverPath());
    }

    void logIn(Dialogue& dialogue) const {
        EXPECT_EQ(dialogue.greeting(), GetParam().greeting);
        EXPECT_EQ(dialogue.say("USER " + std::string(server_.userName())).substr(0, 4), "331 ");
        EXPECT_EQ(dialogue.say("PASS " + std::string(RealServer::password)), GetParam().loggedIn);
        EXPECT_EQ(dialogue.say("CWD work"), GetParam().entered);
    }

    RealServer server_{GetParam().kind};
};

INSTANTIATE_TEST_SUITE_P(Wordings, RealServers, testing::ValuesIn(wordings),
                         [](const auto& test) { return test.param.name; });

TEST_P(RealServers, RefusesAWrongPassword) {
    Dialogue dialogue(server_.port());
    dialogue.say("USER " + std::string(server_.userName()));
    EXPECT_EQ(dialogue.say("PASS wrong"), GetParam().refused);
}

TEST_P(RealServers, WalksTheTree) {
    Dialogue dialogue(server_.port());
    logIn(dialogue);
    const std::string current = "257 \"" + server_.serverPath();
    EXPECT_EQ(dialogue.say("CWD My Docs"), GetParam().entered);
    EXPECT_EQ(dialogue.say("PWD"), current + "/My Docs\" is the current directory\n");
    EXPECT_EQ(dialogue.say("CWD .."), GetParam().entered);
    EXPECT_EQ(dialogue.say("CWD nope"), GetParam().notEntered);
    EXPECT_EQ(dialogue.say("CWD link"), GetParam().entered);
    EXPECT_NE(dialogue.say("STAT -a").find(" inner.txt\n"), std::string::npos);
    EXPECT_EQ(dialogue.say("CWD .."), GetParam().entered);
    EXPECT_EQ(dialogue.say("PWD"), current + "\" is the current directory\n");
}

TEST_P(RealServers, ListsTheCurrentDirectory) {
    Dialogue dialogue(server_.port());
    logIn(dialogue);
    const std::string listing = dialogue.say("STAT -a");
    EXPECT_TRUE(listing.starts_with(GetParam().listingHead)) << listing;
    EXPECT_TRUE(listing.ends_with(GetParam().listingEnd)) << listing;
    const std::string old = " 4 " + GetParam().oldDate + " old.txt";
    const std::string umlauts = " Gr\u00fc\u00dfe.txt";
    for (const std::string& end : {" ."s, " .."s, " My Docs"s, " dir"s, " link -> dir"s, umlauts, old}) {
        EXPECT_NE(listing.find(end + '\n'), std::string::npos) << end << " in\n" << listing;
    }
    for (const std::string& type : {"drwxr-xr-x "s, "lrwxrwxrwx "s, "-rw-r--r-- "s}) {
        EXPECT_NE(listing.find('\n' + GetParam().linePrefix + type), std::string::npos) << type << " in\n"
                                                                                        << listing;
    }
}

TEST_P(RealServers, ChangesTheTree) {
    Dialogue dialogue(server_.port());
    logIn(dialogue);
    dialogue.say("CWD My Docs");
    EXPECT_EQ(dialogue.say("MKD a\"b"), inPlace(GetParam().made));
    EXPECT_EQ(dialogue.say("RNFR a\"b").substr(0, 4), "350 ");
    EXPECT_EQ(dialogue.say("RNTO new name").substr(0, 4), "250 ");
    EXPECT_EQ(dialogue.say("DELE letter.txt").substr(0, 4), "250 ");
    EXPECT_EQ(dialogue.say("DELE letter.txt").substr(0, 4), "550 ");
    const QDir docs(server_.localPath() + u"/My Docs"_s);
    EXPECT_EQ(docs.entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{u"new name"_s});
    EXPECT_EQ(dialogue.say("RMD new name").substr(0, 4), "250 ");
    EXPECT_TRUE(docs.isEmpty());
}

TEST(RealServer, EndsWithItsSessions) {
    for (const ServerKind kind : {ServerKind::proftpd, ServerKind::vsftpd}) {
        QTcpSocket session;
        std::uint16_t port = 0;
        {
            const RealServer server(kind);
            port = server.port();
            session.connectToHost(QHostAddress::LocalHost, port);
            ASSERT_TRUE(session.waitForConnected(5000) && session.waitForReadyRead(5000));
        }
        EXPECT_TRUE(session.state() == QAbstractSocket::UnconnectedState ||
                    session.waitForDisconnected(5000));
        QTcpSocket late;
        late.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_FALSE(late.waitForConnected(5000));
    }
}

} // namespace
} // namespace corvel::test
