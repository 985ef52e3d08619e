#include "net/qt/wSock.h"
#include "programs/makeCertificate.h"
#include "ui/WindowDriver.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace corvel::test {
namespace {

// Whoever vouches for it.
TEST(WSockRenegotiation, MayBringNoOtherCertificate) {
    const QTemporaryDir first;
    const QTemporaryDir other;
    makeCertificate("self-signed", first.path());
    makeCertificate("self-signed", other.path());
    const auto file = [](const QTemporaryDir& directory) {
        return directory.filePath(QStringLiteral("server.pem"));
    };
    const std::string trusted = QSslCertificate::fromPath(file(first))
                                    .front()
                                    .digest(QCryptographicHash::Sha256)
                                    .toHex()
                                    .toStdString();
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    struct Row {
        const char* name;
        const QTemporaryDir& second;
        bool isVouchedFor;
        bool isRefused;
    };
    for (const Row& row : {Row{"the same", first, false, false}, Row{"an unknown one", other, false, true},
                           Row{"one that is vouched for", other, true, true}}) {
        SCOPED_TRACE(row.name);
        QSslConfiguration configuration = before;
        if (row.isVouchedFor) {
            configuration.addCaCertificates(file(row.second));
        }
        QSslConfiguration::setDefaultConfiguration(configuration);
        QProcess server;
        server.start(QCoreApplication::applicationDirPath() + QStringLiteral("/corvel_test_renegotiator"),
                     {file(first), file(row.second)});
        ASSERT_TRUE(server.waitForReadyRead()) << server.errorString().toStdString();
        wSock socket;
        QObject::connect(&socket, &wSock::connected, [&] { socket.StartEncryption(trusted); });
        QObject::connect(&socket, &wSock::encrypted, [&] { socket.Send("x"); });
        const QSignalSpy data(&socket, &wSock::dataArrived);
        const QSignalSpy failed(&socket, &wSock::failed);
        socket.Connect("127.0.0.1", server.readLine().toInt(), true);
        EXPECT_TRUE(eventually([&] { return data.size() + failed.size() > 0; }));
        EXPECT_EQ(data.isEmpty(), row.isRefused);
        EXPECT_EQ(failed.value(0).value(0).toString().contains(QLatin1String("certificate")), row.isRefused);
        socket.Close();
        EXPECT_TRUE(eventually([&] { return server.state() == QProcess::NotRunning; }));
    }
    QSslConfiguration::setDefaultConfiguration(before);
}

} // namespace
} // namespace corvel::test
