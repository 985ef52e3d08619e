#include "widgets/SelectionColors.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace corvel {

void fitSelectionColors() {
    if (QApplication::style()->name() != "windowsvista"_L1) {
        return;
    }
    constexpr const char* lists = "QAbstractItemView";
    QPalette palette = QApplication::palette(lists);
    palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Active, QPalette::Text));
    QApplication::setPalette(palette, lists);
}

} // namespace corvel
