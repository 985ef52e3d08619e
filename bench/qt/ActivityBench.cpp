#include "../LineScan.h"
#include "common/Ports.h"
#include "common/Text.h"
#include "net/ActivityRows.h"
#include "ui/frmMain.h"
#include "widgets/ReportView.h"

#include <QApplication>
#include <QFile>
#include <QTabWidget>
#include <QTcpServer>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

constexpr int connections = 5000;
constexpr int activityTab = 1;

double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// A reply to who in which every so many connections have other speeds than in the one with nothing changed.
std::string whoReply(int changedEvery) {
    std::string reply = "200-who\r\n";
    for (int i = 0; i < connections; ++i) {
        const std::string number = std::to_string(i);
        const bool isChanged = changedEvery > 0 && i % changedEvery == 0;
        const std::string speed = std::to_string(isChanged ? 7000 + i : 100 + i % 900);
        reply.append("200-cid | user").append(number).append(" | group").append(std::to_string(i % 40));
        reply.append(" | ").append(number).append(" | ftp | ident | 10.1.2.3 | host").append(number);
        reply.append(".example.net | 10.1.2.3 | RETR disc image ").append(number);
        reply.append(".iso | 150 | /srv/ftp/pub/archive | /pub/archive | 0 | ").append(number).append(" | ");
        reply.append(std::to_string(i % 4)).append(" | ").append(std::to_string(i * 262144L));
        reply.append(" | ").append(speed).append("\r\n");
    }
    return reply + "200 Command successful.\r\n";
}

// Replies that differ from each other in every so many connections.
void parseWho(benchmark::State& state) {
    const std::string before = whoReply(0);
    const std::string after = whoReply(static_cast<int>(state.range(0)));
    const std::vector<std::string_view> linesBefore = split(before, lineEnd);
    const std::vector<std::string_view> linesAfter = split(after, lineEnd);
    ActivityRows rows;
    ActivityCounters counters;
    double work = 0;
    double bound = 0;
    for ([[maybe_unused]] auto _ : state) {
        ParseWhoReply(linesBefore, rows, counters);
        const double start = processorSeconds();
        ParseWhoReply(linesAfter, rows, counters);
        work += processorSeconds() - start;
        const double boundStart = processorSeconds();
        benchmark::DoNotOptimize(countLines(after));
        bound += processorSeconds() - boundStart;
    }
    state.counters["ms"] = 1000 * work / static_cast<double>(state.iterations());
    state.counters["times_memchr_scan"] = work / bound;
}
BENCHMARK(parseWho)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);

// The window logged in on a server that says nothing: the benchmark plays its part.
class LoggedInWindow {
  public:
    LoggedInWindow() {
        server_.listen(QHostAddress::LocalHost);
        QFile file(directory_.filePath(QStringLiteral("sites.ini")));
        file.open(QIODevice::WriteOnly);
        const std::string port = std::to_string(server_.serverPort());
        file.write(("name = site\nhost = 127.0.0.1\nport = " + port + "\nconnectonstartup = 1\n").c_str());
        file.close();
        store_.setValue("window_state", "0");
        store_.setValue("selected_tab", std::to_string(activityTab + 1));
        window = std::make_unique<frmMain>(store_, directory_.path().toStdString());
        window->start();
        while (window->program().site(1).wSock->state() != SocketState::connected) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        window->program().wSock_DataArrival(1, "230 Welcome.\r\n");
        while (window->program().site(1).session.bAwaitingReply) {
            window->program().wSock_DataArrival(1, "500 Unknown.\r\n");
        }
    }

    // From the bytes of the reply to the painted list.
    void answerWho(const std::string& reply) {
        window->program().tmrRefreshWho_Timer(1, false);
        window->program().wSock_DataArrival(1, reply);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<frmMain> window;

  private:
    QTcpServer server_;
    QTemporaryDir directory_;
    MemoryStore store_;
};

void updateActivity(benchmark::State& state) {
    const std::string before = whoReply(0);
    const std::string after = whoReply(static_cast<int>(state.range(0)));
    LoggedInWindow peer;
    double work = 0;
    double parse = 0;
    for ([[maybe_unused]] auto _ : state) {
        peer.answerWho(before);
        const double start = processorSeconds();
        peer.answerWho(after);
        work += processorSeconds() - start;

        ActivityRows rows;
        ActivityCounters counters;
        const double parseStart = processorSeconds();
        ParseWhoReply(split(after, lineEnd), rows, counters);
        parse += processorSeconds() - parseStart;
    }
    state.counters["cpu_ms"] = 1000 * work / static_cast<double>(state.iterations());
    state.counters["parse_ms"] = 1000 * parse / static_cast<double>(state.iterations());
    state.counters["rows"] =
        peer.window->findChild<ReportView*>(QStringLiteral("lvwActivity_1"))->model()->rowCount();
}
BENCHMARK(updateActivity)->Arg(0)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel
