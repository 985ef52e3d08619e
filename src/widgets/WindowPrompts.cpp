#include "widgets/WindowPrompts.h"

#include "widgets/Forms.h"

#include <QInputDialog>
#include <QPushButton>
#include <QTimer>

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
    box->setWindowTitle(title.empty() ? QStringLiteral("Corvel") : boxText(title));
    // The box under the label is its buddy, so a lone "&" would mark a letter.
    box->setLabelText(boxText(prompt).replace(QLatin1Char('&'), QStringLiteral("&&")));
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

} // namespace

WindowPrompts::WindowPrompts(QWidget* parent) : parent_(parent) {}

WindowPrompts::~WindowPrompts() {
    // Not at once: this may be running inside one of the box's own signals.
    if (shown_) {
        shown_->disconnect(&lifetime_);
        shown_->hide();
        shown_->deleteLater();
    }
}

void WindowPrompts::Message(const std::string& text) {
    ask([text](QWidget* parent) { return newMessageBox(parent, boxText(text)); });
}

void WindowPrompts::AskYesNo(const std::string& question, std::function<void(bool)> answer) {
    ask([this, question, answer = std::move(answer)](QWidget* parent) {
        QMessageBox* box = newQuestion(parent, boxText(question));
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
