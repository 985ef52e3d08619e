#include "widgets/ScrollPage.h"

#include <QScrollArea>

namespace corvel {

QWidget* newScrollPage(QWidget& content) {
    auto* const page = new QScrollArea;
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    page->setWidget(&content);
    // The ground of the tab shows through, as it does under every other page.
    page->viewport()->setAutoFillBackground(false);
    content.setAutoFillBackground(false);
    return page;
}

} // namespace corvel
