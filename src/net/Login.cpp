#include "net/Login.h"

namespace corvel {

namespace {

// Through the proxy the user name tells the server that is meant.
std::string loginName(const SiteConfig& config) {
    return config.usesslproxy ? config.user + "@" + config.host + ":" + std::to_string(config.port)
                              : config.user;
}

Command shown(std::string command) {
    return {.sCommand = std::move(command), .bQuiet = false, .iHandler = handler::console, .iTag = 0};
}

Command quiet(std::string command, std::int32_t code) {
    return {.sCommand = std::move(command), .bQuiet = true, .iHandler = code, .iTag = 0};
}

} // namespace

LoginStep loginStep(int code, const SiteConfig& config) {
    switch (code) {
    case 220:
        return {.commands = {shown("USER " + loginName(config))}};
    case 331:
        return {.commands = {shown("PASS " + config.pass)}};
    case 230:
        return {.loggedIn = true,
                .commands = {quiet("SITE CorvelExt usertable", handler::userTable),
                             quiet("SITE CorvelExt grouptable", handler::groupTable),
                             quiet("CWD /", handler::browser)}};
    default:
        return {};
    }
}

} // namespace corvel
