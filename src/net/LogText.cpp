#include "net/LogText.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <algorithm>

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
    const std::size_t before = text_.size();
    while (!message.empty()) {
        const std::size_t end = std::min(message.find(lineEnd), message.size());
        if (end > 0) {
            const std::string_view text = message.substr(0, end);
            appendLine(text, time);
            lines_.push_back(line == LogLine::reply && isRefusal(text) ? LogLine::refusal : line);
            unreadRefusals_ += lines_.back() == LogLine::refusal ? 1 : 0;
        }
        message.remove_prefix(std::min(end + lineEnd.size(), message.size()));
    }
    characters_ += characterCount(std::string_view(text_).substr(before));
    cut();
}

void LogText::clear() {
    text_.clear();
    lines_.clear();
    characters_ = 0;
    unreadRefusals_ = 0;
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

void LogText::appendLine(std::string_view line, std::string_view time) {
    const bool isParted = style_ == Style::linesPart;
    if (isParted && !text_.empty()) {
        text_ += lineEnd;
    }
    text_.append(isParted ? "[" : "").append(time).append(isParted ? "] " : " ");
    text_.append(visibleText(toUtf8(line))).append(isParted ? "" : lineEnd);
}

void LogText::cut() {
    if (characters_ <= limit_) {
        return;
    }
    std::size_t start = 0;
    std::ptrdiff_t goneLines = 0;
    for (std::size_t excess = characters_ - limit_; excess > 0;) {
        const std::size_t end = std::min(text_.find('\n', start), text_.size() - 1) + 1;
        const std::size_t characters = characterCount(std::string_view(text_).substr(start, end - start));
        if (characters <= excess) {
            start = end;
            excess -= characters;
            ++goneLines;
            continue;
        }
        for (; excess > 0; --excess) {
            ++start;
            while (start < text_.size() && continuesCharacter(text_[start])) {
                ++start;
            }
        }
    }
    text_.erase(0, start);
    lines_.erase(lines_.begin(), lines_.begin() + goneLines);
    characters_ = limit_;
}

} // namespace corvel
