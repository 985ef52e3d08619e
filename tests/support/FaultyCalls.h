#pragma once

#include <functional>

namespace corvel::test {

// The calls of the system that read and save files, each of which can be made to fail (FaultyCalls.linux.cpp
// puts itself before the C library).
struct Fault {
    enum class Kind {
        error,   // the call fails, and a write has written a part before
        lasting, // the same, with every call behind it that needs room on the disk
        cut,     // a write writes one byte; any other call does its work
        kill,    // the process dies before the call
    };
    Kind kind = Kind::error;
    int at = 1; // the call that it comes to, counted from 1
    int error = 0;
};

// Runs something with a fault under its calls to create, write, sync, close, link and rename a file; those
// before the fault, and those behind it, do their work. Gives how many such calls there were.
int withFault(const Fault& fault, const std::function<void()>& work);
// The same with every read failing.
void withUnreadableFiles(int error, const std::function<void()>& work);

} // namespace corvel::test
