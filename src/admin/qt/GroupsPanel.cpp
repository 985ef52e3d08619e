#include "admin/qt/GroupsPanel.h"

#include "admin/GroupEditor.h"
#include "admin/ListRows.h"
#include "admin/qt/AccountDialogs.h"
#include "admin/qt/GroupEditorPanel.h"
#include "widgets/DialogParts.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <array>
#include <string>
#include <utility>

namespace corvel {

namespace {

constexpr int lastColumn = static_cast<int>(groupColumnTitles.size()) - 1;

const clsGroup& groupAt(const SiteSession& session, int index) {
    return session.Groups[static_cast<std::size_t>(index)];
}

// The list's content. The functions look at the session whenever they are asked, so the source stays good
// until the number of rows changes.
ReportSource listSource(const SiteSession& session) {
    static constexpr std::array<std::string clsGroup::*, groupColumnTitles.size()> sentTexts = {
        &clsGroup::sGIDText, &clsGroup::sName, &clsGroup::sUserCountText};
    ReportSource source;
    source.rows = static_cast<int>(session.groupView.rows.size());
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

// Why a list without rows has none.
QString emptyListText(const Site& site) {
    if (!site.session.groupView.problem.empty()) {
        return GroupsPanel::tr("The server did not send its groups:\n%1")
            .arg(displayTextOf(site.session.groupView.problem, site.session.encoding));
    }
    if (site.wSock->state() != SocketState::connected) {
        return GroupsPanel::tr("Not connected.");
    }
    return site.session.groupView.isRead ? GroupsPanel::tr("There are no groups.")
                                         : GroupsPanel::tr("The server has not sent its groups yet.");
}

} // namespace

GroupsPanel::GroupsPanel(mdlMain& program, QWidget* parent)
    : QWidget(parent), program_(program), editor_(new GroupEditorPanel) {
    connectEditor();
    auto* const splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(createLists());
    splitter->addWidget(editor_);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
}

QWidget* GroupsPanel::createLists() {
    lists_ = new SitePages<ReportView*>([this](int site) { return createList(site); });
    auto* const buttons = new QHBoxLayout;
    const auto addButton = [this, buttons](const char* name, const QString& caption, auto act) {
        auto* const button = new QPushButton(caption);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, act] {
            if (program_.currentSite() > 0) {
                act(program_.currentSite());
            }
        });
        buttons->addWidget(button);
    };
    addButton("cmdGroupsReloadTable", tr("reload"),
              [this](int site) { program_.admin().reloadGroups(site); });
    addButton("cmdGroupAdd", tr("add..."), [this](int site) { openAddGroup(program_, site, this); });
    buttons->addStretch(1);
    auto* const area = new QWidget;
    auto* const layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lists_, 1);
    layout->addLayout(buttons);
    return area;
}

ReportView* GroupsPanel::createList(int site) {
    auto* const list = new ReportView;
    list->setObjectName(elementName("lvwGroups", site));
    list->setAccessibleName(tr("Groups"));
    AdminActions& admin = program_.admin();
    connect(list, &ReportView::rowPicked, this, [&admin, site](int row) { admin.openGroup(site, row); });
    connect(list, &ReportView::headerClicked, this,
            [&admin, site](int column) { admin.sortGroups(site, column); });
    connect(list, &ReportView::keyPressed, this,
            [this, site](Qt::Key key, int row) { keyPressed(site, key, row); });
    connect(list, &ReportView::contextMenuRequested, this,
            [this](int /*row*/, const QPoint& position) { emit menuRequested(position); });
    fill(*list, site);
    return list;
}

ReportView& GroupsPanel::list(int site) {
    return *lists_->at(site);
}

void GroupsPanel::connectEditor() {
    connect(editor_, &GroupEditorPanel::saveRequested, this, [this] {
        if (program_.currentSite() > 0) {
            program_.admin().saveGroup(program_.currentSite(), editor_->form());
        }
    });
    connect(editor_, &GroupEditorPanel::reloadRequested, this, [this] {
        if (program_.currentSite() > 0) {
            program_.admin().reloadGroupfile(program_.currentSite());
        }
    });
}

void GroupsPanel::showSite(int site) {
    lists_->showSite(site);
    const int index = site > 0 ? program_.admin().currentGroup(site) : -1;
    if (index >= 0 && groupAt(session(site), index).got_info) {
        showInEditor(site, index);
    } else {
        editor_->clear();
    }
}

void GroupsPanel::fill(ReportView& list, int site) {
    list.setSource(listSource(session(site)));
    list.setPlaceholder(emptyListText(program_.site(site)));
    list.fitColumns(0, lastColumn);
    selectCurrent(list, site);
}

void GroupsPanel::groupsChanged(int site) {
    if (ReportView** const shown = lists_->find(site)) {
        fill(**shown, site);
    }
    // A new table knows no details: a group that is open, or will be when its site comes back to the front,
    // is asked for again.
    AdminActions& admin = program_.admin();
    if (site != program_.currentSite() || isOpen(site)) {
        admin.openGroup(site, admin.currentGroupRow(site));
    } else if (admin.currentGroup(site) < 0) {
        editor_->clear();
    }
}

void GroupsPanel::connectionChanged(int site) {
    if (ReportView** const shown = lists_->find(site)) {
        (*shown)->setPlaceholder(emptyListText(program_.site(site)));
    }
}

void GroupsPanel::groupsSorted(int site) {
    const ListOrder order = session(site).groupView.order;
    list(site).setSortArrow(order.column, order.isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    list(site).refresh();
    selectCurrent(list(site), site);
}

// The members' names come from the user table.
void GroupsPanel::usersChanged(int site) {
    if (site == program_.currentSite() && isOpen(site)) {
        const clsGroup& group = groupAt(session(site), program_.admin().currentGroup(site));
        if (group.got_info) {
            editor_->setMembers(InfoToForm(group, session(site).Users).lvwGroupMembers);
        }
    }
}

// Late details of another group do not take the current one out of the editor.
void GroupsPanel::groupShown(int site, int index) {
    if (ReportView** const shown = lists_->find(site)) {
        (*shown)->refresh();
    }
    if (site == program_.currentSite() && (index == program_.admin().currentGroup(site) || !isOpen(site))) {
        showInEditor(site, index);
    }
}

void GroupsPanel::keyPressed(int site, int key, int row) {
    switch (key) {
    case Qt::Key_Delete:
        // Not the row that only has the focus: nobody has picked it.
        if (const int current = program_.admin().currentGroupRow(site); list(site).isSelected(current)) {
            program_.admin().deleteGroup(site, current);
        }
        break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        program_.admin().openGroup(site, row);
        break;
    case Qt::Key_F5:
        program_.admin().reloadGroups(site);
        break;
    default:
        break;
    }
}

void GroupsPanel::selectCurrent(ReportView& list, int site) {
    list.setCurrentRow(program_.admin().currentGroupRow(site));
}

bool GroupsPanel::isOpen(int site) const {
    return program_.admin().editedGroup(site, editor_->txtGroupGID()) >= 0;
}

void GroupsPanel::showInEditor(int site, int index) {
    editor_->setForm(InfoToForm(groupAt(session(site), index), session(site).Users), session(site).encoding);
}

} // namespace corvel
