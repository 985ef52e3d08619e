#include "demo/DemoCommands.h"

#include "common/Text.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>

namespace corvel {

namespace {

constexpr std::size_t longestVerb = 12;

bool isVerb(std::string_view word) {
    return !word.empty() && word.size() <= longestVerb && std::ranges::all_of(word, [](char letter) {
        return lowerAscii(letter) >= 'a' && lowerAscii(letter) <= 'z';
    });
}

std::string helpReply(std::initializer_list<DemoTable> tables, std::string_view first) {
    constexpr std::size_t perLine = 8;
    std::string lines;
    std::size_t count = 0;
    for (const DemoTable table : tables) {
        for (const DemoCommand& command : table) {
            lines.append(count % perLine == 0 && count > 0 ? "\r\n " : " ").append(command.verb);
            ++count;
        }
    }
    return longReply(214, first, lines.append(lineEnd), "End of help.");
}

std::string answerAuth(DemoRequest& request) {
    DemoClient& client = request.client;
    if (client.isEncrypted || client.uid) {
        return reply(503, {client.isEncrypted ? "Already encrypted." : "Already logged in."});
    }
    if (toUpper(request.argument) != "TLS") {
        return reply(504, {"Only AUTH TLS is understood."});
    }
    client.pendingUser.clear();
    client.isEncrypted = true;
    return reply(234, {"Ready for the handshake."});
}

std::string answerUser(DemoRequest& request) {
    DemoClient& client = request.client;
    if (client.tls == DemoTls::required && !client.isEncrypted) {
        return reply(530, {"Nobody logs in here in clear text: send AUTH TLS first."});
    }
    client = DemoClient{.tls = client.tls, .isEncrypted = client.isEncrypted};
    client.pendingUser = request.argument;
    return reply(331, {"Password required for ", request.argument, "."});
}

std::string answerPass(DemoRequest& request) {
    DemoClient& client = request.client;
    if (client.pendingUser.empty()) {
        return reply(503, {client.uid ? "Already logged in." : "Login with USER first."});
    }
    const DemoUser* user = request.world.accounts.findUser(client.pendingUser);
    client.pendingUser.clear();
    if (user == nullptr || user->password != request.argument) {
        return reply(530, {"Login incorrect."});
    }
    client.uid = user->id;
    return longReply(230, "Welcome to the demo server. All of it lives in memory and is gone when it stops.",
                     "", "User " + user->name + " logged in.");
}

std::string answerQuit(DemoRequest& request) {
    request.client.isLeaving = true;
    return reply(221, {"Goodbye."});
}

std::string answerNoop(DemoRequest&) {
    return reply(200, {"NOOP command successful"});
}

std::string answerSyst(DemoRequest&) {
    return reply(215, {"UNIX Type: L8"});
}

bool offersTls(const DemoClient& client) {
    return client.tls == DemoTls::offered || client.tls == DemoTls::required;
}

std::string answerFeat(DemoRequest& request) {
    return longReply(211, "Features:",
                     concat({offersTls(request.client) ? " AUTH TLS\r\n" : "", " UTF8\r\n SITE CHMOD\r\n"}),
                     "End");
}

std::string answerOpts(DemoRequest& request) {
    const std::string option = toUpper(request.argument);
    return option == "UTF8 ON" || option == "UTF8" ? reply(200, {"UTF8 is on."})
                                                   : reply(501, {"Option not understood."});
}

std::string answerType(DemoRequest& request) {
    return reply(200, {"Type set to ", request.argument, "."});
}

std::string answerHelp(DemoRequest& request);

std::string answerSite(DemoRequest& request) {
    return dispatch({siteCommands, accountCommands}, request, request.argument, "SITE ");
}

std::string answerNoData(DemoRequest&) {
    return reply(502, {"This server has no data connections."});
}

constexpr std::array loginCommands = {
    DemoCommand{"USER", answerUser, WhoMay::anyone, "<name>"},
    DemoCommand{"PASS", answerPass, WhoMay::anyone},
    DemoCommand{"QUIT", answerQuit, WhoMay::anyone},
    DemoCommand{"NOOP", answerNoop},
    DemoCommand{"SYST", answerSyst, WhoMay::anyone},
    DemoCommand{"FEAT", answerFeat, WhoMay::anyone},
    DemoCommand{"OPTS", answerOpts, WhoMay::anyone, "<option>"},
    DemoCommand{"HELP", answerHelp, WhoMay::anyone},
    DemoCommand{"TYPE", answerType, WhoMay::users, "A | I"},
    DemoCommand{"SITE", answerSite, WhoMay::users, "<command>"},
    DemoCommand{"PORT", answerNoData},
    DemoCommand{"PASV", answerNoData},
    DemoCommand{"LIST", answerNoData},
    DemoCommand{"NLST", answerNoData},
    DemoCommand{"RETR", answerNoData},
    DemoCommand{"STOR", answerNoData},
};

constexpr std::array tlsCommands = {DemoCommand{"AUTH", answerAuth, WhoMay::anyone, "TLS"}};

DemoTable tlsTable(const DemoClient& client) {
    return offersTls(client) ? DemoTable(tlsCommands) : DemoTable();
}

std::string answerHelp(DemoRequest& request) {
    return toUpper(request.argument) == "SITE"
               ? answerSiteHelp(request)
               : helpReply({loginCommands, tlsTable(request.client), fileCommands},
                           "These commands are understood:");
}

} // namespace

DemoWorld::DemoWorld(int users, int bigEntries) : accounts(makeDemoAccounts(users)) {
    fillDemoTree(tree, bigEntries);
}

std::string demoGreeting() {
    return reply(220, {"Corvel demo server ready."});
}

std::string demoLineTooLong() {
    return reply(500, {"Command line too long."});
}

void refuseSyntax(const DemoRequest& request) {
    throw Refusal{501, "Syntax: " + request.syntax};
}

std::string reply(int code, std::initializer_list<std::string_view> text) {
    return concat({std::to_string(code), " ", concat(text), lineEnd});
}

std::string longReply(int code, std::string_view first, std::string_view innerLines, std::string_view last) {
    return concat({std::to_string(code), "-", first, lineEnd, innerLines, reply(code, {last})});
}

std::string answerSiteHelp(DemoRequest&) {
    return helpReply({siteCommands, accountCommands}, "These SITE commands are understood:");
}

std::string dispatch(std::initializer_list<DemoTable> tables, DemoRequest& request, std::string_view line,
                     std::string_view prefix) {
    const auto [word, rest] = cutWord(line);
    if (!isVerb(word)) {
        return reply(500, {"Command not understood."});
    }
    const std::string verb = toUpper(word);
    for (const DemoTable table : tables) {
        const auto command = std::ranges::find(table, std::string_view(verb), &DemoCommand::verb);
        if (command == table.end()) {
            continue;
        }
        if (command->whoMay != WhoMay::anyone && request.user == nullptr) {
            return reply(530, {"Please login with USER and PASS."});
        }
        if (command->whoMay == WhoMay::masters && request.user != nullptr && !request.user->isMaster()) {
            refuse({"Access denied: this command is for master users."});
        }
        request.argument = request.treePath = rest;
        request.syntax = concat({prefix, verb, " ", command->syntax});
        if (!command->syntax.empty() && rest.empty()) {
            refuseSyntax(request);
        }
        return command->answer(request);
    }
    return reply(500, {"'", prefix, verb, "': command not understood."});
}

std::string answerCommand(DemoWorld& world, DemoClient& client, std::string_view line) {
    if (!isOneLine(line)) {
        return reply(500, {"Command not understood: it holds a control character."});
    }
    const DemoUser* const user = client.uid ? world.accounts.findUser(*client.uid) : nullptr;
    DemoRequest request{world, client, user};
    if (user != nullptr) {
        request.viewer = {user->name, world.accounts.groupNames(*user), client.directory};
    }
    try {
        return dispatch({loginCommands, tlsTable(client), fileCommands}, request, line, "");
    } catch (const Refusal& refusal) {
        return reply(refusal.code, {refusal.text});
    } catch (const TreeError& error) {
        return reply(550, {request.treePath, ": ", error.reason, "."});
    }
}

} // namespace corvel
