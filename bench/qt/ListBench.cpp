#include "admin/qt/AccountDialogs.h"
#include "browser/Listing.h"
#include "browser/Order.h"
#include "widgets/LogBox.h"
#include "widgets/ReportView.h"
#include "widgets/SelectableList.h"
#include "widgets/TextConversion.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QPushButton>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <malloc.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvel {
namespace {

constexpr int rowCount = 100000;
constexpr int visibleColumns = 6;
constexpr double mebibyte = 1024.0 * 1024.0;

double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double heapMebibytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / mebibyte;
}

// A listing as a server would send it, with names of 8 to 40 characters; with isAscii false every name has
// Cyrillic letters.
BrowserListing listing(bool isAscii, int rows = rowCount) {
    std::vector<std::string> lines;
    lines.reserve(static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
        const std::string number = std::to_string(row * 7919L % rowCount);
        const std::string letters(static_cast<std::size_t>(row % 27), static_cast<char>('a' + row % 26));
        std::string line = row % 7 == 0 ? "drwxr-xr-x 2 user" : "-rw-r--r-- 1 user";
        line.append(std::to_string(row % 90)).append(" staff ").append(std::to_string(row * 4099L));
        line.append(" Jan 5 12:3").append(std::to_string(row % 10));
        line.append(isAscii ? " archive." : " архив.").append(letters).append(number);
        lines.push_back(std::move(line));
    }
    const std::vector<std::string_view> views(lines.begin(), lines.end());
    return ParseDirectoryListing(views, {});
}

// What a panel makes of a listing and its order; both stay where they are.
ReportSource source(const BrowserListing& listing, const std::vector<std::uint32_t>& order) {
    ReportSource made;
    made.rows = static_cast<int>(order.size());
    for (const char* header : {"name", "size", "date", "owner", "group", "access", "type"}) {
        made.columns.push_back({QString::fromLatin1(header)});
    }
    made.columns.back().hidden = true;
    made.columns[1].alignment = Qt::AlignRight;
    made.text = [&](int row, int column) {
        return QString::fromStdString(
            cellText(listing, order[static_cast<std::size_t>(row)], static_cast<BrowserColumn>(column), ","));
    };
    made.sentText = [&](int row, int column) {
        return listedText(listing.entries[order[static_cast<std::size_t>(row)]],
                          static_cast<BrowserColumn>(column));
    };
    return made;
}

