#include "admin/qt/frmChangeUserGroups.h"

#include "widgets/DialogParts.h"
#include "widgets/SelectableList.h"
#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

#include <utility>

namespace corvel {

frmChangeUserGroups::frmChangeUserGroups(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), form_(std::move(opening.form)), accept_(std::move(accept)),
      lstGroups_(new SelectableList), lstGAdmin_(new SelectableList) {
    setObjectName(QStringLiteral("frmChangeUserGroups"));
    setWindowTitle(tr("Change groups - %1").arg(displayTextOf(opening.sUserName, opening.encoding)));
    auto* const layout = new QGridLayout(this);
    layout->addWidget(labelFor(*lstGroups_, "lstGroups", tr("&Member of:")), 0, 0);
    layout->addWidget(labelFor(*lstGAdmin_, "lstGAdmin", tr("Group &admin of:")), 0, 1);
    layout->addWidget(lstGroups_, 1, 0);
    layout->addWidget(lstGAdmin_, 1, 1);
    layout->addWidget(confirmButtons(*this, {}, [this] { okClicked(); }), 2, 0, 1, 2);
    lstGroups_->setEntries(form_.lstGroups, opening.encoding);
    lstGAdmin_->setEntries(form_.lstGAdmin, opening.encoding);
    resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 20);
}

void frmChangeUserGroups::okClicked() {
    form_.lstGroups = lstGroups_->entries();
    form_.lstGAdmin = lstGAdmin_->entries();
    closeOrSay(*this, accept_(form_), TextEncoding::utf8);
}

} // namespace corvel
