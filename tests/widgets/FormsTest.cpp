#include "widgets/Forms.h"

#include <gtest/gtest.h>

#include <optional>
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

} // namespace
} // namespace corvel
