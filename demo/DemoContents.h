#pragma once

#include "demo/DemoAccounts.h"
#include "demo/DemoTree.h"

namespace corvel {

// Fills an empty tree with the demo's files: a few hundred entries, always the same ones, among them links,
// devices, long names, names with blanks and names beyond ASCII.
// bigEntries: above 0 there is also a directory /big with that many files.
void fillDemoTree(DemoTree& tree, int bigEntries);

// The accounts that a demo server starts with, always the same ones. The first user is demo with the password
// "demo" and the master flag; every other user's password is his name. userCount: at least 1.
DemoAccounts makeDemoAccounts(int userCount);

} // namespace corvel
