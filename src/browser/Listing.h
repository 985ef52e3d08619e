#pragma once

#include "common/Bounds.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {

// What an entry of a remote directory is. Everything that is neither link nor file (devices, pipes,
// sockets) is treated as a directory.
enum class BrowserEntryType : std::int32_t { directory = 0, link = 1, file = 2 };

// One line of a long-format listing. The texts are the server's bytes; the views point into the
// BrowserListing that holds the entry.
struct BrowserEntry {
    std::string_view name = {}; // of a link: "name -> target", as listed
    std::string date = {};      // month number, "/", day as listed, blank, time or year as listed
    std::string_view access = {};
    std::string_view owner = {};
    std::string_view group = {};
    std::string_view size = {}; // as listed
    BrowserEntryType type = BrowserEntryType::directory;
};

// The entries of one remote directory, with the text that they point into. Moving it leaves the texts
// where they are, so views of an entry live as long as the listing that it was moved to.
struct BrowserListing {
    std::vector<std::unique_ptr<char[]>> text; // the accepted lines, one behind the other
    std::vector<BrowserEntry> entries;
    std::size_t tooMany = 0;        // entries that a RecordRoom does not take: left out but counted
    std::size_t fileCount = 0;      // files and links
    std::size_t directoryCount = 0; // all others but ".."
    std::size_t longestSize = 0;    // length of the longest size that is a sizeNumber, in bytes
    // Whether any line was one of a listing; if not, column widths stay as they are.
    bool isRecognised = false;
    // Whether runs of blanks have left a date field empty and pushed it into a name, as a server does that
    // pads its lines.
    bool looksPadded = false;
    std::vector<std::string> strangeLines; // the first that were not understood, cut to be read
    std::size_t strangeCount = 0;          // how many they are in all
};

struct ListingOptions {
    // Runs of blanks between month, day and time (or year) count as one. Off, every blank separates, which
    // turns padded days and years into wrong names but keeps names that begin with a blank.
    bool mergeBlanks = false;
};

// Reads the lines of one reply to "STAT -a" as they arrive.
class ListingReader {
  public:
    explicit ListingReader(ListingOptions options) : options_(options) {}

    void read(std::string_view line);
    // The listing of the lines so far, of which the last was the reply's; nothing is to be read afterwards.
    BrowserListing take() { return std::move(listing_); }

  private:
    bool readEntry(std::string_view line);
    char* roomFor(std::size_t size);

    ListingOptions options_;
    BrowserListing listing_;
    RecordRoom room_;
    std::size_t blockSize_ = 0; // of the text's last block,
    std::size_t used_ = 0;      // and how much of it is taken
    std::string held_;          // a line that is none of the listing unless it is the reply's last
    bool isFirst_ = true;
};

// The entries in the lines of one reply to "STAT -a" (RFC 959, section 4.1.3), in the order of the lines
// and without the entry ".". lines: the whole reply, split at CR LF. Lines that are not in the long format
// of a Unix directory listing are passed over; they count as not understood unless they are empty, the
// reply's own first or last line, begin with 211, or are the total that some servers begin with. A line that
// is a listing line but for one blank in front of it is taken without that blank. Odd spacing yields odd
// fields, possibly empty ones, never a failure. Nothing in the result points into lines.
BrowserListing ParseDirectoryListing(std::span<const std::string_view> lines, ListingOptions options);

inline constexpr std::size_t mostStrangeLines = 100; // that a listing keeps

// "01" to "12" for an English three-letter month name in any case, "" for every other text.
std::string_view MonthNumber(std::string_view monthName);

// The columns of the browser's list.
enum class BrowserColumn : std::uint8_t { name, size, date, owner, group, access, typeKey };
inline constexpr std::size_t browserColumnCount = 7;

// What rows are grouped by: 0 for "..", else 1 directory, 2 link, 3 file.
int typeKey(const BrowserEntry& entry);
inline constexpr int directoryKey = 1;

// The number of the row's icon: 1 directory, 2 link, 3 file; ".." has the one of its type.
int imageIndex(const BrowserEntry& entry);

// The text of an entry in a column as it was listed; none for the type key.
std::string_view listedText(const BrowserEntry& entry, BrowserColumn column);

// The number of bytes that a listed size names: decimal digits alone, at most 20 of them and within 64 bits.
// Nothing for every other text.
std::optional<std::uint64_t> sizeNumber(std::string_view size);

// What the list shows for an entry of listing in a column, in the server's bytes. A size is padded with
// blanks from the left to the listing's longest and grouped by groupSeparator (in the encoding of the
// listing); one that is no sizeNumber is shown as it was sent.
std::string cellText(const BrowserListing& listing, std::size_t row, BrowserColumn column,
                     std::string_view groupSeparator);

// The width of the name column, in units of 1/1440 inch as everything here: what the list's
// width leaves beside the other visible columns, less room for a scroll bar, and never too little to read a
// name.
int FitBrowserColumns(int listWidth, std::span<const int> otherColumnWidths);

} // namespace corvel
