#include "widgets/LogBox.h"

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

// In milliseconds, about one picture of the screen: what changes faster is not seen, and every text is laid
// out as a whole.
constexpr int updateInterval = 16;

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
    connect(document(), &QTextDocument::contentsChange, this, &LogBox::colourLines);
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

void LogBox::showText() {
    const LogText& log = log_();
    shownLines_ = log.lines();
    setPlainText(fromCore(log.text()));
    moveCursor(QTextCursor::End);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

// The lines are the blocks of the document: the log has no other characters that break one.
void LogBox::colourLines() {
    const QColor ground = palette().color(QPalette::Base);
    std::array<QTextCharFormat, 4> formats; // by LogLine
    formats[static_cast<std::size_t>(LogLine::refusal)].setForeground(readableOn(ground, {0xD0, 0x20, 0x20}));
    formats[static_cast<std::size_t>(LogLine::command)].setForeground(readableOn(ground, {0x20, 0x60, 0xC0}));
    formats[static_cast<std::size_t>(LogLine::event)].setForeground(readableOn(ground, {0x80, 0x70, 0x40}));
    QTextBlock block = document()->firstBlock();
    for (const LogLine line : shownLines_) {
        if (!block.isValid()) {
            return;
        }
        if (line != LogLine::reply || !block.layout()->formats().isEmpty()) {
            block.layout()->setFormats(
                {{.start = 0, .length = block.length(), .format = formats[static_cast<std::size_t>(line)]}});
        }
        block = block.next();
    }
}

bool LogBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && isFindKey(*event)) {
        event->accept(); // before a list beside the log takes it
        return true;
    }
    if (event->type() == QEvent::PaletteChange) {
        colourLines();
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
