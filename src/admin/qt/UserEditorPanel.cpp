#include "admin/qt/UserEditorPanel.h"

#include "admin/qt/AccountDialogs.h"
#include "widgets/DialogParts.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FormBoxes.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>

#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr int columnsOfGrid = 4;
constexpr int buttonPadding = 12; // pixels beside the caption of a narrow button

// A list whose rows have a text for each of the columns.
template <typename Row>
ReportSource sourceOf(const std::vector<Row>& rows, std::vector<ReportColumn> columns,
                      std::array<std::string Row::*, 3> members, TextEncoding encoding) {
    ReportSource source;
    source.rows = static_cast<int>(rows.size());
    source.columns = std::move(columns);
    source.text = [&rows, members, encoding](int row, int column) {
        const Row& shown = rows[static_cast<std::size_t>(row)];
        return displayTextOf(shown.*members[static_cast<std::size_t>(column)], encoding);
    };
    return source;
}

QVBoxLayout* column(const QString& heading, QWidget& list, const char* name) {
    auto* const layout = new QVBoxLayout;
    layout->addWidget(labelFor(list, name, heading));
    layout->addWidget(&list, 1);
    return layout;
}

} // namespace

UserEditorPanel::UserEditorPanel(mdlMain& program, QWidget* parent)
    : QScrollArea(parent), program_(program),
      boxes_(UserForm::boxCount, [&program](std::size_t box, std::optional<std::string> text) {
          program.admin().users().typed(program.currentSite(), box, std::move(text));
      }) {
    setObjectName(QStringLiteral("picUserContainer"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setObjectName(QStringLiteral("ScrollU"));
    auto* const picUserCtls = new QWidget;
    picUserCtls->setObjectName(QStringLiteral("picUserCtls"));

    auto* const texts = new QGridLayout;
    addTexts(*texts);
    addLogins(*texts);
    texts->setColumnStretch(1, 1);
    texts->setColumnStretch(3, 1);
    auto* const left = new QVBoxLayout;
    left->addLayout(createAddresses(), 1);
    left->addLayout(createGroups(), 1);
    auto* const lists = new QHBoxLayout;
    lists->addLayout(left, 1);
    lists->addLayout(createSections(), 1);
    auto* const layout = new QVBoxLayout(picUserCtls);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(texts);
    layout->addLayout(lists, 1);
    layout->addLayout(createButtons());
    setWidget(picUserCtls);
    // The ground of the tab shows through, as it does under every other page.
    viewport()->setAutoFillBackground(false);
    picUserCtls->setAutoFillBackground(false);
    showSite(0);
}

void UserEditorPanel::showSite(int site) {
    AccountEditor<UserForm> editor =
        site > 0 ? program_.admin().users().editor(site) : AccountEditor<UserForm>();
    const TextEncoding encoding = site > 0 ? program_.site(site).session.encoding : TextEncoding::utf8;
    const bool isKnown = boxes_.show(editor, encoding);
    for (QPushButton* const button : forDetails_) {
        button->setEnabled(editor.details == Details::known);
    }
    for (QPushButton* const button : forRecords_) {
        button->setEnabled(editor.id.has_value());
    }
    if (isKnown && editor.details != Details::known) {
        return; // the same account is asked for again
    }
    form_ = std::move(editor.form);
    encoding_ = encoding;
    txtUserUID_->setBytes(form_.txtUserUID, encoding);
    txtUserGroup_->setBytes(form_.txtUserGroup, encoding);
    lstUserIP_->clear();
    for (const std::string& mask : form_.lstUserIP) {
        lstUserIP_->addItem(displayTextOf(mask, encoding));
    }
    lvwUserGroups_->setSource(sourceOf(form_.lvwUserGroups,
                                       {{.header = tr("gid"), .alignment = Qt::AlignRight},
                                        {.header = tr("groupname")},
                                        {.header = tr("gadmin")}},
                                       std::array{&MemberRow::sId, &MemberRow::sName, &MemberRow::sGadmin},
                                       encoding),
                              ReportView::CurrentRow::keep);
    lvwUserGroups_->fitColumns(0, 2);
    lvwUserSections_->setSource(sourceOf(
        form_.lvwUserSections,
        {{.header = tr("section"), .alignment = Qt::AlignRight},
         {.header = tr("ratio"), .alignment = Qt::AlignRight},
         {.header = tr("credits (MB)"), .alignment = Qt::AlignRight}},
        std::array{&UserSectionRow::sSection, &UserSectionRow::sRatio, &UserSectionRow::sCredits}, encoding));
    lvwUserSections_->fitColumns(0, 2);
}

BytesEdit* UserEditorPanel::place(QGridLayout& layout, BytesEdit& box, int row, int gridColumn, int span,
                                  const char* name, const QString& caption) {
    layout.addWidget(labelFor(box, name, caption), row, gridColumn);
    layout.addWidget(&box, row, gridColumn + 1, 1, span);
    return &box;
}

BytesEdit* UserEditorPanel::addShownOnly(QGridLayout& layout, int row, int gridColumn, const char* name,
                                         const QString& caption) {
    BytesEdit* const box = place(layout, *new BytesEdit, row, gridColumn, 1, name, caption);
    setShownOnly(*box);
    box->setFocusPolicy(Qt::ClickFocus);
    return box;
}

void UserEditorPanel::addTexts(QGridLayout& layout) {
    struct Place {
        const char* name;
        const char* caption;
        int row;
        int column;
        int span;
    };
    constexpr int whole = columnsOfGrid - 1;
    // By the numbers of the boxes.
    static constexpr std::array<Place, UserForm::firstLoginsBox> places = {{
        {"txtUserName", QT_TR_NOOP("name:"), 0, 2, 1},
        {"txtUserFlags", QT_TR_NOOP("flags:"), 1, 2, 1},
        {"txtUserTagLine", QT_TR_NOOP("tagline:"), 2, 0, whole},
        {"txtUserHomePath", QT_TR_NOOP("home:"), 3, 0, whole},
        {"txtUserVFS", QT_TR_NOOP("VFS file:"), 4, 0, whole},
        {"txtUserBwUp", QT_TR_NOOP("up (kB/s):"), 5, 0, 1},
        {"txtUserBwDn", QT_TR_NOOP("down (kB/s):"), 5, 2, 1},
    }};
    txtUserUID_ = addShownOnly(layout, 0, 0, "txtUserUID", tr("uid:"));
    txtUserGroup_ = addShownOnly(layout, 1, 0, "txtUserGroup", tr("group:"));
    for (std::size_t number = 0; number < places.size(); ++number) {
        const Place& at = places[number];
        BytesEdit* const box =
            place(layout, *boxes_.box(number), at.row, at.column, at.span, at.name, tr(at.caption));
        if (at.row == 5) {
            box->setAlignment(Qt::AlignRight);
        }
    }
}

void UserEditorPanel::addLogins(QGridLayout& layout) {
    constexpr int row = 6;
    constexpr std::array<const char*, 3> services = {QT_TR_NOOP("FTP"), QT_TR_NOOP("telnet"),
                                                     QT_TR_NOOP("HTTP")};
    auto* const line = new QHBoxLayout;
    for (std::size_t i = 0; i < services.size(); ++i) {
        BytesEdit* const box = boxes_.box(UserForm::firstLoginsBox + i);
        QLabel* const label = labelFor(*box, "", tr(services[i]));
        box->setObjectName(elementName("txtUserLogins", static_cast<int>(i)));
        box->setAccessibleName(tr("Logins by %1").arg(tr(services[i])));
        setDigitsWide(*box, 5);
        line->addWidget(label);
        line->addWidget(box);
        line->addSpacing(8);
    }
    line->addStretch(1);
    layout.addWidget(new QLabel(tr("logins:")), row, 0);
    layout.addLayout(line, row, 1, 1, columnsOfGrid - 1);
}

QLayout* UserEditorPanel::createAddresses() {
    lstUserIP_ = new QListWidget;
    connect(lstUserIP_, &QListWidget::currentRowChanged, this, &UserEditorPanel::addressPicked);
    connect(lstUserIP_, &QListWidget::itemClicked, this, [this] { addressPicked(lstUserIP_->currentRow()); });

    txtUserIP_ = new BytesEdit;
    txtUserIP_->setObjectName(QStringLiteral("txtUserIP"));
    txtUserIP_->setAccessibleName(tr("Address to add or to delete"));
    const QString placeholder = fromCore(maskPlaceholder);
    connect(txtUserIP_, &QLineEdit::textChanged, this, [this, placeholder](const QString& text) {
        txtUserIP_->setSelectAllOnFocus(text == placeholder);
    });
    txtUserIP_->setText(placeholder);

    auto* const line = new QHBoxLayout;
    line->addWidget(txtUserIP_, 1);
    QPushButton* const add = newButton("cmdUserAddDelIp_0", tr("add"), false, [this](int site) {
        program_.admin().addMask(site, toCore(txtUserIP_->text()));
    });
    QPushButton* const remove = newButton("cmdUserAddDelIp_1", tr("delete"), false, [this](int site) {
        program_.admin().deleteMask(site, toCore(txtUserIP_->text()));
    });
    for (QPushButton* const button : {add, remove}) {
        // A mask needs the room more.
        button->setFixedWidth(fontMetrics().horizontalAdvance(remove->text()) + 2 * buttonPadding);
        line->addWidget(button);
    }
    auto* const layout = column(tr("addresses"), *lstUserIP_, "lstUserIP");
    layout->addLayout(line);
    return layout;
}

QLayout* UserEditorPanel::createGroups() {
    lvwUserGroups_ = new ReportView;
    const auto edit = [this](int site) { program_.admin().editGroups(site); };
    connect(lvwUserGroups_, &ReportView::rowDoubleClicked, this, [this, edit] { whenSite(edit); });
    auto* const layout = column(tr("groups"), *lvwUserGroups_, "lvwUserGroups");
    layout->addWidget(newButton("cmdUserEditGroups", tr("change groups..."), false, edit), 0, Qt::AlignLeft);
    return layout;
}

QLayout* UserEditorPanel::createSections() {
    lvwUserSections_ = new ReportView;
    const auto edit = [this] { whenSite([this](int site) { editSections(site); }); };
    connect(lvwUserSections_, &ReportView::rowDoubleClicked, this, edit);
    connect(lvwUserSections_, &ReportView::keyPressed, this, [edit](Qt::Key key) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            edit();
        }
    });
    return column(tr("sections"), *lvwUserSections_, "lvwUserSections");
}