// From parsed entries to the painted list: source, reset, fitting of every column, one paint. Beside it the
// bound: one look at every byte of the cells.
void showList(benchmark::State& state, bool isAscii) {
    const BrowserListing records = listing(isAscii);
    const std::vector<std::uint32_t> order = displayOrder(records, {});
    double work = 0;
    double bound = 0;
    double memory = 0;
    for ([[maybe_unused]] auto _ : state) {
        ReportView view;
        view.resize(900, 600);
        view.show();
        QCoreApplication::processEvents();
        const double heapBefore = heapMebibytes();
        const double start = processorSeconds();
        view.setSource(source(records, order));
        view.fitColumns(0, visibleColumns - 1);
        QCoreApplication::processEvents();
        view.viewport()->repaint();
        work += processorSeconds() - start;
        memory = std::max(memory, heapMebibytes() - heapBefore);

        const double boundStart = processorSeconds();
        std::size_t sum = 0;
        for (const BrowserEntry& entry : records.entries) {
            for (int column = 0; column < visibleColumns; ++column) {
                for (const char byte : listedText(entry, static_cast<BrowserColumn>(column))) {
                    sum += static_cast<unsigned char>(byte);
                }
            }
        }
        benchmark::DoNotOptimize(sum);
        bound += processorSeconds() - boundStart;
    }
    const auto times = static_cast<double>(state.iterations());
    state.counters["cpu_ms"] = 1000 * work / times;
    state.counters["byte_pass_ms"] = 1000 * bound / times;
    state.counters["MiB_beyond_records"] = memory;
}
BENCHMARK_CAPTURE(showList, ascii, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(showList, cyrillic, false)->Unit(benchmark::kMillisecond);

// The same rows in another order: what a click on a header costs beyond the ordering.
void reorderList(benchmark::State& state) {
    const BrowserListing records = listing(true);
    std::vector<std::uint32_t> order = displayOrder(records, {});
    ReportView view;
    view.resize(900, 600);
    view.show();
    view.setSource(source(records, order));
    view.fitColumns(0, visibleColumns - 1);
    QCoreApplication::processEvents();
    for ([[maybe_unused]] auto _ : state) {
        std::reverse(order.begin(), order.end());
        view.refresh();
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    }
}
BENCHMARK(reorderList)->Unit(benchmark::kMillisecond);

// The keys of a filter over 30,000 rows of six columns: the first, one that appends a letter, and one that
// takes it back; each until the list is painted, and to stay below 16 ms. What they look at is made before,
// as the box gets the focus. Beside them the bound: one pass over the bytes of the cells.
void filterList(benchmark::State& state) {
    constexpr int rows = 30000;
    const BrowserListing records = listing(true, rows);
    const std::vector<std::uint32_t> order = displayOrder(records, {});
    double bound = 0;
    double prepared = 0;
    std::array<double, 3> work = {};
    for ([[maybe_unused]] auto _ : state) {
        ReportView view;
        view.resize(900, 600);
        view.show();
        view.setSource(source(records, order));
        QCoreApplication::processEvents();
        const double focusStart = processorSeconds();
        view.expectFilter(true);
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
        }
        prepared += processorSeconds() - focusStart;
        constexpr std::array keys = {"a", "a1", "a"};
        for (std::size_t key = 0; key < keys.size(); ++key) {
            const double start = processorSeconds();
            view.setFilter(QString::fromLatin1(keys[key]));
            QCoreApplication::processEvents();
            view.viewport()->repaint();
            work[key] += processorSeconds() - start;
        }
        const double start = processorSeconds();
        std::size_t sum = 0;
        for (const std::uint32_t row : order) {
            for (int column = 0; column < visibleColumns; ++column) {
                for (const char byte : listedText(records.entries[row], static_cast<BrowserColumn>(column))) {
                    sum += static_cast<unsigned char>(byte);
                }
            }
        }
        benchmark::DoNotOptimize(sum);
        bound += processorSeconds() - start;
    }
    const auto times = static_cast<double>(state.iterations());
    state.counters["focus_ms"] = 1000 * prepared / times;
    state.counters["first_ms"] = 1000 * work[0] / times;
    state.counters["longer_ms"] = 1000 * work[1] / times;
    state.counters["shorter_ms"] = 1000 * work[2] / times;
    state.counters["byte_pass_ms"] = 1000 * bound / times;
}
BENCHMARK(filterList)->Unit(benchmark::kMillisecond);

// 500 rows with names of 60,000 bytes, painted again in every kind of list; it should stay below 16 ms.
const std::string longName(60000, 'n');

std::vector<SelectableEntry> entriesOf(std::size_t count, const std::string& name) {
    return std::vector<SelectableEntry>(count, {name});
}

void repaint(benchmark::State& state, QWidget& shown, QWidget& painted) {
    shown.resize(900, 600);
    shown.show();
    QCoreApplication::processEvents();
    for ([[maybe_unused]] auto _ : state) {
        painted.repaint();
    }
}

void paintLongNames(benchmark::State& state) {
    ReportSource longNames;
    longNames.rows = 500;
    longNames.columns = {{QStringLiteral("name")}};
    longNames.text = [](int, int) { return cellTextOf(longName); };
    ReportView view;
    view.setSource(std::move(longNames));
    repaint(state, view, *view.viewport());
}
BENCHMARK(paintLongNames)->Unit(benchmark::kMillisecond);

void paintLongNamesInAListBox(benchmark::State& state) {
    SelectableList list(entriesOf(500, longName));
    repaint(state, list, *list.viewport());
}
BENCHMARK(paintLongNamesInAListBox)->Unit(benchmark::kMillisecond);

void paintLongNamesInAComboBox(benchmark::State& state) {
    const SelectableList list(entriesOf(500, longName));
    QComboBox box;
    list.shareNames(box);
    box.setCurrentIndex(0);
    box.show();
    box.showPopup();
    repaint(state, box, *box.view()->viewport());
    state.counters["widest_hint"] = std::max(box.sizeHint().width(), box.view()->sizeHintForColumn(0));
}
BENCHMARK(paintLongNamesInAComboBox)->Unit(benchmark::kMillisecond);

