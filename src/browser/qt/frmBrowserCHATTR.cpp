#include "browser/qt/frmBrowserCHATTR.h"

#include "widgets/DialogParts.h"
#include "widgets/FormBoxes.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace corvel {

namespace {

QLineEdit* shownOnly(std::string_view text, TextEncoding encoding) {
    auto* const box = new QLineEdit(displayTextOf(text, encoding));
    setShownOnly(*box);
    box->setCursorPosition(0);
    return box;
}

} // namespace

frmBrowserCHATTR::frmBrowserCHATTR(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), form_(std::move(opening.form)), accept_(std::move(accept)) {
    setObjectName(QStringLiteral("frmBrowserCHATTR"));
    setWindowTitle(tr("Hide directory (SITE CHATTR)"));
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(createTop(opening));
    layout->addLayout(createLists(opening.encoding), 1);
    auto* const remark = new QLabel(tr("Remark: selecting nothing will clear any existing permissions."));
    remark->setWordWrap(true);
    layout->addWidget(remark);
    QDialogButtonBox* const buttons = confirmButtons(*this, {.name = "Command1"}, [this] { confirmed(); });
    Command1_ = buttons->findChild<QPushButton*>(QStringLiteral("Command1"));
    Command1_->setEnabled(false);
    layout->addWidget(buttons);
    boxes_.show(opening.encoding);
    chkFlags_->setFocus();
    resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 24);
}

QFormLayout* frmBrowserCHATTR::createTop(const Opening& opening) {
    auto* const layout = new QFormLayout;
    QLineEdit* const txtDirectory = shownOnly(form_.sName, opening.encoding);
    layout->addRow(labelFor(*txtDirectory, "txtDirectory", tr("&Directory :")), txtDirectory);
    txtCurrent_ = shownOnly({}, opening.encoding);
    txtCurrent_->setPlaceholderText(tr("The server has not answered yet."));
    layout->addRow(labelFor(*txtCurrent_, "txtCurrent", tr("&Current permissions :")), txtCurrent_);

    chkFlags_ = new QCheckBox;
    chkFlags_->setObjectName(QStringLiteral("chkFlags"));
    chkFlags_->setAccessibleName(tr("Use flags"));
    txtFlags_ = boxes_.add(form_.txtFlags);
    QLabel* const label = labelFor(*txtFlags_, "txtFlags", tr("&Flags :"));
    label->setBuddy(chkFlags_);
    txtFlags_->setEnabled(false);
    connect(chkFlags_, &QCheckBox::toggled, txtFlags_, &QWidget::setEnabled);
    auto* const flags = new QHBoxLayout;
    flags->addWidget(chkFlags_);
    flags->addWidget(txtFlags_, 1);
    layout->addRow(label, flags);
    return layout;
}

QLayout* frmBrowserCHATTR::createLists(TextEncoding encoding) {
    lstUsers_ = new SelectableList;
    lstGroups_ = new SelectableList;
    lstUsers_->setEntries(form_.lstUsers, encoding);
    lstGroups_->setEntries(form_.lstGroups, encoding);
    auto* const layout = new QGridLayout;
    layout->addWidget(labelFor(*lstUsers_, "lstUsers", tr("&Users :")), 0, 0);
    layout->addWidget(labelFor(*lstGroups_, "lstGroups", tr("&Groups :")), 0, 1);
    layout->addWidget(lstUsers_, 1, 0);
    layout->addWidget(lstGroups_, 1, 1);
    return layout;
}

void frmBrowserCHATTR::setAnswer(const ChattrAnswer& answer, TextEncoding encoding) {
    form_.txtCurrent = answer.txtCurrent;
    form_.isRefused = answer.isRefused;
    txtCurrent_->setText(displayTextOf(answer.txtCurrent, encoding));
    txtCurrent_->setCursorPosition(0);
    boxes_.setEncoding(encoding);
    Command1_->setEnabled(true);
}

void frmBrowserCHATTR::confirmed() {
    boxes_.collect();
    form_.chkFlags = chkFlags_->isChecked();
    form_.lstUsers = lstUsers_->entries();
    form_.lstGroups = lstGroups_->entries();
    const auto acceptForm = [this] { closeOrSay(*this, accept_(form_), TextEncoding::utf8); };
    if (clearsUnseen(form_)) {
        askBefore(*this,
                  "The server does not say to whom this directory is shown.\n"
                  "Do you want to clear whatever permissions it has?",
                  acceptForm);
    } else {
        acceptForm();
    }
}

} // namespace corvel
