#include "widgets/LogBox.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTimer>

#include <utility>

namespace corvel {

namespace {

// In milliseconds, about one picture of the screen: what changes faster is not seen, and every text is laid
// out as a whole.
constexpr int updateInterval = 16;

} // namespace

LogBox::LogBox(std::function<QString()> text, QWidget* parent)
    : QPlainTextEdit(parent), text_(std::move(text)) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    // Reading on needs keys as well as the mouse.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLogFont({}, 0);
}

void LogBox::scheduleUpdate() {
    if (!isUpdateDue_) {
        isUpdateDue_ = true;
        QTimer::singleShot(updateInterval, this, &LogBox::showText);
    }
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

void LogBox::showText() {
    isUpdateDue_ = false;
    if (textCursor().hasSelection()) { // somebody is about to copy it; what is new is shown when he lets go
        connect(this, &QPlainTextEdit::selectionChanged, this, &LogBox::scheduleUpdate,
                static_cast<Qt::ConnectionType>(Qt::UniqueConnection | Qt::SingleShotConnection));
        return;
    }
    setPlainText(text_());
    moveCursor(QTextCursor::End);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

} // namespace corvel
