#include "browser/qt/BrowserPanel.h"

#include "browser/qt/BrowserDialogs.h"
#include "common/Numbers.h"
#include "widgets/FilterBox.h"
#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/LogBox.h"
#include "widgets/LogTools.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include <array>

namespace corvel {

namespace {

constexpr int nameColumn = static_cast<int>(BrowserColumn::name);
constexpr int sizeColumn = static_cast<int>(BrowserColumn::size);
constexpr int accessColumn = static_cast<int>(BrowserColumn::access);

constexpr std::array<const char*, browserColumnCount> headers = {
    QT_TRANSLATE_NOOP("BrowserPanel", "name"),  QT_TRANSLATE_NOOP("BrowserPanel", "size"),
    QT_TRANSLATE_NOOP("BrowserPanel", "date"),  QT_TRANSLATE_NOOP("BrowserPanel", "owner"),
    QT_TRANSLATE_NOOP("BrowserPanel", "group"), QT_TRANSLATE_NOOP("BrowserPanel", "access"),
    QT_TRANSLATE_NOOP("BrowserPanel", "type")};

std::vector<ReportColumn> reportColumns() {
    std::vector<ReportColumn> columns;
    columns.reserve(headers.size());
    for (const char* const header : headers) {
        columns.push_back({.header = BrowserPanel::tr(header)});
    }
    columns[sizeColumn].alignment = Qt::AlignRight;
    columns.back().hidden = true;
    return columns;
}

const char* iconName(const BrowserEntry& entry) {
    static constexpr std::array<const char*, 3> names = {"directory", "link", "file"};
    return names[static_cast<std::size_t>(imageIndex(entry)) - 1];
}

// The list's content. The functions look at the session whenever they are asked, so the source stays good
// until the rows change.
ReportSource listSource(const SiteSession& session) {
    const RemoteList& rows = session.browser;
    const auto entryAt = [&rows](int row) -> const BrowserEntry& {
        return rows.listing.entries[rows.order[static_cast<std::size_t>(row)]];
    };
    const std::string separator = toCore(QLocale().groupSeparator());
    ReportSource source;
    source.rows = static_cast<int>(rows.order.size());
    source.columns = reportColumns();
    while (source.pinned < source.rows && entryAt(source.pinned).name == "..") {
        ++source.pinned;
    }
    source.text = [&session, separator](int row, int column) {
        const auto cell = static_cast<BrowserColumn>(column);
        const std::uint32_t index = session.browser.order[static_cast<std::size_t>(row)];
        return cellTextOf(cellText(session.browser.listing, index, cell, separator));
    };
    source.sentText = [entryAt](int row, int column) {
        return listedText(entryAt(row), static_cast<BrowserColumn>(column));
    };
    source.alsoFound = [entryAt, separator](int row) { // the size as it is shown
        const std::string_view size = entryAt(row).size;
        return sizeNumber(size) ? groupThousands(size, separator) : std::string();
    };
    source.icon = [entryAt](int row) { return icon(iconName(entryAt(row))); };
    source.iconText = [entryAt](int row) {
        static const std::array<QString, 3> texts = {BrowserPanel::tr("Directory"), BrowserPanel::tr("Link"),
                                                     BrowserPanel::tr("File")};
        return texts[static_cast<std::size_t>(imageIndex(entryAt(row))) - 1];
    };
    source.isDimmed = [&rows] { return !whyNotUsable(rows).empty(); };
    source.editText = [entryAt](int row) { return textOf(entryAt(row).name); };
    return source;
}

void fitName(ReportView& list) {
    std::array<int, accessColumn> others{};
    for (int column = sizeColumn; column <= accessColumn; ++column) {
        others[static_cast<std::size_t>(column - sizeColumn)] = list.columnUnits(column);
    }
    list.setColumnUnits(nameColumn, FitBrowserColumns(list.widthUnits(), others));
}

} // namespace

BrowserPanel::BrowserPanel(mdlMain& program, QWidget* parent) : QWidget(parent), program_(program) {
    pages_ = new SitePages<Page>([this](int site) { return createPage(site); });
    auto* const filter = new FilterBox("txtBrowserFilter", "lblBrowserCount");
    filter->setCaptionWidth(fontMetrics().size(Qt::TextShowMnemonic, tr("&Directory:")).width());
    connect(pages_, &QStackedWidget::currentChanged, filter,
            [this, filter] { filter->setList(pages_->currentWidget()->findChild<ReportView*>()); });
    addNotes(*filter->layout());
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(filter);
    layout->addWidget(pages_, 1);
    layout->addWidget(createButtons());
    auto* const up = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Up), this); // while the tab is in front
    connect(up, &QShortcut::activated, this, [this] { act(BrowserAct::up); });
}

