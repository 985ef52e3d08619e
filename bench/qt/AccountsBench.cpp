#include "admin/Batch.h"
#include "admin/qt/BatchResults.h"
#include "admin/qt/UsersPanel.h"
#include "app/mdlMain.h"
#include "DemoProgram.h"
#include "widgets/ReportView.h"

#include <QTabWidget>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

constexpr int usersTab = 4;

// The window on its users tab, logged in on a server with that many accounts.
class AccountsWindow {
  public:
    explicit AccountsWindow(int users) : server_({.users = users}) {
        window_.start();
        window_.findChild<QTabWidget*>(QStringLiteral("tabMain"))->setCurrentIndex(usersTab);
        waitUntilExposed(window_);
        while (session().sBrowserPWD.empty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        QCoreApplication::processEvents();
    }

    frmMain& window() { return window_; }
    const SiteSession& session() { return window_.program().site(1).session; }
    UsersPanel& panel() { return *window_.findChild<UsersPanel*>(); }
    ReportView& list() { return *window_.findChild<ReportView*>(QStringLiteral("lvwUsers_1")); }

  private:
    ServerThread server_;
    std::unique_ptr<QTemporaryDir> directory_ = directoryOf(1, server_.waitForPort());
    MemoryStore store_ = normalWindow();
    frmMain window_{store_, directory_->path().toStdString()};
};

// From a table of 30,000 accounts to the painted tab, beside one look at every byte of the cells. It should
// stay below 25 ms.
void showUsers(benchmark::State& state) {
    AccountsWindow accounts(DemoAccounts::mostUsers);
    double work = 0;
    double bound = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const double start = threadSeconds();
        accounts.panel().accountsChanged(1, Accounts::users, AccountChange::table);
        accounts.list().viewport()->repaint();
        QCoreApplication::processEvents();
        work += threadSeconds() - start;

        const double boundStart = threadSeconds();
        std::size_t sum = 0;
        for (const clsUser& user : accounts.session().Users) {
            for (const std::string* const text :
                 {&user.sUIDText, &user.sName, &user.sStdGroup, &user.sFlags}) {
                for (const char byte : *text) {
                    sum += static_cast<unsigned char>(byte);
                }
            }
        }
        benchmark::DoNotOptimize(sum);
        bound += threadSeconds() - boundStart;
    }
    const auto times = static_cast<double>(state.iterations());
    state.counters["cpu_ms"] = 1e3 * work / times;
    state.counters["byte_pass_ms"] = 1e3 * bound / times;
    state.counters["rows"] = accounts.list().model()->rowCount();
}
BENCHMARK(showUsers)->Unit(benchmark::kMillisecond);

// A batch over 20,000 accounts, sent to a server, with the table of its results out of sight and then in it:
// what a line costs this program with it, as a multiple of without, what of that is the record of what became
// of the lines, and what a line costs in the last tenth, as a multiple of the second. (During the first the
// log of results still fills up.) The first should stay below 1.1, the last near 1.
void runBatch(benchmark::State& state) {
    constexpr std::size_t userCount = 20'000;
    constexpr std::size_t tenth = userCount / 10;
    AccountsWindow accounts(static_cast<int>(userCount));
    mdlMain& program = accounts.window().program();
    auto* const results = accounts.window().findChild<BatchResults*>();
    std::vector<std::string_view> names;
    for (const clsUser& user : accounts.session().Users) {
        names.emplace_back(user.sName);
    }
    BatchForm form;
    form.chkBatchTagLine = true;
    form.txtBatchTagline = "hi";
    const CommandSequence batch = batchSequence(form, names).value();
    const auto secondsUntil = [&](std::size_t linesLeft) {
        const double start = threadSeconds();
        while (accounts.session().sBatchLines.size() > linesLeft ||
               (linesLeft == 0 && accounts.session().bAwaitingReply)) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return threadSeconds() - start;
    };
    double seconds[2] = {};
    double second = 0;
    double last = 0;
    for ([[maybe_unused]] auto iteration : state) {
        for (const bool isShown : {false, true}) {
            results->setVisible(isShown);
            program.admin().startBatch(1, batch);
            const double first = secondsUntil(userCount - tenth);
            second = secondsUntil(userCount - 2 * tenth);
            const double middle = secondsUntil(tenth);
            last = secondsUntil(0);
            seconds[isShown] += first + second + middle + last;
        }
    }
    const JobHandle done = program.outbox().journal(1).batches.back();
    Job job = jobOf(batch);
    const double start = threadSeconds();
    JobRecord record(1, job);
    for (const CommandRecord& command : done->commands) {
        Answer answer;
        answer.command.sCommand = command.command;
        answer.command.iHandler = command.iHandler;
        answer.code = command.code;
        answer.lastLine = *command.reply;
        answer.sentAt = *command.time;
        record.answered(answer, record.commands.size());
    }
    const double journal = threadSeconds() - start;

    const auto lines = static_cast<double>(state.iterations() * userCount);
    state.counters["us_per_line"] = 1e6 * seconds[true] / lines;
    state.counters["times_without_table"] = seconds[true] / seconds[false];
    state.counters["us_of_record"] = 1e6 * journal / userCount;
    state.counters["times_second_tenth"] = last / second;
}
BENCHMARK(runBatch)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel
