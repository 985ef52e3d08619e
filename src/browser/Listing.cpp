#include "browser/Listing.h"

#include "common/Numbers.h"
#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <numeric>
#include <utility>

namespace corvel {

namespace {

constexpr std::size_t accessLength = 10;
// The shortest line that is accepted: ten characters, then " ", " ?", " ?", " ", "# ?", " ?", " ?", " ?".
constexpr std::size_t shortestLine = accessLength + 15;

// Three letters as one number, upper-case ones as their lower-case form. Only a letter becomes a letter.
constexpr std::uint32_t letters(std::string_view name) {
    std::uint32_t number = 0;
    for (const char letter : name) {
        number = number << 8U | static_cast<unsigned char>(letter) | 0x20U;
    }
    return number;
}

constexpr std::array<std::uint32_t, 12> monthNames = {
    letters("jan"), letters("feb"), letters("mar"), letters("apr"), letters("may"), letters("jun"),
    letters("jul"), letters("aug"), letters("sep"), letters("oct"), letters("nov"), letters("dec")};
constexpr std::array<std::string_view, 12> monthNumbers = {"01", "02", "03", "04", "05", "06",
                                                           "07", "08", "09", "10", "11", "12"};

// Takes the fields of a line from left to right.
class FieldCutter {
  public:
    explicit FieldCutter(std::string_view rest) : rest_(rest) {}

    // The text before the next blank, or all that is left; that blank is passed over.
    std::string_view take() {
        const std::size_t end = std::min(rest_.find(' '), rest_.size());
        const std::string_view field = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return field;
    }

    std::string_view takeAndSkipBlanks() {
        const std::string_view field = take();
        while (rest_.starts_with(' ')) {
            rest_.remove_prefix(1);
        }
        return field;
    }

    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

std::string dateText(std::string_view month, std::string_view day, std::string_view time) {
    std::string date(MonthNumber(month));
    return date.append(1, '/').append(day).append(1, ' ').append(time);
}

// What most lines of a reply that are none of a listing show in their first bytes.
bool mayMatch(std::string_view line) {
    return line.size() >= shortestLine && line[accessLength] == ' ' && !line.starts_with("211 ") &&
           !line.starts_with("211-");
}

// Whether an empty date field has pushed a time or a year, or the blank before it, into the name.
bool isPushed(const BrowserEntry& entry, std::string_view day, std::string_view time) {
    return (day.empty() || time.empty()) &&
           (entry.name.starts_with(' ') || matchesPattern(entry.name, "#*:## *") ||
            matchesPattern(entry.name, "#### *"));
}

// Reads line, which may match and outlives the entry; false where it is no line of a listing.
bool readEntry(std::string_view line, bool mergeBlanks, BrowserEntry& entry, bool& looksPadded) {
    entry.access = line.substr(0, accessLength);
    entry.type = line.front() == 'l'   ? BrowserEntryType::link
                 : line.front() == '-' ? BrowserEntryType::file
                                       : BrowserEntryType::directory;
    FieldCutter fields(trimLeading(line.substr(accessLength)));
    fields.take(); // the link count; blanks behind it are not skipped
    entry.owner = fields.takeAndSkipBlanks();
    entry.group = fields.takeAndSkipBlanks();
    entry.size = fields.takeAndSkipBlanks();
    FieldCutter merged = fields;
    std::string_view month = merged.takeAndSkipBlanks();
    std::string_view day = merged.takeAndSkipBlanks();
    std::string_view time = merged.take();
    entry.name = merged.rest();
    // A line with something in each of its fields matches the pattern; that costs too much to try on each.
    const bool isFilled = !entry.owner.empty() && !entry.group.empty() && !entry.size.empty() &&
                          isDigit(entry.size.back()) && !time.empty() && !entry.name.empty();
    if (!isFilled && !matchesPattern(line, "?????????? * ?* ?* *# ?* ?* ?* ?*")) {
        return false;
    }
    if (!mergeBlanks) {
        month = fields.take();
        day = fields.take();
        time = fields.take();
        entry.name = fields.rest();
        looksPadded = looksPadded || isPushed(entry, day, time);
    }
    entry.date = dateText(month, day, time);
    return true;
}

bool beginsWithCode(std::string_view line) {
    return line.size() >= 4 && isDigit(line[0]) && isDigit(line[1]) && isDigit(line[2]) &&
           (line[3] == ' ' || line[3] == '-');
}

// Takes note of a line inside the reply that is no entry.
void noteStrange(std::string_view line, BrowserListing& listing) {
    constexpr std::size_t longest = 300;
    const std::string_view text = trim(line);
    if (text.empty() || text.starts_with("211 ") || text.starts_with("211-") ||
        matchesPattern(toLower(text.substr(0, longest)), "total #*")) {
        return;
    }
    if (listing.strangeLines.size() < mostStrangeLines) {
        listing.strangeLines.emplace_back(beginningOf(line, longest));
    }
    ++listing.strangeCount;
}

void count(BrowserListing& listing, const BrowserEntry& entry) {
    if (entry.type != BrowserEntryType::directory) {
        ++listing.fileCount;
    } else if (entry.name != "..") {
        ++listing.directoryCount;
    }
}

} // namespace

// Where as many bytes of text find place: in blocks, so that what points into one stays good.
char* ListingReader::roomFor(std::size_t size) {
    constexpr std::size_t smallest = 4096;
    constexpr std::size_t largest = std::size_t{256} * 1024;
    if (size > blockSize_ - used_) {
        blockSize_ = std::max(std::clamp(2 * blockSize_, smallest, largest), size);
        used_ = 0;
        listing_.text.push_back(std::make_unique_for_overwrite<char[]>(blockSize_));
    }
    return listing_.text.back().get() + used_;
}

// Adds line to the listing, its text copied, if it is one of a listing.
bool ListingReader::readEntry(std::string_view line) {
    if (!mayMatch(line)) {
        return false;
    }
    char* const copy = roomFor(line.size());
    std::memcpy(copy, line.data(), line.size());
    BrowserEntry entry;
    if (!corvel::readEntry({copy, line.size()}, options_.mergeBlanks, entry, listing_.looksPadded)) {
        return false;
    }
    listing_.isRecognised = true;
    if (sizeNumber(entry.size)) {
        listing_.longestSize = std::max(listing_.longestSize, entry.size.size());
    }
    if (entry.name == ".") {
        return true; // nothing of it is kept
    }
    count(listing_, entry);
    if (room_.isFull()) {
        ++listing_.tooMany;
        return true;
    }
    // A list that is ordered has each name a second time.
    room_.take(sizeof(BrowserEntry) + line.size() + entry.name.size() + heapBytes(entry.date));
    growInTwoSteps(listing_.entries);
    listing_.entries.push_back(std::move(entry));
    used_ += line.size();
    return true;
}

void ListingReader::read(std::string_view line) {
    const bool isFirst = std::exchange(isFirst_, false);
    if (line.empty()) {
        return;
    }
    if (!held_.empty()) { // and so was not the last one
        noteStrange(held_, listing_);
        held_.clear();
    }
    if (readEntry(line) || (line.starts_with(' ') && readEntry(line.substr(1)))) {
        return;
    }
    if (!beginsWithCode(line)) {
        noteStrange(line, listing_);
    } else if (!isFirst) {
        held_ = line;
    }
}

BrowserListing ParseDirectoryListing(std::span<const std::string_view> lines, ListingOptions options) {
    ListingReader reader(options);
    for (const std::string_view line : lines) {
        reader.read(line);
    }
    return reader.take();
}

std::string_view MonthNumber(std::string_view monthName) {
    if (monthName.size() != 3) {
        return {};
    }
    const auto* const found = std::ranges::find(monthNames, letters(monthName));
    return found == monthNames.end() ? std::string_view()
                                     : monthNumbers[static_cast<std::size_t>(found - monthNames.begin())];
}

int typeKey(const BrowserEntry& entry) {
    return entry.name == ".." ? 0 : imageIndex(entry);
}

int imageIndex(const BrowserEntry& entry) {
    return static_cast<int>(entry.type) + 1;
}

std::string_view listedText(const BrowserEntry& entry, BrowserColumn column) {
    static constexpr std::array<std::string_view BrowserEntry::*, browserColumnCount> texts = {
        &BrowserEntry::name,  &BrowserEntry::size,   nullptr, &BrowserEntry::owner,
        &BrowserEntry::group, &BrowserEntry::access, nullptr};
    const auto text = texts[static_cast<std::size_t>(column)];
    return text != nullptr                 ? entry.*text
           : column == BrowserColumn::date ? std::string_view(entry.date)
                                           : std::string_view();
}

std::optional<std::uint64_t> sizeNumber(std::string_view size) {
    constexpr std::size_t mostDigits = 20;
    std::uint64_t number = 0;
    const char* const end = size.data() + size.size();
    const std::from_chars_result result = std::from_chars(size.data(), end, number);
    const bool isWhole = result.ec == std::errc() && result.ptr == end && size.size() <= mostDigits;
    return isWhole ? std::optional(number) : std::nullopt;
}

std::string cellText(const BrowserListing& listing, std::size_t row, BrowserColumn column,
                     std::string_view groupSeparator) {
    const BrowserEntry& entry = listing.entries[row];
    if (column == BrowserColumn::typeKey) {
        return std::to_string(typeKey(entry));
    }
    if (column != BrowserColumn::size || !sizeNumber(entry.size)) {
        return std::string(listedText(entry, column));
    }
    return std::string(listing.longestSize - entry.size.size() + 1, ' ') +
           groupThousands(entry.size, groupSeparator);
}

int FitBrowserColumns(int listWidth, std::span<const int> otherColumnWidths) {
    constexpr int scrollBarRoom = 400;
    constexpr int leastNameWidth = 2000;
    const int others = std::accumulate(otherColumnWidths.begin(), otherColumnWidths.end(), 0);
    return std::max(listWidth - others - scrollBarRoom, leastNameWidth);
}

} // namespace corvel
