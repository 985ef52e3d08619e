#pragma once

#include "widgets/ReportModel.h"

#include <vector>

namespace corvel {

// For each of the columns from first to last, the rows whose cells may be its widest: all rows of a short
// list, of a long one those that sent the longest different texts. A long list that does not say what was
// sent gives its first rows. Costs one walk over the rows.
std::vector<std::vector<int>> rowsToMeasure(const ReportSource& source, int first, int last);

} // namespace corvel
