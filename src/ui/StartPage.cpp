#include "ui/StartPage.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <array>

namespace corvel {

namespace {

struct Way {
    const char* name;
    const char* caption;
    const char* explanation;
    void (StartPage::*wanted)();
};

constexpr std::array<Way, 3> ways = {{
    {"cmdStartAdd", QT_TRANSLATE_NOOP("StartPage", "&Add a site..."),
     QT_TRANSLATE_NOOP("StartPage", "The host, the port, a user and a password of an FTP server."),
     &StartPage::addWanted},
    {"cmdStartDemo", QT_TRANSLATE_NOOP("StartPage", "&Look round on a demo server"),
     QT_TRANSLATE_NOOP("StartPage", "Another window, on a server in memory. Nothing there is kept."),
     &StartPage::demoWanted},
    {"cmdStartGuide", QT_TRANSLATE_NOOP("StartPage", "Read the &guide"),
     QT_TRANSLATE_NOOP("StartPage", "What each tab is for, with pictures."), &StartPage::guideWanted},
}};

} // namespace

StartPage::StartPage(QWidget& place) : QWidget(&place) {
    setObjectName(QStringLiteral("pgStart"));
    setGeometry(place.rect());
    place.installEventFilter(this);
    auto* const title = new QLabel(tr("There are no sites yet."));
    title->setObjectName(QStringLiteral("lblNoSites"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    title->setFont(large);
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 2);
    grid->setVerticalSpacing(fontMetrics().height() / 2);
    grid->addWidget(title, 0, 0, 1, 2);
    for (const Way& way : ways) {
        auto* const button = new QPushButton(tr(way.caption));
        button->setObjectName(QLatin1String(way.name));
        button->setAccessibleDescription(tr(way.explanation));
        button->setAutoDefault(true); // Enter presses the one that has the focus
        connect(button, &QPushButton::clicked, this, way.wanted);
        if (focusProxy() == nullptr) {
            setFocusProxy(button);
        }
        auto* const explanation = new QLabel(tr(way.explanation));
        explanation->setWordWrap(true);
        const int row = grid->rowCount();
        grid->addWidget(button, row, 0);
        grid->addWidget(explanation, row, 1);
    }
    grid->setColumnStretch(1, 1);
    auto* const layout = new QGridLayout(this);
    layout->addLayout(grid, 1, 1);
    for (const int side : {0, 2}) {
        layout->setRowStretch(side, side + 1); // a little above the middle
        layout->setColumnStretch(side, 1);
    }
    layout->setColumnStretch(1, 10);
}

bool StartPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace corvel
