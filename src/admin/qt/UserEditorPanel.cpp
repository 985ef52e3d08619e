#include "admin/qt/UserEditorPanel.h"

#include "widgets/BytesEdit.h"
#include "widgets/DialogParts.h"
#include "widgets/ReportView.h"
#include "widgets/TextConversion.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr int scrollMaximum = 1000; // the bar's whole range is the hidden part, whatever it is
constexpr int columnsOfGrid = 4;
constexpr int buttonPadding = 12; // pixels beside the caption of a narrow button

// A button that only calls act.
template <typename Act>
QPushButton* newButton(const char* name, const QString& caption, Act act) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, act);
    return button;
}

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

UserEditorPanel::UserEditorPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picUserContainer"));
    picUserCtls_ = new QWidget(this);
    picUserCtls_->setObjectName(QStringLiteral("picUserCtls"));
    ScrollU_ = new QScrollBar(Qt::Vertical, this);
    ScrollU_->setObjectName(QStringLiteral("ScrollU"));
    ScrollU_->setMaximum(scrollMaximum);

    auto* const texts = new QGridLayout;
    addTexts(*texts);
    addLimits(*texts);
    addLogins(*texts);
    texts->setColumnStretch(1, 1);
    texts->setColumnStretch(3, 1);
    auto* const left = new QVBoxLayout;
    left->addLayout(createAddresses(), 1);
    left->addLayout(createGroups(), 1);
    auto* const lists = new QHBoxLayout;
    lists->addLayout(left, 1);
    lists->addLayout(createSections(), 1);
    auto* const layout = new QVBoxLayout(picUserCtls_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(texts);
    layout->addLayout(lists, 1);
    layout->addLayout(createButtons());

    connect(ScrollU_, &QScrollBar::valueChanged, this, &UserEditorPanel::ScrollU_Change);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* focused) { showFocused(focused); });
    clear();
    layoutControls();
}

void UserEditorPanel::setForm(UserForm form, TextEncoding encoding) {
    form_ = std::move(form);
    encoding_ = encoding;
    for (const TextBox& text : texts_) {
        text.box->setBytes(form_.*text.member, encoding);
    }
    for (std::size_t i = 0; i < txtUserLogins_.size(); ++i) {
        txtUserLogins_[i]->setBytes(form_.txtUserLogins[i], encoding);
    }
    lstUserIP_->clear();
    for (const std::string& mask : form_.lstUserIP) {
        lstUserIP_->addItem(displayTextOf(mask, encoding));
    }
    setGroups(std::move(form_.lvwUserGroups));
    lvwUserSections_->setSource(sourceOf(
        form_.lvwUserSections,
        {{.header = tr("section"), .alignment = Qt::AlignRight},
         {.header = tr("ratio"), .alignment = Qt::AlignRight},
         {.header = tr("credits (MB)"), .alignment = Qt::AlignRight}},
        std::array{&UserSectionRow::sSection, &UserSectionRow::sRatio, &UserSectionRow::sCredits}, encoding));
    lvwUserSections_->fitColumns(0, 2);
}

void UserEditorPanel::setGroups(std::vector<UserGroupRow> groups) {
    form_.lvwUserGroups = std::move(groups);
    lvwUserGroups_->setSource(
        sourceOf(form_.lvwUserGroups,
                 {{.header = tr("gid"), .alignment = Qt::AlignRight},
                  {.header = tr("groupname")},
                  {.header = tr("gadmin")}},
                 std::array{&UserGroupRow::sGID, &UserGroupRow::sGroupName, &UserGroupRow::sGadmin},
                 encoding_),
        ReportView::CurrentRow::keep);
    lvwUserGroups_->fitColumns(0, 2);
}

UserForm UserEditorPanel::form() const {
    UserForm form = form_;
    for (const TextBox& text : texts_) {
        form.*text.member = text.box->bytes();
    }
    for (std::size_t i = 0; i < txtUserLogins_.size(); ++i) {
        form.txtUserLogins[i] = txtUserLogins_[i]->bytes();
    }
    form.txtUserIP = bytesOf(txtUserIP_->text(), encoding_);
    return form;
}

std::string UserEditorPanel::txtUserUID() const {
    return txtUserUID_->bytes();
}

BytesEdit* UserEditorPanel::addBox(QGridLayout& layout, int row, int gridColumn, int span, const char* name,
                                   const QString& caption, std::string UserForm::*member) {
    auto* const box = new BytesEdit;
    layout.addWidget(labelFor(*box, name, caption), row, gridColumn);
    layout.addWidget(box, row, gridColumn + 1, 1, span);
    texts_.push_back({member, box});
    return box;
}

void UserEditorPanel::addTexts(QGridLayout& layout) {
    constexpr int whole = columnsOfGrid - 1;
    txtUserUID_ = addBox(layout, 0, 0, 1, "txtUserUID", tr("uid:"), &UserForm::txtUserUID);
    addBox(layout, 0, 2, 1, "txtUserName", tr("name:"), &UserForm::txtUserName);
    BytesEdit* const group = addBox(layout, 1, 0, 1, "txtUserGroup", tr("group:"), &UserForm::txtUserGroup);
    addBox(layout, 1, 2, 1, "txtUserFlags", tr("flags:"), &UserForm::txtUserFlags);
    addBox(layout, 2, 0, whole, "txtUserTagLine", tr("tagline:"), &UserForm::txtUserTagLine);
    addBox(layout, 3, 0, whole, "txtUserHomePath", tr("home:"), &UserForm::txtUserHomePath);
    addBox(layout, 4, 0, whole, "txtUserVFS", tr("VFS file:"), &UserForm::txtUserVFS);
    for (BytesEdit* const box : {txtUserUID_, group}) {
        setShownOnly(*box);
        box->setFocusPolicy(Qt::ClickFocus);
    }
}

