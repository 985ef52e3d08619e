#pragma once

#include "demo/DemoAccounts.h"

#include <vector>

namespace corvel {

// The accounts that a demo server starts with, always the same ones, in the order of their ids. The first
// user is demo with the password "demo" and the master flag; every other user's password is his name. count:
// at least 1.
std::vector<DemoUser> makeDemoUsers(int count);
std::vector<DemoGroup> makeDemoGroups();

} // namespace corvel
