#include "config/FileReplacement.h"

#include "config/Files.h"

#include <filesystem>
#include <random>
#include <system_error>

namespace corvel {

namespace {

// The file that path leads to, there or not: replacing a symbolic link itself would leave its target behind,
// out of date.
std::string resolved(const std::string& path) {
    constexpr int mostLinks = 40; // a circle of links ends somewhere
    std::filesystem::path target = filePath(path);
    std::error_code error;
    for (int link = 0; link < mostLinks && std::filesystem::is_symlink(target, error); ++link) {
        target = target.parent_path() / std::filesystem::read_symlink(target, error);
    }
    const std::u8string text = target.u8string();
    return {text.begin(), text.end()};
}

// A name that no other program, and no other copy of this one, makes for a text that is not whole yet.
std::string temporaryPath(const std::string& path) {
    std::random_device random;
    return path + "." + std::to_string(random()) + std::to_string(random()) + ".tmp";
}

// Removes the files with names from temporaryPath.
void removeTemporaries(const std::string& path) {
    const std::string start = filePath(path + ".").filename().string();
    constexpr std::string_view end = ".tmp";
    std::error_code error;
    for (std::filesystem::directory_iterator file(filePath(path).parent_path(), error), last; file != last;
         file.increment(error)) {
        const std::string name = file->path().filename().string();
        if (name.size() > start.size() + end.size() && name.starts_with(start) && name.ends_with(end) &&
            name.find_first_not_of("0123456789", start.size()) == name.size() - end.size()) {
            std::error_code ignored;
            std::filesystem::remove(file->path(), ignored);
        }
    }
}

// Gives the file at path another name, and the old one stays as well where the file system allows it.
std::error_code nameToo(const std::filesystem::path& path, const std::filesystem::path& name) {
    std::error_code error;
    std::filesystem::remove(name, error);
    std::filesystem::create_hard_link(path, name, error);
    return error ? moveFile(path, name) : error;
}

// Whether error says that the directory lets nobody change its files, so that none could be removed either.
bool isForbidden(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

SaveResult resultOf(const std::error_code& error, bool isLocked) {
    using enum SaveResult::Outcome;
    return error ? SaveResult{.outcome = isLocked ? locked : failed, .reason = errorText(error)}
                 : SaveResult{};
}

} // namespace

SaveResult replaceFile(const std::string& path, std::string_view text, Waiting waits) {
    const std::string target = resolved(path);
    const bool replacesText = GetFileLength(target) > 0;
    const std::string whole = temporaryPath(target);
    std::error_code error = writePrivateFile(filePath(whole), text, waits);
    if (error) {
        return resultOf(error, replacesText && isForbidden(error));
    }
    clearAttributes(filePath(target));
    error = moveFile(filePath(whole), filePath(target));
    if (error) {
        DeleteFileForce(whole);
        return resultOf(error, replacesText);
    }
    return waits == Waiting::forNothing ? SaveResult()
                                        : resultOf(syncDirectory(filePath(target).parent_path()), false);
}

KeptText keepBeside(const std::string& path, std::string_view text, const std::string& stamp) {
    constexpr int mostNames = 1000;
    const std::string name = resolved(path) + ".other-" + stamp;
    std::error_code error;
    for (int number = 1; number <= mostNames; ++number) {
        const std::string candidate = number == 1 ? name : name + "-" + std::to_string(number);
        error = writePrivateFile(filePath(candidate), text, Waiting::forDisk);
        if (error != std::errc::file_exists) {
            return error ? KeptText{.path = {}, .reason = errorText(error)} : KeptText{.path = candidate};
        }
    }
    return {.path = {}, .reason = errorText(error)};
}

SaveResult putInPlace(const std::string& keptPath, const std::string& path, const std::string& stamp) {
    const std::filesystem::path target = filePath(resolved(path));
    const KeptText place = keepBeside(path, {}, stamp); // its name is this program's from here on
    if (place.path.empty()) {
        return {.outcome = SaveResult::Outcome::failed, .reason = place.reason};
    }
    std::error_code error = nameToo(target, filePath(place.path));
    const bool isGone = error == std::errc::no_such_file_or_directory;
    if (error) {
        DeleteFileForce(place.path);
    }
    if (error && !isGone) {
        return resultOf(error, isForbidden(error));
    }
    error = moveFile(filePath(keptPath), target);
    if (error && !isGone) {
        moveFile(filePath(place.path), target);
        DeleteFileForce(place.path); // where it was a second name of the file
    }
    if (!error) {
        makePrivate(filePath(place.path)); // as every text that is kept here
    }
    return resultOf(error ? error : syncDirectory(target.parent_path()), false);
}

void finishReplacement(const std::string& path) {
    const std::string target = resolved(path);
    removeTemporaries(target);
    const std::string waiting = target + ".new";
    const FileContent now = readFile(target);
    if (now.state != FileContent::State::unknown && now.bytes.empty() && GetFileLength(waiting) > 0) {
        moveFile(filePath(waiting), filePath(target));
    }
}

} // namespace corvel
