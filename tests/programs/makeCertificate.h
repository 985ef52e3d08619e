#pragma once

#include <QProcess>
#include <QString>

#include <stdexcept>

namespace corvel::test {

// Makes directory/server.pem and directory/authority.pem with the script make-certificate, which knows the
// kinds; ten seconds at most. Throws std::runtime_error with what it said if it fails.
inline void makeCertificate(const char* kind, const QString& directory) {
    QProcess maker;
    maker.setProcessChannelMode(QProcess::MergedChannels);
    maker.start(QStringLiteral(CORVEL_TEST_PROGRAMS_DIR "/make-certificate"),
                {QLatin1String(kind), directory});
    if (!maker.waitForFinished(10'000) || maker.exitCode() != 0) {
        throw std::runtime_error("no certificate: " + maker.readAll().toStdString());
    }
}

} // namespace corvel::test
