#include "net/LogText.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

bool isRefusal(std::string_view line) {
    const std::string_view code = line.substr(0, 4);
    return (code.starts_with('4') || code.starts_with('5')) &&
           (matchesPattern(code, "### ") || matchesPattern(code, "###-"));
}

} // namespace

void LogText::append(std::string_view message, std::string_view time, LogLine line) {
    message = lastLines(message);
    while (!message.empty()) {
        const std::size_t end = std::min(message.find(lineEnd), message.size());
        if (end > 0) {
            const std::string_view text = message.substr(0, end);
            const bool isRefused = line == LogLine::reply && isRefusal(text);
            appendLine(text, time, isRefused ? LogLine::refusal : line);
            unreadRefusals_ += lines_.back().kind == LogLine::refusal ? 1 : 0;
        }
        message.remove_prefix(std::min(end + lineEnd.size(), message.size()));
    }
    cut();
}

void LogText::clear() {
    goneLines_ += lines_.size();
    goneBytes_ = 0;
    lines_.clear();
    characters_ = 0;
    unreadRefusals_ = 0;
}

std::string LogText::text() const {
    std::string text;
    for (const Line& line : lines_) {
        text += line.text;
    }
    return text;
}

// The last lines of message: as many as fill the log.
std::string_view LogText::lastLines(std::string_view message) const {
    std::size_t start = message.size();
    std::size_t end = start;
    for (std::size_t characters = 0; start > 0 && characters < limit_; end = start - lineEnd.size()) {
        const std::size_t before =
            end < lineEnd.size() ? std::string_view::npos : message.rfind(lineEnd, end - lineEnd.size());
        start = before == std::string_view::npos ? 0 : before + lineEnd.size();
        characters += characterCount(message.substr(start, end - start));
    }
    return message.substr(start);
}

void LogText::appendLine(std::string_view line, std::string_view time, LogLine kind) {
    const bool isParted = style_ == Style::linesPart;
    if (isParted && !lines_.empty()) {
        lines_.back().text += lineEnd;
        characters_ += lineEnd.size();
    }
    std::string text(isParted ? "[" : "");
    text.append(time).append(isParted ? "] " : " ");
    text.append(visibleText(toUtf8(line))).append(isParted ? "" : lineEnd);
    characters_ += characterCount(text);
    lines_.push_back({std::move(text), kind});
}

void LogText::cut() {
    while (characters_ > limit_) {
        std::string& first = lines_.front().text;
        const std::size_t characters = characterCount(first);
        if (characters <= characters_ - limit_) {
            lines_.pop_front();
            ++goneLines_;
            goneBytes_ = 0;
            characters_ -= characters;
        } else {
            const std::size_t bytes = bytesOfCharacters(first, characters_ - limit_);
            first.erase(0, bytes);
            goneBytes_ += bytes;
            characters_ = limit_;
        }
    }
}

} // namespace corvel
