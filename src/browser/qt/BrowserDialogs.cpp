#include "browser/qt/BrowserDialogs.h"

#include "browser/FileDialogs.h"
#include "browser/qt/BrowserPanel.h"
#include "widgets/Forms.h"
#include "widgets/SelectableList.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPushButton>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace corvel {

namespace {

// The permissions of an entry, as boxes to check or as a mode to type.
class frmBrowserCHMOD : public FormDialog<ChmodForm> {
  public:
    frmBrowserCHMOD(Opening opening, Accept accept, QWidget* parent)
        : FormDialog("frmBrowserCHMOD", QStringLiteral("SITE CHMOD"), std::move(opening), std::move(accept),
                     parent) {
        auto* const layout = new QFormLayout(this);
        layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        if (form_.paths.empty()) {
            boxes_.addRow(*layout, form_.txtPath, "txtPath", tr("&Path:"))
                ->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
        } else {
            auto* const names = new QLabel(fromCore(form_.names));
            names->setObjectName(QStringLiteral("lblNames"));
            names->setTextFormat(Qt::PlainText);
            names->setWordWrap(true);
            layout->addRow(
                form_.paths.size() == 1 ? tr("1 entry:") : tr("%1 entries:").arg(form_.paths.size()), names);
        }
        if (!form_.modeOf.empty()) {
            auto* const modeOf =
                new QLabel(tr("Their permissions differ. These are of %1.").arg(fromCore(form_.modeOf)));
            modeOf->setObjectName(QStringLiteral("lblModeOf"));
            modeOf->setTextFormat(Qt::PlainText);
            modeOf->setWordWrap(true);
            layout->addRow(modeOf);
        }
        addPermissions(*layout);
        txtCHMODval_ = boxes_.addRow(*layout, form_.txtCHMODval, "txtCHMODval", tr("&Mode:"));
        setDigitsWide(*txtCHMODval_, 4);
        connect(txtCHMODval_, &QLineEdit::textEdited, this, [this] { modeEdited(); });
        layout->addRow(buttons());
        boxes_.show();
        chkX_.front()->setFocus();
    }

  private:
    void addPermissions(QFormLayout& layout) {
        const std::array owners = {tr("&Owner:"), tr("&Group:"), tr("O&thers:")};
        const std::array rights = {tr("read"), tr("write"), tr("execute")};
        for (std::size_t owner = 0; owner < owners.size(); ++owner) {
            auto* const row = new QHBoxLayout;
            for (std::size_t right = 0; right < rights.size(); ++right) {
                const std::size_t i = owner * rights.size() + right;
                auto* const box = new QCheckBox(rights[right]);
                box->setObjectName(elementName("chkX", static_cast<int>(i)));
                box->setAccessibleName(plainCaption(owners[owner]) + QLatin1Char(' ') + rights[right]);
                box->setChecked(form_.chkX[i]);
                connect(box, &QCheckBox::clicked, this, [this] { boxClicked(); });
                chkX_[i] = box;
                row->addWidget(box);
            }
            row->addStretch(1);
            auto* const label = new QLabel(owners[owner]);
            label->setBuddy(chkX_[owner * rights.size()]);
            layout.addRow(label, row);
        }
    }

    void boxClicked() {
        for (std::size_t i = 0; i < permissionCount; ++i) {
            form_.chkX[i] = chkX_[i]->isChecked();
        }
        txtCHMODval_->setBytes(chmodValue(form_.chkX, txtCHMODval_->bytes()));
    }

    // The boxes follow a mode that is typed, so that the next click on one changes that mode and no other.
    void modeEdited() {
        const std::optional<Permissions> permissions = permissionsOf(txtCHMODval_->bytes());
        for (std::size_t i = 0; permissions && i < permissionCount; ++i) {
            chkX_[i]->setChecked((*permissions)[i]);
        }
    }