// "Add user" with so many groups: made and shown, a main group chosen, every other one selected but that, and
// read back. To be linear in them.
void addUserWithGroups(benchmark::State& state) {
    AddUserForm form;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        form.lstAllGroup.push_back({"group" + std::to_string(i)});
    }
    for ([[maybe_unused]] auto _ : state) {
        AddUserForm confirmed;
        frmAddUser dialog({form}, [&](const AddUserForm& filled) -> std::optional<std::string> {
            confirmed = filled;
            return std::string();
        });
        dialog.show();
        QCoreApplication::processEvents();
        dialog.findChild<QComboBox*>(QStringLiteral("txtMainGroup"))->setCurrentIndex(1);
        dialog.findChild<QAbstractItemView*>(QStringLiteral("lstAllGroup"))->selectAll();
        QCoreApplication::processEvents();
        dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        benchmark::DoNotOptimize(confirmed);
    }
    state.counters["us_per_group"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-6,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(addUserWithGroups)->Arg(30000)->Arg(200000)->Unit(benchmark::kMillisecond);

// 8,000 scattered rows of 30,000, read back from the list; it should stay below 20 ms.
void readSelection(benchmark::State& state) {
    constexpr int rows = 30000;
    ReportSource many;
    many.rows = rows;
    many.columns = {{QStringLiteral("name")}, {QStringLiteral("group")}};
    many.text = [](int row, int) { return QString::number(row); };
    ReportView view;
    view.setMultiSelection(true);
    view.setSource(std::move(many));
    std::vector<int> scattered;
    for (int row = 0; row < rows && scattered.size() < 8000; row += 3) {
        scattered.push_back(row);
    }
    view.setSelectedRows(scattered);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(view.selectedRows());
    }
}
BENCHMARK(readSelection)->Unit(benchmark::kMillisecond);

// 10,000 lines that arrive in pieces within a few turns of the event loop, into a log that keeps the last
// 25,000 characters. longest_turn_ms is the longest time for which the window did not answer. Beside it the
// bound: showing the final text once.
void logBurst(benchmark::State& state) {
    constexpr int lineCount = 10000;
    constexpr int linesPerTurn = 1000;
    LogText log(25000, LogText::Style::linesEnd);
    LogBox box([&log]() -> const LogText& { return log; });
    box.resize(900, 600);
    box.show();
    QCoreApplication::processEvents();
    qint64 longestTurn = 0;
    double bound = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (int line = 0; line < lineCount; ++line) {
            log.append("211-status of line " + std::to_string(line) + " of a long reply", "12:34:56",
                       line % 3 == 0 ? LogLine::command : LogLine::reply);
            box.scheduleUpdate();
            if ((line + 1) % linesPerTurn == 0) {
                QElapsedTimer turn;
                turn.start();
                QCoreApplication::processEvents();
                box.viewport()->repaint();
                longestTurn = std::max(longestTurn, turn.nsecsElapsed());
            }
        }
        const double start = processorSeconds();
        QPlainTextEdit plain(QString::fromStdString(log.text()));
        plain.resize(900, 600);
        plain.show();
        QCoreApplication::processEvents();
        bound += processorSeconds() - start;
    }
    state.counters["longest_turn_ms"] = static_cast<double>(longestTurn) / 1e6;
    state.counters["show_once_ms"] = 1000 * bound / static_cast<double>(state.iterations());
}
BENCHMARK(logBurst)->Unit(benchmark::kMillisecond);

// A server that sends a line of 60,000 bytes again and again, each until it is painted; it should stay below
// 16 ms. Beside it the bound: showing what the log keeps of it whole.
void logLongLines(benchmark::State& state) {
    const std::string line = "211-" + longName + "\r\n";
    LogText log(25000, LogText::Style::linesEnd);
    LogBox box([&log]() -> const LogText& { return log; });
    box.resize(900, 600);
    box.show();
    QCoreApplication::processEvents();
    bool isShown = false;
    QObject::connect(&box, &QPlainTextEdit::textChanged, &box, [&isShown] { isShown = true; });
    double work = 0;
    double repaints = 0;
    double bound = 0;
    for ([[maybe_unused]] auto _ : state) {
        double start = processorSeconds();
        log.append(line, "12:34:56");
        log.append("200 and a short one\r\n", "12:34:56");
        box.scheduleUpdate();
        for (isShown = false; !isShown;) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        box.viewport()->repaint();
        work += processorSeconds() - start;
        start = processorSeconds();
        box.viewport()->repaint();
        repaints += processorSeconds() - start;
        start = processorSeconds();
        QPlainTextEdit plain(QString::fromStdString(log.text()));
        plain.resize(900, 600);
        plain.show();
        QCoreApplication::processEvents();
        bound += processorSeconds() - start;
    }
    const auto times = static_cast<double>(state.iterations());
    state.counters["cpu_ms"] = 1000 * work / times;
    state.counters["repaint_ms"] = 1000 * repaints / times;
    state.counters["show_whole_ms"] = 1000 * bound / times;
}
BENCHMARK(logLongLines)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel
