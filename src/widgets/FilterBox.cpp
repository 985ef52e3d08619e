#include "widgets/FilterBox.h"

#include "widgets/Forms.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QShortcut>

namespace corvel {

FilterBox::FilterBox(const char* name, const char* countName)
    : text_(new OneLineEdit), caption_(labelFor(*text_, name, tr("F&ilter:"))), count_(new QLabel) {
    addClearButton(*text_);
    text_->setPlaceholderText(QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText));
    text_->setToolTip(tr("Shows the rows that have every word, in whichever column"));
    text_->installEventFilter(this);
    count_->setObjectName(QLatin1String(countName));
    count_->setAccessibleName(tr("Rows shown"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption_);
    layout->addWidget(text_, 1);
    layout->addWidget(count_);
    connect(text_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (list_ != nullptr) {
            list_->setFilter(text);
        }
    });
    auto* const find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        text_->setFocus(Qt::ShortcutFocusReason);
        text_->selectAll();
    });
    setList(nullptr);
}

void FilterBox::setList(ReportView* list) {
    if (list_ != nullptr) {
        list_->disconnect(this);
    }
    list_ = list;
    if (list_ != nullptr) {
        connect(list_, &ReportView::rowCountsChanged, this, &FilterBox::showList);
    }
    setEnabled(list_ != nullptr);
    showList();
}

void FilterBox::setCaptionWidth(int pixels) {
    caption_->setMinimumWidth(pixels);
}

void FilterBox::showList() {
    const QString filter = list_ == nullptr ? QString() : list_->filter();
    if (text_->text() != filter) {
        text_->setText(filter);
    }
    const auto written = [](int count) { return QLocale().toString(count); };
    QString count = list_ == nullptr ? QString() : written(list_->rowsInAll());
    if (!filter.trimmed().isEmpty()) {
        count = tr("%1 of %2").arg(written(list_->rowsShown()), count);
    }
    if (count_->text() != count) {
        count_->setText(count);
    }
}

bool FilterBox::eventFilter(QObject* watched, QEvent* event) {
    if (list_ != nullptr && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        list_->expectFilter(event->type() == QEvent::FocusIn);
    }
    if (event->type() != QEvent::KeyPress || list_ == nullptr) {
        return QWidget::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        text_->text().isEmpty() ? list_->setFocus() : text_->clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        list_->enterByKey();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace corvel