    std::array<QCheckBox*, permissionCount> chkX_ = {};
    BytesEdit* txtCHMODval_ = nullptr;
};

// Nukes a release: by how much and why.
class frmBrowserNUKE : public FormDialog<NukeForm> {
  public:
    // hasSyntax: whether the settings say how to ask for it.
    frmBrowserNUKE(Opening opening, bool hasSyntax, Accept accept, QWidget* parent)
        : FormDialog("frmBrowserNUKE", QStringLiteral("SITE NUKE"), std::move(opening), std::move(accept),
                     parent) {
        auto* const layout = new QFormLayout(this);
        layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        BytesEdit* const txtPath = boxes_.addRow(*layout, form_.txtPath, "txtPath", tr("&Path:"));
        setShownOnly(*txtPath);
        txtPath->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
        boxes_.addRow(*layout, form_.txtName, "txtName", tr("&Name:"));
        BytesEdit* const txtMultip = boxes_.addRow(*layout, form_.txtMultip, "txtMultip", tr("&Multiplier:"));
        setDigitsWide(*txtMultip, 6);
        txtReason_ = boxes_.addRow(*layout, form_.txtReason, "txtReason", tr("&Reason:"));
        if (!hasSyntax) {
            auto* const hint = new QLabel(tr("Nothing will be sent: settings.ini has no site_nuke_syntax."));
            hint->setWordWrap(true);
            layout->addRow(hint);
        }
        layout->addRow(buttons());
        boxes_.show();
        txtMultip->installEventFilter(this);
        txtMultip->setFocus();
        txtMultip->selectAll();
    }

  protected:
    // Enter goes on to the reason; without this it would press the default button, as it does in the reason.
    bool eventFilter(QObject* watched, QEvent* event) override {
        const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            txtReason_->setFocus();
            return true;
        }
        return FormDialog::eventFilter(watched, event);
    }

  private:
    BytesEdit* txtReason_ = nullptr;
};

// Hides a directory from all but those that are selected. It cannot be confirmed before the server has said
// who sees the directory now: confirming with nothing selected takes that back.
class frmBrowserCHATTR : public FormDialog<ChattrForm> {
  public:
    frmBrowserCHATTR(Opening opening, Accept accept, QWidget* parent)
        : FormDialog("frmBrowserCHATTR", tr("Hide directory (SITE CHATTR)"), std::move(opening),
                     std::move(accept), parent),
          txtCurrent_(shownOnly({})), chkFlags_(new QCheckBox), lstUsers_(new SelectableList(form_.lstUsers)),
          lstGroups_(new SelectableList(form_.lstGroups)) {
        auto* const layout = new QVBoxLayout(this);
        layout->addLayout(createTop());
        auto* const lists = new QGridLayout;
        lists->addWidget(labelFor(*lstUsers_, "lstUsers", tr("&Users :")), 0, 0);
        lists->addWidget(labelFor(*lstGroups_, "lstGroups", tr("&Groups :")), 0, 1);
        lists->addWidget(lstUsers_, 1, 0);
        lists->addWidget(lstGroups_, 1, 1);
        layout->addLayout(lists, 1);
        auto* const remark = new QLabel(tr("Remark: selecting nothing will clear any existing permissions."));
        remark->setWordWrap(true);
        layout->addWidget(remark);
        QDialogButtonBox* const both = buttons({"Command1"});
        Command1_ = both->findChild<QPushButton*>(QStringLiteral("Command1"));
        Command1_->setEnabled(false);
        layout->addWidget(both);
        boxes_.show();
        chkFlags_->setFocus();
        resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 24);
    }

    void setAnswer(const ChattrAnswer& answer) {
        form_.txtCurrent = answer.txtCurrent;
        form_.isRefused = answer.isRefused;
        txtCurrent_->setText(displayTextOf(answer.txtCurrent));
        txtCurrent_->setCursorPosition(0);
        Command1_->setEnabled(true);
    }

  private:
    QLineEdit* shownOnly(std::string_view text) const {
        auto* const box = new QLineEdit(displayTextOf(text));
        setShownOnly(*box);
        box->setCursorPosition(0);
        return box;
    }

    QFormLayout* createTop() {
        auto* const layout = new QFormLayout;
        QLineEdit* const txtDirectory = shownOnly(form_.sName);
        layout->addRow(labelFor(*txtDirectory, "txtDirectory", tr("&Directory :")), txtDirectory);
        txtCurrent_->setPlaceholderText(tr("The server has not answered yet."));
        layout->addRow(labelFor(*txtCurrent_, "txtCurrent", tr("&Current permissions :")), txtCurrent_);
        chkFlags_->setObjectName(QStringLiteral("chkFlags"));
        chkFlags_->setAccessibleName(tr("Use flags"));
        BytesEdit* const txtFlags = boxes_.add(form_.txtFlags);
        QLabel* const label = labelFor(*txtFlags, "txtFlags", tr("&Flags :"));
        label->setBuddy(chkFlags_);
        txtFlags->setEnabled(false);
        connect(chkFlags_, &QCheckBox::toggled, txtFlags, &QWidget::setEnabled);
        auto* const flags = new QHBoxLayout;
        flags->addWidget(chkFlags_);
        flags->addWidget(txtFlags, 1);
        layout->addRow(label, flags);
        return layout;
    }

    void collect() override {
        form_.chkFlags = chkFlags_->isChecked();
        form_.lstUsers = lstUsers_->entries();
        form_.lstGroups = lstGroups_->entries();
    }

    void confirmed() override {
        if (clearsUnseen(form_)) {
            askBefore("The server does not say to whom this directory is shown.\n"
                      "Do you want to clear whatever permissions it has?");
        } else {
            send();
        }
    }

    QLineEdit* txtCurrent_;
    QCheckBox* chkFlags_;
    SelectableList* lstUsers_;
    SelectableList* lstGroups_;
    QPushButton* Command1_ = nullptr;
};

