#include "widgets/FormBoxes.h"

#include "widgets/BytesEdit.h"

namespace corvel {

BytesEdit* FormBoxes::add(std::string& member) {
    fields_.push_back({&member, new BytesEdit});
    return fields_.back().box;
}

void FormBoxes::show(TextEncoding encoding) {
    for (const Field& field : fields_) {
        field.box->setBytes(*field.member, encoding);
    }
}

void FormBoxes::setEncoding(TextEncoding encoding) const {
    for (const Field& field : fields_) {
        field.box->setEncoding(encoding);
    }
}

void FormBoxes::collect() const {
    for (const Field& field : fields_) {
        *field.member = field.box->bytes();
    }
}

} // namespace corvel