void UserEditorPanel::addLimits(QGridLayout& layout) {
    constexpr int row = 5;
    addBox(layout, row, 0, 1, "txtUserBwUp", tr("up (kB/s):"), &UserForm::txtUserBwUp);
    addBox(layout, row, 2, 1, "txtUserBwDn", tr("down (kB/s):"), &UserForm::txtUserBwDn);
    for (std::size_t i = texts_.size() - 2; i < texts_.size(); ++i) {
        texts_[i].box->setAlignment(Qt::AlignRight);
    }
}

void UserEditorPanel::addLogins(QGridLayout& layout) {
    constexpr int row = 6;
    constexpr std::array<const char*, 3> services = {QT_TR_NOOP("FTP"), QT_TR_NOOP("telnet"),
                                                     QT_TR_NOOP("HTTP")};
    auto* const line = new QHBoxLayout;
    for (std::size_t i = 0; i < services.size(); ++i) {
        auto* const box = new BytesEdit;
        QLabel* const label = labelFor(*box, "", tr(services[i]));
        box->setObjectName(elementName("txtUserLogins", static_cast<int>(i)));
        box->setAccessibleName(tr("Logins by %1").arg(tr(services[i])));
        setDigitsWide(*box, 5);
        line->addWidget(label);
        line->addWidget(box);
        line->addSpacing(8);
        txtUserLogins_[i] = box;
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
    QPushButton* const add = newButton("cmdUserAddDelIp_0", tr("add"), [this] { emit addMaskRequested(); });
    QPushButton* const remove =
        newButton("cmdUserAddDelIp_1", tr("delete"), [this] { emit deleteMaskRequested(); });
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
    connect(lvwUserGroups_, &ReportView::rowDoubleClicked, this, [this] { emit groupsRequested(); });
    auto* const layout = column(tr("groups"), *lvwUserGroups_, "lvwUserGroups");
    layout->addWidget(
        newButton("cmdUserEditGroups", tr("change groups..."), [this] { emit groupsRequested(); }), 0,
        Qt::AlignLeft);
    return layout;
}

QLayout* UserEditorPanel::createSections() {
    lvwUserSections_ = new ReportView;
    connect(lvwUserSections_, &ReportView::rowDoubleClicked, this, [this] { emit sectionsRequested(); });
    connect(lvwUserSections_, &ReportView::keyPressed, this, [this](Qt::Key key) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            emit sectionsRequested();
        }
    });
    return column(tr("sections"), *lvwUserSections_, "lvwUserSections");
}

QLayout* UserEditorPanel::createButtons() {
    auto* const layout = new QHBoxLayout;
    layout->addWidget(newButton("cmdUserSaveChanges", tr("save changes"), [this] { emit saveRequested(); }));
    layout->addWidget(newButton("cmdReloadUserfile", tr("reload"), [this] { emit reloadRequested(); }));
    layout->addWidget(
        newButton("cmdUserResetPWD", tr("reset password..."), [this] { emit passwordRequested(); }));
    layout->addStretch(1);
    return layout;
}

// A row can become the current one without being picked: by the focus that comes to the list.
void UserEditorPanel::addressPicked(int row) {
    if (row >= 0 && row < static_cast<int>(form_.lstUserIP.size()) && lstUserIP_->item(row)->isSelected()) {
        txtUserIP_->setText(textOf(form_.lstUserIP[static_cast<std::size_t>(row)], encoding_));
    }
}

bool UserEditorPanel::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::StyleChange) {
        layoutControls();
    }
    return isHandled;
}

void UserEditorPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layoutControls();
}

void UserEditorPanel::wheelEvent(QWheelEvent* event) {
    if (ScrollU_->isVisible()) {
        QCoreApplication::sendEvent(ScrollU_, event);
    }
}

void UserEditorPanel::layoutControls() {
    const QSize least = picUserCtls_->minimumSizeHint();
    const int barWidth = ScrollU_->sizeHint().width();
    const int gap = picUserCtls_->layout()->spacing();
    setMinimumWidth(least.width() + gap + barWidth);
    const int hidden = least.height() - height();
    ScrollU_->setVisible(hidden > 0);
    ScrollU_->setGeometry(width() - barWidth, 0, barWidth, height());
    if (hidden > 0) {
        ScrollU_->setPageStep(std::max(1, scrollMaximum * height() / hidden));
        ScrollU_->setSingleStep(std::max(1, scrollMaximum * fontMetrics().lineSpacing() / hidden));
    }
    picUserCtls_->resize(width() - (hidden > 0 ? barWidth + gap : 0), std::max(least.height(), height()));
    ScrollU_Change();
}

void UserEditorPanel::ScrollU_Change() {
    const int hidden = picUserCtls_->height() - height();
    picUserCtls_->move(0, hidden > 0 ? -hidden * ScrollU_->value() / ScrollU_->maximum() : 0);
}

// A control that got the focus by a key comes into sight.
void UserEditorPanel::showFocused(QWidget* focused) {
    const int hidden = picUserCtls_->height() - height();
    if (focused == nullptr || hidden <= 0 || !picUserCtls_->isAncestorOf(focused)) {
        return;
    }
    const int top = focused->mapTo(picUserCtls_, QPoint(0, 0)).y();
    const int bottom = top + focused->height();
    const int shown = -picUserCtls_->y();
    const int wanted = top < shown ? top : bottom > shown + height() ? bottom - height() : shown;
    if (wanted != shown) {
        ScrollU_->setValue((wanted * scrollMaximum + hidden - 1) / hidden);
    }
}

} // namespace corvel
