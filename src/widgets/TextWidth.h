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
    double of(const QString& text);

    // No printable ASCII character is wider.
    double widestAscii() const { return widestAscii_; }

  private:
    double ofCharacter(QStringView character);

    QFontMetricsF metrics_;
    std::array<std::uint32_t, 128> ascii_ = {}; // in 64ths of a pixel, upwards; 0 for control characters
    double widestAscii_ = 0;
    // Filled as characters come up; most alphabets lie below this limit, where looking up costs least.
    static constexpr char32_t alphabetsEnd = 0x800;
    std::array<float, alphabetsEnd> alphabets_; // negative where not known yet
    QHash<char32_t, double> others_;
};

// Whether every byte is printable ASCII.
bool isPrintableAscii(std::string_view bytes);

} // namespace corvel
