#include "ui/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace corvel {

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), text_(new QLabel) {
    setObjectName(QStringLiteral("fraNotice"));
    setFrameShape(QFrame::StyledPanel);
    auto* const sign = new QLabel;
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(fontMetrics().height()));
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
    layout->addWidget(sign, 0, Qt::AlignTop);
    layout->addWidget(text_, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::show(const QString& text) {
    text_->setText(text);
    setVisible(true);
}

} // namespace corvel
