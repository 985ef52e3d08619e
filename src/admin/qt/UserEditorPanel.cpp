#include "admin/qt/AccountDialogs.h"
#include "admin/qt/UsersPanel.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <iterator>

namespace corvel {

namespace {

constexpr int columnsOfGrid = 4;
constexpr int buttonPadding = 12; // pixels beside the caption of a narrow button

void place(QGridLayout& layout, QWidget& box, int row, int gridColumn, int span, const char* name,
           const QString& caption) {
    layout.addWidget(labelFor(box, name, caption), row, gridColumn);
    layout.addWidget(&box, row, gridColumn + 1, 1, span);
}

BytesEdit* addShownOnly(QGridLayout& layout, int row, const char* name, const QString& caption) {
    auto* const box = new BytesEdit;
    place(layout, *box, row, 0, 1, name, caption);
    setShownOnly(*box);
    box->setFocusPolicy(Qt::ClickFocus);
    return box;
}

// Only heights scroll: the area is never narrower than what is in it.
class HeightScroll : public QScrollArea {
  public:
    QSize minimumSizeHint() const override {
        return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(),
                QScrollArea::minimumSizeHint().height()};
    }
};

QVBoxLayout* column(const QString& heading, QWidget& list, const char* name) {
    auto* const layout = new QVBoxLayout;
    layout->addWidget(labelFor(list, name, heading));
    layout->addWidget(&list, 1);
    return layout;
}

} // namespace

UserEditorPanel::UserEditorPanel(mdlMain& program, QWidget* parent)
    : QWidget(parent), program_(program),
      editor_(program, program.admin().users(), "lblUserDetails", "lblUserOutcome"),
      lblUserCurrent_(new ElidedLabel("lblUserCurrent")) {
    setObjectName(QStringLiteral("picUserContainer"));
    QFont bold = font();
    bold.setBold(true);
    lblUserCurrent_->setFont(bold);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    layout->addWidget(lblUserCurrent_);
    layout->addWidget(createArea(), 1);
    layout->addLayout(createButtons());
    layout->addWidget(editor_.outcome());
    showSite(0);
}

// What scrolls; the buttons below it stay in sight.
QWidget* UserEditorPanel::createArea() {
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

    auto* const area = new HeightScroll;
    area->setFocusPolicy(Qt::NoFocus); // there is nothing to be seen of it
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->verticalScrollBar()->setObjectName(QStringLiteral("ScrollU"));
    area->setWidget(picUserCtls);
    // The ground of the tab shows through, as it does under every other page.
    area->viewport()->setAutoFillBackground(false);
    picUserCtls->setAutoFillBackground(false);
    return area;
}

void UserEditorPanel::showSelected(std::size_t count) {
    const clsUser* const user =
        program_.currentSite() > 0 ? program_.admin().users().current(program_.currentSite()) : nullptr;
    QString text = user == nullptr ? QString() : nameTextOf(user->sName);
    if (user != nullptr && count > 1) {
        text = tr("%1 (%2 users are selected)").arg(text).arg(count);
    }
    lblUserCurrent_->showText(text);
}

void UserEditorPanel::showSite(int site) {
    if (!editor_.show(site)) {
        return;
    }
    const UserForm& form = editor_.form();
    txtUserUID_->setBytes(form.txtUserUID);
    txtUserGroup_->setBytes(form.txtUserGroup);
    lstUserIP_->clear();
    QStringList masks;
    std::ranges::transform(form.lstUserIP, std::back_inserter(masks), cellTextOf);
    lstUserIP_->addItems(masks);
    lvwUserGroups_->setSource(sourceOf(form.lvwUserGroups,
                                       {{tr("gid"), Qt::AlignRight}, {tr("groupname")}, {tr("gadmin")}},
                                       {&MemberRow::sId, &MemberRow::sName, &MemberRow::sGadmin}),
                              ReportView::CurrentRow::keep);
    lvwUserGroups_->fitColumns(0, 2);
    lvwUserSections_->setSource(
        sourceOf(form.lvwUserSections,
                 {{tr("section"), Qt::AlignRight},
                  {tr("ratio"), Qt::AlignRight},
                  {tr("credits (MB)"), Qt::AlignRight}},
                 {&UserSectionRow::sSection, &UserSectionRow::sRatio, &UserSectionRow::sCredits}));
    lvwUserSections_->fitColumns(0, 2);
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
    constexpr int limitsRow = 5;
    constexpr int limitDigits = 8;
    // By the numbers of the boxes.
    static constexpr std::array<Place, UserForm::firstLoginsBox> places = {{
        {"txtUserName", QT_TR_NOOP("name:"), 0, 2, 1},
        {"txtUserFlags", QT_TR_NOOP("flags:"), 1, 2, 1},
        {"txtUserTagLine", QT_TR_NOOP("tagline:"), 2, 0, whole},
        {"txtUserHomePath", QT_TR_NOOP("home:"), 3, 0, whole},
        {"txtUserVFS", QT_TR_NOOP("VFS file:"), 4, 0, whole},
        {"txtUserBwUp", QT_TR_NOOP("up (kB/s):"), limitsRow, 0, 1},
        {"txtUserBwDn", QT_TR_NOOP("down (kB/s):"), limitsRow, 2, 1},
    }};
    editor_.setTip(UserForm::flagsBox, fromCore(flagsTip));
    txtUserUID_ = addShownOnly(layout, 0, "txtUserUID", tr("uid:"));
    setDigitsWide(*txtUserUID_, 6);
    layout.setAlignment(txtUserUID_, Qt::AlignLeft);
    txtUserGroup_ = addShownOnly(layout, 1, "txtUserGroup", tr("group:"));
    for (std::size_t number = 0; number < places.size(); ++number) {
        const Place& at = places[number];
        place(layout, *editor_.box(number), at.row, at.column, at.span, at.name, tr(at.caption));
        if (at.row == limitsRow) {
            setDigitsWide(*editor_.box(number), limitDigits);
            layout.setAlignment(editor_.box(number), Qt::AlignLeft);
        }
    }
}

