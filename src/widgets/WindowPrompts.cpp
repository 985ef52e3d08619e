#include "widgets/WindowPrompts.h"

#include "common/ShownText.h"
#include "widgets/CertificateDialogs.h"
#include "widgets/Forms.h"
#include "widgets/TextConversion.h"

#include <QApplication>
#include <QInputDialog>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <utility>

namespace corvel {

namespace {

// text for a box: line breaks as Qt wants them.
QString boxText(const std::string& text) {
    return QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QInputDialog* makeInputBox(QWidget* parent, const std::string& title, const std::string& prompt,
                           QLineEdit::EchoMode echo) {
    auto* box = new QInputDialog(parent);
    box->setInputMode(QInputDialog::TextInput);
    box->setTextEchoMode(echo);
    box->setWindowTitle(title.empty() ? QStringLiteral("Corvel") : titleOf(boxText(title)));
    // The box under the label is its buddy, so a lone "&" would mark a letter.
    constexpr std::size_t widest = 72; // of a line, in characters
    box->setLabelText(boxText(wrapped(prompt, widest)).replace(QLatin1Char('&'), QStringLiteral("&&")));
    for (QLabel* label : box->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    for (QLineEdit* edit : box->findChildren<QLineEdit*>()) {
        edit->setValidator(new LineBreakDropper(edit));
        edit->setAccessibleName(boxText(prompt));
        // Room for a usual answer, and for the title.
        edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 40);
    }
    return box;
}

// Shows dialog in the middle of window's screen, moved by that many title bars. It takes the keyboard only
// from a window of this program in which nothing is being typed. The desktop keeps it over window as a child
// would be; Qt learns of that only while it shows it, for it would have the modal boxes of window hold up a
// child.
void showBeside(QDialog& dialog, const QWidget& window, int titleBars) {
    const QWidget* const focus = QApplication::focusWidget();
    const bool isTyping = focus != nullptr && focus->testAttribute(Qt::WA_InputMethodEnabled);
    dialog.setAttribute(Qt::WA_ShowWithoutActivating, isTyping || !window.isActiveWindow());
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.setWindowIcon(window.windowIcon());
    dialog.adjustSize();
    const int shift = titleBars * dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    dialog.move(window.screen()->availableGeometry().center() - dialog.rect().center() +
                QPoint(shift, shift));
    dialog.winId(); // makes its QWindow
    const bool staysOver =
        window.isVisible() && !window.isMinimized() && QApplication::activeModalWidget() == nullptr;
    dialog.windowHandle()->setTransientParent(staysOver ? window.windowHandle() : nullptr);
    dialog.show();
    dialog.windowHandle()->setTransientParent(nullptr);
    QApplication::alert(&dialog);
}

// Not at once: this may be running inside one of the box's own signals.
void dismiss(QDialog& box, const QObject& receiver) {
    box.disconnect(&receiver);
    box.hide();
    box.deleteLater();
}

} // namespace

WindowPrompts::WindowPrompts(QWidget* parent) : parent_(parent) {}

WindowPrompts::~WindowPrompts() {
    if (shown_) {
        dismiss(*shown_, lifetime_);
    }
    for (const auto& [site, question] : certificates_) {
        dismiss(*question, lifetime_);
    }
}

void WindowPrompts::Message(const std::string& text) {
    ask([text](QWidget* parent) { return newMessageBox(parent, boxText(text)); });
}

void WindowPrompts::AskChoice(const std::string& question, const ChoiceWords& words,
                              std::function<void(bool)> answer) {
    ask([this, question, words, answer = std::move(answer)](QWidget* parent) {
        QMessageBox* box = newQuestion(parent, boxText(question));
        if (!words.yes.empty()) {
            box->button(QMessageBox::Yes)->setText(QString::fromStdString(words.yes));
            box->button(QMessageBox::No)->setText(QString::fromStdString(words.no));
        }
        QObject::connect(box, &QDialog::finished, &lifetime_,
                         [answer](int result) { answer(result == QMessageBox::Yes); });
        return box;
    });
}

void WindowPrompts::AskText(const std::string& title, const std::string& prompt,
                            std::function<void(std::optional<std::string>)> answer) {
    askInput(title, prompt, QLineEdit::Normal, std::move(answer));
}

void WindowPrompts::AskPassword(const std::string& title, const std::string& prompt,
                                std::function<void(std::optional<std::string>)> answer) {
    askInput(title, prompt, QLineEdit::Password, std::move(answer));
}

void WindowPrompts::AskCertificate(const CertificateQuestion& question,
                                   std::function<void(CertificateAnswer)> answer) {
    dropCertificate(question.site);
    QDialog* const shown = newCertificateQuestion(question);
    QObject::connect(shown, &QDialog::finished, &lifetime_,
                     [this, site = question.site, answer = std::move(answer)](int result) {
                         certificates_.erase(site);
                         answer(certificateAnswer(result));
                     });
    showBeside(*shown, *parent_, static_cast<int>(certificates_.size()));
    certificates_[question.site] = shown;
}

void WindowPrompts::dropCertificate(int site) {
    if (const auto open = certificates_.find(site); open != certificates_.end()) {
        dismiss(*open->second, lifetime_);
        certificates_.erase(open);
    }
}

void WindowPrompts::whenAnswered(std::function<void()> act) {
    last_ = std::move(act);
    if (!shown_) {
        showNext();
    }
}

void WindowPrompts::askInput(const std::string& title, const std::string& prompt, QLineEdit::EchoMode echo,
                             std::function<void(std::optional<std::string>)> answer) {
    ask([this, title, prompt, echo, answer = std::move(answer)](QWidget* parent) {
        auto* box = makeInputBox(parent, title, prompt, echo);
        QObject::connect(box, &QDialog::finished, &lifetime_, [box, answer](int result) {
            answer(result == QDialog::Accepted ? std::optional(box->textValue().toStdString())
                                               : std::nullopt);
        });
        return box;
    });
}

void WindowPrompts::ask(MakeBox makeBox) {
    waiting_.push_back(std::move(makeBox));
    if (!shown_) {
        showNext();
    }
}

void WindowPrompts::showNext() {
    shown_.clear();
    if (waiting_.empty()) {
        // Not at once: this may be running inside one of the last box's own signals, and the act may end
        // this.
        if (last_) {
            QMetaObject::invokeMethod(&lifetime_, std::exchange(last_, {}), Qt::QueuedConnection);
        }
        return;
    }
    const MakeBox makeBox = std::move(waiting_.front());
    waiting_.pop_front();
    shown_ = makeBox(parent_);
    // Behind the answer, which may end this object and with it this connection.
    QObject::connect(shown_, &QDialog::finished, &lifetime_, [this] { showNext(); });
    openDialog(*shown_);
}

} // namespace corvel
