#include "net/qt/StatsPanel.h"

#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace corvel {

namespace {

constexpr int linesOfText = 4;
constexpr int longestNumber = 10; // digits

} // namespace

StatsPanel::StatsPanel(QWidget* parent) : QWidget(parent) {
    list_ = new ReportView;
    list_->setObjectName(QStringLiteral("lvwStats"));
    list_->setAccessibleName(tr("Statistics"));

    text_ = new QPlainTextEdit;
    text_->setObjectName(QStringLiteral("txtStats"));
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    text_->setAccessibleName(tr("Summary"));
    const int room = 2 * (static_cast<int>(text_->document()->documentMargin()) + text_->frameWidth());
    text_->setFixedHeight((2 * linesOfText + 1) * text_->fontMetrics().lineSpacing() / 2 + room);
    auto* const label = new QLabel(tr("S&ummary:"));
    label->setBuddy(text_);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addWidget(label);
    layout->addWidget(text_);
}

void StatsPanel::showStatus(const Status& status) {
    rows_ = statisticsRows(status);
    // With room for any number, the column stays as wide as it is while numbers change.
    list_->setSource(
        sourceOf(
            rows_,
            {{.header = tr("name")},
             {.header = tr("value"), .alignment = Qt::AlignRight, .room = {QString(longestNumber, u'8')}}},
            {&MenuVariable::sName, &MenuVariable::sValue}),
        ReportView::CurrentRow::keep);
    list_->fitColumns(0, 1);
    text_->setPlainText(fromCore(statisticsText(status.activity)));
}

} // namespace corvel
