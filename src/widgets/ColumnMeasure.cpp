#include "widgets/ColumnMeasure.h"

#include "widgets/TextWidth.h"

#include <string_view>

namespace corvel {

namespace {

WidestCell widestText(const ReportSource& source, int column, TextWidth& width) {
    WidestCell widest;
    const auto consider = [&](const QString& text) {
        const double estimate = width.of(text);
        if (estimate > widest.estimate) {
            widest = {text, estimate};
        }
    };
    const QStringList& candidates = source.columns[static_cast<std::size_t>(column)].widest;
    for (const QString& text : candidates) {
        consider(text);
    }
    for (int row = 0; candidates.isEmpty() && row < source.rows; ++row) {
        consider(source.text(row, column));
    }
    return widest;
}

QString decoded(const ReportSource& source, std::string_view bytes) {
    return source.decode ? source.decode(bytes)
                         : QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

WidestCell widestBytes(const ReportSource& source, int column, TextWidth& width) {
    std::string_view widest;
    double estimate = 0;
    double longestThatFits = 0; // no ASCII text of at most so many bytes is wider than what was found
    for (int row = 0; row < source.rows; ++row) {
        const std::string_view bytes = source.measuredText(row, column);
        double current = 0;
        if (!isPrintableAscii(bytes)) {
            current = width.of(decoded(source, bytes));
        } else if (static_cast<double>(bytes.size()) > longestThatFits && bytes != widest) {
            current = width.ofAscii(bytes);
        }
        if (current > estimate) {
            widest = bytes;
            estimate = current;
            longestThatFits = estimate / width.widestAscii();
        }
    }
    return {decoded(source, widest), estimate};
}

} // namespace

WidestCell widestCell(const ReportSource& source, int column, const QFont& font) {
    TextWidth width(font);
    const bool namesCandidates = !source.columns[static_cast<std::size_t>(column)].widest.isEmpty();
    return source.measuredText && !namesCandidates ? widestBytes(source, column, width)
                                                   : widestText(source, column, width);
}

} // namespace corvel