void UserEditorPanel::addLogins(QGridLayout& layout) {
    constexpr int row = 6;
    constexpr std::array<const char*, 3> services = {QT_TR_NOOP("FTP"), QT_TR_NOOP("telnet"),
                                                     QT_TR_NOOP("HTTP")};
    auto* const line = new QHBoxLayout;
    for (std::size_t i = 0; i < services.size(); ++i) {
        BytesEdit* const box = editor_.box(UserForm::firstLoginsBox + i);
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
    txtUserIP_->selectSampleOnFocus(maskPlaceholder);
    txtUserIP_->setText(fromCore(maskPlaceholder));

    auto* const line = new QHBoxLayout;
    line->addWidget(txtUserIP_, 1);
    QPushButton* const add = editor_.newButton("cmdUserAddDelIp_0", tr("add"), false, [this](int site) {
        program_.admin().addMask(site, toCore(txtUserIP_->text()));
    });
    QPushButton* const remove = editor_.newButton("cmdUserAddDelIp_1", tr("delete"), false, [this](int site) {
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
    lvwUserGroups_->header()->setStretchLastSection(true);
    QPushButton* const edit = editor_.newButton("cmdUserEditGroups", tr("change groups..."), false,
                                                [this](int site) { program_.admin().editGroups(site); });
    connect(lvwUserGroups_, &ReportView::rowDoubleClicked, edit, &QPushButton::click);
    auto* const layout = column(tr("groups"), *lvwUserGroups_, "lvwUserGroups");
    layout->addWidget(edit, 0, Qt::AlignLeft);
    return layout;
}

QLayout* UserEditorPanel::createSections() {
    lvwUserSections_ = new ReportView;
    lvwUserSections_->header()->setStretchLastSection(true);
    connect(lvwUserSections_, &ReportView::rowDoubleClicked, this, &UserEditorPanel::editSections);
    connect(lvwUserSections_, &ReportView::keyPressed, this, [this](Qt::Key key) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            editSections();
        }
    });
    auto* const layout = column(tr("sections"), *lvwUserSections_, "lvwUserSections");
    layout->addWidget(editor_.newButton("cmdUserSections", tr("sections..."), true,
                                        [this](int /*site*/) { editSections(); }),
                      0, Qt::AlignLeft);
    return layout;
}

QLayout* UserEditorPanel::createButtons() {
    auto* const layout = new QHBoxLayout;
    layout->addWidget(editor_.newButton("cmdUserSaveChanges", tr("save changes"), true,
                                        [this](int site) { program_.admin().users().save(site); }));
    layout->addWidget(editor_.newButton("cmdReloadUserfile", tr("reload"), false,
                                        [this](int site) { program_.admin().users().reloadDetails(site); }));
    layout->addWidget(editor_.newButton("cmdUserResetPWD", tr("reset password..."), false,
                                        [this](int site) { program_.admin().resetPassword(site); }));
    layout->addWidget(editor_.problem(), 1);
    return layout;
}

void UserEditorPanel::editSections() {
    const int site = program_.currentSite();
    const clsUser* const user = site > 0 ? program_.admin().users().current(site) : nullptr;
    if (user != nullptr && user->got_info) {
        openUserSections(program_, site, *user, this);
    }
}

// A row can become the current one without being picked: by the focus that comes to the list.
void UserEditorPanel::addressPicked(int row) {
    const std::vector<std::string>& masks = editor_.form().lstUserIP;
    if (row >= 0 && row < static_cast<int>(masks.size()) && lstUserIP_->item(row)->isSelected()) {
        txtUserIP_->setText(textOf(masks[static_cast<std::size_t>(row)]));
    }
}

} // namespace corvel
