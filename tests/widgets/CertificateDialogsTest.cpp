#include "widgets/CertificateDialogs.h"

#include "widgets/WindowPrompts.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvel {
namespace {

const std::string first = "0123456789abcdef" + std::string(48, '0');
const QString firstInGroups = u"0123 4567 89AB CDEF"_s + u" 0000"_s.repeated(12);
const std::string other = std::string(60, '0') + "ffff";

CertificateQuestion questionOf(int site, const std::string& remembered = {}) {
    return {.site = site,
            .siteName = "home",
            .host = "ftp.example.org",
            .port = 21,
            .problems = {"It is self-signed."},
            .certificate = {.subject = "CN=home", .issuer = "CN=home", .fingerprint = first},
            .remembered = remembered};
}

class CertificatesTest : public testing::Test {
  protected:
    CertificatesTest() { window_.show(); }

    void ask(const CertificateQuestion& question) {
        prompts_->AskCertificate(question, [this](CertificateAnswer answer) { answers_.push_back(answer); });
    }

    // The questions on the screen.
    static std::vector<QWidget*> open() {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        std::vector<QWidget*> found;
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"frmCertificateQuestion"_s && widget->isVisible()) {
                found.push_back(widget);
            }
        }
        return found;
    }

    // As the desktop does it: a window that a modal box holds up would not get it.
    static void click(const QWidget& dialog, const char* name) {
        const auto* const button = dialog.findChild<QPushButton*>(QLatin1String(name));
        const QWidget* const window = button->window();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(window, button->rect().center()));
    }

    QWidget window_;
    std::unique_ptr<WindowPrompts> prompts_ = std::make_unique<WindowPrompts>(&window_);
    std::vector<CertificateAnswer> answers_;
};

TEST_F(CertificatesTest, AreTrustedByTheirButtonsAlone) {
    const std::vector<std::pair<std::function<void(QWidget&)>, CertificateAnswer>> cases = {
        {[](QWidget& dialog) { click(dialog, "cmdCertOnce"); }, CertificateAnswer::connectOnce},
        {[](QWidget& dialog) { click(dialog, "cmdCertTrust"); }, CertificateAnswer::alwaysTrust},
        {[](QWidget& dialog) { click(dialog, "cmdCertDisconnect"); }, CertificateAnswer::disconnect},
        {[](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }, CertificateAnswer::disconnect},
        {[](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }, CertificateAnswer::disconnect},
        {[](QWidget& dialog) { dialog.close(); }, CertificateAnswer::disconnect},
    };
    for (const std::string& remembered : {std::string(), other}) {
        for (const auto& [end, answer] : cases) {
            ask(questionOf(1, remembered));
            ASSERT_EQ(open().size(), 1U);
            QWidget& dialog = *open().front();
            EXPECT_EQ(dialog.focusWidget()->objectName(), u"cmdCertDisconnect"_s);
            EXPECT_EQ(dialog.findChild<QLabel*>()->text().contains(u"changed"_s), !remembered.empty());
            EXPECT_EQ(dialog.findChild<QLineEdit*>(u"txtCertFingerprint"_s)->text(), firstInGroups);
            EXPECT_EQ(dialog.findChild<QLineEdit*>(u"txtCertRemembered"_s) != nullptr, !remembered.empty());
            end(dialog);
            EXPECT_EQ(std::exchange(answers_, {}), std::vector{answer});
            EXPECT_TRUE(open().empty());
        }
    }
}

TEST_F(CertificatesTest, AreAskedAboutBesideOtherQuestions) {
    ask(questionOf(1));
    prompts_->Message("over the window");
    ask(questionOf(2));
    ask(questionOf(2, other)); // in place of the one before
    ASSERT_EQ(open().size(), 2U);
    for (const QWidget* const dialog : open()) {
        click(*dialog, "cmdCertTrust");
    }
    EXPECT_EQ(answers_, std::vector(2, CertificateAnswer::alwaysTrust));
    ask(questionOf(1));
    ask(questionOf(3));
    prompts_->dropCertificate(1);
    EXPECT_EQ(open().size(), 1U);
    prompts_.reset();
    EXPECT_TRUE(open().empty());
    EXPECT_EQ(answers_.size(), 2U) << "what is gone has no answer";
}

TEST_F(CertificatesTest, NeverMakeADialogLarger) {
    CertificateQuestion long_ = questionOf(1);
    const QSize usual = std::unique_ptr<QDialog>(newCertificateQuestion(long_))->sizeHint();
    const std::string text = "<b>" + std::string(60000, 'x') + "\n\xE2\x80\xAE";
    long_.host = long_.problems[0] = long_.certificate.subject = long_.certificate.names = text;
    const std::unique_ptr<QDialog> dialog(newCertificateQuestion(long_));
    EXPECT_EQ(dialog->sizeHint(), usual);
    const QString shown = dialog->findChild<QLineEdit*>(u"txtCertSubject"_s)->text();
    EXPECT_GT(shown.size(), 60000);
    EXPECT_TRUE(shown.startsWith(u"<b>x"_s) && !shown.contains(QChar(0x202E)));
    for (const QLineEdit* const box : dialog->findChildren<QLineEdit*>()) {
        EXPECT_TRUE(box->isReadOnly() && !box->accessibleName().isEmpty()) << qPrintable(box->objectName());
    }
}

TEST_F(CertificatesTest, OfAChainAreShownOneByOne) {
    const std::vector<Certificate> chain = {{.subject = "CN=home"}, {.subject = "CN=authority"}};
    openCertificateDialog(window_, {.chain = chain}, {});
    const auto& subject = *window_.findChild<QLineEdit*>(u"txtCertSubject"_s);
    EXPECT_EQ(subject.text(), u"CN=home"_s);
    window_.findChild<QListWidget*>(u"lstCertChain"_s)->setCurrentRow(1);
    EXPECT_EQ(subject.text(), u"CN=authority"_s);
}

} // namespace
} // namespace corvel
