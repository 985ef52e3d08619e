#pragma once

#include "net/CommandChannel.h"

namespace corvel {

// What is done with the replies that fill a site's tables and records. A table reply replaces the whole
// table, whatever its code: a refused one leaves it empty, and the list says why. A details reply is read
// only with a code of 200 to 299, into the record that the command asked about; where the table does not have
// that any more, the console says so and nothing changes.
void userTableReply(const ReplyServices& services, const Reply& reply);
void groupTableReply(const ReplyServices& services, const Reply& reply);
void userFileReply(const ReplyServices& services, const Reply& reply);
void groupFileReply(const ReplyServices& services, const Reply& reply);

} // namespace corvel
