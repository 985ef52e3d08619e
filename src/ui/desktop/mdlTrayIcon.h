#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QIcon;
class QMenu;
class QSystemTrayIcon;
class QTimer;
class QWidget;

namespace corvel {

// The program's icon in the notification area of the desktop. Where a desktop has none, nothing is seen of
// it.
class mdlTrayIcon : public QObject {
    Q_OBJECT

  public:
    explicit mdlTrayIcon(QObject* parent = nullptr);
    ~mdlTrayIcon() override;

    void TrayAdd(const QIcon& image, const QString& tip);
    // Writes what differs from what is shown; does nothing before TrayAdd and after TrayDelete.
    void TrayModify(const QIcon& image, const QString& tip);
    void TrayDelete();

    // What a right click opens, before TrayAdd or after; null for nothing. The desktop may show it in a way
    // of its own, so it must say with aboutToShow what it holds. Borrowed.
    void setMenu(QMenu* menu);

    // Whether the icon is in a notification area at this moment, so that it can be clicked.
    bool isShown() const;

    // Lets the icon say something once; plain text.
    void sayOnce(const QString& title, const QString& text);

  signals:
    void clicked(); // with the left button

  private:
    std::unique_ptr<QSystemTrayIcon> picTrayIcon_;
    QMenu* menu_ = nullptr;
};

// Hides a window that a person minimises, for as long as something is there to bring it back by: where there
// is nothing, minimising minimises; and when that goes away, a hidden window shows itself again.
class MinimizeToTray : public QObject {
    Q_OBJECT

  public:
    // window: also the parent of this object. canReturn: whether, at this moment, a person could bring the
    // window back; it must stay callable while the window lives.
    MinimizeToTray(QWidget& window, std::function<bool()> canReturn);

  signals:
    void hidden();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void hide();
    void look();

    QWidget& window_;
    std::function<bool()> canReturn_;
    QTimer* watch_;
};

} // namespace corvel
