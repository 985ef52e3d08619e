#include "net/qt/ActivityPanel.h"

#include "widgets/FilterBox.h"
#include "widgets/Forms.h"
#include "widgets/ImageLists.h"
#include "widgets/ReportView.h"
#include "widgets/StoreValues.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <string_view>

namespace corvel {

namespace {

constexpr int columnCount = static_cast<int>(activityColumnCount);
constexpr int firstMovable = static_cast<int>(firstMovableColumn);
constexpr int positionColumn = static_cast<int>(ActivityCell::position);

constexpr std::array rightAligned = {ActivityCell::position, ActivityCell::cid,
                                     ActivityCell::speed,    ActivityCell::transferred,
                                     ActivityCell::idleTime, ActivityCell::sessionTime};

std::vector<ReportColumn> reportColumns(const WindowState& state) {
    std::vector<ReportColumn> columns(activityColumnCount);
    columns[static_cast<std::size_t>(ActivityCell::position)].header = QStringLiteral("#");
    for (std::size_t column = firstMovableColumn; column < columns.size(); ++column) {
        columns[column].header = fromCore(activityColumnHeaders[column - firstMovableColumn]);
        columns[column].hidden = !state.columns[column].shown;
    }
    for (const ActivityCell cell : rightAligned) {
        columns[static_cast<std::size_t>(cell)].alignment = Qt::AlignRight;
    }
    return columns;
}

// The key of the image for a row; none for a state that is not known.
std::string_view imageKey(ActivityIcon icon) {
    static constexpr std::array<std::string_view, 4> keys = {"", "activity-idle", "activity-up",
                                                             "activity-down"};
    return keys[static_cast<std::size_t>(icon)];
}

RowColours rowColours(const WindowState& state, ActivityIcon icon) {
    const auto colours = [](std::int32_t text, std::int32_t background) {
        return RowColours{.text = colorFromStore(text), .background = colorFromStore(background)};
    };
    if (!state.activitylist_use_colors) {
        return {};
    }
    switch (icon) {
    case ActivityIcon::idle:
        return colours(state.activitylist_color_idle_fg, state.activitylist_color_idle_bg);
    case ActivityIcon::up:
        return colours(state.activitylist_color_up_fg, state.activitylist_color_up_bg);
    case ActivityIcon::down:
        return colours(state.activitylist_color_dn_fg, state.activitylist_color_dn_bg);
    case ActivityIcon::none:
        break;
    }
    return {};
}

// The list's content. The functions look at the session whenever they are asked, so the source stays good
// until there are fewer rows.
ReportSource listSource(const SiteSession& session, const WindowState& state, const ImageLists& images) {
    const auto rowAt = [&session](int row) -> const ActivityRow& {
        return session.activityRows.rows[static_cast<std::size_t>(row)];
    };
    const auto bytesAt = [rowAt](int row, int column) {
        return rowAt(row).text(static_cast<ActivityCell>(column));
    };
    ReportSource source;
    source.rows = static_cast<int>(session.activityRows.rows.size());
    source.columns = reportColumns(state);
    source.nameColumn = static_cast<int>(ActivityCell::user);
    source.text = [bytesAt](int row, int column) { return cellTextOf(bytesAt(row, column)); };
    source.sentText = bytesAt;
    source.icon = [&images, &state, rowAt](int row) {
        const ActivityIcon icon = rowAt(row).icon();
        return images.image(imageKey(icon), rowColours(state, icon).text);
    };
    source.iconText = [rowAt](int row) { return cellTextOf(rowAt(row).text(ActivityCell::action)); };
    source.colours = [&state, rowAt](int row) { return rowColours(state, rowAt(row).icon()); };
    return source;
}

// Why a list without rows has none.
QString emptyListText(const Site& site) {
    const SiteSession& session = site.session;
    if (site.wSock->state() != SocketState::connected) {
        return ActivityPanel::tr("Not connected.");
    }
    if (!session.activityRows.problem.empty()) {
        return ActivityPanel::tr("The server did not say who is online:\n%1")
            .arg(cellTextOf(session.activityRows.problem));
    }
    return session.activityRows.replies > 0
               ? ActivityPanel::tr("Nobody is online.")
               : ActivityPanel::tr(
                     "No activity to show.\nThis version does not ask by itself: press \"ask now\".");
}

} // namespace

ActivityPanel::ActivityPanel(mdlMain& program, const ImageLists& images, QWidget* parent)
    : QWidget(parent), program_(program), images_(images) {
    pages_ = new SitePages<Page>([this](int site) {
        Page page = {.widget = createList(site)};
        showRows(page, site);
        arrange(*page.widget);
        return page;
    });
    chkFreezeRefresh_ = new QCheckBox(tr("freeze"));
    chkFreezeRefresh_->setObjectName(QStringLiteral("chkFreezeRefresh"));
    chkFreezeRefresh_->setToolTip(tr("Keep the lists as they are"));
    cmdRefreshWho_ = new QPushButton(tr("ask now"));
    cmdRefreshWho_->setObjectName(QStringLiteral("cmdRefreshWho"));
    cmdRefreshWho_->setToolTip(tr("Ask the server once who is online"));
    connect(cmdRefreshWho_, &QPushButton::clicked, this, [this] { program_.askWho(program_.currentSite()); });
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(cmdRefreshWho_);
    buttons->addWidget(chkFreezeRefresh_);
    buttons->addStretch(1);
    auto* const layout = new QVBoxLayout(this);
    auto* const filter = new FilterBox("txtActivityFilter", "lblActivityCount");
    connect(pages_, &QStackedWidget::currentChanged, filter,
            [this, filter] { filter->setList(qobject_cast<ReportView*>(pages_->currentWidget())); });
    layout->addWidget(filter);
    layout->addWidget(pages_, 1);
    layout->addLayout(buttons);
}

void ActivityPanel::showSite(int site) {
    pages_->showSite(site);
    cmdRefreshWho_->setEnabled(site > 0);
    applyColumns(); // another site's may have been changed
}

void ActivityPanel::activityChanged(int site) {
    if (Page* const page = pages_->find(site)) {
        showRows(*page, site);
    }
}

void ActivityPanel::showRows(Page& page, int site) {
    const SiteSession& session = program_.site(site).session;
    const std::vector<ActivityRow>& rows = session.activityRows.rows;
    auto& [list, shownReply] = page;
    if (static_cast<int>(rows.size()) < list->source().rows) {
        list->setSource(listSource(session, state(), images_));
        shownReply = 0;
    }
    list->setPlaceholder(emptyListText(program_.site(site)));
    list->growTo(static_cast<int>(rows.size()));
    const auto hasChanged = [&rows, shown = shownReply](int row) {
        return rows[static_cast<std::size_t>(row)].changedIn > shown;
    };
    list->refreshWhere(hasChanged);
    const bool isAnyChanged = std::ranges::any_of(
        rows, [shown = shownReply](const ActivityRow& row) { return row.changedIn > shown; });
    if (isAnyChanged) {
        fit(*list);
    }
    shownReply = session.activityRows.replies;
}

void ActivityPanel::applyColumns() {
    if (Page* const page = pages_->find(program_.currentSite())) {
        arrange(*page->widget);
    }
}

void ActivityPanel::applyColours() {
    if (Page* const page = pages_->find(program_.currentSite())) {
        page->widget->viewport()->update();
    }
}

void ActivityPanel::restoreColumnWidths() {
    Page* const page = pages_->find(program_.currentSite());
    if (page == nullptr) {
        return;
    }
    ReportView& list = *page->widget;
    for (int column = firstMovable; column < columnCount; ++column) {
        const auto number = static_cast<std::size_t>(column);
        if (list.isColumnHidden(column) || list.columnWidth(column) > 0) {
            continue;
        }
        if (state().columns[number].autosize) {
            list.fitColumns(column, column);
        } else {
            list.setColumnUnits(column, WindowState().columns[number].width);
        }
    }
}

bool ActivityPanel::isFrozen() const {
    return chkFreezeRefresh_->isChecked();
}

ReportView* ActivityPanel::createList(int site) {
    auto* const list = new ReportView;
    list->setObjectName(elementName("lvwActivity", site));
    list->setAccessibleName(tr("Activity"));
    list->setSource(listSource(program_.site(site).session, state(), images_));
    QHeaderView& header = *list->header();
    header.setMinimumSectionSize(pixelsFromUnits(state().columns.front().width));
    list->letColumnsMove(firstMovable);
    connect(&header, &QHeaderView::sectionMoved, this, [this, list] { keepOrder(*list); });
    connect(&header, &QHeaderView::sectionResized, this,
            [this, list](int column) { keepWidth(*list, column); });
    connect(list, &ReportView::currentRowChanged, this,
            [this, site](int row) { program_.selectActivityRow(site, row); });
    connect(list, &ReportView::contextMenuRequested, this,
            [this](int /*row*/, const QPoint& position) { emit menuRequested(position); });
    return list;
}

// Gives the list's columns the places and widths of the state.
void ActivityPanel::arrange(ReportView& list) {
    isArranging_ = true;
    QHeaderView& header = *list.header();
    const auto order = activityColumnOrder(state());
    for (int place = 0; place < columnCount; ++place) {
        const int column = static_cast<int>(order[static_cast<std::size_t>(place)]);
        header.moveSection(header.visualIndex(column), place);
    }
    for (int column = 0; column < columnCount; ++column) {
        const ActivityColumn& wanted = state().columns[static_cast<std::size_t>(column)];
        list.setColumnHidden(column, column >= firstMovable && !wanted.shown);
        if (!wanted.autosize && wanted.shown) {
            list.setColumnUnits(column, wanted.width);
        }
    }
    isArranging_ = false;
    fit(list);
}

// The numbers of the rows are the one fixed column that needs more room with more rows.
void ActivityPanel::fit(ReportView& list) const {
    for (int column = firstMovable; column < columnCount; ++column) {
        if (state().columns[static_cast<std::size_t>(column)].autosize) {
            list.fitColumns(column, column);
        }
    }
    list.fitColumns(positionColumn, positionColumn);
    list.setColumnUnits(positionColumn,
                        std::max(list.columnUnits(positionColumn), state().columns[positionColumn].width));
}

void ActivityPanel::keepOrder(const ReportView& list) {
    if (isArranging_) {
        return;
    }
    for (int column = 0; column < columnCount; ++column) {
        state().columns[static_cast<std::size_t>(column)].position =
            static_cast<std::int16_t>(list.header()->visualIndex(column));
    }
}

void ActivityPanel::keepWidth(const ReportView& list, int column) {
    ActivityColumn& kept = state().columns[static_cast<std::size_t>(column)];
    if (!isArranging_ && column >= firstMovable && !kept.autosize) {
        kept.width = list.columnUnits(column);
    }
}

} // namespace corvel
