#include "config/qt/ConfigDialogs.h"

#include "widgets/Forms.h"
#include "widgets/Icons.h"
#include "widgets/ReportView.h"
#include "widgets/StoreValues.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QPushButton>
#include <QToolButton>

#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr int autosizeColumn = 3;
constexpr int rowsInSight = 12; // of the list of columns, before it scrolls

QPushButton* newButton(const char* name, int index, const QString& caption) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(elementName(name, index));
    button->setAutoDefault(false);
    return button;
}

QCheckBox* newCheckBox(const char* name, const QString& caption, bool isChecked) {
    auto* const box = new QCheckBox(caption);
    box->setObjectName(QLatin1String(name));
    box->setChecked(isChecked);
    return box;
}

std::int32_t& colorOf(SettingsForm& form, int picker) {
    SampleColors& sample = form.lblSampleColors[static_cast<std::size_t>(picker / 2)];
    return picker % 2 == 0 ? sample.text : sample.background;
}

class frmSettings : public FormDialog<SettingsForm> {
  public:
    frmSettings(Opening opening, Accept accept, QWidget* parent);

  private:
    QGroupBox* createColumns();
    QGroupBox* createColors();
    QHBoxLayout* createColorRow(std::size_t sample, const QString& name);
    QGroupBox* createTunnelor() const;
    QGroupBox* createTray() const;
    void showColumns();
    void toggleAutosize(int row);
    void moveCurrent(int step);
    void pickColor(int picker);
    void showSample(std::size_t sample);
    void collect() override { form_.chkALUseColors = chkALUseColors_->isChecked(); }

    ReportView* lvwAL_ = nullptr;
    QCheckBox* chkALUseColors_ = nullptr;
    std::array<QLabel*, 3> lblSampleColors_ = {};
};

frmSettings::frmSettings(Opening opening, Accept accept, QWidget* parent)
    : FormDialog("frmSettings", tr("Settings"), std::move(opening), std::move(accept), parent) {
    auto* const right = new QVBoxLayout;
    auto* const halves = new QHBoxLayout;
    halves->addWidget(createColumns(), 1);
    halves->addLayout(right);
    right->addWidget(createColors());
    right->addWidget(createTunnelor());
    right->addWidget(createTray());
    right->addWidget(new QLabel(tr("Tunnelor and the trayicon are set in settings.ini.")));
    right->addStretch(1);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(halves, 1);
    layout->addWidget(buttons({"cmdSave", tr("Save && Close"), "cmdClose", tr("Close")}));
    lvwAL_->setFocus();
}

QGroupBox* frmSettings::createColumns() {
    lvwAL_ = new ReportView;
    lvwAL_->setObjectName(QStringLiteral("lvwAL"));
    lvwAL_->setAccessibleName(tr("Columns of the activity list"));
    showColumns();
    connect(lvwAL_, &ReportView::rowDoubleClicked, this, [this](int row) { toggleAutosize(row); });
    connect(lvwAL_, &ReportView::keyPressed, this, [this](Qt::Key key, int row) {
        if (row >= 0 && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            toggleAutosize(row);
        }
    });
    connect(lvwAL_, &ReportView::checkToggled, this, [this](int row) {
        bool& show = form_.lvwAL[static_cast<std::size_t>(row)].show;
        show = !show;
        lvwAL_->refresh();
    });

    auto* const moves = new QHBoxLayout;
    const std::array<QString, 2> captions = {tr("Move &up"), tr("Move &down")};
    for (const int i : {0, 1}) {
        QPushButton* const move = newButton("cmdLvwMove", i, captions[static_cast<std::size_t>(i)]);
        connect(move, &QPushButton::clicked, this, [this, i] { moveCurrent(2 * i - 1); });
        moves->addWidget(move);
    }
    moves->addStretch(1);

    auto* const group = new QGroupBox(tr("Activity list columns"));
    auto* const layout = new QVBoxLayout(group);
    layout->addWidget(lvwAL_, 1);
    layout->addLayout(moves);
    layout->addWidget(new QLabel(tr("Double-click a column to change its autosize.")));
    return group;
}

void frmSettings::showColumns() {
    ReportSource source;
    source.rows = static_cast<int>(form_.lvwAL.size());
    source.columns = {{.header = tr("show")},
                      {.header = tr("id"), .alignment = Qt::AlignRight},
                      {.header = tr("name")},
                      {.header = tr("autosize"), .room = {tr("Yes")}}};
    source.nameColumn = 2;
    source.text = [this](int row, int column) -> QString {
        const ColumnRow& shown = form_.lvwAL[static_cast<std::size_t>(row)];
        switch (column) {
        case 1:
            return QString::number(shown.id);
        case 2:
            return fromCore(columnName(shown));
        case autosizeColumn:
            return shown.autosize ? tr("Yes") : tr("No");
        default:
            return {};
        }
    };
    source.checked = [this](int row) { return form_.lvwAL[static_cast<std::size_t>(row)].show; };
    lvwAL_->setSource(std::move(source));
    lvwAL_->fitColumns(0, autosizeColumn);
    lvwAL_->header()->setStretchLastSection(true);
    lvwAL_->setCurrentRow(0);

    const int rowHeight = lvwAL_->sizeHintForRow(0);
    lvwAL_->setMinimumHeight(rowHeight * (rowsInSight + 1) + 2 * lvwAL_->frameWidth());
    lvwAL_->setMinimumWidth(fontMetrics().averageCharWidth() * 45);
}

