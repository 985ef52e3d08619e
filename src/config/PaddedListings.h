#pragma once

#include "common/Ports.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <cstdint>
#include <string>

namespace corvel {

// Which servers pad their listings, as a person has said, in the per-user store: by host, as configured, and
// port.

inline std::string paddingKey(const std::string& host, std::int32_t port) {
    return "padded_listing_" + toLower(toUtf8(host)) + "_" + std::to_string(port);
}

inline bool padsListings(const StateStore& store, const std::string& host, std::int32_t port) {
    return store.value(paddingKey(host, port)) == "1";
}

inline void rememberPadding(StateStore& store, const std::string& host, std::int32_t port) {
    store.setValue(paddingKey(host, port), "1");
}

} // namespace corvel
