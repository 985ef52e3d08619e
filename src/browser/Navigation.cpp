#include "browser/Navigation.h"

namespace corvel {

namespace {

constexpr std::string_view root = "/";
constexpr std::string_view linkArrow = " -> ";

} // namespace

std::string parentDirectory(std::string_view directory) {
    const std::size_t slash = directory.rfind('/');
    const bool isTop = slash == std::string_view::npos || slash == 0;
    return std::string(isTop ? root : directory.substr(0, slash));
}

std::optional<std::string> navigationTarget(std::string_view current, std::string_view name,
                                            std::string_view access) {
    const bool isLink = access.starts_with('l');
    if (name == "." || (!isLink && !access.starts_with('d'))) {
        return std::nullopt;
    }
    if (name == "..") {
        return current == root ? std::nullopt : std::optional(parentDirectory(current));
    }
    if (isLink && name.find(linkArrow, 1) != std::string_view::npos) {
        std::string_view target = name.substr(name.find(linkArrow) + linkArrow.size());
        if (target.size() > 1 && target.ends_with('/')) {
            target.remove_suffix(1);
        }
        return target.empty() ? std::nullopt : std::optional<std::string>(target);
    }
    return pathIn(current, name);
}

std::string pathIn(std::string_view directory, std::string_view name) {
    std::string path(directory == root ? std::string_view() : directory);
    path += '/';
    path += name;
    return path;
}

} // namespace corvel
