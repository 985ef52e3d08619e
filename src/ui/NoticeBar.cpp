#include "ui/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace corvel {

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), sign_(new QLabel), text_(new QLabel) {
    setObjectName(QStringLiteral("fraNotice"));
    setFrameShape(QFrame::StyledPanel);
    text_->setObjectName(QStringLiteral("lblNotice"));
    text_->setTextFormat(Qt::PlainText);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text_->setWordWrap(true);
    auto* const close = new QToolButton;
    close->setObjectName(QStringLiteral("cmdNoticeClose"));
    close->setText(tr("Close"));
    close->setAutoRaise(true);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(sign_, 0, Qt::AlignTop);
    layout->addWidget(text_, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    hide();
}

// The sign is looked for in the desktop's themes, which takes a tenth of a start that has nothing to say.
void NoticeBar::show(const QString& text) {
    sign_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(fontMetrics().height()));
    text_->setText(text);
    setVisible(true);
}

} // namespace corvel
