#include "net/ConsoleLog.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

namespace corvel {

namespace {

// A line as the log shows it.
std::string shown(std::string_view line, TextEncoding encoding) {
    const bool isUtf8 = encoding == TextEncoding::utf8 && isValidUtf8(line);
    return visibleText(toUtf8(line, isUtf8 ? TextEncoding::utf8 : TextEncoding::windows1252));
}

} // namespace

void ConsoleLog::LogConsole(int site, std::string_view message) {
    logTimed(site, message, at(sites_, site).session.consoleLog, LogKind::console);
}

void ConsoleLog::LogCommandResults(int site, std::string_view message) {
    logTimed(site, message, at(sites_, site).session.commandResultsLog, LogKind::commandResults);
}

void ConsoleLog::LogBrowserReply(int site, std::string_view message) {
    SiteSession& session = at(sites_, site).session;
    const std::string time = clock_.timeOfDay();
    std::string text;
    for (const std::string_view line : split(message, lineEnd)) {
        if (line.empty()) {
            continue;
        }
        if (!session.browserReplyLog.text().empty() || !text.empty()) {
            text += lineEnd;
        }
        text += '[';
        text += time;
        text += "] ";
        text += shown(line, session.encoding);
    }
    session.browserReplyLog.append(text);
    views_.logChanged(site, LogKind::browserReply);
}

void ConsoleLog::Log(int site, LogKind log, std::string_view message) {
    switch (log) {
    case LogKind::console:
        LogConsole(site, message);
        break;
    case LogKind::commandResults:
        LogCommandResults(site, message);
        break;
    case LogKind::browserReply:
        LogBrowserReply(site, message);
        break;
    }
}

void ConsoleLog::logTimed(int site, std::string_view message, LogText& log, LogKind kind) {
    const TextEncoding encoding = at(sites_, site).session.encoding;
    const std::string time = clock_.timeOfDay();
    std::string text;
    for (const std::string_view line : split(message, lineEnd)) {
        if (!line.empty()) {
            text += time;
            text += ' ';
            text += shown(line, encoding);
            text += lineEnd;
        }
    }
    log.append(text);
    views_.logChanged(site, kind);
}

} // namespace corvel
