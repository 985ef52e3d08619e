#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class QAbstractButton;
class QLineEdit;

namespace corvel {

class mdlMain;

// The test that keeps a server busy: sends one command to the current site, round after round, and gives way
// to every other event between the rounds.
class LoadTest : public QObject {
    Q_OBJECT

  public:
    // Both are borrowed and must outlive the test. whileChecked: the test goes on as long as it is checked.
    LoadTest(mdlMain& program, const QAbstractButton& whileChecked, QObject* parent = nullptr);

    // Puts the test command into entry; each round sends what entry says then, and selects it. The test ends
    // with the entry.
    void start(QLineEdit& entry);
    void stop();
    bool isRunning() const { return timer_.isActive(); }

  private:
    void nextRound();

    mdlMain& program_;
    const QAbstractButton& whileChecked_;
    QPointer<QLineEdit> entry_;
    QTimer timer_;
};

} // namespace corvel
