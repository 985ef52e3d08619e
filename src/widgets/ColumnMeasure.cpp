#include "widgets/ColumnMeasure.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <string_view>

namespace corvel {

namespace {

// So many rows are all measured.
constexpr int shortList = 100;

// The longest different texts of a column, among the first ones of each length: the others are not even
// looked at, which would cost more than all the rest in a list that does not lie in memory in its order.
class LongestTexts {
  public:
    void consider(std::string_view text, int row) {
        constexpr std::size_t most = 32;
        const bool isTooShort = kept_.size() == most && text.size() <= kept_.back().text.size();
        const bool isOfManySeen = text.size() < seen_.size() && seen_[text.size()]++ >= 2 * most;
        if (isTooShort || isOfManySeen) {
            return;
        }
        if (std::ranges::find(kept_, text, &Cell::text) == kept_.end()) {
            const auto isLonger = [](std::size_t size, const Cell& cell) { return size > cell.text.size(); };
            kept_.insert(std::upper_bound(kept_.begin(), kept_.end(), text.size(), isLonger), {text, row});
            kept_.resize(std::min(kept_.size(), most));
        }
    }

    std::vector<int> rows() const {
        std::vector<int> rows;
        std::ranges::transform(kept_, std::back_inserter(rows), &Cell::row);
        return rows;
    }

  private:
    struct Cell {
        std::string_view text;
        int row;
    };

    std::array<std::size_t, 64> seen_ = {}; // by length
    std::vector<Cell> kept_;                // the longest first
};

} // namespace

std::vector<std::vector<int>> rowsToMeasure(const ReportSource& source, int first, int last) {
    const std::size_t columns = static_cast<std::size_t>(last) - static_cast<std::size_t>(first) + 1;
    if (source.rows <= shortList || !source.sentText) {
        std::vector<int> rows(static_cast<std::size_t>(std::min(source.rows, shortList)));
        std::iota(rows.begin(), rows.end(), 0);
        return {columns, rows};
    }
    std::vector<LongestTexts> longest(columns);
    for (int row = 0; row < source.rows; ++row) {
        for (std::size_t i = 0; i < columns; ++i) {
            longest[i].consider(source.sentText(row, first + static_cast<int>(i)), row);
        }
    }
    std::vector<std::vector<int>> rows;
    std::ranges::transform(longest, std::back_inserter(rows), &LongestTexts::rows);
    return rows;
}

} // namespace corvel
