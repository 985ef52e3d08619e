#include "widgets/NoticeBar.h"

#include "widgets/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace corvel {

NoticeBar::NoticeBar(const char* name, const char* textName, QWidget* parent)
    : QFrame(parent), sign_(new QLabel), text_(new QLabel), row_(new QHBoxLayout(this)) {
    setObjectName(QLatin1String(name));
    setFrameShape(QFrame::StyledPanel);
    text_->setObjectName(QLatin1String(textName));
    text_->setTextFormat(Qt::PlainText);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text_->setWordWrap(true);
    QSizePolicy place = text_->sizePolicy();
    place.setHorizontalPolicy(QSizePolicy::Ignored); // a long word must not make the window wider
    text_->setSizePolicy(place);
    row_->addWidget(sign_, 0, Qt::AlignVCenter);
    row_->addWidget(text_, 1);
    hide();
}

QToolButton* NoticeBar::addButton(const char* name, const QString& caption) {
    auto* const button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setText(caption);
    button->setFocusPolicy(Qt::StrongFocus);
    row_->addWidget(button, 0, Qt::AlignVCenter);
    return button;
}

void NoticeBar::tell(const QString& text) {
    if (sign_->pixmap(Qt::ReturnByValue).isNull()) {
        sign_->setPixmap(icon("warning").pixmap(fontMetrics().height()));
    }
    text_->setText(text);
    show();
}

} // namespace corvel
