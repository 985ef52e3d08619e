#include "admin/qt/frmAddGroup.h"

#include "widgets/BytesEdit.h"
#include "widgets/DialogParts.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>

#include <utility>

namespace corvel {

frmAddGroup::frmAddGroup(TextEncoding encoding, Accept accept, QWidget* parent)
    : QDialog(parent), encoding_(encoding), accept_(std::move(accept)) {
    setObjectName(QStringLiteral("frmAddGroup"));
    setWindowTitle(tr("Add group"));
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    const auto add = [&](std::string& member, const char* name, const QString& caption) {
        BytesEdit* const box = boxes_.add(member);
        layout->addRow(labelFor(*box, name, caption), box);
        return box;
    };
    BytesEdit* const groupName = add(form_.txtGroupname, "txtGroupname", tr("Group &name:"));
    groupName->setMinimumWidth(fontMetrics().averageCharWidth() * 32);
    add(form_.txtGroupdescr, "txtGroupdescr", tr("&Description:"));
    setDigitsWide(*add(form_.txtGroupGroupslots, "txtGroupGroupslots", tr("&Group slots:")), 6);
    setDigitsWide(*add(form_.txtGroupLeechslots, "txtGroupLeechslots", tr("&Leech slots:")), 6);
    add(form_.txtGroupVFS, "txtGroupVFS", tr("&VFS file:"));
    layout->addRow(confirmButtons(*this, {}, [this] { okClicked(); }));
    boxes_.show(encoding_);
}

void frmAddGroup::okClicked() {
    boxes_.collect();
    closeOrSay(*this, accept_(form_), encoding_);
}

} // namespace corvel
