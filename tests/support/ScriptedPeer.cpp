#include "support/ScriptedPeer.h"

#include "common/Text.h"

#include <memory>

namespace corvel::test {

std::string sitesFile(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += "name = site" + std::to_string(i) + "\nhost = host" + std::to_string(i) +
                "\nport = 21\nuser = bob\npass = secret\n";
    }
    return text;
}

TestProgram::TestProgram(const std::string& sitesFile, const std::string& settingsFile)
    : main({.views = views,
            .prompts = prompts,
            .store = store,
            .clock = clock,
            .shell = shell,
            .lock = lock,
            .makeSocket =
                [this](int /*site*/) {
                    auto socket = std::make_unique<FakeSocket>();
                    sockets.push_back(socket.get());
                    return socket;
                }},
           directory.path()) {
    if (!sitesFile.empty()) {
        directory.write("sites.ini", sitesFile);
    }
    if (!settingsFile.empty()) {
        directory.write("settings.ini", settingsFile);
    }
    main.LoadWindowState();
    main.LoadSettingsFile();
    main.LoadSites();
}

std::string TestProgram::console(int site) const {
    return replaceAll(session(site).consoleLog.text(), "12:34:56 ", "");
}

std::string TestProgram::commandResults(int site) const {
    return replaceAll(session(site).commandResultsLog.text(), "12:34:56 ", "");
}
void play(TestProgram& program, int site, const Script& script, const std::string& name, std::size_t cutAt) {
    SCOPED_TRACE(name + ", cut at " + std::to_string(cutAt));
    FakeSocket& socket = program.socket(site);
    if (socket.current == SocketState::connecting) {
        socket.current = SocketState::connected;
        program.main.wSock_Connect(site);
    }
    std::size_t delivered = 0;
    Texts pending;
    for (const Step& step : script) {
        std::string text = step.text;
        switch (step.kind) {
        case Step::Kind::expect: {
            const Texts lines = socket.takeSentLines();
            pending.insert(pending.end(), lines.begin(), lines.end());
            ASSERT_FALSE(pending.empty()) << "nothing was sent, expected: " << text;
            ASSERT_EQ(pending.front(), text);
            pending.erase(pending.begin());
            break;
        }
        case Step::Kind::send:
            while (!text.empty()) {
                const std::size_t size =
                    delivered < cutAt ? std::min(text.size(), cutAt - delivered) : text.size();
                program.main.wSock_DataArrival(site, text.substr(0, size));
                delivered += size;
                text.erase(0, size);
            }
            break;
        case Step::Kind::encrypted:
            program.main.wSock_Encrypted(site);
            break;
        case Step::Kind::close:
            program.main.wSock_Close(site);
            break;
        }
    }
    EXPECT_TRUE(pending.empty()) << pending.front();
    const Texts more = socket.takeSentLines();
    EXPECT_TRUE(more.empty()) << "sent beyond the script: " << more.front();
}

Script loginScript() {
    return {send("220 ready\r\n"),
            expect("USER bob"),
            send("331 password please\r\n"),
            expect("PASS secret"),
            send("230 welcome\r\n"),
            expect("SITE CorvelExt usertable"),
            send("500 Unknown\r\n"),
            expect("SITE CorvelExt grouptable"),
            send("500 Unknown\r\n"),
            expect("CWD /"),
            send("250 CWD command successful.\r\n"),
            expect("STAT -a"),
            send("211-status of /:\r\n211 End of Status\r\n"),
            expect("PWD"),
            send("257 \"/\" is current directory.\r\n")};
}

Script listingScript(const std::string& listing) {
    return {expect("STAT -a"), send(listing), expect("PWD"), send("257 \"/pub\" is current directory.\r\n")};
}

Script operator+(Script first, const Script& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

LoggedIn::LoggedIn(int sites, const std::string& settingsFile) : TestProgram(sitesFile(sites), settingsFile) {
    logIn();
}

void LoggedIn::logIn() {
    main.connectSite(1);
    answer(loginScript(), "login");
}

} // namespace corvel::test
