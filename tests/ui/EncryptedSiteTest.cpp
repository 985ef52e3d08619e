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

TEST(EncryptedSite, IsAskedAboutOnceAndShown) {
    const TrialServer server({.tls = DemoTls::offered});
    WindowDriver driver(siteRecord("home", server.port(), DemoServer::userName, DemoServer::password, true));
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
    driver.chooseSitesMenu(disconnectEntry);
    ASSERT_TRUE(eventually([&] { return question == nullptr && lock.isHidden(); }));

    driver.chooseSitesMenu(connectEntry);
    QWidget* const again = waitForCertificateQuestion();
    ASSERT_NE(again, nullptr);
    again->findChild<QPushButton*>(u"cmdCertTrust"_s)->click();
    ASSERT_TRUE(
        eventually([&] { return driver.session(1).bLoggedIn && lock.text().startsWith(u"TLS 1."_s); }));
    EXPECT_TRUE(toolTip().endsWith(u'\n' + lock.text())) << qPrintable(toolTip());

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

} // namespace
} // namespace corvel::test
