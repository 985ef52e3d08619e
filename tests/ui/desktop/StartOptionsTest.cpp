#include "ui/desktop/StartAndEnd.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

TEST(StartOptions, AreReadOrExplained) {
    struct Row {
        QStringList arguments;
        QString directory;
        bool isWrong;
        QString message; // in front of what is said; empty: the window opens
    };
    const std::vector<Row> rows = {
        {{}, u"default"_s, false, {}},
        {{u"--demo"_s}, u"default"_s, false, {}},
        {{u"--config-dir"_s, u"x"_s}, u"x"_s, false, {}},
        {{u"--config-dir"_s, u""_s}, {}, true, u"--config-dir needs a directory."_s},
        {{u"--config-dir="_s}, {}, true, u"--config-dir needs a directory."_s},
        {{u"--help"_s}, u"default"_s, false, u"Usage:"_s},
        {{u"-v"_s}, u"default"_s, false, u"Corvel "_s},
        {{u"--nonsense"_s}, u"default"_s, true, u"Unknown option 'nonsense'"_s},
    };
    for (const Row& row : rows) {
        const StartOptions options = readStartOptions(QStringList{u"corvel"_s} + row.arguments, u"default"_s);
        const std::string name = row.arguments.join(u' ').toStdString();
        EXPECT_EQ(options.directory, row.directory) << name;
        EXPECT_EQ(options.isWrong, row.isWrong) << name;
        EXPECT_EQ(options.message.isEmpty(), row.message.isEmpty()) << name;
        EXPECT_TRUE(options.message.startsWith(row.message)) << options.message.toStdString();
        EXPECT_EQ(options.demo, row.arguments.contains(u"--demo"_s)) << name;
    }
}

} // namespace
} // namespace corvel::test
