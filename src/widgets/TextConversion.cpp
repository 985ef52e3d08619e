#include "widgets/TextConversion.h"

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
    constexpr std::size_t longest = 1000;
    if (bytes.size() <= longest) {
        return displayTextOf(bytes);
    }
    std::size_t end = longest;
    while (end > longest - 4 && continuesCharacter(bytes[end])) {
        --end;
    }
    return displayTextOf(bytes.substr(0, end)) + QChar(0x2026);
}

QString toolTipOf(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString titleOf(const QString& text) {
    return QString(text).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
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
