#include "admin/clsGroup.h"

#include "admin/ReplyLines.h"
#include "common/Numbers.h"

#include <algorithm>
#include <array>

namespace corvel {

// The readers of a groupfile's keys.
struct GroupFileReader {
    template <std::string clsGroup::*field>
    static void text(clsGroup& group, std::string_view value) {
        group.*field = value;
    }

    template <std::int16_t clsGroup::*field>
    static void number(clsGroup& group, std::string_view value) {
        group.*field = toInt16(value);
    }

    template <std::vector<std::int16_t> clsGroup::*field>
    static void ids(clsGroup& group, std::string_view value) {
        readIds(group.*field, value);
    }

    static constexpr std::array<ReplyKey<clsGroup>, 8> keys{{
        {"groupname", text<&clsGroup::sName>},
        {"description", text<&clsGroup::sDescription>},
        {"groupslots", number<&clsGroup::iGroupSlots>},
        {"leechslots", number<&clsGroup::iLeechSlots>},
        {"vfs", text<&clsGroup::sVFSFile>},
        {"vfsfile", text<&clsGroup::sVFSFile>},
        {"members", ids<&clsGroup::members_>},
        {"gadmins", ids<&clsGroup::gadmins_>},
    }};
};

void clsGroup::ParseGroupFile(std::span<const std::string_view> lines) {
    members_.assign(1, -1);
    gadmins_.assign(1, -1);
    got_info = false;
    readReplyLines<clsGroup>(*this, lines, GroupFileReader::keys);
    got_info = true;
}

bool clsGroup::IsGadmin(std::int16_t uid) const {
    return std::ranges::find(gadmins_, uid) != gadmins_.end();
}

} // namespace corvel