// A list box with the names of a table, in its order.
template <typename Record>
std::vector<SelectableEntry> namesOf(const std::vector<Record>& table) {
    std::vector<SelectableEntry> entries;
    for (const Record& record : table) {
        if (!isPlaceholder(record)) {
            entries.push_back({.sText = record.sName});
        }
    }
    return entries;
}

void openChmod(mdlMain& program, int site, ChmodForm opening, BrowserPanel& panel) {
    openDialog(*new frmBrowserCHMOD(
        {std::move(opening), &program.site(site).session.encoding},
        [&program, site](const ChmodForm& form) { return program.browser().send(site, chmodCommands(form)); },
        &panel));
}

void openNuke(mdlMain& program, int site, const BrowserEntry& entry, BrowserPanel& panel) {
    const SiteSession& session = program.site(site).session;
    const Settings& settings = program.settings();
    openDialog(*new frmBrowserNUKE(
        {{.txtPath = session.sCwd, .txtName = std::string(entry.name)}, &session.encoding},
        !settings.site_nuke_syntax.empty(),
        [&program, &session, &settings, site, sCwd = session.sCwd](const NukeForm& form) {
            const auto inBytes = [&](const std::string& text) {
                return bytesOf(fromCore(text), session.encoding);
            };
            return program.browser().sendIn(
                site, sCwd,
                {nukeCommand(form,
                             {.site_nuke_syntax = inBytes(settings.site_nuke_syntax),
                              .site_nuke_replace_spaces = inBytes(settings.site_nuke_replace_spaces)})});
        },
        &panel));
}

void openChattr(mdlMain& program, int site, const BrowserEntry& entry, BrowserPanel& panel) {
    if (typeKey(entry) != directoryKey) {
        return;
    }
    const SiteSession& session = program.site(site).session;
    const ChattrForm form = {.sName = std::string(entry.name),
                             .lstUsers = namesOf(session.Users),
                             .lstGroups = namesOf(session.Groups)};
    auto* const dialog = new frmBrowserCHATTR(
        {form, &session.encoding},
        [&program, site, sCwd = session.sCwd](const ChattrForm& confirmed) {
            return program.browser().sendIn(site, sCwd, chattrCommands(confirmed));
        },
        &panel);
    // The answer to another question may still be on its way, from a dialog that was closed before it came.
    QObject::connect(&panel, &BrowserPanel::chattrAnswered, dialog,
                     [&session, dialog, site, query = chattrQuery(form.sName).sCommand](int answered) {
                         if (answered == site && session.chattrAnswer.sQuery == query) {
                             dialog->setAnswer(session.chattrAnswer);
                         }
                     });
    openDialog(*dialog);
}

} // namespace

void openChmodDialog(mdlMain& program, int site, const std::vector<int>& rows, BrowserPanel& panel) {
    const SiteSession& session = program.site(site).session;
    PickedRows picked = pickedRows(session.browser, rows);
    if (!picked.entries.empty()) {
        openChmod(program, site, chmodForm(session.sCwd, picked.entries, std::move(picked.names)), panel);
    }
}

void openBrowserDialog(mdlMain& program, int site, Dialog dialog, int row, BrowserPanel& panel) {
    const BrowserEntry* const entry = program.browser().entryAt(site, row);
    if (entry == nullptr) {
        return;
    }
    switch (dialog) {
    case Dialog::chmod:
        openChmod(program, site, chmodForm(program.site(site).session.sCwd, *entry), panel);
        break;
    case Dialog::chattr:
        openChattr(program, site, *entry, panel);
        break;
    case Dialog::nuke:
        openNuke(program, site, *entry, panel);
        break;
    case Dialog::copyUser:
    case Dialog::userGroups:
        break;
    }
}

} // namespace corvel
