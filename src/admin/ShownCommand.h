#pragma once

#include "config/Settings.h"

#include <string>
#include <string_view>

namespace corvel {

// command, in the server's bytes, as it is shown to a person: where the settings have it so, "*****" stands
// for the password of an account, and always for that of a login. What is sent is never changed.
std::string shownCommand(std::string_view command, const Settings& settings);

// A command as logs and whoever keeps it have it: the password of a login is masked.
std::string loggedCommand(const std::string& command);

} // namespace corvel
