#pragma once

#include <QLabel>

namespace corvel {

// A line of plain text that gives way: where it has less room than it wants, its end is left out and its tool
// tip has the whole. It never makes a window wider.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    // Does nothing where the text is that already.
    void showText(const QString& text);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace corvel
