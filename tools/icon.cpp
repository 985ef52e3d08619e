// corvel_icon FILE: writes the program's icon as the name of the file wants it: NAME.ico at every size that
// Windows shows, NAME.svg, or NAME.png in a folder SIDExSIDE of some depth, as icon themes have them. Makes
// the folders.

#include "widgets/Icons.h"

#include <QApplication>
#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>
#include <QRegularExpression>

#include <array>
#include <iostream>
#include <vector>

namespace {

constexpr std::array<int, 9> sides = {16, 20, 24, 32, 40, 48, 64, 128, 256};

QByteArray picture(int side) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    corvel::icon("corvel").pixmap(QSize(side, side)).save(&buffer, "PNG");
    return bytes;
}

// A directory of the pictures, then the pictures themselves.
QByteArray iconFile() {
    constexpr quint32 headerLength = 6;
    constexpr quint32 entryLength = 16;
    constexpr quint16 isIcon = 1;
    constexpr quint16 planes = 1;
    constexpr quint16 bitsPerPixel = 32;
    QByteArray bytes;
    QByteArray pictures;
    QDataStream directory(&bytes, QIODevice::WriteOnly);
    directory.setByteOrder(QDataStream::LittleEndian);
    directory << quint16{0} << isIcon << static_cast<quint16>(sides.size());
    for (const int side : sides) {
        const QByteArray next = picture(side);
        const auto length = static_cast<quint8>(side); // 256 is written as 0
        directory << length << length << quint16{0} << planes << bitsPerPixel
                  << static_cast<quint32>(next.size())
                  << headerLength + entryLength * static_cast<quint32>(sides.size()) +
                         static_cast<quint32>(pictures.size());
        pictures += next;
    }
    return bytes + pictures;
}

// The side that the path of a picture in an icon theme names; 0 without one.
int sideIn(const QString& path) {
    const QRegularExpressionMatch match = QRegularExpression(QStringLiteral("/([0-9]+)x\\1/")).match(path);
    return match.captured(1).toInt();
}

QByteArray contentFor(const QString& path) {
    return path.endsWith(QStringLiteral(".svg"))   ? corvel::iconSvg("corvel")
           : path.endsWith(QStringLiteral(".png")) ? picture(sideIn(path))
                                                   : iconFile();
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::cerr << "corvel_icon FILE\n";
        return 2;
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const QByteArray bytes = contentFor(path);
    if (bytes.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() ||
        !file.flush()) {
        std::cerr << "corvel_icon: " << file.errorString().toStdString() << '\n';
        return 1;
    }
    return 0;
}