void frmSettings::toggleAutosize(int row) {
    bool& autosize = form_.lvwAL[static_cast<std::size_t>(row)].autosize;
    autosize = !autosize;
    lvwAL_->refresh();
}

void frmSettings::moveCurrent(int step) {
    const int row = lvwAL_->currentRow();
    if (row >= 0) {
        const std::size_t moved = moveColumn(form_, static_cast<std::size_t>(row), step);
        lvwAL_->refresh();
        lvwAL_->setCurrentRow(static_cast<int>(moved));
    }
}

QGroupBox* frmSettings::createColors() {
    chkALUseColors_ = newCheckBox("chkALUseColors", tr("Use &full-row colors"), form_.chkALUseColors);
    auto* const group = new QGroupBox(tr("Activity list colors"));
    auto* const layout = new QVBoxLayout(group);
    layout->addWidget(chkALUseColors_);
    const std::array<QString, 3> names = {tr("idle"), tr("uploading"), tr("downloading")};
    for (std::size_t sample = 0; sample < names.size(); ++sample) {
        layout->addLayout(createColorRow(sample, names[sample]));
    }
    return group;
}

QHBoxLayout* frmSettings::createColorRow(std::size_t sample, const QString& name) {
    const int index = static_cast<int>(sample);
    auto* const label = new QLabel(name);
    label->setObjectName(elementName("lblSampleColors", index));
    label->setAlignment(Qt::AlignCenter);
    label->setAutoFillBackground(true);
    label->setMinimumWidth(fontMetrics().horizontalAdvance(tr("downloading")) * 3 / 2);
    lblSampleColors_[sample] = label;
    showSample(sample);
    auto* const row = new QHBoxLayout;
    row->addWidget(label, 1);
    const std::array<QString, 2> parts = {tr("Text..."), tr("Background...")};
    for (int part = 0; part < 2; ++part) {
        const int picker = 2 * index + part;
        QPushButton* const button =
            newButton("cmdColorPickers", picker, parts[static_cast<std::size_t>(part)]);
        button->setAccessibleName(part == 0 ? tr("Text color of %1 rows").arg(name)
                                            : tr("Background color of %1 rows").arg(name));
        connect(button, &QPushButton::clicked, this, [this, picker] { pickColor(picker); });
        row->addWidget(button);
    }
    return row;
}

void frmSettings::pickColor(int picker) {
    auto* const dialog = new QColorDialog(colorFromStore(colorOf(form_, picker)), this);
    connect(dialog, &QColorDialog::colorSelected, this, [this, picker](const QColor& chosen) {
        colorOf(form_, picker) = storeColor(chosen);
        showSample(static_cast<std::size_t>(picker / 2));
    });
    openDialog(*dialog);
}

void frmSettings::showSample(std::size_t sample) {
    const SampleColors& colors = form_.lblSampleColors[sample];
    QPalette palette = lblSampleColors_[sample]->palette();
    palette.setColor(QPalette::WindowText, colorFromStore(colors.text));
    palette.setColor(QPalette::Window, colorFromStore(colors.background));
    lblSampleColors_[sample]->setPalette(palette);
}

QGroupBox* frmSettings::createTunnelor() const {
    auto* const group = new QGroupBox(tr("Tunnelor"));
    group->setObjectName(QStringLiteral("fraTunnelor"));
    auto* const layout = new QFormLayout(group);
    const auto add = [layout](const char* name, const QString& caption, const std::string& text) {
        auto* const box = new QLineEdit(fromCore(text));
        setShownOnly(*box);
        layout->addRow(labelFor(*box, name, caption), box);
    };
    add("txtSSLHost", tr("&Host:"), form_.txtSSLHost);
    add("txtSSLPort", tr("&Port:"), form_.txtSSLPort);
    return group;
}

QGroupBox* frmSettings::createTray() const {
    auto* const group = new QGroupBox(tr("Trayicon"));
    auto* const layout = new QVBoxLayout(group);
    for (QCheckBox* const box :
         {newCheckBox("chkShowTrayIcon", tr("Show trayicon"), form_.chkShowTrayIcon),
          newCheckBox("chkMinimizeToTray", tr("Minimize to tray"), form_.chkMinimizeToTray)}) {
        box->setEnabled(false);
        layout->addWidget(box);
    }
    return group;
}

class frmSitesAddEdit : public FormDialog<SiteForm> {
  public:
    frmSitesAddEdit(const SiteDialogTexts& texts, Opening opening, Accept accept, QWidget* parent);

