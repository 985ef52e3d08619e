#include "widgets/TextConversion.h"

#include <QTextDocument>

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

using namespace std::string_literals;

TEST(TextConversion, ReadsShowsAndGivesBack) {
    struct Row {
        std::string bytes;
        QString text;
        QString shown;
    };
    const std::vector<Row> rows = {
        {"\xF0\x9F\x98\x80", u"\U0001F600"_qs, u"\U0001F600"_qs},
        {"\xEF\xBB\xBFx", u"\uFEFFx"_qs, u"<U+feff>x"_qs}, // a byte order mark
        {"a\0\x1B[b"s, QString::fromUtf16(u"a\0\x1B[b", 5), u"a\u2400\u241B[b"_qs},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(textOf(row.bytes), row.text) << row.bytes;
        EXPECT_EQ(bytesOf(row.text, TextEncoding::utf8), row.bytes);
        EXPECT_EQ(displayTextOf(row.bytes), row.shown) << row.bytes;
    }
    EXPECT_EQ(textOf("\xE9\x80"), u"\u00E9\u20AC"_qs);
    EXPECT_EQ(bytesOf(u"\u00E9\u20AC"_qs, TextEncoding::windows1252), "\xE9\x80");
    // A text that it lacks goes out as UTF-8 whole.
    EXPECT_EQ(bytesOf(u"\u00E9\u0416"_qs, TextEncoding::windows1252), "\xC3\xA9\xD0\x96");
}

TEST(TextConversion, AToolTipShowsMarkupInsteadOfObeyingIt) {
    EXPECT_EQ(toolTipOf(u"550 a < b & c"_qs), u"550 a < b & c"_qs);
    QTextDocument shown;
    shown.setHtml(toolTipOf(u"550 <img src='file:///x.png'> <b>&amp;</b>"_qs));
    EXPECT_EQ(shown.toPlainText(), u"550 <img src='file:///x.png'> <b>&amp;</b>"_qs);
    for (const QString& line : toolTipOf(QString(60000, u'x')).split(u'\n')) {
        EXPECT_LE(line.size(), 100);
    }
}

} // namespace
} // namespace corvel
