#pragma once

#include "support/TestProgram.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corvel::test {

// One line of a script, from the server's point of view.
struct Step {
    enum class Kind { expect, send, close };
    Kind kind;
    std::string text; // expect: a line without CR LF; send: bytes as they are
};

inline Step expect(std::string line) {
    return {Step::Kind::expect, std::move(line)};
}
inline Step send(std::string bytes) {
    return {Step::Kind::send, std::move(bytes)};
}
inline Step hangUp() {
    return {Step::Kind::close, {}};
}

using Script = std::vector<Step>;

// How the server's bytes reach the client: in pieces of at most pieceSize bytes, and cut once more at byte
// cutAt of everything that the script sends.
struct Cutting {
    std::size_t pieceSize = std::string::npos;
    std::size_t cutAt = std::string::npos;
};

// Every way of cutting that a conversation is tried in: whole, byte by byte, and once at every position.
std::vector<Cutting> everyCutting(const Script& script);

// Plays the server of a site that is connecting or connected. Fails the test when the client sends another
// line than the script expects, or any line more. name: which conversation, for the failure's text.
void play(TestProgram& program, int site, const Script& script, Cutting cutting, const std::string& name);

// The login of "bob" up to the point where the client's own commands are answered: the tables with
// "500 Unknown" and the root directory as empty.
Script loginScript();

// What is asked for and answered where a directory is listed that is then "/pub". listing: the reply.
Script listingScript(const std::string& listing);

Script operator+(Script first, const Script& second);

// A program of which site 1 has logged in.
struct LoggedIn : TestProgram {
    explicit LoggedIn(int sites = 1, const std::string& settingsFile = {});

    void logIn();

    // Plays the server of site 1.
    void answer(const Script& script, const std::string& name, Cutting cutting = {}) {
        play(*this, 1, script, cutting, name);
    }
};

} // namespace corvel::test
