#include "browser/qt/BrowserPanel.h"
#include "widgets/Forms.h"
#include "widgets/NoticeBar.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>

// What stands round the browser's rows: the path, the buttons and counters, and what is to be said about a
// listing.

namespace corvel {

BytesEdit* BrowserPanel::createPath(int site) {
    auto* const path = new BytesEdit;
    path->setObjectName(elementName("txtBrowserPWD", site));
    path->setAccessibleName(tr("Current directory"));
    path->setToolTip(tr("Enter goes to the directory that is typed here"));
    path->installEventFilter(this);
    // The page may be gone as the focus leaves the box.
    connect(path, &QLineEdit::textEdited, this, [this, site] { setPathTyped(site, true); });
    connect(path, &QLineEdit::returnPressed, this, [this, site, path] {
        setPathTyped(site, false);
        program_.browser().goTo(site, path->bytes(&program_.site(site).session.encoding));
    });
    connect(path, &QLineEdit::editingFinished, this, [this, site, path] {
        if (!path->hasFocus()) { // nobody wants to go there any more
            setPathTyped(site, false);
            pathChanged(site);
        }
    });
    return path;
}

void BrowserPanel::setPathTyped(int site, bool isTyped) {
    if (Page* const page = pages_->find(site)) {
        page->isPathTyped = isTyped;
    }
}

// What is typed stays until it is sent.
void BrowserPanel::showPath(Page& page, int site) {
    if (!page.isPathTyped) {
        page.path->setBytes(program_.site(site).session.sBrowserPWD);
    }
}

QWidget* BrowserPanel::createButtons() {
    using Act = void (BrowserActions::*)(int);
    static constexpr std::array<std::pair<const char*, Act>, 3> buttons = {{
        {QT_TRANSLATE_NOOP("BrowserPanel", "root"), &BrowserActions::root},
        {QT_TRANSLATE_NOOP("BrowserPanel", "refresh"), &BrowserActions::refresh},
        {QT_TRANSLATE_NOOP("BrowserPanel", "mkdir"), &BrowserActions::refreshAndNoop},
    }};
    auto* const bar = new QWidget;
    auto* const layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const up = new QPushButton(tr("up"));
    up->setObjectName(QStringLiteral("cmdBrowserUp"));
    up->setAutoDefault(false);
    up->setToolTip(tr("To the directory above (Backspace)"));
    connect(up, &QPushButton::clicked, this, [this] { act(BrowserAct::up); });
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        auto* const button = new QPushButton(tr(buttons[i].first));
        button->setObjectName(elementName("cmdBrowser", static_cast<int>(i)));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, act = buttons[i].second] {
            if (program_.currentSite() > 0) {
                (program_.browser().*act)(program_.currentSite());
            }
        });
        layout->addWidget(button);
        if (i == 0) {
            layout->addWidget(up);
        }
    }
    layout->addStretch(1);
    addCounts(*layout);
    return bar;
}

// Behind the count of the filter, whose box gives way to them.
void BrowserPanel::addNotes(QLayout& layout) {
    strange_ = new QToolButton;
    strange_->setObjectName(QStringLiteral("lblNotUnderstood"));
    strange_->setAutoRaise(true);
    strange_->setToolTip(tr("Shows the lines of the listing that are none of its rows"));
    strange_->hide();
    connect(strange_, &QToolButton::clicked, this, &BrowserPanel::openStrangeLines);
    changed_ = new QLabel(tr("changed - F5"));
    changed_->setObjectName(QStringLiteral("lblBrowserChanged"));
    changed_->setToolTip(tr("Something has changed on the server since the rows were listed"));
    changed_->hide();
    layout.addWidget(changed_);
    layout.addWidget(strange_);
}

void BrowserPanel::addCounts(QHBoxLayout& layout) {
    const auto addCount = [&layout](const QString& caption, const char* name) {
        auto* const label = new QLabel;
        label->setObjectName(QLatin1String(name));
        label->setAccessibleName(caption);
        layout.addWidget(new QLabel(caption));
        layout.addWidget(label);
        return label;
    };
    directoryCount_ = addCount(tr("Dirs:"), "lblBrowserDirCnt");
    layout.addSpacing(12);
    fileCount_ = addCount(tr("Files:"), "lblBrowserFileCnt");
}

