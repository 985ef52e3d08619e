#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace corvel {

// A bar across the top of what it is about: a sign, a text that says what is so, and buttons for what can be
// done about it. Hidden until it has something to tell.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    // The object names of the bar and of its text.
    NoticeBar(const char* name, const char* textName, QWidget* parent = nullptr);

    // Another button behind the text; the bar owns it. What it does is the caller's.
    QToolButton* addButton(const char* name, const QString& caption);

    // Shows the bar with a text, as plain text.
    void tell(const QString& text);

  private:
    QLabel* sign_;
    QLabel* text_;
    QHBoxLayout* row_;
};

} // namespace corvel
