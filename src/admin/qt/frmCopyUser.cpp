#include "admin/qt/frmCopyUser.h"

#include "widgets/DialogParts.h"
#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace corvel {

void CopyNameEdit::keyPressEvent(QKeyEvent* event) {
    const std::string typed = toCore(event->text());
    if (std::ranges::all_of(typed, isCopyNameKey)) {
        OneLineEdit::keyPressEvent(event);
    }
}

frmCopyUser::frmCopyUser(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), form_(std::move(opening.form)), encoding_(opening.encoding),
      accept_(std::move(accept)), txtNewUsername_(new CopyNameEdit), tmrSetfocus_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmCopyUser"));
    setWindowTitle(tr("Copy user"));
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    const auto addSource = [&](const std::string& text, const char* name, const QString& caption) {
        auto* const box = new QLineEdit(displayTextOf(text, encoding_));
        setShownOnly(*box);
        layout->addRow(labelFor(*box, name, caption), box);
    };
    addSource(form_.txtSourceUsername, "txtSourceUsername", tr("&Source user:"));
    addSource(form_.txtSourceUID, "txtSourceUID", tr("Source &uid:"));
    txtNewUsername_->setMinimumWidth(fontMetrics().averageCharWidth() * 32);
    layout->addRow(labelFor(*txtNewUsername_, "txtNewUsername", tr("&New user name:")), txtNewUsername_);
    layout->addRow(confirmButtons(*this, {}, [this] { okClicked(); }));
    tmrSetfocus_->setObjectName(QStringLiteral("tmrSetfocus"));
    tmrSetfocus_->setSingleShot(true);
    connect(tmrSetfocus_, &QTimer::timeout, txtNewUsername_, [this] { txtNewUsername_->setFocus(); });
}

void frmCopyUser::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        tmrSetfocus_->start(0);
    }
}

void frmCopyUser::okClicked() {
    form_.txtNewUsername = withoutBlanks(bytesOf(txtNewUsername_->text(), encoding_));
    txtNewUsername_->setText(textOf(form_.txtNewUsername, encoding_));
    closeOrSay(*this, accept_(form_), encoding_);
}

} // namespace corvel
