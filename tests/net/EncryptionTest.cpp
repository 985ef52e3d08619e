#include "config/RememberedServers.h"
#include "support/ScriptedPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel::test {
namespace {

std::string siteOn(int port) {
    return "name=a\nhost=Host\nport=" + std::to_string(port) + "\nuser=bob\npass=secret\nusesslproxy=1\n";
}

// What goes between the two ends in clear, on every port but the one that is encrypted from the start.
Script inClear(const std::string& trusted = {}) {
    return {send("220 ready\r\n"), expect("AUTH TLS"),
            send("234-well\r\n\xFF\xF1"
                 "234 go on\r\n"),
            expect("(handshake)" + trusted)};
}

Script rest(const Script& login) {
    return {login.begin() + 1, login.end()};
}

// What is typed before waits for it.
TEST(Encryption, BeginsBeforeTheLoginHoweverTheRepliesAreCut) {
    for (std::size_t cutAt = 0; cutAt < 32; ++cutAt) {
        TestProgram program(siteOn(21));
        program.main.connectSite(1);
        play(program, 1, inClear(), "in clear", cutAt);
        program.main.sendConsoleCommand(1, "stat");
        play(program, 1, Script{encrypted()} + rest(loginScript()) + Script{expect("stat")}, "encrypted");
        EXPECT_TRUE(
            program.console(1).starts_with("wSock_Connect()\r\n220 ready\r\n> AUTH TLS\r\n234-well\r\n"
                                           "234 go on\r\n> USER bob\r\n331 pa"))
            << program.console(1);
    }
    TestProgram program(siteOn(990));
    program.main.connectSite(1);
    play(program, 1, {expect("(handshake)")}, "encrypted from the start");
    EXPECT_EQ(program.console(1), "");
    play(program, 1, Script{encrypted()} + loginScript(), "login");
    EXPECT_EQ(program.console(1).substr(0, 28), "wSock_Connect()\r\n220 ready\r\n");
}

// Nothing but AUTH has left by then.
TEST(Encryption, IsNeverGivenUpForAConnectionInClear) {
    const Script auth = {send("220 ready\r\n"), expect("AUTH TLS")};
    std::vector<Script> scripts;
    for (const char* const greeting :
         {"331 p\r\n", "230 in\r\n", "421 no\r\n", "500 no\r\n", "220 a\r\n230 in\r\n"}) {
        scripts.push_back({send(greeting)});
    }
    for (const char* const reply :
         {"331 p\r\n", "230 in\r\n", "421 no\r\n", "500 no\r\n", "530 no\r\n", "534 no\r\n", "220 ready\r\n",
          "234 ok\r\n331 p\r\n", "234 ok\r\n234 ok\r\n", "234 ok\r\n23", "234 ok\r\n\xFF",
          "234 ok\r\n\r\n"}) {
        scripts.push_back(auth + Script{send(reply)});
    }
    scripts.push_back(inClear() + Script{hangUp()});
    for (const Script& script : scripts) {
        TestProgram program(siteOn(21));
        program.main.connectSite(1);
        play(program, 1, {}, "connected");
        program.main.sendConsoleCommand(1, "user bob");
        play(program, 1, script, script.back().text);
        EXPECT_EQ(program.socket(1).state(), SocketState::closed) << script.back().text;
        EXPECT_NE(program.session(1).lastErrorLine.find("ncrypted"), std::string::npos);
        EXPECT_NE(program.console(1).find(program.session(1).lastErrorLine), std::string::npos);
    }
}

TEST(Encryption, IsNotLeftOutWhereTheSiteWasChangedMeanwhile) {
    for (const bool isAsked : {false, true}) {
        TestProgram program("name=a\nhost=h\nport=21\nuser=bob\npass=secret\n");
        program.main.connectSite(1);
        play(program, 1, isAsked ? Script{send("220 ready\r\n"), expect("USER bob")} : Script(), "in clear");
        SiteForm form = siteForm(program.main.site(1).config);
        form.chkUseSSLProxy = true;
        EXPECT_EQ(program.main.changeSite(1, form), std::nullopt);
        play(program, 1, {send(isAsked ? "331 p\r\n" : "220 ready\r\n")}, "changed");
        EXPECT_EQ(program.socket(1).state(), SocketState::closed);
    }
}

// A site whose server came with a certificate for which nobody vouches.
struct Doubted : TestProgram {
    explicit Doubted(const std::string& remembered = {}) : TestProgram(siteOn(21)) {
        trustCertificate(store, "host", 21, remembered);
        main.connectSite(1);
        play(*this, 1, inClear(remembered), "in clear");
        socket(1).facts.chain = {{.fingerprint = "ab12"}};
        main.wSock_Certificate(1, {"It is self-signed."});
    }
};

TEST(Certificates, AreAskedForUnlessTheyAreRemembered) {
    struct Row {
        std::string remembered;
        CertificateAnswer answer;
        std::string accepted, rememberedThen;
    };
    const std::string yes = "(accepted)\r\n";
    const std::vector<Row> rows = {
        {"", CertificateAnswer::connectOnce, yes, ""},
        {"", CertificateAnswer::alwaysTrust, yes, "ab12"},
        {"", CertificateAnswer::disconnect, "", ""},
        {"cd34", CertificateAnswer::connectOnce, yes, "cd34"},
        {"cd34", CertificateAnswer::alwaysTrust, yes, "ab12"},
    };
    for (const Row& row : rows) {
        Doubted program(row.remembered);
        EXPECT_EQ(program.prompts.asked, Texts{"Host ab12 " + row.remembered});
        EXPECT_EQ(program.socket(1).sent, "") << "before the answer";
        program.prompts.answerCertificate(row.answer);
        EXPECT_EQ(program.socket(1).sent, row.accepted);
        EXPECT_EQ(program.socket(1).state() == SocketState::closed, row.accepted.empty());
        EXPECT_EQ(program.main.trustedFingerprint(1), row.rememberedThen);
    }
    Doubted program("ab12");
    program.main.forgetFingerprint(1);
    EXPECT_EQ(program.main.trustedFingerprint(1), "");
}

// It is remembered all the same: that much it says.
TEST(Certificates, AnAnswerThatComesLateAcceptsNothing) {
    for (const bool isConnectedAgain : {false, true}) {
        Doubted program;
        program.main.disconnectSite(1);
        program.socket(1).facts = {};
        if (isConnectedAgain) {
            program.main.connectSite(1);
            play(program, 1, inClear(), "in clear");
            program.socket(1).facts.chain = {{.fingerprint = "cd34"}};
        }
        program.prompts.answerCertificate(CertificateAnswer::alwaysTrust);
        EXPECT_EQ(program.socket(1).sent, "");
        EXPECT_EQ(program.main.trustedFingerprint(1), "ab12");
    }
    Doubted program;
    program.socket(1).facts.chain.clear();
    program.main.wSock_Certificate(1, {});
    EXPECT_EQ(program.socket(1).state(), SocketState::closed) << "no certificate at all";
}

} // namespace
} // namespace corvel::test
