#include "admin/qt/AccountsPanel.h"

#include "widgets/FilterBox.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

QString say(const char* text) {
    return QCoreApplication::translate("EditorBoxes", text);
}

void mark(BytesEdit& box, bool isTouched, const QString& tip) {
    QPalette palette;
    if (isTouched) {
        palette.setColor(QPalette::Base, unsavedColour(palette));
    }
    box.setPalette(palette);
    box.setToolTip(isTouched ? say("Not saved yet") : tip);
}

} // namespace

QColor unsavedColour(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    constexpr double share = 0.25;
    const auto mixed = [](int ground, int colour) {
        return static_cast<int>(ground * (1 - share) + colour * share);
    };
    return {mixed(base.red(), 0xFF), mixed(base.green(), 0xA5), mixed(base.blue(), 0x00)};
}

QPushButton* newSiteButton(mdlMain& program, const char* name, const QString& caption,
                           std::function<void(int site)> act) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, button, [&program, act = std::move(act)] {
        if (program.currentSite() > 0) {
            act(program.currentSite());
        }
    });
    return button;
}

EditorBoxes::EditorBoxes(std::size_t count, const char* problemName, const char* outcomeName, Typed typed)
    : typed_(std::move(typed)), tips_(count), problem_(new ElidedLabel(problemName)),
      outcome_(new LinkLabel(outcomeName, say("Shows the answers in the results"))) {
    QSizePolicy place = outcome_->sizePolicy();
    place.setRetainSizeWhenHidden(true); // so that nothing moves when there is something to say
    outcome_->setSizePolicy(place);
    for (std::size_t number = 0; number < count; ++number) {
        auto* const box = new BytesEdit;
        QObject::connect(box, &QLineEdit::textEdited, box, [this, number, box](const QString& text) {
            mark(*box, box->isTouched(), tips_[number]);
            typed_(number, box->isTouched() ? std::optional(toCore(text)) : std::nullopt);
        });
        boxes_.push_back(box);
    }
}

void EditorBoxes::setTip(std::size_t number, const QString& tip) {
    tips_[number] = tip;
    boxes_[number]->setToolTip(tip);
}

void EditorBoxes::showBox(std::size_t number, const std::string& bytes, const Draft* draft) {
    BytesEdit& box = *boxes_[number];
    box.setEnabled(isKnown_);
    const std::string* typed = nullptr;
    if (isKnown_ && draft != nullptr) {
        const auto found = draft->boxes.find(number);
        typed = found == draft->boxes.end() ? nullptr : &found->second;
    }
    box.setBytes(bytes, typed == nullptr ? std::nullopt : std::optional(fromCore(*typed)));
    mark(box, typed != nullptr, tips_[number]);
}

void EditorBoxes::showProblem(Details details, const std::string& problem) {
    switch (details) {
    case Details::none:
    case Details::known:
        problem_->showText({});
        return;
    case Details::wanted:
    case Details::asked:
        problem_->showText(isKnown_ ? QString() : say("Waiting for the details ..."));
        return;
    case Details::refused:
        problem_->showText(say("No details: %1").arg(cellTextOf(problem)));
        return;
    }
}

void AccountsPanel::build(AccountsOutline outline, QLayout* buttons, QWidget* side) {
    outline_ = std::move(outline);
    lists_ = new SitePages<List>([this](int site) { return createList(site); });
    auto* const area = new QWidget;
    area->setMinimumWidth(fontMetrics().averageCharWidth() * 35); // the columns of usual names, sorted
    auto* const lists = new QVBoxLayout(area);
    lists->setContentsMargins(0, 0, 0, 0);
    auto* const filter = new FilterBox(outline_.filterName, outline_.countName);
    connect(lists_, &QStackedWidget::currentChanged, filter,
            [this, filter] { filter->setList(qobject_cast<ReportView*>(lists_->currentWidget())); });
    lists->addWidget(filter);
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
    auto* const saving = new QShortcut(QKeySequence::Save, this);
    saving->setContext(Qt::WidgetWithChildrenShortcut);
    connect(saving, &QShortcut::activated, this, [this] {
        if (program_.currentSite() > 0) {
            save(program_.currentSite());
        }
    });
}

