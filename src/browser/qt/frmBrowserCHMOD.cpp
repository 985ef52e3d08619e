#include "browser/qt/frmBrowserCHMOD.h"

#include "widgets/DialogParts.h"
#include "widgets/FormBoxes.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>

#include <optional>
#include <utility>

namespace corvel {

frmBrowserCHMOD::frmBrowserCHMOD(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), form_(std::move(opening.form)), encoding_(opening.encoding),
      accept_(std::move(accept)) {
    setObjectName(QStringLiteral("frmBrowserCHMOD"));
    setWindowTitle(QStringLiteral("SITE CHMOD"));
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    BytesEdit* const txtPath = boxes_.add(form_.txtPath);
    txtPath->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
    layout->addRow(labelFor(*txtPath, "txtPath", tr("&Path:")), txtPath);
    addPermissions(*layout);
    txtCHMODval_ = boxes_.add(form_.txtCHMODval);
    setDigitsWide(*txtCHMODval_, 4);
    layout->addRow(labelFor(*txtCHMODval_, "txtCHMODval", tr("&Mode:")), txtCHMODval_);
    connect(txtCHMODval_, &QLineEdit::textEdited, this, &frmBrowserCHMOD::modeEdited);
    layout->addRow(confirmButtons(*this, {}, [this] { okClicked(); }));
    boxes_.show(encoding_);
    chkX_.front()->setFocus();
}

void frmBrowserCHMOD::addPermissions(QFormLayout& layout) {
    const std::array owners = {tr("&Owner:"), tr("&Group:"), tr("O&thers:")};
    const std::array rights = {tr("read"), tr("write"), tr("execute")};
    for (std::size_t owner = 0; owner < owners.size(); ++owner) {
        auto* const row = new QHBoxLayout;
        auto* const label = new QLabel(owners[owner]);
        for (std::size_t right = 0; right < rights.size(); ++right) {
            const std::size_t i = owner * rights.size() + right;
            auto* const box = new QCheckBox(rights[right]);
            box->setObjectName(elementName("chkX", static_cast<int>(i)));
            box->setAccessibleName(plainCaption(owners[owner]) + QLatin1Char(' ') + rights[right]);
            box->setChecked(form_.chkX[i]);
            connect(box, &QCheckBox::clicked, this, &frmBrowserCHMOD::boxClicked);
            chkX_[i] = box;
            row->addWidget(box);
        }
        row->addStretch(1);
        label->setBuddy(chkX_[owner * rights.size()]);
        layout.addRow(label, row);
    }
}

void frmBrowserCHMOD::boxClicked() {
    for (std::size_t i = 0; i < permissionCount; ++i) {
        form_.chkX[i] = chkX_[i]->isChecked();
    }
    txtCHMODval_->setBytes(chmodValue(form_.chkX, txtCHMODval_->bytes()), encoding_);
}

// The boxes follow a mode that is typed, so that the next click on one changes that mode and no other.
void frmBrowserCHMOD::modeEdited() {
    if (const std::optional<Permissions> permissions = permissionsOf(txtCHMODval_->bytes())) {
        for (std::size_t i = 0; i < permissionCount; ++i) {
            chkX_[i]->setChecked((*permissions)[i]);
        }
    }
}

void frmBrowserCHMOD::okClicked() {
    boxes_.collect();
    closeOrSay(*this, accept_(form_), TextEncoding::utf8);
}

} // namespace corvel
