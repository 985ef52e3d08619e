#pragma once

#include "net/LogText.h"

#include <QPlainTextEdit>

#include <cstddef>
#include <deque>
#include <functional>

namespace corvel {

// Shows a log that is kept elsewhere, bounded in length: read-only, in a fixed-width font, its lines in the
// colour of what they are, with the caret at the end, so that the newest line is in sight. What is shown
// stays as it is while somebody holds it: by holding the log, by a selection, or with the mouse. A line that
// is longer than several of the window is cut, with a mark that says how much.
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

    // The text that is shown, with its lines whole.
    QString wholeText() const;
    // How often what is found, whatever its case, where lines are cut: not all of it in what is shown.
    int hiddenMatches(const QString& what) const;

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
    // A line as it is shown.
    struct Shown {
        LogLine kind;
        QString text; // its beginning, without a mark; empty where it is whole
        QString rest; // what is not shown
    };

    void updateText();
    void showText();
    static QString textOfLine(const LogText::Line& line, Shown& shown);
    void showFront(const LogText::Line& first, std::size_t going, bool isFirstCut);
    void showEnd(const LogText& log);
    void colourLines(int from, int added);

    std::function<const LogText&()> log_;
    std::deque<Shown> shown_; // the blocks of the document, but for an empty last one
    // Of the log's lines and bytes, how many had gone as it was shown.
    std::size_t goneLines_ = 0;
    std::size_t goneBytes_ = 0;
    bool isUpdateDue_ = false;
    bool isHeld_ = false;
    bool isMouseDown_ = false;
};

} // namespace corvel
