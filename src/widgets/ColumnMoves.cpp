#include "widgets/ColumnMoves.h"

#include <QHeaderView>

namespace corvel {

void letColumnsMove(QHeaderView& header, int fixed) {
    header.setSectionsMovable(true);
    for (int column = 0; column < fixed; ++column) {
        header.setSectionResizeMode(column, QHeaderView::Fixed);
    }
    // Before the drag begins: a fixed column does not even seem to come along.
    QObject::connect(&header, &QHeaderView::sectionPressed, &header,
                     [&header, fixed](int column) { header.setSectionsMovable(column >= fixed); });
    QObject::connect(&header, &QHeaderView::sectionMoved, &header,
                     [&header, fixed](int column, int /*from*/, int to) {
                         if (column >= fixed && to < fixed) {
                             header.moveSection(to, fixed);
                         }
                     });
}

} // namespace corvel
