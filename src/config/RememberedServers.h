#pragma once

#include "common/Ports.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <cstdint>
#include <string>

namespace corvel {

// What a person has said of a server, in the per-user store: by host, as configured, and port.

// The key of one of these; what: a word for it.
inline std::string serverKey(const std::string& what, const std::string& host, std::int32_t port) {
    return what + "_" + toLower(toUtf8(host)) + "_" + std::to_string(port);
}

// The fingerprint of the one certificate that is trusted always; empty where none is.
inline std::string trustedFingerprint(const StateStore& store, const std::string& host, std::int32_t port) {
    return store.value(serverKey("certificate", host, port)).value_or("");
}

// fingerprint: empty to trust none any more.
inline void trustCertificate(StateStore& store, const std::string& host, std::int32_t port,
                             const std::string& fingerprint) {
    store.setValue(serverKey("certificate", host, port), fingerprint);
}

// Whether the server pads its listings.
inline bool padsListings(const StateStore& store, const std::string& host, std::int32_t port) {
    return store.value(serverKey("padded_listing", host, port)) == "1";
}

inline void rememberPadding(StateStore& store, const std::string& host, std::int32_t port) {
    store.setValue(serverKey("padded_listing", host, port), "1");
}

} // namespace corvel