BrowserPanel::Page BrowserPanel::createPage(int site) {
    Page added;
    added.path = createPath(site);
    auto* const pathLabel = new QLabel(tr("&Directory:"));
    pathLabel->setBuddy(added.path);

    added.list = createList(site);
    added.replies =
        new LogBox([this, site]() -> const LogText& { return program_.site(site).session.browserReplyLog; });
    connect(added.replies, &LogBox::clearWanted, this,
            [this, site] { program_.clearLog(site, LogKind::browserReply); });
    added.replies->setObjectName(elementName("txtBrowserCmdReply", site));
    added.replies->setAccessibleName(tr("Replies to file commands"));
    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(added.list);
    splitter->addWidget(added.replies);
    splitter->setStretchFactor(0, 5);
    splitter->setStretchFactor(1, 1);

    auto* const pathLine = new QHBoxLayout;
    pathLine->addWidget(pathLabel);
    pathLine->addWidget(added.path, 1);
    added.widget = new QWidget;
    auto* const layout = new QVBoxLayout(added.widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(pathLine);
    layout->addWidget(splitter, 1);
    added.replies->scheduleUpdate();
    showPath(added, site);
    showListing(added, site);
    arrangeInTurns(site);
    return added;
}

void BrowserPanel::showEvent(QShowEvent* event) {
    if (tools_ == nullptr) {
        tools_ = new LogTools(*pages_, tr("Find in replies:"));
        static_cast<QVBoxLayout*>(layout())->insertWidget(layout()->indexOf(pages_) + 1, tools_);
        const Page* const page = pages_->find(program_.currentSite());
        setTabOrderBehind(page == nullptr ? static_cast<QWidget&>(*pages_) : *page->replies, *tools_);
    }
    QWidget::showEvent(event);
    showActions();
}

void BrowserPanel::showSite(int site) {
    pages_->showSite(site);
    showCounts();
    showState();
}

void BrowserPanel::logChanged(int site) {
    if (const Page* const page = pages_->find(site)) {
        page->replies->scheduleUpdate();
    }
}

void BrowserPanel::listingChanged(int site) {
    Page* const page = pages_->find(site);
    if (site == program_.currentSite()) {
        showState();
    }
    if (page == nullptr) {
        return;
    }
    const RemoteList& rows = program_.site(site).session.browser;
    page->list->setPlaceholder(fromCore(emptyReason(rows)));
    if (page->shownVisit != rows.visits) {
        page->shownVisit = rows.visits;
        page->list->setFilter({});
    }
    if (rows.isArranged) {
        page->shownListing == rows.listings ? showOrder(*page, rows) : showListing(*page, site);
        return;
    }
    if (page->list->source().rows > 0) {
        page->firstRow = page->list->verticalScrollBar()->value();
        page->list->setSource({.columns = reportColumns()});
    }
    if (page->shownListing != rows.listings) {
        page->shownListing = rows.listings;
        arrangeInTurns(site);
    }
}

// Every part of ordering a long listing, and then showing it, takes a turn of the event loop each.
void BrowserPanel::arrangeInTurns(int site) {
    if (program_.site(site).session.browser.isArranged) {
        return;
    }
    QTimer::singleShot(0, this, [this, site] {
        if (!program_.browser().arrange(site)) {
            arrangeInTurns(site);
            return;
        }
        QTimer::singleShot(0, this, [this, site] {
            if (Page* const page = pages_->find(site)) {
                showListing(*page, site);
            }
        });
    });
}

// What a listing brings; a person's place in the same directory stays.
void BrowserPanel::showListing(Page& page, int site) {
    const SiteSession& session = program_.site(site).session;
    const RemoteList& rows = session.browser;
    page.list->setPlaceholder(fromCore(emptyReason(rows)));
    if (!rows.isArranged) {
        return; // another listing has come meanwhile
    }
    ReportView& list = *page.list;
    const int firstRow = list.source().rows > 0 ? list.verticalScrollBar()->value() : page.firstRow;
    const int selected = rows.row; // the list, emptied, says that none is
    list.setSource(listSource(session), ReportView::CurrentRow::clear);
    if (rows.listing.isRecognised) {
        list.fitColumns(sizeColumn, accessColumn);
        fitName(list);
    }
    page.shownListing = rows.listings;
    page.order = rows.order;
    program_.browser().selectRow(site, selected);
    showOrder(page, rows);
    program_.browser().selectRow(site, list.currentRow()); // a filter may hide it
    list.verticalScrollBar()->setValue(rows.isOfSameDirectory ? firstRow : 0);
    if (!rows.isOfSameDirectory && list.currentRow() >= 0) {
        list.scrollTo(list.currentIndex());
    }
}

// The entries that are selected stay so, in whichever rows they stand then.
void BrowserPanel::showOrder(Page& page, const RemoteList& rows) {
    if (page.order != rows.order && page.order.size() == rows.order.size()) {
        std::vector<bool> isSelected(rows.order.size());
        for (const int row : page.list->selectedRows()) {
            isSelected[page.order[static_cast<std::size_t>(row)]] = true;
        }
        page.order = rows.order;
        const int current = rows.row; // the list may say meanwhile that it is another one
        page.list->refresh();
        page.list->setCurrentRow(current);
        std::vector<int> selected;
        for (std::size_t row = 0; row < page.order.size(); ++row) {
            if (isSelected[page.order[row]]) {
                selected.push_back(static_cast<int>(row));
            }
        }
        page.list->setSelectedRows(selected);
    } else if (rows.row >= 0 && rows.row != page.list->currentRow()) {
        page.list->setCurrentRow(rows.row);
    }
    page.list->setSortArrow(static_cast<int>(rows.sort.column), rows.sort.order == SortOrder::ascending
                                                                    ? Qt::AscendingOrder
                                                                    : Qt::DescendingOrder);
    page.list->viewport()->update();
}

void BrowserPanel::pathChanged(int site) {
    if (Page* const page = pages_->find(site)) {
        showPath(*page, site);
    }
}

void BrowserPanel::openDialog(int site, Dialog dialog) {
    openBrowserDialog(program_, site, dialog, pages_->at(site).list->currentRow(), *this);
}

// A list that changes its width gives what is free to the names; Escape leaves a path box as it was.
bool BrowserPanel::eventFilter(QObject* watched, QEvent* event) {
    if (qobject_cast<QLineEdit*>(watched) != nullptr) {
        const bool isEscape =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        if (isEscape) {
            pages_->at(program_.currentSite()).list->setFocus(); // which gives the box its text back
        }
        return isEscape;
    }
    auto& list = static_cast<ReportView&>(*watched);
    if (event->type() == QEvent::Resize && !list.isWidthChosen(nameColumn)) {
        fitName(list);
    }
    return QWidget::eventFilter(watched, event);
}

ReportView* BrowserPanel::createList(int site) {
    auto* const list = new ReportView;
    list->setObjectName(elementName("lvwBrowser", site));
    list->setAccessibleName(tr("Remote directory"));
    list->setMultiSelection(true);
    list->installEventFilter(this);
    BrowserActions& browser = program_.browser();
    connect(list, &ReportView::headerClicked, this,
            [&browser, site](int column) { browser.sortBy(site, column); });
    connect(list, &ReportView::rowDoubleClicked, this,
            [&browser, site](int row) { browser.open(site, row); });
    connect(list, &ReportView::currentRowChanged, this, [this, &browser, site](int row) {
        browser.selectRow(site, row);
        showActions();
    });
    connect(list, &ReportView::contextMenuRequested, this, [this, list](int /*row*/, const QPoint& position) {
        if (list->source().rows > 0 && program_.browser().isUsable(program_.currentSite())) {
            emit menuRequested(position);
        }
    });
    connect(list, &ReportView::keyPressed, this,
            [this, site](Qt::Key key, int row) { keyPressed(site, key, row); });
    connect(list, &ReportView::labelEdited, this, [this, site](int row, const QString& text) {
        program_.browser().rename(site, row, bytesOf(text, program_.site(site).session.encoding));
    });
    return list;
}

void BrowserPanel::keyPressed(int site, int key, int row) {
    BrowserActions& browser = program_.browser();
    switch (key) {
    case Qt::Key_F2:
        if (row >= 0 && browser.isUsable(site)) {
            pages_->at(site).list->editLabel(row);
        }
        break;
    case Qt::Key_F5:
        browser.refresh(site);
        break;
    case Qt::Key_Delete:
        browser.remove(site, pages_->at(site).list->selectedRows());
        break;
    case Qt::Key_Backspace:
        browser.up(site);
        break;
    case Qt::Key_Insert:
        browser.makeDirectory(site);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        browser.open(site, row);
        break;
    default:
        break;
    }
}

} // namespace corvel
