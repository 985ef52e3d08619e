#include "widgets/TextConversion.h"

#include "common/ShownText.h"

#include <QByteArray>
#include <QTextDocument>

#include <optional>
#include <utility>

namespace corvel {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

QString textOf(std::string_view bytes) {
    return fromCore(toUtf8(bytes));
}

std::string bytesOf(const QString& text, TextEncoding encoding) {
    return fromUtf8(toCore(text), encoding);
}

QString displayTextOf(std::string_view bytes) {
    return fromCore(visibleText(toUtf8(bytes)));
}

QString cellTextOf(std::string_view bytes) {
    return fromCore(shownLine(bytes));
}

QString nameTextOf(std::string_view bytes) {
    return fromCore(shownName(bytes));
}

QString shortenedText(const QString& text, std::size_t most) {
    return text.size() <= static_cast<qsizetype>(most) ? text : fromCore(shortened(toCore(text), most));
}

QString captionTextOf(std::string_view bytes) {
    return nameTextOf(bytes).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString tipLines(const QString& text) {
    constexpr std::size_t longest = 1500;
    constexpr std::size_t widest = 100;
    return fromCore(wrapped(shortened(toCore(text), longest), widest));
}

QString toolTipOf(const QString& text) {
    const QString shown = tipLines(text);
    return Qt::mightBeRichText(shown) ? Qt::convertFromPlainText(shown) : shown;
}

QString titleOf(const QString& text) {
    constexpr std::size_t longest = 200;
    return shortenedText(text, longest).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

QString fromCore(std::string_view utf8) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    if (utf8.starts_with(byteOrderMark)) {
        text.prepend(QChar(QChar::ByteOrderMark)); // fromUtf8 swallows the first one
    }
    return text;
}

std::string toCore(const QString& text) {
    return text.toUtf8().toStdString();
}

} // namespace corvel
