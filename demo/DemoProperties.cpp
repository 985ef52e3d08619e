#include "demo/DemoProperties.h"

#include "common/Text.h"
#include "demo/DemoWords.h"

#include <algorithm>
#include <array>
#include <limits>

namespace corvel {

namespace {

constexpr std::int64_t most16Bit = 32'767;
constexpr std::int64_t most32Bit = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t mostCredits = 922'337'203'685'477; // what fits 64 bits with four decimals

bool setFlags(DemoUser& user, std::string_view value) {
    if (!areFlags(value)) {
        return false;
    }
    user.flags = value;
    return true;
}

bool setTagline(DemoUser& user, std::string_view value) {
    user.tagline = value;
    return true;
}

bool setVfsFile(DemoUser& user, std::string_view value) {
    user.vfsFile = value;
    return true;
}

bool setHome(DemoUser& user, std::string_view value) {
    if (!value.starts_with('/')) {
        return false;
    }
    user.homePath = value;
    return true;
}

bool setPassword(DemoUser& user, std::string_view value) {
    if (value.empty() || value.find(' ') != std::string_view::npos) {
        return false;
    }
    user.password = value;
    return true;
}

bool setLogins(DemoUser& user, std::string_view value) {
    struct Kind {
        std::string_view name;
        int DemoUser::*field;
    };
    constexpr std::array<Kind, 3> kinds = {{
        {"ftp", &DemoUser::ftpLogins},
        {"telnet", &DemoUser::telnetLogins},
        {"http", &DemoUser::httpLogins},
    }};
    const std::vector<std::string_view> parts = words(value);
    if (parts.size() != 2) {
        return false;
    }
    const auto number = numberWithin(parts[0], 0, most16Bit);
    const std::string wanted = toLower(parts[1]);
    const auto* kind =
        std::find_if(kinds.begin(), kinds.end(), [&](const Kind& row) { return row.name == wanted; });
    if (!number || kind == kinds.end()) {
        return false;
    }
    user.*(kind->field) = static_cast<int>(*number);
    return true;
}

bool setSpeedLimits(DemoUser& user, std::string_view value) {
    const std::vector<std::string_view> parts = words(value);
    if (parts.size() != 2) {
        return false;
    }
    const auto down = numberWithin(parts[0], -1, most32Bit);
    const auto up = numberWithin(parts[1], -1, most32Bit);
    if (!down || !up) {
        return false;
    }
    user.downLimit = static_cast<int>(*down);
    user.upLimit = static_cast<int>(*up);
    return true;
}

struct SectionValue {
    std::int64_t number;
    std::size_t section;
};

// "number" or "number section".
std::optional<SectionValue> sectionValue(std::string_view value, std::int64_t least, std::int64_t most) {
    const std::vector<std::string_view> parts = words(value);
    if (parts.empty() || parts.size() > 2) {
        return std::nullopt;
    }
    const auto number = numberWithin(parts[0], least, most);
    const auto section = numberWithin(parts.size() == 2 ? parts[1] : "0", 0, DemoUser::sectionCount - 1);
    if (!number || !section) {
        return std::nullopt;
    }
    return SectionValue{*number, static_cast<std::size_t>(*section)};
}

bool setRatio(DemoUser& user, std::string_view value) {
    const auto wanted = sectionValue(value, 0, most16Bit);
    if (wanted) {
        user.ratios[wanted->section] = static_cast<int>(wanted->number);
    }
    return wanted.has_value();
}

bool setCredits(DemoUser& user, std::string_view value) {
    const auto wanted = sectionValue(value, -mostCredits, mostCredits);
    if (wanted) {
        user.credits[wanted->section] = wanted->number;
    }
    return wanted.has_value();
}

bool setGroupSlots(DemoGroup& group, std::string_view value) {
    const std::vector<std::string_view> parts = words(value);
    if (parts.size() != 2) {
        return false;
    }
    const auto slots = numberWithin(parts[0], -1, most16Bit);
    const auto leech = numberWithin(parts[1], -1, most16Bit);
    if (!slots || !leech) {
        return false;
    }
    group.groupSlots = static_cast<int>(*slots);
    group.leechSlots = static_cast<int>(*leech);
    return true;
}

bool setGroupDescription(DemoGroup& group, std::string_view value) {
    group.description = value;
    return true;
}

bool setGroupVfsFile(DemoGroup& group, std::string_view value) {
    group.vfsFile = value;
    return true;
}

// One property: its name and what sets it, which says whether the value had the right shape.
template <typename Record>
struct Property {
    std::string_view name;
    bool (*set)(Record&, std::string_view);
};

constexpr std::array<Property<DemoUser>, 10> userProperties = {{
    {"flags", setFlags},
    {"tagline", setTagline},
    {"homedir", setHome},
    {"vfsfile", setVfsFile},
    {"passwd", setPassword},
    {"logins", setLogins},
    {"speedlimit", setSpeedLimits},
    {"speedlimits", setSpeedLimits},
    {"ratio", setRatio},
    {"credits", setCredits},
}};

constexpr std::array<Property<DemoGroup>, 3> groupProperties = {{
    {"groupslots", setGroupSlots},
    {"groupdescription", setGroupDescription},
    {"groupvfsfile", setGroupVfsFile},
}};

template <typename Record, std::size_t size>
Problem change(const std::array<Property<Record>, size>& properties, Record& record,
               std::string_view property, std::string_view value) {
    const std::string wanted = toLower(property);
    for (const Property<Record>& row : properties) {
        if (row.name == wanted) {
            return row.set(record, value) ? Problem() : concat({"Bad value for ", wanted, "."});
        }
    }
    return concat({"Unknown property '", property, "'."});
}

} // namespace

bool areFlags(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= 'a' && letter <= 'z');
    });
}

bool isGroupProperty(std::string_view property) {
    const std::string wanted = toLower(property);
    return std::any_of(groupProperties.begin(), groupProperties.end(),
                       [&](const Property<DemoGroup>& row) { return row.name == wanted; });
}

bool isAdminProperty(std::string_view property) {
    return toLower(property) == "admingroup";
}

Problem changeUserProperty(DemoUser& user, std::string_view property, std::string_view value) {
    return change(userProperties, user, property, value);
}

Problem changeGroupProperty(DemoGroup& group, std::string_view property, std::string_view value) {
    return change(groupProperties, group, property, value);
}

} // namespace corvel
