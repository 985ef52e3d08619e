#pragma once

#include "common/Command.h"
#include "config/SiteConfig.h"

#include <vector>

namespace corvel {

// What the login dialogue (RFC 959, section 5.4) does about one reply.
struct LoginStep {
    bool loggedIn = false; // the server accepted the login with this reply
    std::vector<Command> commands;
};

// code: of a reply that arrived before the login; config: the site. A reply that is no part of the dialogue
// gives an empty step: the person decides what comes next.
LoginStep loginStep(int code, const SiteConfig& config);

} // namespace corvel
