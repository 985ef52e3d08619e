#pragma once

#include <QObject>

class QWidget;

namespace corvel {

// While it lives, the system's wish that the program end (on Linux SIGTERM, SIGINT and SIGHUP, as at a logout
// or by Ctrl+C) closes a window as a person does, so that everything is saved; a signal that was ignored, as
// under nohup, stays ignored. On Windows the end of a session comes through Qt, and this does nothing. One at
// a time.
class EndSignals : public QObject {
    Q_OBJECT

  public:
    // window: borrowed, must outlive this object.
    explicit EndSignals(QWidget& window);
    ~EndSignals() override;
};

} // namespace corvel
