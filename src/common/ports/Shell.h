#pragma once

#include <cstdint>
#include <string>

namespace corvel {

// A process id of the platform; 0 for none.
using ProcessId = std::uint32_t;

// The desktop that the program runs on. All texts are UTF-8. Nothing here says when it fails, and nothing
// is ever read by a command interpreter.
class Shell {
  public:
    virtual ~Shell() = default;

    // Opens a program, a document or an address, as a double click on it would. A relative name is looked for
    // beside the running program first. A program gets no arguments.
    virtual void open(const std::string& target) = 0;

    virtual void setClipboardText(const std::string& text) = 0;

    // As the functions of the same names in menus/mdlProcesses.
    virtual ProcessId FindProcessByPath(const std::string& pattern) const = 0;
    virtual bool KillProcess(ProcessId id) = 0;

    // Ends the program, the same way as closing the main window does.
    virtual void quit() = 0;
};

} // namespace corvel
