#include "common/RowFilter.h"

#include "common/Text.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace corvel {

std::vector<std::string> filterWords(std::string_view text) {
    const std::string folded = foldCase(text);
    std::vector<std::string> words;
    for (const std::string_view word : split(folded, " ")) {
        if (!word.empty()) {
            words.emplace_back(word);
        }
    }
    return words;
}

bool narrows(const std::vector<std::string>& words, const std::vector<std::string>& before) {
    return std::ranges::all_of(before, [&words](const std::string& old) {
        return std::ranges::any_of(
            words, [&old](const std::string& word) { return word.find(old) != std::string::npos; });
    });
}

void RowTexts::addCell(std::string_view bytes) {
    appendFolded(text_, bytes);
    text_ += '\0'; // no word goes on in the next cell
}

bool RowTexts::hasAll(int row, const std::vector<std::string>& words) const {
    const auto index = static_cast<std::size_t>(row);
    const std::size_t start = index == 0 ? 0 : ends_[index - 1];
    const std::string_view text = std::string_view(text_).substr(start, ends_[index] - start);
    return std::ranges::all_of(
        words, [text](const std::string& word) { return text.find(word) != std::string_view::npos; });
}

std::vector<int> matchingRows(const RowTexts& texts, const std::vector<std::string>& words,
                              const std::vector<int>& among, int always) {
    std::vector<int> rows;
    std::ranges::copy_if(among, std::back_inserter(rows), [&texts, &words, always](int row) {
        return row < always || texts.hasAll(row, words);
    });
    return rows;
}

std::vector<int> matchingRows(const RowTexts& texts, const std::vector<std::string>& words, int always) {
    std::vector<int> all(static_cast<std::size_t>(texts.rows()));
    std::iota(all.begin(), all.end(), 0);
    return matchingRows(texts, words, all, always);
}

} // namespace corvel
