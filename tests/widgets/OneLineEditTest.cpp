#include "widgets/OneLineEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

TEST(OneLineEdit, LineBreaksArePastedAway) {
    struct Row {
        const char* name;
        QString pasted, text;
    };
    const std::vector<Row> table = {
        {"CR LF", QStringLiteral("ab\r\ncd"), QStringLiteral("<abcd>")},
        {"lone breaks", QStringLiteral("\na\rb\n"), QStringLiteral("<ab>")},
        {"what names can hold stays", QStringLiteral("a\u2028b\n\u2029c"),
         QStringLiteral("<a\u2028b\u2029c>")},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        OneLineEdit edit;
        edit.setText(QStringLiteral("<>"));
        edit.setCursorPosition(1);
        QApplication::clipboard()->setText(row.pasted);
        edit.paste();
        EXPECT_EQ(edit.text(), row.text);
        EXPECT_EQ(edit.cursorPosition(), row.text.size() - 1);
    }
}

TEST(OneLineEdit, SelectsAllOnFocusWhereAsked) {
    struct Row {
        const char* name;
        bool isOn;
        Qt::FocusReason reason;
        bool isClicked;
        bool isAllSelected;
    };
    const std::vector<Row> table = {
        {"clicked", true, Qt::MouseFocusReason, true, true},
        {"focused by the program", true, Qt::OtherFocusReason, false, true},
        {"clicked, option off", false, Qt::MouseFocusReason, true, false},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        OneLineEdit edit;
        edit.setText(QStringLiteral("mask"));
        edit.setSelectAllOnFocus(row.isOn);
        edit.show();
        QFocusEvent focus(QEvent::FocusIn, row.reason);
        QApplication::sendEvent(&edit, &focus);
        if (row.isClicked) {
            QTest::mouseClick(&edit, Qt::LeftButton, {}, {12, edit.height() / 2});
        }
        EXPECT_EQ(edit.selectedText() == edit.text(), row.isAllSelected);
        if (row.isClicked) {
            QTest::mouseClick(&edit, Qt::LeftButton, {}, {12, edit.height() / 2});
            EXPECT_FALSE(edit.hasSelectedText()) << "a second click places the caret";
        }
    }
}

} // namespace
} // namespace corvel
