#pragma once

#include <functional>
#include <optional>
#include <string>

namespace corvel {

// Which button of a question answers the Enter key.
enum class DefaultAnswer { yes, no };

// What the program asks a person. Every call returns at once: the window shows a modal box and goes on with
// its events, and the answer comes later, on the user-interface thread. All texts are UTF-8; line breaks
// in them are CR LF.
class Prompts {
  public:
    virtual ~Prompts() = default;

    // A message with one OK button.
    virtual void Message(const std::string& text) = 0;

    // A yes/no question; answer is called once, with true for yes. Closing the box is a no.
    virtual void AskYesNo(const std::string& question, DefaultAnswer defaultAnswer,
                          std::function<void(bool)> answer) = 0;

    // An input box; answer is called once, with nothing when the person cancels.
    virtual void AskText(const std::string& title, const std::string& prompt,
                         std::function<void(std::optional<std::string>)> answer) = 0;

    // The same for a password, which nobody can read while it is typed.
    virtual void AskPassword(const std::string& title, const std::string& prompt,
                             std::function<void(std::optional<std::string>)> answer) = 0;
};

} // namespace corvel
