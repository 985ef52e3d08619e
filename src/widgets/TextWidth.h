#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QString>

#include <array>
#include <cstdint>
#include <string_view>

namespace corvel {

// Adds up the widths of single characters to judge quickly how wide a text is. The sum lies at or slightly
// above the true width, since joining characters makes a text narrower, if anything.
class TextWidth {
  public:
    explicit TextWidth(const QFont& font);

    // The width, in device-independent pixels, of bytes of which isPrintableAscii holds.
    double ofAscii(std::string_view bytes) const;

    // The width of any text.
    double of(QStringView text);

    // No printable ASCII character is wider.
    double widestAscii() const { return widestAscii_; }

  private:
    using Width = std::uint32_t; // in 64ths of a pixel, rounded up

    Width ofCharacter(QStringView character);

    // Most alphabets lie below this limit, where looking up costs least.
    static constexpr char32_t alphabetsEnd = 0x800;
    static constexpr Width unknown = UINT32_MAX;

    QFontMetricsF metrics_;
    std::array<Width, alphabetsEnd> alphabets_; // filled as characters come up; printable ASCII at once
    double widestAscii_ = 0;
    QHash<char32_t, Width> others_;
};

// Whether every byte is printable ASCII.
bool isPrintableAscii(std::string_view bytes);

} // namespace corvel
