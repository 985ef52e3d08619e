#include "admin/qt/GroupsPanel.h"

#include "admin/AccountLists.h"
#include "admin/qt/AccountDialogs.h"
#include "common/Numbers.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include <array>

namespace corvel {

GroupsPanel::GroupsPanel(mdlMain& program, QWidget* parent)
    : AccountsPanel(program, parent),
      editor_(program, program.admin().groups(), "lblGroupDetails", "lblGroupOutcome") {
    AccountTable<GroupKind>& groups = program.admin().groups();
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(newSiteButton(program, "cmdGroupsReloadTable", tr("reload"),
                                     [&groups](int site) { groups.reload(site); }));
    buttons->addWidget(newSiteButton(program, "cmdGroupAdd", tr("add..."),
                                     [this, &program](int site) { openAddGroup(program, site, this); }));
    buttons->addStretch(1);
    build(
        withTable<GroupKind, GroupColumn>({.listName = "lvwGroups",
                                           .filterName = "txtGroupsFilter",
                                           .countName = "lblGroupsCount",
                                           .accessibleName = tr("Groups"),
                                           .refused = tr("The server did not send its groups:\n%1"),
                                           .none = tr("There are no groups."),
                                           .waiting = tr("The server has not sent its groups yet.")},
                                          program, groups, groupColumnTitles,
                                          {&clsGroup::sGIDText, &clsGroup::sName, &clsGroup::sUserCountText},
                                          {Qt::AlignRight, Qt::AlignLeft, Qt::AlignRight}),
        buttons, createEditor());
    showEditor(0);
}

QWidget* GroupsPanel::createEditor() {
    AccountTable<GroupKind>& groups = program().admin().groups();
    auto* const editor = new QWidget;
    editor->setObjectName(QStringLiteral("picGroupContainer"));
    auto* const layout = new QVBoxLayout(editor);
    layout->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    layout->addLayout(createBoxes());
    layout->addLayout(createMembers(), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(editor_.newButton("cmdGroupSaveChanges", tr("save changes"), true,
                                         [&groups](int site) { groups.save(site); }));
    buttons->addWidget(editor_.newButton("cmdReloadGroupfile", tr("reload"), false,
                                         [&groups](int site) { groups.reloadDetails(site); }));
    buttons->addWidget(editor_.problem(), 1);
    layout->addLayout(buttons);
    layout->addWidget(editor_.outcome());
    connect(editor_.outcome(), &LinkLabel::clicked, this, &AccountsPanel::resultsWanted);
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
        BytesEdit* const box = editor_.box(number);
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
    lvwGroupMembers_->header()->setStretchLastSection(true);
    connect(lvwGroupMembers_, &ReportView::rowDoubleClicked, this, [this](int row) {
        emit userWanted(toInt16(editor_.form().lvwGroupMembers[static_cast<std::size_t>(row)].sId));
    });
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
    if (!editor_.show(site)) {
        return;
    }
    const GroupForm& form = editor_.form();
    gid_->setText(fromCore(form.txtGroupGID));
    lblGroupMembers_->setText(fromCore(form.lblGroupMembers));
    lvwGroupMembers_->setSource(sourceOf(form.lvwGroupMembers,
                                         {{tr("uid"), Qt::AlignRight}, {tr("username")}, {tr("gadmin")}},
                                         {&MemberRow::sId, &MemberRow::sName, &MemberRow::sGadmin}),
                                ReportView::CurrentRow::keep);
    lvwGroupMembers_->fitColumns(0, 2);
}

} // namespace corvel
