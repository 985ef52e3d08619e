#include "demo/DemoServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <array>
#include <limits>
#include <optional>

namespace {

using corvel::DemoOptions;

struct NumberOption {
    QString name;
    QString valueName;
    QString description;
    int least;
    int most;
    void (*store)(DemoOptions& options, int value);
};

std::array<NumberOption, 5> numberOptions() {
    constexpr int anyNumber = std::numeric_limits<int>::max();
    return {{
        {QStringLiteral("port"), QStringLiteral("N"),
         QStringLiteral("Listen on this port; 0 lets the system choose."), 0, 65535,
         [](DemoOptions& options, int value) { options.port = static_cast<std::uint16_t>(value); }},
        {QStringLiteral("users"), QStringLiteral("N"), QStringLiteral("Have this many accounts."), 1,
         corvel::DemoAccounts::mostUsers, [](DemoOptions& options, int value) { options.users = value; }},
        {QStringLiteral("entries"), QStringLiteral("N"),
         QStringLiteral("Have a directory /big with this many files."), 0, 1'000'000,
         [](DemoOptions& options, int value) { options.entries = value; }},
        {QStringLiteral("latency"), QStringLiteral("MS"),
         QStringLiteral("Wait this long before every reply."), 0, 600'000,
         [](DemoOptions& options, int value) { options.latencyMilliseconds = value; }},
        {QStringLiteral("chunk"), QStringLiteral("BYTES"),
         QStringLiteral("Send every reply in pieces of this size."), 1, anyNumber,
         [](DemoOptions& options, int value) { options.chunkBytes = value; }},
    }};
}

// The options of the command line, or nothing after a line on standard error that says what is wrong.
std::optional<DemoOptions> readOptions(const QStringList& arguments) {
    QTextStream errors(stderr);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("An FTP server in memory, for trials of Corvel. It answers on 127.0.0.1 alone."));
    parser.addHelpOption();
    parser.addVersionOption();
    for (const NumberOption& option : numberOptions()) {
        parser.addOption({option.name, option.description, option.valueName});
    }
    parser.process(arguments);
    if (!parser.positionalArguments().isEmpty()) {
        errors << "Unexpected argument: " << parser.positionalArguments().constFirst() << "\n";
        return std::nullopt;
    }
    DemoOptions options;
    for (const NumberOption& option : numberOptions()) {
        if (!parser.isSet(option.name)) {
            continue;
        }
        bool isNumber = false;
        const int value = parser.value(option.name).toInt(&isNumber);
        if (!isNumber || value < option.least || value > option.most) {
            errors << "--" << option.name << " takes a number from " << option.least << " to " << option.most
                   << ", not \"" << parser.value(option.name) << "\".\n";
            return std::nullopt;
        }
        option.store(options, value);
    }
    return options;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("corvel-demo-server"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    const std::optional<DemoOptions> options = readOptions(QCoreApplication::arguments());
    if (!options) {
        return 2;
    }
    corvel::DemoServer server(*options);
    if (!server.listen()) {
        QTextStream(stderr) << "Cannot listen on 127.0.0.1:" << options->port << ": " << server.errorText()
                            << "\n";
        return 1;
    }
    QTextStream(stdout) << "Listening on 127.0.0.1:" << server.port()
                        << "\nLogin: " << corvel::DemoServer::userName << " / "
                        << corvel::DemoServer::password << "\n";
    return QCoreApplication::exec();
}
