#include "browser/Listing.h"

#include "browser/Blanks.h"
#include "common/Numbers.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace corvel {

namespace {

constexpr std::size_t accessLength = 10;
// The shortest line that is accepted: ten characters, then " ", " ?", " ?", " ", "# ?", " ?", " ?", " ?".
constexpr std::size_t shortestLine = accessLength + 15;
// A date that lacks its later fields can be this much longer than the fields that it is written over.
constexpr std::size_t dateSlack = 2;

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

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Behind the first blank at or after position and the byte that follows it; past the end of the line when
// there are no such two.
std::size_t skipBlankAndOne(const Blanks& blanks, std::size_t position) {
    return blanks.find(position) + 2;
}

// Whether line can match at all, which most other lines of a reply show in their first bytes.
bool mayMatch(std::string_view line) {
    return line.size() >= shortestLine && line[accessLength] == ' ';
}

// Whether a line that may match matches "?????????? * ?* ?* *# ?* ?* ?* ?*". Each piece between two stars is
// taken at its first place, which finds a match whenever there is one.
bool matchesLongFormat(const Blanks& blanks) {
    const std::string_view line = blanks.line();
    std::size_t position = skipBlankAndOne(blanks, accessLength + 1);
    position = skipBlankAndOne(blanks, position);
    position = blanks.find(position);
    do {
        position = blanks.find(position + 1);
    } while (position < line.size() && !isDigit(line[position - 1]));
    position += 2;
    for (int field = 0; field < 3; ++field) {
        position = skipBlankAndOne(blanks, position);
    }
    return position <= line.size();
}

bool isReplyLine(std::string_view line) {
    return line.starts_with("211 ") || line.starts_with("211-");
}

// Takes the fields of a line from left to right.
class FieldCutter {
  public:
    FieldCutter(const Blanks& blanks, std::size_t position) : blanks_(blanks), position_(position) {}

    // The text before the next blank, or all that is left; that blank is passed over.
    std::string_view take() {
        const std::size_t start = position_;
        const std::size_t end = blanks_.find(start);
        position_ = std::min(end + 1, blanks_.line().size());
        return blanks_.line().substr(start, end - start);
    }

    void skipBlanks() { position_ = blanks_.skip(position_); }

    std::string_view takeAndSkipBlanks() {
        const std::string_view field = take();
        skipBlanks();
        return field;
    }

    std::size_t position() const { return position_; }
    std::string_view rest() const { return blanks_.line().substr(position_); }

  private:
    const Blanks& blanks_;
    std::size_t position_;
};

BrowserEntryType typeOf(std::string_view access) {
    switch (access.front()) {
    case 'l':
        return BrowserEntryType::link;
    case '-':
        return BrowserEntryType::file;
    default:
        return BrowserEntryType::directory;
    }
}

char* append(char* end, std::string_view part) {
    if (!part.empty()) { // an empty one may point nowhere
        std::memmove(end, part.data(), part.size());
    }
    return end + part.size();
}

// Cuts month, day and time and writes the date that is shown over them: it starts where they do and is no
// longer, except for a line without some of them, which needs dateSlack bytes behind its end.
std::string_view takeDate(FieldCutter& cutter, char* date, bool mergeBlanks) {
    const auto take = mergeBlanks ? &FieldCutter::takeAndSkipBlanks : &FieldCutter::take;
    const std::string_view month = MonthNumber((cutter.*take)());
    const std::string_view day = (cutter.*take)();
    const std::string_view time = cutter.take();
    char* end = append(date, month);
    *end++ = '/';
    end = append(end, day);
    *end++ = ' ';
    end = append(end, time);
    return {date, static_cast<std::size_t>(end - date)};
}

// line: the text of an accepted line, writable, with dateSlack bytes behind it; blanks: those of line.
BrowserEntry cutLine(char* line, const Blanks& blanks, bool mergeBlanks) {
    BrowserEntry entry;
    entry.access = blanks.line().substr(0, accessLength);
    entry.type = typeOf(entry.access);
    FieldCutter cutter(blanks, blanks.skip(accessLength));
    cutter.take(); // the link count; blanks behind it are not skipped
    entry.owner = cutter.takeAndSkipBlanks();
    entry.group = cutter.takeAndSkipBlanks();
    entry.size = cutter.takeAndSkipBlanks();
    entry.date = takeDate(cutter, line + cutter.position(), mergeBlanks);
    entry.name = cutter.rest();
    return entry;
}

void addEntry(BrowserListing& listing, const BrowserEntry& entry) {
    listing.isRecognised = true;
    listing.longestSize = std::max(listing.longestSize, entry.size.size());
    if (entry.name == ".") {
        return;
    }
    listing.entries.push_back(entry);
    if (entry.type != BrowserEntryType::directory) {
        ++listing.fileCount;
    } else if (entry.name != "..") {
        ++listing.directoryCount;
    }
}

// Adds line to listing if it is one of a listing, its text copied to end. The bytes used there, 0 if none.
std::size_t copyIfEntry(char* end, std::string_view line, BrowserListing& listing, ListingOptions options) {
    if (!mayMatch(line) || isReplyLine(line)) {
        return 0;
    }
    std::memcpy(end, line.data(), line.size());
    const Blanks blanks({end, line.size()});
    if (!matchesLongFormat(blanks)) {
        return 0;
    }
    addEntry(listing, cutLine(end, blanks, options.mergeBlanks));
    return line.size() + dateSlack;
}

std::string sizeCell(const BrowserListing& listing, std::string_view size, std::string_view groupSeparator) {
    std::string cell(listing.longestSize - size.size() + 1, ' ');
    cell += groupThousands(size, groupSeparator);
    return cell;
}

} // namespace

BrowserListing ParseDirectoryListing(std::span<const std::string_view> lines, ListingOptions options) {
    std::size_t accepted = 0;
    std::size_t bytes = 0;
    for (const std::string_view line : lines) {
        if (line.size() >= shortestLine) {
            ++accepted;
            bytes += line.size() + dateSlack;
        }
    }
    BrowserListing listing;
    listing.text = std::make_unique_for_overwrite<char[]>(bytes);
    listing.entries.reserve(accepted);
    char* end = listing.text.get();
    for (const std::string_view line : lines) {
        std::size_t length = copyIfEntry(end, line, listing, options);
        if (length == 0 && line.starts_with(' ')) {
            length = copyIfEntry(end, line.substr(1), listing, options);
        }
        end += length;
    }
    return listing;
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

std::string cellText(const BrowserListing& listing, std::size_t row, BrowserColumn column,
                     std::string_view groupSeparator) {
    const BrowserEntry& entry = listing.entries[row];
    switch (column) {
    case BrowserColumn::name:
        return std::string(entry.name);
    case BrowserColumn::size:
        return sizeCell(listing, entry.size, groupSeparator);
    case BrowserColumn::date:
        return std::string(entry.date);
    case BrowserColumn::owner:
        return std::string(entry.owner);
    case BrowserColumn::group:
        return std::string(entry.group);
    case BrowserColumn::access:
        return std::string(entry.access);
    case BrowserColumn::typeKey:
        return std::to_string(typeKey(entry));
    }
    return {};
}

} // namespace corvel
