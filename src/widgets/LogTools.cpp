#include "widgets/LogTools.h"

#include "widgets/Forms.h"
#include "widgets/LogBox.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QSaveFile>
#include <QStackedWidget>

namespace corvel {

namespace {

struct Match {
    qsizetype start = -1; // none
    int number = 0;       // among all, from 1
    int count = 0;
};

// The matches of what in text, one behind the other. The wanted one is the last that begins at or before
// place (where there is none the last of all), or isDown the first that begins at or behind it (else the
// first of all).
Match matchOf(const QString& text, const QString& what, qsizetype place, bool isDown) {
    Match match;
    Match other; // beyond the end
    for (qsizetype start = 0; (start = text.indexOf(what, start, Qt::CaseInsensitive)) >= 0;
         start += what.size()) {
        ++match.count;
        const bool isWanted = isDown ? start >= place && match.start < 0 : start <= place;
        if (isWanted) {
            match.start = start;
            match.number = match.count;
        }
        if (!isDown || other.start < 0) {
            other = {.start = start, .number = match.count};
        }
    }
    if (match.start < 0) {
        match.start = other.start;
        match.number = other.number;
    }
    return match;
}

QPushButton* newButton(const char* name, const QString& caption) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

LogTools::LogTools(QStackedWidget& pages, const QString& caption) : pages_(pages) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    txtFind_ = new OneLineEdit;
    layout->addWidget(labelFor(*txtFind_, "txtFind", caption));
    txtFind_->setToolTip(tr("Enter goes up to the next match, Shift+Enter down, Escape ends it"));
    addClearButton(*txtFind_);
    txtFind_->installEventFilter(this);
    connect(txtFind_, &QLineEdit::textChanged, this, [this] { find(Direction::stay); });
    lblFind_ = new ElidedLabel("lblFind");
    lblFind_->setMinimumWidth(fontMetrics().horizontalAdvance(tr("%1 of %2").arg(999).arg(999)));
    chkLogHold_ = new QCheckBox(tr("Hold"));
    chkLogHold_->setObjectName(QStringLiteral("chkLogHold"));
    chkLogHold_->setToolTip(tr("Keeps the text as it is; new lines appear when it is let go"));
    connect(chkLogHold_, &QCheckBox::toggled, this, [this](bool isHeld) { log_->setHeld(isHeld); });
    QPushButton* const clear = newButton("cmdLogClear", tr("Clear"));
    connect(clear, &QPushButton::clicked, this, [this] { log_->clearLog(); });
    QPushButton* const save = newButton("cmdLogSave", tr("Save as..."));
    connect(save, &QPushButton::clicked, this, &LogTools::save);
    layout->addWidget(txtFind_, 1);
    for (QWidget* const widget : std::initializer_list<QWidget*>{lblFind_, chkLogHold_, clear, save}) {
        layout->addWidget(widget);
    }
    connect(&pages_, &QStackedWidget::currentChanged, this, &LogTools::followPage);
    followPage();
}

void LogTools::followPage() {
    if (log_ != nullptr) {
        disconnect(log_, &LogBox::findWanted, this, nullptr);
    }
    log_ = pages_.currentWidget()->findChild<LogBox*>();
    setEnabled(log_ != nullptr);
    lblFind_->clear();
    if (log_ != nullptr) {
        connect(log_, &LogBox::findWanted, this, &LogTools::startFind);
        chkLogHold_->setChecked(log_->isHeld());
    }
}

void LogTools::startFind() {
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
}

// Selects a match, which holds the text.
void LogTools::find(Direction direction) {
    const QString what = txtFind_->text();
    QTextCursor cursor = log_->textCursor();
    qsizetype place = cursor.selectionStart();
    cursor.clearSelection();
    log_->setTextCursor(cursor);
    lblFind_->clear();
    lblFind_->setToolTip({});
    if (what.isEmpty()) {
        return;
    }
    place += direction == Direction::up ? -1 : direction == Direction::down ? 1 : 0;
    const Match match = matchOf(log_->toPlainText(), what, place, direction == Direction::down);
    const int hidden = log_->hiddenMatches(what);
    QString found = match.start < 0 ? tr("not found") : tr("%1 of %2").arg(match.number).arg(match.count);
    if (hidden > 0) {
        const QString more = tr("%1 cut off").arg(hidden);
        found = match.start < 0 ? more : found + QStringLiteral(", ") + more;
        lblFind_->setToolTip(
            tr("Of long lines only the beginning is shown; \"Save as...\" writes them whole"));
    }
    lblFind_->setText(found);
    if (match.start < 0) {
        return;
    }
    cursor.setPosition(static_cast<int>(match.start));
    cursor.setPosition(static_cast<int>(match.start + what.size()), QTextCursor::KeepAnchor);
    log_->setTextCursor(cursor);
}

void LogTools::stopFind() {
    txtFind_->clear();
    log_->moveCursor(QTextCursor::End);
    log_->setFocus(Qt::ShortcutFocusReason);
}

bool LogTools::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Escape) {
            stopFind();
            return true;
        }
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            find((key.modifiers() & Qt::ShiftModifier) != 0 ? Direction::down : Direction::up);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void LogTools::save() {
    auto* const dialog = new QFileDialog(this, tr("Save the log"));
    dialog->setObjectName(QStringLiteral("frmLogSave"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->setNameFilters({tr("Text files (*.txt)"), tr("All files (*)")});
    dialog->selectFile(log_->accessibleName() + QStringLiteral(".txt"));
    connect(dialog, &QFileDialog::fileSelected, this, [this, text = log_->wholeText()](const QString& path) {
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(text.toUtf8()) < 0 ||
            !file.commit()) {
            newMessageBox(this, tr("The log was not saved: %1").arg(file.errorString()))->open();
        }
    });
    openDialog(*dialog);
}

} // namespace corvel
