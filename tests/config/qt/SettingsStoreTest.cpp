#include "config/qt/SettingsStore.h"

#include "config/qt/ScratchStore.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvel::test {
namespace {

TEST(SettingsStore, KeepsEveryTextFromOneRunToTheNext) {
    const ScratchStore scratch;
    const std::vector<std::pair<std::string, std::string>> values = {
        {"empty", ""},      {"number", "-1500"},    {"word", "True"},
        {"list", "a, b;c"}, {"quotes", "\"x\" \\"}, {"at", "@Invalid()"},
        {"blanks", "  x "}, {"lines", "a\r\nb"},    {"letters", "\u00E9\u0416\U0001F600"},
        {"%key", "%"},
    };
    {
        SettingsStore store;
        EXPECT_EQ(store.value("empty"), std::nullopt);
        for (const auto& [key, value] : values) {
            store.setValue(key, value);
        }
    }
    const SettingsStore next;
    for (const auto& [key, value] : values) {
        EXPECT_EQ(next.value(key), value) << key;
    }
    EXPECT_TRUE(scratch.has("number"));
}

} // namespace
} // namespace corvel::test
