#pragma once

#include "common/Ports.h"

#include <QSettings>

namespace corvel {

// The StateStore port over the platform's store for the user who runs the program.
class SettingsStore : public StateStore {
  public:
    SettingsStore();

    std::optional<std::string> value(std::string_view key) const override;
    void setValue(std::string_view key, std::string_view value) override;

  private:
    QSettings settings_;
};

} // namespace corvel
