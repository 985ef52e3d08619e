#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// The per-user settings store of the platform: one text value per key.
class StateStore {
  public:
    virtual ~StateStore() = default;

    // The stored value, or nothing when the key was never written.
    virtual std::optional<std::string> value(std::string_view key) const = 0;
    virtual void setValue(std::string_view key, std::string_view value) = 0;
};

} // namespace corvel
