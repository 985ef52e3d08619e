#pragma once

#include <QPlainTextEdit>

#include <functional>

namespace corvel {

// Shows a log whose text, bounded in length, is kept elsewhere: read-only, in a fixed-width font, with the
// caret at the end, so that the newest line is in sight.
class LogBox : public QPlainTextEdit {
    Q_OBJECT

  public:
    // text: gives the whole log, as it is to be shown; called from the event loop for as long as the box is
    // alive.
    explicit LogBox(std::function<QString()> text, QWidget* parent = nullptr);

    // Says that the log changed. Cheap: the text is fetched and shown once, within a few milliseconds,
    // however often this is called until then. It waits for as long as somebody has text selected.
    void scheduleUpdate();

    // The platform's fixed-width font, or another by name; pointSize 0 or less keeps the size.
    void setLogFont(const QString& family, int pointSize);

  private:
    void showText();

    std::function<QString()> text_;
    bool isUpdateDue_ = false;
};

} // namespace corvel