  private:
    QHBoxLayout* createPassword();
    QDialogButtonBox* createButtons(const SiteDialogTexts& texts);
    void collect() override {
        form_.chkConnectOnStartup = connectOnStartup_->isChecked();
        form_.chkUseSSLProxy = useSslProxy_->isChecked();
        form_.cmdAddConnect = connects_;
    }
    // The person is to go on where the mistake is.
    void refused() override {
        const std::string box = siteFormProblem(form_).value_or(SiteFormProblem()).box;
        if (auto* const wrong = findChild<QLineEdit*>(fromCore(box))) {
            wrong->setFocus();
            wrong->selectAll();
        }
    }

    QCheckBox* connectOnStartup_;
    QCheckBox* useSslProxy_;
    bool connects_ = false; // the button pressed last is the one that connects
};

frmSitesAddEdit::frmSitesAddEdit(const SiteDialogTexts& texts, Opening opening, Accept accept,
                                 QWidget* parent)
    : FormDialog("frmSitesAddEdit", texts.title, std::move(opening), std::move(accept), parent),
      connectOnStartup_(
          newCheckBox("chkConnectOnStartup", tr("&Connect when starting Corvel"), form_.chkConnectOnStartup)),
      useSslProxy_(newCheckBox("chkUseSSLProxy", tr("Use SS&L proxy for this server (tunnelor)"),
                               form_.chkUseSSLProxy)) {
    useSslProxy_->setToolTip(
        tr("Where settings.ini names a tunnel (ssl_tunnel_host), the connection goes through it.\n"
           "Otherwise Corvel encrypts it: with AUTH TLS, or from the first byte on port 990."));
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    BytesEdit* const name = boxes_.addRow(*layout, form_.txtSitename, "txtSitename", tr("Site &name:"));
    boxes_.addRow(*layout, form_.txtHostname, "txtHostname", tr("&Host name:"));
    boxes_.addRow(*layout, form_.txtPort, "txtPort", tr("P&ort:"))->setPlaceholderText(QStringLiteral("21"));
    boxes_.addRow(*layout, form_.txtUsername, "txtUsername", tr("&User name:"));
    QHBoxLayout* const password = createPassword();
    layout->addRow(labelFor(*password->itemAt(0)->widget(), "txtPassword", tr("&Password:")), password);
    auto* const place = new ElidedLabel("lblPasswordPlace");
    place->showText(tr("Passwords are kept in plain text in sites.ini, in %1")
                        .arg(QDir::toNativeSeparators(texts.folder)));
    layout->addRow(QString(), place);
    boxes_.addRow(*layout, form_.txtIdent, "txtIdent", tr("&Ident:"));
    layout->addRow(QString(), connectOnStartup_);
    layout->addRow(QString(), useSslProxy_);
    layout->addRow(createButtons(texts));
    setMinimumWidth(sizeHint().width() + fontMetrics().averageCharWidth() * 12);
    boxes_.show();
    name->selectAll(); // for whoever names a copy
}

// The box, and beside it an eye that shows what is in it.
QHBoxLayout* frmSitesAddEdit::createPassword() {
    BytesEdit* const password = boxes_.add(form_.txtPassword);
    password->setEchoMode(QLineEdit::Password);
    auto* const eye = new QToolButton;
    eye->setObjectName(QStringLiteral("cmdShowPassword"));
    eye->setIcon(icon("eye"));
    eye->setToolTip(tr("Show the password"));
    eye->setAccessibleName(eye->toolTip());
    eye->setCheckable(true);
    eye->setFocusPolicy(Qt::StrongFocus);
    connect(eye, &QToolButton::toggled, password, [password](bool isShown) {
        password->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
    });
    auto* const row = new QHBoxLayout;
    row->addWidget(password, 1);
    row->addWidget(eye);
    return row;
}

QDialogButtonBox* frmSitesAddEdit::createButtons(const SiteDialogTexts& texts) {
    QDialogButtonBox* const all = buttons({"OKButton", texts.okCaption, "CancelButton"});
    if (!texts.connectCaption.isEmpty()) {
        QPushButton* const connects = all->addButton(texts.connectCaption, QDialogButtonBox::AcceptRole);
        connects->setObjectName(QStringLiteral("cmdAddConnect"));
        // Comes before the signal that is common to both.
        connect(all, &QDialogButtonBox::clicked, this,
                [this, connects](const QAbstractButton* pressed) { connects_ = pressed == connects; });
    }
    return all;
}

} // namespace

void openSettingsDialog(QWidget& parent, SettingsForm form, std::function<void(const SettingsForm&)> save) {
    const auto accept = [save = std::move(save)](const SettingsForm& changed) -> std::optional<std::string> {
        save(changed);
        return {};
    };
    openDialog(*new frmSettings({std::move(form)}, accept, &parent));
}

void openSiteDialog(QWidget& parent, const SiteDialogTexts& texts, SiteForm form,
                    std::function<std::optional<std::string>(const SiteForm&)> accept) {
    openDialog(*new frmSitesAddEdit(texts, {std::move(form)}, std::move(accept), &parent));
}

} // namespace corvel
