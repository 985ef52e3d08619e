#include "admin/qt/GroupEditorPanel.h"

#include "widgets/BytesEdit.h"
#include "widgets/DialogParts.h"
#include "widgets/ElidedLabel.h"
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

GroupEditorPanel::GroupEditorPanel(EditorBoxes::Typed typed, QWidget* parent)
    : QWidget(parent), boxes_(GroupForm::boxCount, std::move(typed)) {
    setObjectName(QStringLiteral("picGroupContainer"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    layout->addLayout(createBoxes());
    layout->addLayout(createMembers(), 1);
    layout->addLayout(createButtons());
    show({}, TextEncoding::utf8);
}

QFormLayout* GroupEditorPanel::createBoxes() {
    struct Place {
        const char* name;
        const char* caption;
        int digits; // 0: as wide as there is room
    };
    // By the numbers of the boxes.
    static constexpr std::array<Place, GroupForm::boxCount> places = {{
        {"txtGroupname", QT_TR_NOOP("name:"), 0},
        {"txtGroupdescr", QT_TR_NOOP("description:"), 0},
        {"txtGroupGroupslots", QT_TR_NOOP("group slots:"), 6},
        {"txtGroupLeechslots", QT_TR_NOOP("leech slots:"), 6},
        {"txtGroupVFS", QT_TR_NOOP("VFS file:"), 0},
    }};
    auto* const layout = new QFormLayout;
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    gid_ = new QLineEdit;
    setShownOnly(*gid_);
    setDigitsWide(*gid_, 6);
    layout->addRow(labelFor(*gid_, "txtGroupGID", tr("gid:")), gid_);
    for (std::size_t number = 0; number < places.size(); ++number) {
        BytesEdit* const box = boxes_.box(number);
        layout->addRow(labelFor(*box, places[number].name, tr(places[number].caption)), box);
        if (places[number].digits > 0) {
            setDigitsWide(*box, places[number].digits);
        }
    }
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
    boxes_.problem()->setObjectName(QStringLiteral("lblGroupDetails"));
    auto* const layout = new QHBoxLayout;
    const auto addButton = [&](const char* name, const QString& caption, auto signal) {
        auto* const button = new QPushButton(caption);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, signal);
        layout->addWidget(button);
        return button;
    };
    cmdGroupSaveChanges_ =
        addButton("cmdGroupSaveChanges", tr("save changes"), &GroupEditorPanel::saveRequested);
    cmdReloadGroupfile_ = addButton("cmdReloadGroupfile", tr("reload"), &GroupEditorPanel::reloadRequested);
    layout->addWidget(boxes_.problem(), 1);
    return layout;
}

void GroupEditorPanel::show(AccountEditor<GroupForm> editor, TextEncoding encoding) {
    const bool isKnown = boxes_.show(editor, encoding);
    cmdGroupSaveChanges_->setEnabled(editor.details == Details::known);
    cmdReloadGroupfile_->setEnabled(editor.id.has_value());
    if (isKnown && editor.details != Details::known) {
        return; // the same group is asked for again
    }
    form_ = std::move(editor.form);
    encoding_ = encoding;
    gid_->setText(fromCore(form_.txtGroupGID));
    showMembers();
}

void GroupEditorPanel::showMembers() {
    lblGroupMembers_->setText(fromCore(form_.lblGroupMembers));
    ReportSource source;
    source.rows = static_cast<int>(form_.lvwGroupMembers.size());
    source.columns = {{tr("uid"), Qt::AlignRight}, {tr("username")}, {tr("gadmin")}};
    source.sentText = [this](int row, int column) -> std::string_view {
        return form_.lvwGroupMembers[static_cast<std::size_t>(row)].*
               memberColumns[static_cast<std::size_t>(column)];
    };
    source.text = [this, sent = source.sentText](int row, int column) {
        return cellTextOf(sent(row, column), encoding_);
    };
    lvwGroupMembers_->setSource(std::move(source), ReportView::CurrentRow::keep);
    lvwGroupMembers_->fitColumns(0, static_cast<int>(memberColumns.size()) - 1);
}

} // namespace corvel
