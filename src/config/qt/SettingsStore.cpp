#include "config/qt/SettingsStore.h"

#include "config/WindowState.h"
#include "widgets/TextConversion.h"

namespace corvel {

SettingsStore::SettingsStore() : settings_(fromCore(storeApplication), fromCore(storeSection)) {}

std::optional<std::string> SettingsStore::value(std::string_view key) const {
    const QVariant stored = settings_.value(fromCore(key));
    return stored.isValid() ? std::optional(toCore(stored.toString())) : std::nullopt;
}

void SettingsStore::setValue(std::string_view key, std::string_view value) {
    settings_.setValue(fromCore(key), fromCore(value));
}

} // namespace corvel
