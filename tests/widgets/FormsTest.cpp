#include "widgets/Forms.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace corvel {
namespace {

TEST(BytesEdit, UntouchedBytesComeBackAndTypedTextIsEncoded) {
    struct Case {
        const char* name;
        const char* set;
        std::optional<TextEncoding> encoding; // of the connection
        const char* typed;                    // with e acute typed behind it
    };
    const std::vector<Case> cases = {
        {"UTF-8", "\xC3\xA4", TextEncoding::utf8, "\xC3\xA4\xC3\xA9"},
        {"Windows-1252", "\xE4", TextEncoding::windows1252, "\xE4\xE9"},
        {"no connection", "\xE4", {}, "\xE4\xE9"},
        {"a connection that shows both", "\xE4", TextEncoding::utf8, "\xC3\xA4\xC3\xA9"},
        {"UTF-8 bytes on another connection", "\xC3\xA4", TextEncoding::windows1252, "\xE4\xE9"},
        {"a line break, which the box drops", "a\nz", TextEncoding::utf8, "az\xC3\xA9"},
        {"nothing", "", TextEncoding::windows1252, "\xE9"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        BytesEdit edit;
        edit.setBytes(row.set);
        EXPECT_EQ(edit.bytes(), row.set);
        edit.end(false);
        edit.insert(u"\u00E9"_s);
        EXPECT_EQ(edit.bytes(row.encoding ? &*row.encoding : nullptr), row.typed);
        edit.backspace();
        EXPECT_EQ(edit.bytes(), row.set) << "the text as it was";
    }
}

struct Form {
    std::string text = "caf\xE9";
};

class TestDialog : public FormDialog<Form> {
  public:
    TestDialog(const TextEncoding& encoding, Accept accept)
        : FormDialog("frmTest", u"test"_s, {{}, &encoding}, std::move(accept), nullptr) {
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(boxes_.add(form_.text));
        layout->addWidget(buttons());
        boxes_.show();
    }
};

TEST(FormDialog, StaysOpenForAsLongAsThereIsAProblem) {
    std::vector<std::string> confirmed;
    std::optional<std::string> problem;
    TextEncoding encoding = TextEncoding::windows1252;
    TestDialog dialog(encoding, [&](const Form& form) {
        confirmed.push_back(form.text);
        return problem;
    });
    const auto press = [&](const char* button) {
        dialog.show();
        dialog.findChild<QPushButton*>(QLatin1String(button))->click();
    };
    press("cmdCancel");
    EXPECT_FALSE(dialog.isVisible());
    problem = "not <b>sent\r\n\xE9";
    press("cmdOK");
    auto* const box = dialog.findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"not <b>sent\n\u00E9"_s);
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    box->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    problem = ""; // the person was told
    press("cmdOK");
    EXPECT_EQ(dialog.findChild<QMessageBox*>(), nullptr);
    EXPECT_TRUE(dialog.isVisible());
    problem.reset();
    dialog.findChild<QLineEdit*>()->setText(u"th\u00E9"_s);
    encoding = TextEncoding::utf8; // as the connection has shown since
    press("cmdOK");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(confirmed, (std::vector<std::string>{"caf\xE9", "caf\xE9", "th\xC3\xA9"}));
}

} // namespace
} // namespace corvel
