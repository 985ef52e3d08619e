#include "admin/qt/AccountsPanel.h"

#include "admin/qt/EditorBoxes.h"
#include "widgets/DialogParts.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <utility>

namespace corvel {

void AccountsPanel::build(AccountsOutline outline, QLayout* buttons, QWidget* side) {
    outline_ = std::move(outline);
    lists_ = new SitePages<List>([this](int site) { return createList(site); });
    auto* const area = new QWidget;
    area->setMinimumWidth(fontMetrics().averageCharWidth() * 35); // the columns of usual names, sorted
    auto* const lists = new QVBoxLayout(area);
    lists->setContentsMargins(0, 0, 0, 0);
    lists->addWidget(lists_, 1);
    lists->addLayout(buttons);
    auto* const splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(area);
    splitter->addWidget(side);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
}

QPushButton* AccountsPanel::newButton(const char* name, const QString& caption, std::function<void()> act) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, std::move(act));
    return button;
}

AccountsPanel::List AccountsPanel::createList(int site) {
    auto* const list = new ReportView;
    list->setObjectName(elementName(outline_.listName, site));
    list->setAccessibleName(outline_.accessibleName);
    list->setMultiSelection(outline_.isMultiple);
    connect(list, &ReportView::rowPicked, this, [this, site](int row) { outline_.open(site, row); });
    connect(list, &ReportView::headerClicked, this,
            [this, site](int column) { outline_.sortBy(site, column); });
    connect(list, &ReportView::keyPressed, this,
            [this, site](Qt::Key key, int row) { keyPressed(site, key, row); });
    connect(list, &ReportView::contextMenuRequested, this,
            [this](int /*row*/, const QPoint& position) { emit menuRequested(position); });
    List page{.widget = list, .rows = {}};
    fill(site, page);
    return page;
}

// The source looks at the session whenever it is asked, so it stays good until the number of rows changes.
void AccountsPanel::fill(int site, List& list) {
    list.rows = (session(site).*outline_.view).rows;
    ReportSource source = outline_.source(site);
    source.rows = static_cast<int>(list.rows.size());
    source.colours = [this, site](int row) {
        const std::size_t index = (session(site).*outline_.view).rows[static_cast<std::size_t>(row)];
        return outline_.hasDraft(site, index) ? RowColours{.background = unsavedColour(palette())}
                                              : RowColours{};
    };
    const int lastColumn = static_cast<int>(source.columns.size()) - 1;
    list.widget->setSource(std::move(source));
    list.widget->setPlaceholder(emptyText(site));
    list.widget->fitColumns(0, lastColumn);
    list.widget->setCurrentRow(outline_.currentRow(site));
}

// The accounts that are selected stay so, in whichever rows they stand then. Where the table is another one
// by now, of which the window is told next, there is nothing to keep.
void AccountsPanel::reorder(int site, List& list) {
    const AccountView& view = session(site).*outline_.view;
    if (view.rows.size() != list.rows.size()) {
        fill(site, list);
        return;
    }
    std::vector<bool> isSelected(list.rows.size());
    for (const int row : list.widget->selectedRows()) {
        isSelected[list.rows[static_cast<std::size_t>(row)]] = true;
    }
    list.rows = view.rows;
    list.widget->setSortArrow(view.order.column,
                              view.order.isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    list.widget->refresh();
    list.widget->setCurrentRow(outline_.currentRow(site));
    std::vector<int> selected;
    for (std::size_t row = 0; row < list.rows.size(); ++row) {
        if (isSelected[list.rows[row]]) {
            selected.push_back(static_cast<int>(row));
        }
    }
    list.widget->setSelectedRows(selected);
}

void AccountsPanel::showSite(int site) {
    lists_->showSite(site);
    showEditor(site);
}

void AccountsPanel::connectionChanged(int site) {
    if (List* const list = lists_->find(site)) {
        list->widget->setPlaceholder(emptyText(site));
    }
}

// Why a list without rows has none.
QString AccountsPanel::emptyText(int site) const {
    const AccountView& view = session(site).*outline_.view;
    if (!view.problem.empty()) {
        return outline_.refused.arg(displayTextOf(view.problem, session(site).encoding));
    }
    if (program_.site(site).wSock->state() != SocketState::connected) {
        return tr("Not connected.");
    }
    return view.isRead ? outline_.none : outline_.waiting;
}

void AccountsPanel::accountsChanged(int site, Accounts accounts, AccountChange change) {
    const bool isMine = accounts == outline_.accounts;
    if (List* const found = isMine ? lists_->find(site) : nullptr) {
        List& list = *found;
        switch (change) {
        case AccountChange::table:
            fill(site, list);
            break;
        case AccountChange::record:
            reorder(site, list);
            list.widget->fitColumns(0, static_cast<int>(list.widget->source().columns.size()) - 1);
            break;
        case AccountChange::order:
            reorder(site, list);
            break;
        case AccountChange::marks:
            list.widget->refresh();
            break;
        case AccountChange::editor:
            break;
        }
    }
    const bool concernsEditor = isMine ? change != AccountChange::order && change != AccountChange::marks
                                       : change == AccountChange::table || change == AccountChange::record;
    if (concernsEditor && site == program_.currentSite()) {
        showEditor(site);
    }
}

std::vector<std::size_t> AccountsPanel::selectedIndexes(int site) const {
    std::vector<std::size_t> indexes;
    if (const List* const list = lists_->find(site)) {
        for (const int row : list->widget->selectedRows()) {
            indexes.push_back(list->rows[static_cast<std::size_t>(row)]);
        }
    }
    return indexes;
}

void AccountsPanel::keyPressed(int site, Qt::Key key, int row) {
    switch (key) {
    case Qt::Key_Delete:
        // Not the row that only has the focus: nobody has picked it.
        if (const int current = outline_.currentRow(site); lists_->at(site).widget->isSelected(current)) {
            outline_.remove(site, current);
        }
        break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        outline_.open(site, row);
        break;
    case Qt::Key_Insert:
        if (outline_.insert) {
            outline_.insert();
        }
        break;
    case Qt::Key_F5:
        outline_.reload(site);
        break;
    default:
        break;
    }
}

} // namespace corvel
