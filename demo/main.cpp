#include "demo/DemoServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSslCertificate>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace {

using corvel::DemoOptions;
using corvel::DemoTls;

struct NumberOption {
    const char* name;
    const char* valueName;
    const char* description;
    int least;
    int most;
    int DemoOptions::*value;
    std::optional<int> beside = {}; // another number that it takes
};

constexpr std::array<NumberOption, 5> numberOptions = {{
    {"port", "N", "Listen on this port; 0 lets the system choose.", 1024, 65535, &DemoOptions::port, 0},
    {"users", "N", "Have this many accounts.", 1, corvel::DemoAccounts::mostUsers, &DemoOptions::users},
    {"entries", "N", "Have a directory /big with this many files.", 0, 1'000'000, &DemoOptions::entries},
    {"latency", "MS", "Wait this long before every reply.", 0, 600'000, &DemoOptions::latencyMilliseconds},
    {"chunk", "BYTES", "Send every reply in pieces of this size.", 1, std::numeric_limits<int>::max(),
     &DemoOptions::chunkBytes},
}};

struct TlsWord {
    const char* word;
    DemoTls value;
};

constexpr std::array<TlsWord, 3> tlsWords = {
    {{"explicit", DemoTls::offered}, {"implicit", DemoTls::implicit}, {"required", DemoTls::required}}};

// The options of the command line, or nothing after a line on standard error that says what is wrong.
std::optional<DemoOptions> readOptions(const QStringList& arguments) {
    QTextStream errors(stderr);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("An FTP server in memory, for trials of Corvel. It answers on 127.0.0.1 alone."));
    parser.addHelpOption();
    parser.addVersionOption();
    for (const NumberOption& option : numberOptions) {
        parser.addOption({QString::fromLatin1(option.name), QString::fromLatin1(option.description),
                          QString::fromLatin1(option.valueName)});
    }
    const QCommandLineOption tls(
        QStringLiteral("tls"),
        QStringLiteral(
            "Encrypt with a key that everybody knows: explicit (after AUTH TLS, for who sends it), "
            "required (the same, and no login before it) or implicit (from the first byte on)."),
        QStringLiteral("WHEN"));
    parser.addOption(tls);
    parser.process(arguments);
    if (!parser.positionalArguments().isEmpty()) {
        errors << "Unexpected argument: " << parser.positionalArguments().constFirst() << "\n";
        return std::nullopt;
    }
    DemoOptions options;
    for (const NumberOption& option : numberOptions) {
        const QString name = QString::fromLatin1(option.name);
        bool isNumber = true;
        const int value = parser.isSet(name) ? parser.value(name).toInt(&isNumber) : options.*option.value;
        const bool isInRange = value >= option.least && value <= option.most;
        if (!isNumber || (parser.isSet(name) && !isInRange && value != option.beside)) {
            errors << "--" << name << " takes "
                   << (option.beside ? QStringLiteral("%1 or ").arg(*option.beside) : QString())
                   << "a number from " << option.least << " to " << option.most << ", not \""
                   << parser.value(name) << "\".\n";
            return std::nullopt;
        }
        options.*option.value = value;
    }
    if (parser.isSet(tls)) {
        const QString word = parser.value(tls);
        const auto row = std::ranges::find(
            tlsWords, word, [](const TlsWord& each) { return QString::fromLatin1(each.word); });
        if (row == tlsWords.end()) {
            errors << "--tls takes explicit, implicit or required, not \"" << word << "\".\n";
            return std::nullopt;
        }
        options.tls = row->value;
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
    if (options->tls != DemoTls::none) {
        QTextStream(stdout) << "Certificate, SHA-256: "
                            << corvel::DemoServer::certificate().digest(QCryptographicHash::Sha256).toHex(':')
                            << "\n";
    }
    return QCoreApplication::exec();
}
