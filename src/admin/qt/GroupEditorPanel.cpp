#include "admin/qt/GroupEditorPanel.h"

#include "widgets/BytesEdit.h"
#include "widgets/DialogParts.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr std::array<std::string GroupMemberRow::*, 3> memberColumns = {
    &GroupMemberRow::sUID, &GroupMemberRow::sUserName, &GroupMemberRow::sGadmin};

} // namespace

GroupEditorPanel::GroupEditorPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picGroupContainer"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    layout->addLayout(createBoxes());
    layout->addLayout(createMembers(), 1);
    layout->addLayout(createButtons());
    clear();
}

QFormLayout* GroupEditorPanel::createBoxes() {
    auto* const layout = new QFormLayout;
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    gid_ = new QLineEdit;
    setShownOnly(*gid_);
    setDigitsWide(*gid_, 6);
    layout->addRow(labelFor(*gid_, "txtGroupGID", tr("gid:")), gid_);
    const auto addText = [&](std::string& member, const char* name, const QString& caption) {
        BytesEdit* const box = boxes_.add(member);
        layout->addRow(labelFor(*box, name, caption), box);
        return box;
    };
    addText(form_.txtGroupname, "txtGroupname", tr("name:"));
    addText(form_.txtGroupdescr, "txtGroupdescr", tr("description:"));
    setDigitsWide(*addText(form_.txtGroupGroupslots, "txtGroupGroupslots", tr("group slots:")), 6);
    setDigitsWide(*addText(form_.txtGroupLeechslots, "txtGroupLeechslots", tr("leech slots:")), 6);
    addText(form_.txtGroupVFS, "txtGroupVFS", tr("VFS file:"));
    return layout;
}

QLayout* GroupEditorPanel::createMembers() {
    lvwGroupMembers_ = new ReportView;
    lblGroupMembers_ = new QLabel;
    lblGroupMembers_->setObjectName(QStringLiteral("lblGroupMembers"));
    lblGroupMembers_->setAccessibleName(tr("Number of members"));
    auto* const caption = new QHBoxLayout;
    caption->addWidget(labelFor(*lvwGroupMembers_, "lvwGroupMembers", tr("members:")));
    caption->addWidget(lblGroupMembers_);
    caption->addStretch(1);
    auto* const layout = new QVBoxLayout;
    layout->addLayout(caption);
    layout->addWidget(lvwGroupMembers_, 1);
    return layout;
}

QLayout* GroupEditorPanel::createButtons() {
    auto* const layout = new QHBoxLayout;
    const auto addButton = [&](const char* name, const QString& caption, auto signal) {
        auto* const button = new QPushButton(caption);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, signal);
        layout->addWidget(button);
    };
    addButton("cmdGroupSaveChanges", tr("save changes"), &GroupEditorPanel::saveRequested);
    addButton("cmdReloadGroupfile", tr("reload"), &GroupEditorPanel::reloadRequested);
    layout->addStretch(1);
    return layout;
}

void GroupEditorPanel::setForm(GroupForm form, TextEncoding encoding) {
    form_ = std::move(form);
    encoding_ = encoding;
    boxes_.show(encoding_);
    gid_->setText(fromCore(form_.txtGroupGID));
    setMembers(std::move(form_.lvwGroupMembers));
}

void GroupEditorPanel::setMembers(std::vector<GroupMemberRow> members) {
    form_.lvwGroupMembers = std::move(members);
    form_.lblGroupMembers = std::to_string(form_.lvwGroupMembers.size());
    lblGroupMembers_->setText(fromCore(form_.lblGroupMembers));
    ReportSource source;
    source.rows = static_cast<int>(form_.lvwGroupMembers.size());
    source.columns = {{tr("uid"), Qt::AlignRight}, {tr("username")}, {tr("gadmin")}};
    source.text = [this](int row, int column) {
        return memberText(form_.lvwGroupMembers[static_cast<std::size_t>(row)], column);
    };
    source.sentText = [this](int row, int column) -> std::string_view {
        return form_.lvwGroupMembers[static_cast<std::size_t>(row)].*
               memberColumns[static_cast<std::size_t>(column)];
    };
    lvwGroupMembers_->setSource(std::move(source));
    lvwGroupMembers_->fitColumns(0, static_cast<int>(memberColumns.size()) - 1);
}

QString GroupEditorPanel::memberText(const GroupMemberRow& member, int column) const {
    return cellTextOf(member.*memberColumns[static_cast<std::size_t>(column)], encoding_);
}

GroupForm GroupEditorPanel::form() {
    boxes_.collect();
    return form_;
}

} // namespace corvel