AccountsPanel::List AccountsPanel::createList(int site) {
    auto* const list = new ReportView;
    list->setObjectName(elementName(outline_.listName, site));
    list->setAccessibleName(outline_.accessibleName);
    list->setMultiSelection(outline_.isMultiple);
    list->header()->setStretchLastSection(true);
    connect(list, &ReportView::rowPicked, this, [this, site](int row) { outline_.open(site, row); });
    connect(list, &ReportView::headerClicked, this,
            [this, site](int column) { outline_.sortBy(site, column); });
    connect(list, &ReportView::keyPressed, this,
            [this, site](Qt::Key key, int row) { keyPressed(site, key, row); });
    connect(list, &ReportView::filtered, this, [this, site] {
        showCurrent(site);
        selectionChanged();
    });
    connect(list, &ReportView::contextMenuRequested, this,
            [this, site, list](int /*row*/, const QPoint& position) {
                // What the menu does, it does to the current record.
                const int current = outline_.currentRow(site);
                if (current < 0 || list->isShown(current)) {
                    emit menuRequested(position);
                } else {
                    program_.outbox().tell(site, outline_.accounts == Accounts::users
                                                     ? "No menu: the filter hides the user that is open"
                                                     : "No menu: the filter hides the group that is open");
                }
            });
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { selectionChanged(); });
    List page{.widget = list, .rows = {}};
    fill(site, page);
    return page;
}

// The source looks at the session whenever it is asked, so it stays good until the number of rows changes.
void AccountsPanel::fill(int site, List& list) {
    list.rows = (session(site).*outline_.view).rows;
    ReportSource source = outline_.source(site);
    source.rows = static_cast<int>(list.rows.size());
    if (outline_.icon) {
        source.icon = [this, site](int row) { return outline_.icon(site, row); };
        source.iconText = [this, site](int row) { return outline_.iconText(site, row); };
    }
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

// The current record's row is the current one again when a filter lets it be seen.
void AccountsPanel::showCurrent(int site) {
    ReportView& list = *lists_->at(site).widget;
    const int current = outline_.currentRow(site);
    if (list.currentRow() != current && list.isShown(current)) {
        const std::vector<int> selected = list.selectedRows();
        list.setCurrentRow(current);
        if (!selected.empty()) {
            list.setSelectedRows(selected);
        }
    }
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
        return outline_.refused.arg(cellTextOf(view.problem));
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
            selectionChanged();
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
    if (const List* const list = lists_ == nullptr ? nullptr : lists_->find(site)) {
        for (const int row : list->widget->selectedRows()) {
            indexes.push_back(list->rows[static_cast<std::size_t>(row)]);
        }
    }
    return indexes;
}

// Not the row that only has the focus: nobody has picked it.
void AccountsPanel::removeSelected(int site) {
    const List* const list = lists_->find(site);
    if (list == nullptr) {
        return;
    }
    const std::vector<int> rows = list->widget->selectedRows();
    if (rows.empty()) {
        program_.outbox().tell(site, "Nothing was deleted: nothing that the list shows is selected");
        return;
    }
    outline_.remove(site, rows);
}

void AccountsPanel::goTo(int site, std::int16_t id) {
    ReportView& list = *lists_->at(site).widget;
    const int row = outline_.rowOf(site, id);
    if (row < 0) {
        return;
    }
    if (!list.isShown(row)) {
        list.setFilter({});
    }
    list.setCurrentRow(row);
    outline_.open(site, row);
    list.setFocus();
}

void AccountsPanel::selectWhere(int site, const std::function<bool(std::size_t index)>& isWanted) {
    const List& list = lists_->at(site);
    std::vector<int> rows;
    for (std::size_t row = 0; row < list.rows.size(); ++row) {
        if (isWanted(list.rows[row])) {
            rows.push_back(static_cast<int>(row));
        }
    }
    if (!std::ranges::all_of(rows, [&list](int row) { return list.widget->isShown(row); })) {
        list.widget->setFilter({});
    }
    list.widget->setSelectedRows(rows);
}

void AccountsPanel::keyPressed(int site, Qt::Key key, int row) {
    switch (key) {
    case Qt::Key_Delete:
        removeSelected(site);
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
