#include "demo/DemoServer.h"

#include "ui/WindowDriver.h"

#include <QTcpSocket>

#include <gtest/gtest.h>

namespace corvel::test {
namespace {

// Left where it is, it would be read as the first of what comes encrypted.
TEST(DemoServer, HangsUpOnWhoSendsClearTextBehindAuth) {
    DemoServer server({.tls = DemoTls::offered});
    ASSERT_TRUE(server.listen());
    for (const char* const behind : {"USER demo\r\n", "U"}) {
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, server.port());
        client.write(QByteArray("AUTH TLS\r\n") + behind);
        EXPECT_TRUE(eventually([&] { return client.state() == QAbstractSocket::UnconnectedState; }))
            << behind;
        EXPECT_TRUE(client.readAll().split('\n').value(1).startsWith("234 ")) << behind;
    }
}

} // namespace
} // namespace corvel::test
