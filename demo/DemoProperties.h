#pragma once

#include "demo/DemoAccounts.h"

#include <string_view>

namespace corvel {

// The properties that "SITE change" sets, with the shape of their values: numbers are whole and decimal.
// Names in any case.
//
// user:  flags letters and digits; tagline text; homedir absolute path; vfsfile text; passwd one word;
//        logins "number ftp|telnet|http"; speedlimit or speedlimits "down up" in kB/s, -1 or 0 for none;
//        ratio and credits "number [section]", without a section the first one, credits in kB;
//        admingroup: a group's name, see isAdminProperty
// group: groupslots "slots leech"; groupdescription text; groupvfsfile text

// Whether text is a set of flags: letters and digits, or nothing.
bool areFlags(std::string_view text);

bool isGroupProperty(std::string_view property);

// The one property that needs to know the groups: it makes the user an administrator of the group or no
// longer one.
bool isAdminProperty(std::string_view property);

// Sets the property to the value, or says why not: an unknown property or a value of another shape.
Problem changeUserProperty(DemoUser& user, std::string_view property, std::string_view value);
Problem changeGroupProperty(DemoGroup& group, std::string_view property, std::string_view value);

} // namespace corvel
