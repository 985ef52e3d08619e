#include "admin/ShownCommand.h"

#include "common/Text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace corvel {

namespace {

// The words before a password, "*" for any; and whether it ends with its word or only with the line.
struct PasswordPlace {
    std::string_view words;
    bool isOneWord;
};

constexpr std::string_view loginWord = "PASS"; // never shown with what follows

constexpr std::array<PasswordPlace, 7> places = {{
    {loginWord, false},
    {"SITE CHANGE * PASSWD", false},
    {"SITE GADDUSER * *", true},
    {"SITE ADDUSER *", true},
    {"SITE CHPASS *", false},
    {"SITE PASSWD", false},
    {"SITE PSWD", false},
}};

// Where the word ends that begins at or behind start; the end of text where there is none.
std::size_t endOfWord(std::string_view text, std::size_t start) {
    return std::min(text.find(' ', text.find_first_not_of(' ', start)), text.size());
}

// Where the password begins, with the blank before it; the end of command where there is none.
std::size_t startOfPassword(std::string_view command, const PasswordPlace& place) {
    std::size_t end = 0;
    for (const std::string_view word : split(place.words, " ")) {
        const std::size_t start = end;
        end = endOfWord(command, start);
        if (word != "*" && toUpper(trim(command.substr(start, end - start))) != word) {
            return command.size();
        }
    }
    return end;
}

} // namespace

std::string loggedCommand(const std::string& command) {
    return toUpper(command.substr(0, 5)) == "PASS " ? "PASS *****" : command;
}

std::string shownCommand(std::string_view command, const Settings& settings) {
    for (const PasswordPlace& place : places) {
        const bool isHidden = settings.mask_passwords || place.words == loginWord;
        const std::size_t start = isHidden ? startOfPassword(command, place) : command.size();
        if (command.find_first_not_of(' ', start) != std::string_view::npos) {
            const std::size_t end = place.isOneWord ? endOfWord(command, start) : command.size();
            return std::string(command.substr(0, start)).append(" *****").append(command.substr(end));
        }
    }
    return std::string(command);
}

} // namespace corvel
