#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// The words of a typed filter (UTF-8) in the form in which they are looked for: what stands between its
// blanks, without regard to case. None for one that hides nothing.
std::vector<std::string> filterWords(std::string_view text);

// Whether whatever has all of words has all of the words before, too: so when a letter is appended.
bool narrows(const std::vector<std::string>& words, const std::vector<std::string>& before);

// The texts of a list's rows in the form in which words are looked for in them; made once for a table.
class RowTexts {
  public:
    // The next cell of the row that is not ended yet, in the server's bytes.
    void addCell(std::string_view bytes);
    void endRow() { ends_.push_back(text_.size()); }

    int rows() const { return static_cast<int>(ends_.size()); }
    // Whether each of words (as filterWords gives them) is in some cell of the row, which is there.
    bool hasAll(int row, const std::vector<std::string>& words) const;

  private:
    std::string text_; // of all rows, with a NUL behind each cell
    std::vector<std::size_t> ends_;
};

// Those rows of texts, of the rows among alone, that have all of words; in the order of among. The rows below
// always are taken as they are. Costs at most one look at each text a word.
std::vector<int> matchingRows(const RowTexts& texts, const std::vector<std::string>& words,
                              const std::vector<int>& among, int always = 0);
// The same among all rows, in their order.
std::vector<int> matchingRows(const RowTexts& texts, const std::vector<std::string>& words, int always = 0);

} // namespace corvel
