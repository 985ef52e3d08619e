#pragma once

#include "common/Ports.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <cstdint>
#include <string>

namespace corvel {

// What a person has said to trust always, in the per-user store: one certificate for each host, as
// configured, and port, by its fingerprint.

inline std::string trustKey(const std::string& host, std::int32_t port) {
    return "certificate_" + toLower(toUtf8(host)) + "_" + std::to_string(port);
}

// The fingerprint; empty where no certificate is trusted.
inline std::string trustedFingerprint(const StateStore& store, const std::string& host, std::int32_t port) {
    return store.value(trustKey(host, port)).value_or("");
}

// fingerprint: empty to trust none any more.
inline void trustCertificate(StateStore& store, const std::string& host, std::int32_t port,
                             const std::string& fingerprint) {
    store.setValue(trustKey(host, port), fingerprint);
}

} // namespace corvel
