#pragma once

#include "common/Ports.h"

#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QString>

#include <deque>
#include <functional>
#include <map>

class QDialog;
class QWidget;

namespace corvel {

// The Prompts port with real boxes, modal to one window, one at a time in the order in which they were asked
// for. They are shown without waiting for them. What a box says is plain text, whatever a server put
// into it. Questions about certificates are apart from these, and modal to nothing.
class WindowPrompts : public Prompts {
  public:
    // parent: the window that waits for the answers; it must outlive this object. Questions that are still
    // open when this object ends are dropped without an answer.
    explicit WindowPrompts(QWidget* parent);
    ~WindowPrompts() override;

    void Message(const std::string& text) override;
    void AskChoice(const std::string& question, const ChoiceWords& words,
                   std::function<void(bool)> answer) override;
    void AskText(const std::string& title, const std::string& prompt,
                 std::function<void(std::optional<std::string>)> answer) override;
    void AskPassword(const std::string& title, const std::string& prompt,
                     std::function<void(std::optional<std::string>)> answer) override;

    // A question of the same site that is still open gives way to the new one, without an answer.
    void AskCertificate(const CertificateQuestion& question,
                        std::function<void(CertificateAnswer)> answer) override;
    // Closes the site's question about a certificate, if it is open, without an answer.
    void dropCertificate(int site);

    // Calls act from the event loop once every modal box is answered, those that an answer brings up too.
    void whenAnswered(std::function<void()> act);

  private:
    // Makes a box that is not shown yet; its answer is to be given when finished is emitted.
    using MakeBox = std::function<QDialog*(QWidget* parent)>;

    void ask(MakeBox makeBox);
    void askInput(const std::string& title, const std::string& prompt, QLineEdit::EchoMode echo,
                  std::function<void(std::optional<std::string>)> answer);
    void showNext();

    QWidget* parent_;
    std::deque<MakeBox> waiting_;
    std::function<void()> last_; // what whenAnswered was given
    QPointer<QDialog> shown_;
    std::map<int, QDialog*> certificates_; // the questions that are open, by site
    QObject lifetime_;                     // connections end with it
};

} // namespace corvel
