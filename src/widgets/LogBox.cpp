#include "widgets/LogBox.h"

#include "common/ShownText.h"
#include "common/TextEncoding.h"
#include "widgets/Colours.h"
#include "widgets/TextConversion.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>

#include <array>
#include <utility>

namespace corvel {

namespace {

// In milliseconds, about one picture of the screen: what changes faster is not seen.
constexpr int updateInterval = 16;

// Characters of a line: each is laid out as a whole.
constexpr std::size_t longestShown = 2000;

bool isFindKey(const QEvent& event) {
    return static_cast<const QKeyEvent&>(event).matches(QKeySequence::Find);
}

} // namespace

LogBox::LogBox(std::function<const LogText&()> log, QWidget* parent)
    : QPlainTextEdit(parent), log_(std::move(log)) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    // Reading on needs keys as well as the mouse.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLogFont({}, 0);
    // Before the text is laid out, so that it is laid out once.
    connect(document(), &QTextDocument::contentsChange, this,
            [this](int from, int /*removed*/, int added) { colourLines(from, added); });
}

void LogBox::scheduleUpdate() {
    if (!isUpdateDue_) {
        isUpdateDue_ = true;
        QTimer::singleShot(updateInterval, this, &LogBox::updateText);
    }
}

void LogBox::setHeld(bool isHeld) {
    isHeld_ = isHeld;
    scheduleUpdate();
}

void LogBox::clearLog() {
    emit clearWanted();
    showText();
}

void LogBox::setLogFont(const QString& family, int pointSize) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!family.isEmpty()) {
        font.setFamilies({family});
        font.setStyleHint(QFont::Monospace);
        font.setFixedPitch(true);
    }
    if (pointSize > 0) {
        font.setPointSize(pointSize);
    }
    setFont(font);
}

void LogBox::updateText() {
    isUpdateDue_ = false;
    if (textCursor().hasSelection()) { // somebody is about to copy it; what is new is shown when he lets go
        connect(this, &QPlainTextEdit::selectionChanged, this, &LogBox::scheduleUpdate,
                static_cast<Qt::ConnectionType>(Qt::UniqueConnection | Qt::SingleShotConnection));
    } else if (!isHeld_ && !isMouseDown_) { // whose end is an update too
        showText();
    }
}

// Changes no more of the text than has changed of the log: what is set is all laid out anew.
void LogBox::showText() {
    const LogText& log = log_();
    const std::size_t going = log.goneLines() - goneLines_;
    if (going >= shown_.size()) {
        shown_.clear();
    } else if (const bool isFirstCut = log.goneBytes() != (going > 0 ? 0 : goneBytes_);
               going > 0 || isFirstCut) {
        showFront(log.lines().front(), going, isFirstCut);
    }
    goneLines_ = log.goneLines();
    goneBytes_ = log.goneBytes();
    showEnd(log);
    moveCursor(QTextCursor::End);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

// Takes so many lines away. first: the one behind them, of which more of the beginning may have gone.
void LogBox::showFront(const LogText::Line& first, std::size_t going, bool isFirstCut) {
    shown_.erase(shown_.begin(), shown_.begin() + static_cast<std::ptrdiff_t>(going));
    const QTextBlock block = document()->findBlockByNumber(static_cast<int>(going));
    QTextCursor cursor(document());
    if (isFirstCut) {
        cursor.setPosition(block.position() + block.length() - 1, QTextCursor::KeepAnchor);
        cursor.insertText(textOfLine(first, shown_.front()));
    } else {
        cursor.setPosition(block.position(), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
}

// Appends the lines that are not shown yet.
void LogBox::showEnd(const LogText& log) {
    const bool isAnew = shown_.empty();
    if (!isAnew && shown_.size() == log.lines().size()) {
        return;
    }
    QString text;
    if (static_cast<std::size_t>(blockCount()) == shown_.size()) {
        text = QLatin1Char('\n'); // of the last line, which has one by now
    }
    for (std::size_t i = shown_.size(); i < log.lines().size(); ++i) {
        const LogText::Line& line = log.lines()[i];
        text += textOfLine(line, shown_.emplace_back());
        if (line.text.ends_with('\n')) {
            text += QLatin1Char('\n');
        }
    }
    if (isAnew) {
        setPlainText(text);
    } else {
        QTextCursor cursor(document());
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(text);
    }
}

// What is shown of the line; says so in shown.
QString LogBox::textOfLine(const LogText::Line& line, Shown& shown) {
    std::string_view text = line.text;
    text.remove_suffix(text.size() - (text.find_last_not_of("\r\n") + 1));
    const std::size_t size =
        text.size() <= longestShown ? text.size() : bytesOfCharacters(text, longestShown);
    shown = {.kind = line.kind};
    if (size == text.size()) {
        return fromCore(text);
    }
    shown.text = fromCore(text.substr(0, size));
    shown.rest = fromCore(text.substr(size));
    return shown.text + fromCore(moreMark(characterCount(text.substr(size))));
}

QString LogBox::wholeText() const {
    QString text;
    std::size_t line = 0;
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next(), ++line) {
        const bool isCut = line < shown_.size() && !shown_[line].rest.isEmpty();
        text += isCut ? shown_[line].text + shown_[line].rest : block.text();
        text += block.next().isValid() ? QStringLiteral("\n") : QString();
    }
    return text;
}

int LogBox::hiddenMatches(const QString& what) const {
    qsizetype count = 0;
    for (const Shown& line : shown_) {
        if (!line.rest.isEmpty()) {
            count += (line.text.right(what.size() - 1) + line.rest).count(what, Qt::CaseInsensitive);
        }
    }
    return static_cast<int>(count);
}

// The lines are the blocks of the document: the log has no other characters that break one.
void LogBox::colourLines(int from, int added) {
    const QColor ground = palette().color(QPalette::Base);
    std::array<QTextCharFormat, 4> formats; // by LogLine
    formats[static_cast<std::size_t>(LogLine::refusal)].setForeground(readableOn(ground, {0xD0, 0x20, 0x20}));
    formats[static_cast<std::size_t>(LogLine::command)].setForeground(readableOn(ground, {0x20, 0x60, 0xC0}));
    formats[static_cast<std::size_t>(LogLine::event)].setForeground(readableOn(ground, {0x80, 0x70, 0x40}));
    for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() <= from + added;
         block = block.next()) {
        const auto number = static_cast<std::size_t>(block.blockNumber());
        const LogLine line = number < shown_.size() ? shown_[number].kind : LogLine::reply;
        if (line != LogLine::reply || !block.layout()->formats().isEmpty()) {
            block.layout()->setFormats(
                {{.start = 0, .length = block.length(), .format = formats[static_cast<std::size_t>(line)]}});
        }
    }
}

bool LogBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && isFindKey(*event)) {
        event->accept(); // before a list beside the log takes it
        return true;
    }
    if (event->type() == QEvent::PaletteChange) {
        colourLines(0, document()->characterCount());
        document()->markContentsDirty(0, document()->characterCount());
    }
    return QPlainTextEdit::event(event);
}

void LogBox::keyPressEvent(QKeyEvent* event) {
    if (isFindKey(*event)) {
        emit findWanted();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void LogBox::mousePressEvent(QMouseEvent* event) {
    // Of the right button a menu may take the release.
    isMouseDown_ = (event->buttons() & Qt::LeftButton) != 0;
    QPlainTextEdit::mousePressEvent(event);
}

void LogBox::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    isMouseDown_ = (event->buttons() & Qt::LeftButton) != 0;
    scheduleUpdate();
}

} // namespace corvel
