#include "admin/qt/GroupsPanel.h"

#include "admin/AccountLists.h"
#include "admin/qt/AccountDialogs.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FormBoxes.h"
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

ReportSource listSource(const SiteSession& session) {
    static constexpr std::array<std::string clsGroup::*, groupColumnTitles.size()> sentTexts = {
        &clsGroup::sGIDText, &clsGroup::sName, &clsGroup::sUserCountText};
    ReportSource source;
    for (const std::string_view title : groupColumnTitles) {
        source.columns.push_back({.header = fromCore(title), .alignment = Qt::AlignRight});
    }
    source.columns[static_cast<std::size_t>(GroupColumn::groupName)].alignment = Qt::AlignLeft;
    const auto groupInRow = [&session](int row) -> const clsGroup& {
        return session.Groups[session.groupView.rows[static_cast<std::size_t>(row)]];
    };
    source.text = [&session, groupInRow](int row, int column) {
        return cellTextOf(rowText(groupInRow(row), static_cast<GroupColumn>(column)), session.encoding);
    };
    source.sentText = [groupInRow](int row, int column) -> std::string_view {
        return groupInRow(row).*sentTexts[static_cast<std::size_t>(column)];
    };
    return source;
}

} // namespace

GroupsPanel::GroupsPanel(mdlMain& program, QWidget* parent)
    : AccountsPanel(program, parent),
      boxes_(GroupForm::boxCount, [&program](std::size_t box, std::optional<std::string> text) {
          program.admin().groups().typed(program.currentSite(), box, std::move(text));
      }) {
    AccountTable<GroupKind>& groups = program.admin().groups();
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(
        addButton("cmdGroupsReloadTable", tr("reload"), [&groups](int site) { groups.reload(site); }));
    buttons->addWidget(addButton("cmdGroupAdd", tr("add..."),
                                 [this](int site) { openAddGroup(this->program(), site, this); }));
    buttons->addStretch(1);
    build(withTable({.listName = "lvwGroups",
                     .accessibleName = tr("Groups"),
                     .refused = tr("The server did not send its groups:\n%1"),
                     .none = tr("There are no groups."),
                     .waiting = tr("The server has not sent its groups yet."),
                     .source = [this](int site) { return listSource(session(site)); }},
                    groups),
          buttons, createEditor());
    showEditor(0);
}

QWidget* GroupsPanel::createEditor() {
    AccountTable<GroupKind>& groups = program().admin().groups();
    cmdGroupSaveChanges_ =
        addButton("cmdGroupSaveChanges", tr("save changes"), [&groups](int site) { groups.save(site); });
    cmdReloadGroupfile_ =
        addButton("cmdReloadGroupfile", tr("reload"), [&groups](int site) { groups.reloadDetails(site); });
    boxes_.problem()->setObjectName(QStringLiteral("lblGroupDetails"));
    auto* const editor = new QWidget;
    editor->setObjectName(QStringLiteral("picGroupContainer"));
    auto* const layout = new QVBoxLayout(editor);
    layout->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    layout->addLayout(createBoxes());
    layout->addLayout(createMembers(), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(cmdGroupSaveChanges_);
    buttons->addWidget(cmdReloadGroupfile_);
    buttons->addWidget(boxes_.problem(), 1);
    layout->addLayout(buttons);
    return editor;
}

QFormLayout* GroupsPanel::createBoxes() {
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

QLayout* GroupsPanel::createMembers() {
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

void GroupsPanel::showEditor(int site) {
    AccountEditor<GroupForm> editor =
        site > 0 ? program().admin().groups().editor(site) : AccountEditor<GroupForm>();
    const TextEncoding encoding = site > 0 ? session(site).encoding : TextEncoding::utf8;
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

void GroupsPanel::showMembers() {
    static constexpr std::array<std::string MemberRow::*, 3> texts = {&MemberRow::sId, &MemberRow::sName,
                                                                      &MemberRow::sGadmin};
    lblGroupMembers_->setText(fromCore(form_.lblGroupMembers));
    ReportSource source;
    source.rows = static_cast<int>(form_.lvwGroupMembers.size());
    source.columns = {{tr("uid"), Qt::AlignRight}, {tr("username")}, {tr("gadmin")}};
    source.sentText = [this](int row, int column) -> std::string_view {
        return form_.lvwGroupMembers[static_cast<std::size_t>(row)].*texts[static_cast<std::size_t>(column)];
    };
    source.text = [this, sent = source.sentText](int row, int column) {
        return cellTextOf(sent(row, column), encoding_);
    };
    lvwGroupMembers_->setSource(std::move(source), ReportView::CurrentRow::keep);
    lvwGroupMembers_->fitColumns(0, static_cast<int>(texts.size()) - 1);
}

} // namespace corvel
