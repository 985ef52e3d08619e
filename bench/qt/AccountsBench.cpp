#include "admin/Batch.h"
#include "admin/qt/UsersPanel.h"
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

// A batch over 5,000 accounts, sent to a server: what a line costs this program in the last tenth, as a
// multiple of the second. It should stay near 1. (During the first the log of results still fills up.)
void runBatch(benchmark::State& state) {
    constexpr std::size_t userCount = 5000;
    AccountsWindow accounts(static_cast<int>(userCount));
    std::vector<std::string_view> names;
    for (const clsUser& user : accounts.session().Users) {
        names.emplace_back(user.sName);
    }
    BatchForm form;
    form.chkBatchTagLine = true;
    form.txtBatchTagline = "hi";
    const CommandSequence batch = batchSequence(form, names).value();
    double first = 0;
    double last = 0;
    for ([[maybe_unused]] auto iteration : state) {
        accounts.window().program().admin().startBatch(1, batch);
        const auto secondsUntil = [&](std::size_t linesLeft) {
            const double start = threadSeconds();
            while (accounts.session().sBatchLines.size() > linesLeft) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
            return threadSeconds() - start;
        };
        constexpr std::size_t tenth = userCount / 10;
        secondsUntil(userCount - tenth);
        first += secondsUntil(userCount - 2 * tenth);
        secondsUntil(tenth);
        last += secondsUntil(0);
        while (accounts.session().bAwaitingReply) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    state.counters["times_second_tenth"] = last / first;
    state.counters["us_per_line"] = 1e6 * last / static_cast<double>(state.iterations()) / (userCount / 10);
}
BENCHMARK(runBatch)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel
