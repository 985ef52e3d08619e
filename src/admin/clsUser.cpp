#include "admin/clsUser.h"

#include "admin/ReplyLines.h"
#include "common/Numbers.h"

#include <algorithm>

namespace corvel {

// The readers of a userfile's keys. A list with another number of pieces than it needs is passed over.
struct UserFileReader {
    template <std::string clsUser::*field>
    static void text(clsUser& user, std::string_view value) {
        user.*field = value;
    }

    template <std::vector<std::int16_t> clsUser::Lists::*field>
    static void ids(clsUser& user, std::string_view value) {
        readIds((*user.lists_).*field, value);
    }

    static void ips(clsUser& user, std::string_view value) {
        const auto pieces = listPieces(value);
        user.lists_->ips.assign(pieces.begin(), pieces.end());
    }

    static void limits(clsUser& user, std::string_view value) {
        std::array<std::string_view, 5> pieces;
        if (!cutFields(value, pieces)) {
            return;
        }
        user.iBWLimitDn = toInt32(pieces[0]);
        user.iBWLimitUp = toInt32(pieces[1]);
        user.iLoginsTelnet = toInt16(pieces[2]);
        user.iLoginsFTP = toInt16(pieces[3]);
        user.iLoginsHTTP = toInt16(pieces[4]);
    }

    static void ratios(clsUser& user, std::string_view value) {
        std::array<std::string_view, clsUser::sectionCount> pieces;
        if (cutFields(value, pieces)) {
            std::ranges::transform(pieces, user.lists_->ratios.begin(), toInt16);
        }
    }

    static void credits(clsUser& user, std::string_view value) {
        std::array<std::string_view, clsUser::sectionCount> pieces;
        if (cutFields(value, pieces)) {
            std::ranges::transform(pieces, user.lists_->credits.begin(), toCurrency);
        }
    }

    static constexpr std::array<ReplyKey<clsUser>, 13> keys{{
        {"username", text<&clsUser::sName>},
        {"groupname", text<&clsUser::sStdGroup>},
        {"flags", text<&clsUser::sFlags>},
        {"tagline", text<&clsUser::sTagline>},
        {"homepath", text<&clsUser::sHomePath>},
        {"ips", ips},
        {"vfs", text<&clsUser::sVFSFile>},
        {"vfsfile", text<&clsUser::sVFSFile>},
        {"limits", limits},
        {"groups", ids<&clsUser::Lists::groups>},
        {"admingroups", ids<&clsUser::Lists::admingroups>},
        {"ratios", ratios},
        {"credits", credits},
    }};
};

void clsUser::ParseUserFile(std::span<const std::string_view> lines) {
    lists_ = std::make_shared<Lists>();
    got_info = false;
    readReplyLines<clsUser>(*this, lines, UserFileReader::keys);
    got_info = true;
}

bool clsUser::IsMemberOf(std::int16_t gid) const {
    return std::ranges::find(groups(), gid) != groups().end();
}

bool clsUser::IsAdminOf(std::int16_t gid) const {
    return std::ranges::find(admingroups(), gid) != admingroups().end();
}

const clsUser::Lists& clsUser::lists() const {
    static const Lists none;
    return lists_ ? *lists_ : none;
}

} // namespace corvel
