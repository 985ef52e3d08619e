#include "admin/qt/GroupsPanel.h"

#include "admin/ListRows.h"
#include "admin/qt/AccountDialogs.h"
#include "admin/qt/GroupEditorPanel.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QPushButton>

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

GroupsPanel::GroupsPanel(mdlMain& program, QWidget* parent) : AccountsPanel(program, parent) {
    AccountTable<GroupKind>& groups = program.admin().groups();
    editor_ = new GroupEditorPanel([&program, &groups](std::size_t box, std::optional<std::string> text) {
        groups.typed(program.currentSite(), box, std::move(text));
    });
    const auto on = [this, &program, &groups](auto signal, void (AccountTable<GroupKind>::*act)(int)) {
        connect(editor_, signal, this, [&program, &groups, act] {
            if (program.currentSite() > 0) {
                (groups.*act)(program.currentSite());
            }
        });
    };
    on(&GroupEditorPanel::saveRequested, &AccountTable<GroupKind>::save);
    on(&GroupEditorPanel::reloadRequested, &AccountTable<GroupKind>::reloadDetails);

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
          buttons, editor_);
}

void GroupsPanel::showEditor(int site) {
    editor_->show(site > 0 ? program().admin().groups().editor(site) : AccountEditor<GroupForm>(),
                  site > 0 ? session(site).encoding : TextEncoding::utf8);
}

} // namespace corvel
