// corvel_icon FILE: writes the program's icon, at every size that Windows shows, as an .ico file.

#include "widgets/Icons.h"

#include <QApplication>
#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QPixmap>

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
    QFile file(QString::fromLocal8Bit(argv[1]));
    const QByteArray bytes = iconFile();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        std::cerr << "corvel_icon: " << file.errorString().toStdString() << '\n';
        return 1;
    }
    return 0;
}
