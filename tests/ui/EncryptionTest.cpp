#include "config/RememberedServers.h"
#include "support/Tap.h"
#include "ui/WindowDriver.h"

#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

constexpr int connectEntry = 0;
constexpr int disconnectEntry = 1;
constexpr int certificateEntry = 10;

// Another site goes on while the question waits.
TEST(EncryptedSite, IsAskedAboutOnceAndShown) {
    const TrialServer server({.tls = DemoTls::offered});
    WindowDriver driver(siteRecord("away", server.port(), "demo", "demo", true) +
                        siteRecord("good", server.port(), "demo", "demo"));
    const auto& lock = driver.find<QLabel>("lblEncryption");
    const auto toolTip = [&] {
        return driver.find<QAbstractItemView>("lvwSites")
            .model()
            ->index(0, 0)
            .data(Qt::ToolTipRole)
            .toString();
    };
    EXPECT_TRUE(lock.isHidden());
    driver.chooseSitesMenu(connectEntry);
    const QPointer<QWidget> question = waitForCertificateQuestion();
    ASSERT_NE(question, nullptr);
    EXPECT_TRUE(eventually([&] { return lock.isVisible() && lock.text() == u"encrypting..."_s; }));
    EXPECT_TRUE(driver.logIn(2));
    EXPECT_FALSE(driver.session(1).bLoggedIn || question == nullptr);
    driver.window->program().selectSite(1);
    driver.chooseSitesMenu(disconnectEntry);
    ASSERT_TRUE(eventually([&] { return question == nullptr && lock.isHidden(); }));
    EXPECT_TRUE(driver.session(2).bLoggedIn);

    for (const char* const answer : {"cmdCertDisconnect", "cmdCertTrust"}) {
        driver.chooseSitesMenu(connectEntry);
        QWidget* const again = waitForCertificateQuestion();
        ASSERT_NE(again, nullptr) << answer;
        again->findChild<QPushButton*>(QLatin1String(answer))->click();
    }
    ASSERT_TRUE(
        eventually([&] { return driver.session(1).bLoggedIn && lock.text().startsWith(u"TLS 1."_s); }));
    EXPECT_TRUE(toolTip().contains(u"<img"_s) && toolTip().contains(lock.text())) << qPrintable(toolTip());

    driver.chooseSitesMenu(certificateEntry);
    ASSERT_NE(driver.waitForBox<QDialog>(), nullptr);
    EXPECT_EQ(driver.text("txtCertConnection"), lock.text());
    EXPECT_EQ(driver.text("txtCertRemembered"), driver.text("txtCertFingerprint"));
    driver.click("cmdCertForget");
    driver.click("cmdClose");
    ASSERT_TRUE(driver.waitForNoDialog());
    driver.chooseSitesMenu(connectEntry);
    const QPointer<QWidget> last = waitForCertificateQuestion();
    ASSERT_NE(last, nullptr) << "forgotten, and asked about again";
    driver.window.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(last, nullptr);
}

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
        trustCertificate(driver.store, "127.0.0.1", tap.serverPort(), DemoServer::fingerprint());
        const bool isRight = password == "demo";
        if (isRight) {
            driver.showTab(browserTab);
            EXPECT_TRUE(driver.logIn(1));
            driver.doubleClick(u"pub"_s);
            EXPECT_TRUE(eventually([&] { return driver.path() == u"/pub"_s; }));
            driver.window->program().sendConsoleCommand(1, "QUIT");
            EXPECT_TRUE(eventually(
                [&] { return driver.window->program().site(1).wSock->state() == SocketState::closed; }));
            EXPECT_NE(driver.session(1).consoleLog.text().find("221 "), std::string::npos);
        } else {
            driver.window->program().connectSite(1);
            EXPECT_TRUE(eventually([&] { return driver.session(1).lastErrorLine.starts_with("530"); }));
        }
        EXPECT_TRUE(tap.sent.startsWith("AUTH TLS\r\n"));
        EXPECT_FALSE(tap.sent.contains("USER") || tap.sent.contains("PASS") || tap.sent.contains("marker"));
        EXPECT_FALSE(shownTexts(driver).contains(u"marker"_s));
    }
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
