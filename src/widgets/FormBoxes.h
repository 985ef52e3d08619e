#pragma once

#include "common/TextEncoding.h"

#include <string>
#include <vector>

namespace corvel {

class BytesEdit;

// The text boxes over the members of one form record. The record must outlive it and stay where it is.
class FormBoxes {
  public:
    // A new box for member, without a parent: the caller's layout takes it over.
    BytesEdit* add(std::string& member);

    // Loads every box from its member, whose bytes are in the encoding of the connection.
    void show(TextEncoding encoding);

    // Reads what is typed in another encoding from now on, as BytesEdit does; the texts stay.
    void setEncoding(TextEncoding encoding) const;

    // Stores what the boxes hold in the members.
    void collect() const;

  private:
    struct Field {
        std::string* member;
        BytesEdit* box;
    };

    std::vector<Field> fields_;
};

} // namespace corvel
