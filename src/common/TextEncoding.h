#pragma once

#include <string>
#include <string_view>

namespace corvel {

// How bytes of a server or of a file are read as text, and typed text becomes bytes.
enum class TextEncoding { utf8, windows1252 };

// Whether byte is one of a UTF-8 character but not its first.
constexpr bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// Whether bytes are well-formed UTF-8 (RFC 3629: shortest forms only, no surrogates, up to U+10FFFF).
bool isValidUtf8(std::string_view bytes);

// Windows-1252 bytes as UTF-8: every byte becomes a character; the five that the code page leaves undefined
// become the C1 control of the same value, so that fromUtf8 gives back exactly these bytes.
std::string fromWindows1252(std::string_view bytes);

// bytes as UTF-8: unchanged where they are that, else read as Windows-1252.
std::string toUtf8(std::string_view bytes);

// The inverse: text (valid UTF-8) in the given encoding; unchanged where a character has no place in it.
std::string fromUtf8(std::string_view text, TextEncoding encoding);

// The first bytes of text, size of them or fewer, without a part of a character (UTF-8) at their end.
std::string_view beginningOf(std::string_view text, std::size_t size);

// The last size bytes of lines, which CR LF end. Where they begin inside a line, its end is given as UTF-8,
// as it reads in the whole line, without the rest of a character that was cut.
std::string endOfLines(std::string_view lines, std::size_t size);

// What a connection has shown so far, word by word, of how its server writes text beyond ASCII.
class SeenTexts {
  public:
    // The next bytes, wherever they were cut.
    void read(std::string_view bytes);

    // For what is typed: windows1252 where words were seen that are not valid UTF-8, and none that is.
    TextEncoding encoding() const {
        return isOtherSeen_ && !isUtf8Seen_ ? TextEncoding::windows1252 : TextEncoding::utf8;
    }

  private:
    bool isUtf8Seen_ = false;
    bool isOtherSeen_ = false;
    std::string word_; // beyond ASCII, whose end has not come yet
};

// text (valid UTF-8) for a person to see: control characters, direction marks and other characters that
// would be obeyed rather than shown become visible symbols. Blanks and letters stay as they are.
std::string visibleText(std::string_view text);

// The number of characters (code points) in text, valid UTF-8.
std::size_t characterCount(std::string_view text);

// How many bytes the first count characters of text have, valid UTF-8; all of them where it has no more.
std::size_t bytesOfCharacters(std::string_view text, std::size_t count);

} // namespace corvel
