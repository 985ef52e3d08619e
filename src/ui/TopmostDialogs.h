#pragma once

#include <QObject>

class QAbstractButton;

namespace corvel {

// Keeps dialogs in reach of a window that lies over all others: while the button is checked, every dialog
// comes up in the same band.
class TopmostDialogs : public QObject {
    Q_OBJECT

  public:
    // whileChecked: borrowed, must outlive this object.
    explicit TopmostDialogs(const QAbstractButton& whileChecked, QObject* parent = nullptr);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    const QAbstractButton& whileChecked_;
};

} // namespace corvel