QLayout* UserEditorPanel::createButtons() {
    boxes_.problem()->setObjectName(QStringLiteral("lblUserDetails"));
    auto* const layout = new QHBoxLayout;
    layout->addWidget(newButton("cmdUserSaveChanges", tr("save changes"), true,
                                [this](int site) { program_.admin().users().save(site); }));
    layout->addWidget(newButton("cmdReloadUserfile", tr("reload"), false,
                                [this](int site) { program_.admin().users().reloadDetails(site); }));
    layout->addWidget(newButton("cmdUserResetPWD", tr("reset password..."), false,
                                [this](int site) { program_.admin().resetPassword(site); }));
    layout->addWidget(boxes_.problem(), 1);
    return layout;
}

QPushButton* UserEditorPanel::newButton(const char* name, const QString& caption, bool needsDetails,
                                        std::function<void(int site)> act) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, act = std::move(act)] { whenSite(act); });
    (needsDetails ? forDetails_ : forRecords_).push_back(button);
    return button;
}

void UserEditorPanel::whenSite(const std::function<void(int site)>& act) const {
    if (program_.currentSite() > 0) {
        act(program_.currentSite());
    }
}

void UserEditorPanel::editSections(int site) {
    const clsUser* const user = program_.admin().users().current(site);
    if (user != nullptr && user->got_info) {
        openUserSections(program_, site, *user, this);
    }
}

// A row can become the current one without being picked: by the focus that comes to the list.
void UserEditorPanel::addressPicked(int row) {
    if (row >= 0 && row < static_cast<int>(form_.lstUserIP.size()) && lstUserIP_->item(row)->isSelected()) {
        txtUserIP_->setText(textOf(form_.lstUserIP[static_cast<std::size_t>(row)], encoding_));
    }
}

// Only heights scroll: the area is never narrower than what is in it.
QSize UserEditorPanel::minimumSizeHint() const {
    return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(),
            QScrollArea::minimumSizeHint().height()};
}

} // namespace corvel
