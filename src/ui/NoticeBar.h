#pragma once

#include <QFrame>

class QLabel;

namespace corvel {

// A bar in the window with something that the person should know and that nothing waits for. It is hidden
// until it has something to show, and again when it is closed.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    // text: plain.
    void show(const QString& text);

  private:
    QLabel* sign_;
    QLabel* text_;
};

} // namespace corvel