void BrowserPanel::showCounts() {
    const int site = program_.currentSite();
    const BrowserListing* const listing = site > 0 ? &program_.site(site).session.browser.listing : nullptr;
    const auto show = [](QLabel& label, std::size_t count) {
        const QString text = QString::number(count);
        if (label.text() != text) {
            label.setText(text);
        }
    };
    show(*directoryCount_, listing == nullptr ? 0 : listing->directoryCount);
    show(*fileCount_, listing == nullptr ? 0 : listing->fileCount);
}

// What there is to say about the current site's listing, and about the question that is open.
void BrowserPanel::showState() {
    const int site = program_.currentSite();
    const SiteSession* const session = site > 0 ? &program_.site(site).session : nullptr;
    const BrowserListing* const listing = session == nullptr ? nullptr : &session->browser.listing;
    changed_->setVisible(session != nullptr && session->browser.isChanged &&
                         whyNotUsable(session->browser).empty());
    const std::size_t strange = listing == nullptr ? 0 : listing->strangeCount;
    const std::size_t tooMany = listing == nullptr ? 0 : listing->tooMany;
    const auto counted = [](const QString& text, std::size_t count) {
        return text.arg(QLocale().toString(static_cast<qulonglong>(count)));
    };
    strange_->setText(tooMany > 0    ? counted(tr("%1 entries left out"), tooMany)
                      : strange == 1 ? tr("1 line not understood")
                                     : counted(tr("%1 lines not understood"), strange));
    strange_->setVisible(tooMany > 0 || strange > 0);
    showPadding(listing != nullptr && listing->looksPadded && !session->browser.isPaddingRefused);
    const QString note = session == nullptr ? QString() : fromCore(session->asked);
    if (note != note_) {
        note_ = note;
        emit noteWanted(note_);
    }
    showActions();
}

void BrowserPanel::showPadding(bool isWanted) {
    if (padding_ == nullptr && isWanted) {
        padding_ = new NoticeBar("barPadding", "lblPadding");
        connect(padding_->addButton("cmdPaddingYes", tr("Yes")), &QToolButton::clicked, this,
                [this] { program_.browser().acceptPadding(program_.currentSite()); });
        connect(padding_->addButton("cmdPaddingNo", tr("No")), &QToolButton::clicked, this,
                [this] { program_.browser().refusePadding(program_.currentSite()); });
        static_cast<QVBoxLayout*>(layout())->insertWidget(0, padding_);
        setTabOrderBehind(*this, *padding_);
    }
    if (padding_ != nullptr && isWanted != padding_->isVisibleTo(this)) {
        isWanted ? padding_->tell(tr("This server pads its listings. Read it so?")) : padding_->hide();
    }
}

void BrowserPanel::openStrangeLines() {
    const int site = program_.currentSite();
    if (site == 0) {
        return;
    }
    const BrowserListing& listing = program_.site(site).session.browser.listing;
    QStringList lines;
    for (const std::string& line : listing.strangeLines) {
        lines.append(cellTextOf(line));
    }
    if (listing.strangeCount > listing.strangeLines.size()) {
        lines.append(tr("... and %1 more").arg(listing.strangeCount - listing.strangeLines.size()));
    }
    if (listing.tooMany > 0) {
        lines.append(
            tr("The last %1 entries are left out: there are more than a list can show").arg(listing.tooMany));
    }
    auto* const dialog = new QDialog(this);
    dialog->setObjectName(QStringLiteral("frmNotUnderstood"));
    dialog->setWindowTitle(tr("Lines not understood"));
    auto* const text = new QPlainTextEdit(lines.join(QLatin1Char('\n')));
    text->setObjectName(QStringLiteral("txtNotUnderstood"));
    text->setAccessibleName(dialog->windowTitle());
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(text);
    layout->addWidget(buttons);
    dialog->resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 16);
    corvel::openDialog(*dialog);
}

} // namespace corvel
