#pragma once

#include "common/ports/StateStore.h"

#include <functional>
#include <map>
#include <string>

namespace corvel {

// A store that lasts as long as the program: for the demo and for tests.
class MemoryStore : public StateStore {
  public:
    std::optional<std::string> value(std::string_view key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void setValue(std::string_view key, std::string_view value) override {
        values_[std::string(key)] = value;
    }

  private:
    std::map<std::string, std::string, std::less<>> values_;
};

} // namespace corvel
