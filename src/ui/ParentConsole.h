#pragma once

namespace corvel {

// The console that the program was started from, for as long as the object lives: where --help and --version
// print. On Windows a program with windows has none unless it asks, and one that kept it would end when the
// person closes it. Elsewhere, and where there is no such console, it does nothing.
class ParentConsole {
  public:
    ParentConsole();
    ~ParentConsole();
    ParentConsole(const ParentConsole&) = delete;
    ParentConsole& operator=(const ParentConsole&) = delete;
};

} // namespace corvel
