#include "browser/Listing.h"

#include "common/Numbers.h"
#include "common/Text.h"

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

constexpr std::array<std::string_view, 12> monthNames = {"jan", "feb", "mar", "apr", "may", "jun",
                                                         "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr std::array<std::string_view, 12> monthNumbers = {"01", "02", "03", "04", "05", "06",
                                                           "07", "08", "09", "10", "11", "12"};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Behind the first blank at or after position that has one more byte behind it, and behind that byte;
// past the end of line when there is none.
std::size_t skipBlankAndOne(std::string_view line, std::size_t position) {
    const std::size_t blank = position < line.size() ? line.find(' ', position) : std::string_view::npos;
    return blank == std::string_view::npos || blank + 1 >= line.size() ? std::string_view::npos : blank + 2;
}

// Whether line matches "?????????? * ?* ?* *# ?* ?* ?* ?*". Each piece between two stars is taken at its
// first place, which finds a match whenever there is one.
bool matchesLongFormat(std::string_view line) {
    if (line.size() < shortestLine || line[accessLength] != ' ') {
        return false;
    }
    std::size_t position = skipBlankAndOne(line, accessLength + 1);
    position = skipBlankAndOne(line, position);
    position = position < line.size() ? line.find(' ', position) : std::string_view::npos;
    if (position == std::string_view::npos) {
        return false;
    }
    do {
        position = line.find(' ', position + 1);
    } while (position != std::string_view::npos && !isDigit(line[position - 1]));
    if (position == std::string_view::npos || position + 1 >= line.size()) {
        return false;
    }
    position = skipBlankAndOne(line, position + 2);
    position = skipBlankAndOne(line, position);
    return skipBlankAndOne(line, position) != std::string_view::npos;
}

bool isAccepted(std::string_view line) {
    return matchesLongFormat(line) && !line.starts_with("211 ") && !line.starts_with("211-");
}

// The text before the first blank of rest, or all of it; rest keeps what follows that blank.
std::string_view takeField(std::string_view& rest) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

std::string_view takeFieldAndBlanks(std::string_view& rest) {
    const std::string_view field = takeField(rest);
    rest = trimLeading(rest);
    return field;
}

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
    std::memmove(end, part.data(), part.size());
    return end + part.size();
}

// Cuts the month, day, and time off rest and writes the date that is shown over them: it starts where they
// do and is no longer, except for a line without some of them, which needs dateSlack bytes behind its end.
std::string_view takeDate(std::string_view& rest, char* date, bool mergeBlanks) {
    const auto take = mergeBlanks ? takeFieldAndBlanks : takeField;
    const std::string_view month = MonthNumber(take(rest));
    const std::string_view day = take(rest);
    const std::string_view time = takeField(rest);
    char* end = append(date, month);
    *end++ = '/';
    end = append(end, day);
    *end++ = ' ';
    end = append(end, time);
    return {date, static_cast<std::size_t>(end - date)};
}

// line: an accepted line in memory that is writable, with dateSlack bytes behind it.
BrowserEntry cutLine(char* line, std::size_t length, bool mergeBlanks) {
    BrowserEntry entry;
    std::string_view rest(line, length);
    entry.access = rest.substr(0, accessLength);
    entry.type = typeOf(entry.access);
    rest = trimLeading(rest.substr(accessLength));
    takeField(rest); // the link count; blanks behind it are not skipped
    entry.owner = takeFieldAndBlanks(rest);
    entry.group = takeFieldAndBlanks(rest);
    entry.size = takeFieldAndBlanks(rest);
    entry.date = takeDate(rest, line + (length - rest.size()), mergeBlanks);
    entry.name = rest;
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
    for (std::string_view line : lines) {
        if (!isAccepted(line)) {
            if (!line.starts_with(' ') || !isAccepted(line.substr(1))) {
                continue;
            }
            line.remove_prefix(1);
        }
        std::memcpy(end, line.data(), line.size());
        addEntry(listing, cutLine(end, line.size(), options.mergeBlanks));
        end += line.size() + dateSlack;
    }
    return listing;
}

std::string_view MonthNumber(std::string_view monthName) {
    if (monthName.size() != monthNames.front().size()) {
        return {};
    }
    const std::string lower = toLower(monthName);
    const auto* const found = std::ranges::find(monthNames, lower);
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
