#include "support/TestProgram.h"

#include "common/Text.h"

#include <memory>

namespace corvel::test {

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

std::string sitesFile(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += "name = site" + std::to_string(i) + "\nhost = host" + std::to_string(i) +
                "\nport = 21\nuser = bob\npass = secret\n";
    }
    return text;
}

} // namespace corvel::test
