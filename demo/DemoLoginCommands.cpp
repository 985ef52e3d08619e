#include "common/Text.h"
#include "demo/DemoCommands.h"

#include <array>

namespace corvel {

namespace {

std::string answerUser(DemoRequest& request) {
    request.client = DemoClient{};
    request.client.pendingUser = request.argument;
    return reply(331, {"Password required for ", request.argument, "."});
}

std::string answerPass(DemoRequest& request) {
    DemoClient& client = request.client;
    if (client.pendingUser.empty()) {
        return reply(503, client.uid ? "Already logged in." : "Login with USER first.");
    }
    const DemoUser* user = request.world.accounts.findUser(client.pendingUser);
    client.pendingUser.clear();
    if (user == nullptr || user->password != request.argument) {
        return reply(530, "Login incorrect.");
    }
    client.uid = user->uid;
    return longReply(230, "Welcome to the demo server. All of it lives in memory and is gone when it stops.",
                     "", "User " + user->name + " logged in.");
}

std::string answerQuit(DemoRequest& request) {
    request.client.isLeaving = true;
    return reply(221, "Goodbye.");
}

std::string answerNoop(DemoRequest&) {
    return reply(200, "NOOP command successful");
}

std::string answerSyst(DemoRequest&) {
    return reply(215, "UNIX Type: L8");
}

std::string answerFeat(DemoRequest&) {
    return longReply(211, "Features:", " UTF8\r\n SITE CHMOD\r\n", "End");
}

std::string answerOpts(DemoRequest& request) {
    const std::string option = toUpper(request.argument);
    return option == "UTF8 ON" || option == "UTF8" ? reply(200, "UTF8 is on.")
                                                   : reply(501, "Option not understood.");
}

std::string answerType(DemoRequest& request) {
    return reply(200, {"Type set to ", request.argument, "."});
}

std::string answerHelp(DemoRequest& request) {
    const std::array protocolTables = {loginCommands(), fileCommands()};
    const std::array siteTables = {siteCommands(), accountCommands()};
    if (toUpper(request.argument) == "SITE") {
        return helpReply(siteTables, "These SITE commands are understood:");
    }
    return helpReply(protocolTables, "These commands are understood:");
}

std::string answerSite(DemoRequest& request) {
    const std::array tables = {siteCommands(), accountCommands()};
    return dispatch(tables, request, request.argument, "SITE ");
}

std::string answerNoData(DemoRequest&) {
    return reply(502, "This server has no data connections.");
}

constexpr std::array commands = {
    DemoCommand{"USER", answerUser, WhoMay::anyone, Argument::needed, "<name>"},
    DemoCommand{"PASS", answerPass, WhoMay::anyone, Argument::optional},
    DemoCommand{"QUIT", answerQuit, WhoMay::anyone, Argument::optional},
    DemoCommand{"NOOP", answerNoop, WhoMay::users, Argument::optional},
    DemoCommand{"SYST", answerSyst, WhoMay::anyone, Argument::optional},
    DemoCommand{"FEAT", answerFeat, WhoMay::anyone, Argument::optional},
    DemoCommand{"OPTS", answerOpts, WhoMay::anyone, Argument::needed, "<option>"},
    DemoCommand{"HELP", answerHelp, WhoMay::anyone, Argument::optional},
    DemoCommand{"TYPE", answerType, WhoMay::users, Argument::needed, "A | I"},
    DemoCommand{"SITE", answerSite, WhoMay::users, Argument::needed, "<command>"},
    DemoCommand{"PORT", answerNoData, WhoMay::users, Argument::optional},
    DemoCommand{"PASV", answerNoData, WhoMay::users, Argument::optional},
    DemoCommand{"LIST", answerNoData, WhoMay::users, Argument::optional},
    DemoCommand{"NLST", answerNoData, WhoMay::users, Argument::optional},
    DemoCommand{"RETR", answerNoData, WhoMay::users, Argument::optional},
    DemoCommand{"STOR", answerNoData, WhoMay::users, Argument::optional},
};

} // namespace

std::span<const DemoCommand> loginCommands() {
    return commands;
}

} // namespace corvel
