#include "widgets/FormBoxes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

TEST(BytesEdit, UntouchedBytesComeBackAndTypedTextIsEncoded) {
    struct Row {
        const char* name;
        const char* set;
        TextEncoding encoding;
        const char* untouched;
        const char* typed; // with e acute typed behind it
    };
    const std::vector<Row> table = {
        {"UTF-8", "\xC3\xA4", TextEncoding::utf8, "\xC3\xA4", "\xC3\xA4\xC3\xA9"},
        {"Windows-1252", "\xE4", TextEncoding::windows1252, "\xE4", "\xE4\xE9"},
        {"not valid in UTF-8", "\xE4", TextEncoding::utf8, "\xE4", "\xE4\xE9"},
        {"UTF-8 bytes on another connection", "\xC3\xA4", TextEncoding::windows1252, "\xC3\xA4",
         "\xC3\xA4\xE9"},
        {"a line break, which the box drops", "a\nz", TextEncoding::utf8, "a\nz", "az\xC3\xA9"},
        {"nothing", "", TextEncoding::windows1252, "", "\xE9"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        BytesEdit edit;
        edit.setBytes(row.set, row.encoding);
        EXPECT_EQ(edit.bytes(), row.untouched);
        QTest::keyClick(&edit, Qt::Key_End);
        QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QStringLiteral("\u00E9"));
        QApplication::sendEvent(&edit, &key);
        EXPECT_EQ(edit.bytes(), row.typed);
        QTest::keyClick(&edit, Qt::Key_Backspace);
        EXPECT_EQ(edit.bytes(), row.untouched) << "the text as it was";
    }
}

} // namespace
} // namespace corvel
