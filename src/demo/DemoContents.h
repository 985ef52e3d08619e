#pragma once

#include "demo/DemoTree.h"

namespace corvel {

// Fills an empty tree with the demo's files: a few hundred entries, always the same ones, among them links,
// devices, long names, names with blanks and names beyond ASCII.
// bigEntries: above 0 there is also a directory /big with that many files.
void fillDemoTree(DemoTree& tree, int bigEntries);

} // namespace corvel
