#pragma once

#include "widgets/Forms.h"

namespace corvel {

// A line of text that leads somewhere: by a click, or by Enter or the space bar while it has the focus. It is
// out of sight while it has no text.
class LinkLabel : public ElidedLabel {
    Q_OBJECT

  public:
    // tip: what a click does; the tool tip says it below the text.
    LinkLabel(const char* name, const QString& tip);

    void showText(const QString& text);

  signals:
    void clicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QString tip_;
};

} // namespace corvel
