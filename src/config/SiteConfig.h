#pragma once

#include <cstdint>
#include <string>

namespace corvel {

// One configured site. Texts are bytes as sites.ini holds them.
struct SiteConfig {
    std::string name;
    std::string reserved; // stays empty
    std::string host;
    std::int32_t port = 0;
    std::string user;
    std::string pass;
    std::string ident;
    bool connectonstartup = false;
    bool usesslproxy = false;

    bool operator==(const SiteConfig&) const = default;
};

} // namespace corvel
