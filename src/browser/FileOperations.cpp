#include "browser/FileOperations.h"

#include "common/Text.h"

#include <utility>

namespace corvel {

namespace {

Command quietCommand(std::string_view verb, std::string_view argument, std::int32_t iHandler) {
    std::string sCommand(verb);
    sCommand += argument;
    return {.sCommand = std::move(sCommand), .bQuiet = true, .iHandler = iHandler, .iTag = 0};
}

} // namespace

Command fileCommand(std::string_view verb, std::string_view argument) {
    return quietCommand(verb, argument, handler::browserFile);
}

std::vector<Command> changeDirectoryCommands(std::string_view directory) {
    return {quietCommand("CWD ", directory, handler::browser)};
}

std::vector<Command> refreshCommands() {
    return {listCommand()};
}

std::vector<Command> mkdirButtonCommands() {
    return {listCommand(), quietCommand("NOOP", "", handler::console)};
}

Command listCommand() {
    return quietCommand("STAT -a", "", handler::browser);
}

Command printDirectoryCommand() {
    return quietCommand("PWD", "", handler::browser);
}

std::optional<Deletion> deletion(const BrowserEntry& entry, TextEncoding encoding) {
    switch (typeKey(entry)) {
    case 1:
        return Deletion{"Are u sure u want to delete this directory:\r\n" +
                            visibleText(toUtf8(entry.name, encoding)),
                        fileCommand("RMD ", entry.name)};
    case 3:
        return Deletion{"Are u sure u want to delete this file:", fileCommand("DELE ", entry.name)};
    default:
        return std::nullopt;
    }
}

std::vector<Command> makeDirectoryCommands(std::string_view name) {
    return name.empty() ? std::vector<Command>() : std::vector{fileCommand("MKD ", name)};
}

std::vector<Command> renameCommands(std::string_view oldName, std::string_view newName) {
    if (oldName == newName) {
        return {};
    }
    const Command from = fileCommand("RNFR ", oldName);
    const Command to = fileCommand("RNTO ", newName);
    if (!isOneLine(oldName)) {
        return {from};
    }
    return isOneLine(newName) ? std::vector{from, to} : std::vector{to};
}

} // namespace corvel
