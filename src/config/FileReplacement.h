#pragma once

#include "config/PlatformFiles.h"

#include <string>
#include <string_view>

namespace corvel {

// A person's files are replaced whole or not at all. All paths are UTF-8; one that is a symbolic link stands
// for the file that it leads to, so that the link stays. Every text that is written is its owner's alone to
// read, and on the disk when the function returns unless the caller does not wait for that.

// What came of a replacement. Whatever it was, the file holds the old text or the new one, whole.
struct SaveResult {
    enum class Outcome {
        saved,
        locked, // the old file could not be removed
        failed, // anything else
    };
    Outcome outcome = Outcome::saved;
    std::string reason; // of a failure, for a person
};

// Makes text the content of the file at path.
SaveResult replaceFile(const std::string& path, std::string_view text, Waiting waits = Waiting::forDisk);

// A text kept beside a file.
struct KeptText {
    std::string path;   // empty where it could not be kept
    std::string reason; // why not, for a person
};

// Writes text to a new file beside the one at path, named as that one, ".other-" and stamp. Nothing that has
// such a name already is written over.
KeptText keepBeside(const std::string& path, std::string_view text, const std::string& stamp);

// Puts the file at keptPath, one from keepBeside, in the place of the file at path. What stood there, whether
// it can be read or not, is kept beside it in its turn.
SaveResult putInPlace(const std::string& keptPath, const std::string& path, const std::string& stamp);

// Ends replacements of the file at path in which the program crashed: what was not whole yet is removed, and
// where the file is gone or empty, the whole text that an earlier version left beside it as ".new" takes its
// place. Nobody else may be replacing the file meanwhile.
void finishReplacement(const std::string& path);

} // namespace corvel
