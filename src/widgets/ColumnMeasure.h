#pragma once

#include "widgets/ReportModel.h"

#include <QFont>
#include <QString>

namespace corvel {

// The cell of a column that needs most room.
struct WidestCell {
    QString text;
    double estimate = 0; // its width by single characters, in device-independent pixels
};

// Looks at the column's own widest texts where it names some, else at the measured text of every row, else
// at the text of every row. Costs about a pass over the bytes of the column.
WidestCell widestCell(const ReportSource& source, int column, const QFont& font);

} // namespace corvel
