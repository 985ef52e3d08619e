// Templates and the lines of menus: the first line is the template, each other one the value of a variable, v
// and then w, x, y and z.
#include "common/Text.h"
#include "common/TextEncoding.h"
#include "Fuzz.h"
#include "menus/mdlMenus.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

MenuVariables variablesOf(const std::vector<std::string_view>& values) {
    MenuVariables variables;
    for (std::size_t i = 0; i < std::min<std::size_t>(values.size(), 5); ++i) {
        variables.push_back({std::string(1, static_cast<char>('v' + i)), std::string(values[i])});
    }
    return variables;
}

void checkExpansion(std::string_view line, const MenuVariables& variables) {
    const std::string expanded = ExpandTemplate(line, variables);
    std::string pieces;
    bool areTexts = isValidUtf8(line);
    for (const TemplatePiece& piece : expandPieces(line, variables)) {
        pieces += piece.text;
    }
    for (const MenuVariable& variable : variables) {
        areTexts = areTexts && isValidUtf8(variable.sValue);
    }
    require(pieces == expanded, "the pieces are the whole");
    require(!areTexts || isValidUtf8(expanded), "of UTF-8 comes UTF-8");
    require(ExpandTemplate(line, {}) == line, "without variables nothing changes");
    require(line.find("%(") != std::string_view::npos || expanded == line, "a value stands in its place");
}

// The steps up that a path or an address has, by the eyes of a person who knows how systems read them.
std::size_t stepsUp(std::string_view path) {
    std::string plain = toLower(path);
    plain = replaceAll(replaceAll(plain, "%2e", "."), "\\", "/");
    std::size_t count = 0;
    for (const std::string_view step : split(plain, "/")) {
        const std::string_view name = trim(step);
        count += name.starts_with("..") && name.find_first_not_of(". ") == std::string_view::npos ? 1 : 0;
    }
    return count;
}

// What the values of variables cannot do to an entry, however its author wrote it.
void checkReach(std::string_view line, const MenuVariables& variables) {
    MenuVariables harmless = variables;
    for (MenuVariable& variable : harmless) {
        variable.sValue = "x";
    }
    const MenuCommand command = menuCommand(line, variables);
    const MenuCommand written = menuCommand(line, harmless);
    require(command.action == written.action && command.asksFirst == written.asksFirst,
            "no value names the action, or takes a question away");
    require(line.find("%(") != std::string_view::npos || (command == written && !command.isServersChoice),
            "what the author wrote stays");
    if (command.action != "exec" || !command.problem.empty()) {
        return;
    }
    require(isOneLine(command.target), "what is opened is one line");
    require(command.isServersChoice == (written.isServersChoice && !command.target.empty()),
            "no value takes a question away, or asks one");
    const std::string authorsSteps = replaceAll(replaceAll(line, " ", "/"), "\"", "/");
    require(stepsUp(command.target) <= stepsUp(authorsSteps), "no value leads up");
    require(!command.isServersChoice || !command.target.starts_with('-'), "no value is an option");
}

} // namespace

void check(std::string_view bytes) {
    std::vector<std::string_view> lines = split(bytes, "\n");
    const std::string_view line = lines.front();
    lines.erase(lines.begin());
    const MenuVariables variables = variablesOf(lines);
    checkExpansion(line, variables);
    checkReach(line, variables);
    static constexpr std::array<std::string_view, 4> actions = {"exec ", "exec \"/opt/", "%kill ", "copy "};
    checkReach(std::string(actions[bytes.size() % actions.size()]).append(line), variables);
    const std::vector<MenuItem> items =
        expandMenu({{std::string(line), std::string(line)}, {"-", "null"}}, variables);
    require(items.size() == 2 && items[1].isSeparator, "a menu has all of its entries");
    menuQuestion(toUtf8(bytes));
}

// How long a line is, its author chooses, and how long a value is, the server: never both at once.
void work(std::string_view bytes) {
    const MenuVariables variables = {{"v", std::string(bytes)}};
    menuCommand("exec \"/opt/%(v)\" %(v,20,R,$)", variables);
    menuCommand("kill */%(v)", variables);
    menuCommand(bytes, {{"v", "value"}});
}

} // namespace corvel::fuzz
