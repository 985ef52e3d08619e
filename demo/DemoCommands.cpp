#include "demo/DemoCommands.h"

#include "common/Text.h"
#include "demo/DemoContents.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>

namespace corvel {

namespace {

constexpr std::size_t longestVerb = 12;

bool isVerb(std::string_view word) {
    return !word.empty() && word.size() <= longestVerb &&
           std::all_of(word.begin(), word.end(), [](char letter) {
               return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
           });
}

const DemoCommand* findCommand(DemoTables tables, std::string_view verb) {
    for (const std::span<const DemoCommand> table : tables) {
        const auto found = std::find_if(table.begin(), table.end(),
                                        [&](const DemoCommand& command) { return command.verb == verb; });
        if (found != table.end()) {
            return &*found;
        }
    }
    return nullptr;
}

// Why the command is refused to the client; empty when it is not.
std::string refusal(const DemoCommand& command, const DemoRequest& request) {
    if (command.whoMay == WhoMay::anyone) {
        return {};
    }
    const DemoUser* user = loggedInUser(request.world, request.client);
    if (user == nullptr) {
        return reply(530, "Please login with USER and PASS.");
    }
    if (command.whoMay == WhoMay::masters && user->flags.find('M') == std::string::npos) {
        return reply(550, "Access denied: this command is for master users.");
    }
    return {};
}

TreeViewer viewerOf(const DemoWorld& world, const DemoClient& client) {
    const DemoUser* user = loggedInUser(world, client);
    if (user == nullptr) {
        return {};
    }
    return {.user = user->name, .groups = world.accounts.groupNames(*user), .directory = client.directory};
}

} // namespace

DemoWorld::DemoWorld(int users, int bigEntries) : accounts(users) {
    fillDemoTree(tree, bigEntries);
}

std::string demoGreeting() {
    return reply(220, "Corvel demo server ready.");
}

std::string demoLineTooLong() {
    return reply(500, "Command line too long.");
}

const DemoUser* loggedInUser(const DemoWorld& world, const DemoClient& client) {
    return client.uid ? world.accounts.findUser(*client.uid) : nullptr;
}

std::string syntaxReply(const DemoRequest& request) {
    return reply(501, {"Syntax: ", request.syntax});
}

std::string changeReply(const Problem& problem, std::initializer_list<std::string_view> done) {
    return problem.empty() ? reply(200, done) : reply(550, problem);
}

std::string reply(int code, std::string_view text) {
    std::string line = std::to_string(code) + ' ';
    return line.append(text).append(lineEnd);
}

std::string reply(int code, std::initializer_list<std::string_view> textPieces) {
    return reply(code, concat(textPieces));
}

std::string longReply(int code, std::string_view first, std::string_view innerLines, std::string_view last) {
    std::string text = std::to_string(code) + '-';
    text.append(first).append(lineEnd).append(innerLines);
    return text.append(reply(code, last));
}

std::string helpReply(DemoTables tables, std::string_view first) {
    constexpr std::size_t perLine = 8;
    std::string lines;
    std::size_t count = 0;
    for (const std::span<const DemoCommand> table : tables) {
        for (const DemoCommand& command : table) {
            lines += count % perLine == 0 && count > 0 ? "\r\n " : " ";
            lines += command.verb;
            ++count;
        }
    }
    return longReply(214, first, lines.append(lineEnd), "End of help.");
}

std::string dispatch(DemoTables tables, DemoRequest& request, std::string_view line,
                     std::string_view prefix) {
    const std::size_t blank = line.find(' ');
    const std::string_view word = line.substr(0, blank);
    if (!isVerb(word)) {
        return reply(500, "Command not understood.");
    }
    const std::string verb = toUpper(word);
    const DemoCommand* command = findCommand(tables, verb);
    if (command == nullptr) {
        return reply(500, {"'", prefix, verb, "': command not understood."});
    }
    if (std::string refused = refusal(*command, request); !refused.empty()) {
        return refused;
    }
    request.argument = blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
    request.syntax = concat({prefix, verb, " ", command->syntax});
    if (command->argument == Argument::needed && request.argument.empty()) {
        return syntaxReply(request);
    }
    return command->answer(request);
}

std::string answerCommand(DemoWorld& world, DemoClient& client, std::string_view line) {
    if (!isOneLine(line)) {
        return reply(500, "Command not understood: it holds a control character.");
    }
    DemoRequest request{
        .world = world, .client = client, .viewer = viewerOf(world, client), .argument = {}, .syntax = {}};
    const std::array tables = {loginCommands(), fileCommands()};
    return dispatch(tables, request, line, "");
}

} // namespace corvel
