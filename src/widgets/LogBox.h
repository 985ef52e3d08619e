#pragma once

#include "net/LogText.h"

#include <QPlainTextEdit>

#include <functional>
#include <vector>

namespace corvel {

// Shows a log that is kept elsewhere, bounded in length: read-only, in a fixed-width font, its lines in the
// colour of what they are, with the caret at the end, so that the newest line is in sight. What is shown
// stays as it is while somebody holds it: by holding the log, by a selection, or with the mouse.
class LogBox : public QPlainTextEdit {
    Q_OBJECT

  public:
    // log: gives the log; called from the event loop for as long as the box is alive.
    explicit LogBox(std::function<const LogText&()> log, QWidget* parent = nullptr);

    // Says that the log changed. Cheap: the text is fetched and shown once, within a few milliseconds,
    // however often this is called until then.
    void scheduleUpdate();

    // Whether the text stays as it is, whatever is logged.
    void setHeld(bool isHeld);
    bool isHeld() const { return isHeld_; }
    // Empties the log, even one that is held.
    void clearLog();

    // The platform's fixed-width font, or another by name; pointSize 0 or less keeps the size.
    void setLogFont(const QString& family, int pointSize);

  signals:
    void clearWanted(); // the log is to be emptied before this returns
    void findWanted();  // the keys for it were pressed here

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void updateText();
    void showText();
    void colourLines();

    std::function<const LogText&()> log_;
    std::vector<LogLine> shownLines_;
    bool isUpdateDue_ = false;
    bool isHeld_ = false;
    bool isMouseDown_ = false;
};

} // namespace corvel
