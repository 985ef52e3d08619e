#include "config/TrustedCertificates.h"
#include "support/Tap.h"
#include "ui/WindowDriver.h"

#include <QPointer>
#include <QPushButton>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Every text that a person can see or point at.
QString shownTexts(WindowDriver& driver) {
    QString all;
    for (const QWidget* const widget : QApplication::allWidgets()) {
        all += widget->windowTitle() + widget->toolTip() + widget->statusTip();
        for (const char* const property : {"text", "plainText"}) {
            all += widget->property(property).toString();
        }
    }
    return all + textOf(driver.session(1).consoleLog.text());
}

// A server that encrypts in records of one byte; a tap stands between.
TEST(EncryptedSite, IsWorkedOnAndNothingOfItGoesOutInClear) {
    const TrialServer server({.chunkBytes = 1, .tls = DemoTls::required});
    for (const std::string password : {"demo", "marker-7f3"}) {
        Tap tap(server.port());
        WindowDriver driver(siteRecord("away", tap.serverPort(), "demo", password, true));
        trustCertificate(driver.store, "127.0.0.1", tap.serverPort(), TrialServer::fingerprint());
        const bool isRight = password == "demo";
        if (isRight) {
            driver.showTab(browserTab);
            EXPECT_TRUE(driver.logIn(1));
            driver.doubleClick(u"pub"_s);
            EXPECT_TRUE(eventually([&] { return driver.path() == u"/pub"_s; }));
        } else {
            driver.window->program().connectSite(1);
            EXPECT_TRUE(eventually([&] { return driver.session(1).lastErrorLine.starts_with("530"); }));
        }
        EXPECT_TRUE(tap.sent.startsWith("AUTH TLS\r\n"));
        EXPECT_FALSE(tap.sent.contains("USER") || tap.sent.contains("PASS") || tap.sent.contains("marker"));
        EXPECT_FALSE(shownTexts(driver).contains(u"marker"_s));
    }
}

TEST(EncryptedSite, HoldsUpNoOtherWhileItWaitsForAnAnswer) {
    const TrialServer server({.tls = DemoTls::offered});
    WindowDriver driver(siteRecord("away", server.port(), "demo", "demo", true) +
                        siteRecord("good", server.port(), "demo", "demo"));
    driver.window->program().connectSite(1);
    const QPointer<QWidget> question = waitForCertificateQuestion();
    ASSERT_NE(question, nullptr);
    EXPECT_TRUE(driver.logIn(2));
    EXPECT_FALSE(driver.session(1).bLoggedIn || question == nullptr);
    question->findChild<QPushButton*>(u"cmdCertDisconnect"_s)->click();
    EXPECT_EQ(driver.window->program().site(1).wSock->state(), SocketState::closed);
    EXPECT_TRUE(driver.session(1).lastErrorLine.ends_with("the certificate was refused"));
    EXPECT_TRUE(driver.session(2).bLoggedIn);
}

// Says yes to AUTH, and then nothing more.
TEST(EncryptedSite, MayBeLeftWhileTheHandshakeHangs) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    QObject::connect(&silent, &QTcpServer::newConnection, &silent, [&silent] {
        QTcpSocket* const client = silent.nextPendingConnection();
        client->write("220 hi\r\n");
        QObject::connect(client, &QTcpSocket::readyRead, client, [client] {
            if (client->readAll() == "AUTH TLS\r\n") {
                client->write("234 go on\r\n");
            }
        });
    });
    WindowDriver driver(siteRecord("away", silent.serverPort(), "demo", "demo", true));
    driver.window->program().connectSite(1);
    EXPECT_TRUE(eventually([&] { return driver.session(1).encryption == Encryption::handshake; }));
    driver.chooseSitesMenu(1);
    EXPECT_EQ(driver.window->program().site(1).wSock->state(), SocketState::closed);
}

} // namespace
} // namespace corvel::test
