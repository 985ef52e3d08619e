#pragma once

#include "demo/DemoAccounts.h"
#include "demo/DemoTree.h"

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvel {

// What all clients of a demo server share.
struct DemoWorld {
    // users: the number of accounts, 1 to DemoAccounts::mostUsers; bigEntries: above 0 there is a directory
    // /big with that many files.
    DemoWorld(int users, int bigEntries);

    DemoTree tree;
    DemoAccounts accounts;
};

// When a connection is encrypted: never; after AUTH, for who wants it (RFC 4217); the same, and nobody logs
// in before; from the first byte on.
enum class DemoTls { none, offered, required, implicit };

// What the server remembers of one control connection.
struct DemoClient {
    DemoTls tls = DemoTls::none;           // of the server
    bool isEncrypted = false;              // after AUTH: from when the reply to it is out
    std::string pendingUser;               // from USER, until PASS
    std::optional<int> uid;                // of who is logged in
    std::string directory = "/";           // the current directory
    std::optional<std::string> renameFrom; // from RNFR, until RNTO
    bool isLeaving = false;                // after QUIT: close when the reply is out
};

// The reply that opens a connection.
std::string demoGreeting();

// The reply for a command line that was too long to keep.
std::string demoLineTooLong();

// The whole reply to one command line, CR LF at its end; line holds the client's bytes without line end, any
// bytes. Changes world and client as the command says. There is always a reply: what is no command gets one
// with code 500.
std::string answerCommand(DemoWorld& world, DemoClient& client, std::string_view line);

// One command on its way through the tables.
struct DemoRequest {
    DemoWorld& world;
    DemoClient& client;
    const DemoUser* user;           // who is logged in, or nobody; valid until the accounts change
    TreeViewer viewer = {};         // the same; no name before login
    std::string_view argument = {}; // what follows the verb and one blank
    std::string_view treePath = {}; // what a refusal of the tree is about; the argument unless set
    std::string syntax = {};        // of the command, from its row
};

enum class WhoMay { anyone, users, masters };

// One row of a command table: the verb in upper case, what answers it, who may use it, and the argument that
// it needs, for people; nothing where it needs none. An answer is the whole reply, or a Refusal or TreeError.
struct DemoCommand {
    std::string_view verb;
    std::string (*answer)(DemoRequest&);
    WhoMay whoMay = WhoMay::users;
    std::string_view syntax = {};
};

// The tables: the commands of the protocol, those behind SITE, those behind SITE CorvelExt.
using DemoTable = std::span<const DemoCommand>;
extern const DemoTable fileCommands;
extern const DemoTable siteCommands;
extern const DemoTable accountCommands;
extern const DemoTable extensionCommands;

// Looks the first word of line up in the tables, in any case, and answers with that row, the rest of line its
// argument. prefix: what came before the line, such as "SITE ", for the error replies.
std::string dispatch(std::initializer_list<DemoTable> tables, DemoRequest& request, std::string_view line,
                     std::string_view prefix);

// A reply of one line, its text in pieces; a reply of several, whose inner lines come each with their CR LF
// (RFC 959, section 4.2).
std::string reply(int code, std::initializer_list<std::string_view> text);
std::string longReply(int code, std::string_view first, std::string_view innerLines, std::string_view last);

// The reply to SITE HELP.
std::string answerSiteHelp(DemoRequest& request);

// Throws the refusal of an argument of the wrong shape: code 501 and the command's syntax.
[[noreturn]] void refuseSyntax(const DemoRequest& request);

// Whether a listing for the user shows the directory. A hidden directory carries a text of words that says
// whom it is shown to: "-" and a user's name, "=" and a group's name, or letters and digits of which the
// user's flags must hold one. Its owner and master users see it always.
bool isShownTo(const DemoAccounts& accounts, const DemoUser& user, const TreeNode& directory);

// Fills an empty tree with the demo's files: a few hundred entries, always the same ones, among them links,
// devices, long names, names with blanks and names beyond ASCII.
// bigEntries: above 0 there is also a directory /big with that many files.
void fillDemoTree(DemoTree& tree, int bigEntries);

// The accounts that a demo server starts with, always the same ones. The first user is demo with the password
// "demo" and the master flag; every other user's password is his name. userCount: at least 1.
DemoAccounts makeDemoAccounts(int userCount);

} // namespace corvel
