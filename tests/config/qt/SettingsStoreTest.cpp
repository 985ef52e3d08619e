#include "config/qt/SettingsStore.h"

#include "support/TemporaryDirectory.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <vector>

namespace corvel::test {
namespace {

TEST(SettingsStore, KeepsEveryTextFromOneRunToTheNext) {
    const TemporaryDirectory directory;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(directory.path()));
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
    EXPECT_EQ(directory.read("Voskar Drennix/Corvel2.conf").empty(), false);
}

} // namespace
} // namespace corvel::test
