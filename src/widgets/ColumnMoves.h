#pragma once

class QHeaderView;

namespace corvel {

// Lets a person drag the columns of header to other places, all but those with a number below fixed: these
// stay in front, in their order and of the width that they are given. header: of the model that it is to stay
// with.
void letColumnsMove(QHeaderView& header, int fixed);

} // namespace corvel
