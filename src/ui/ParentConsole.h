#pragma once

namespace corvel {

// Between these two calls standard output and errors lead to the console that the program was started from:
// where --help and --version print. On Windows a program with windows has none unless it asks, and one that
// kept it would end when the person closes it. Elsewhere, and where there is no such console, they do
// nothing.
void joinParentConsole();
void leaveParentConsole();

} // namespace corvel
