#include "admin/qt/BatchPanel.h"

#include "widgets/Forms.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvel {

BatchPanel::BatchPanel(Actions actions, QWidget* parent)
    : QWidget(parent), actions_(std::move(actions)), lblBatchPlan_(new QLabel), rows_(new QGridLayout(this)) {
    setObjectName(QStringLiteral("picUserBatchContainer"));
    rows_->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    rows_->setColumnStretch(1, 1);
    rows_->addWidget(new QLabel(tr("Change for every selected user:")), 0, 0, 1, 2);
    addRows();
    lblBatchPlan_->setObjectName(QStringLiteral("lblBatchPlan"));
    rows_->addLayout(createButtons(), rows_->rowCount(), 0, 1, 2);
    boxes_.show();
    for (const auto& [ticked, tick] : ticks_) {
        connect(tick, &QCheckBox::toggled, this, &BatchPanel::showPlan);
    }
    for (BytesEdit* const edit : edits_) {
        connect(edit, &QLineEdit::textChanged, this, &BatchPanel::showPlan);
    }
    showPlan();
}

// Above them, what they would send.
QLayout* BatchPanel::createButtons() {
    const auto newButton = [this](const char* name, const QString& caption, const QString& tip,
                                  std::function<void(const BatchForm&)> Actions::*act) {
        auto* const button = new QPushButton(caption);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        button->setToolTip(tip);
        connect(button, &QPushButton::clicked, this, [this, act] { (actions_.*act)(collected()); });
        return button;
    };
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(newButton("cmdBatchPerform", tr("perform"),
                                 tr("Send what is ticked for every user that is selected in the list"),
                                 &Actions::perform));
    buttons->addWidget(newButton("cmdBatchPreview", tr("preview..."),
                                 tr("Show every command that would go out"), &Actions::preview));
    buttons->addStretch(1);
    auto* const layout = new QVBoxLayout;
    layout->addWidget(lblBatchPlan_);
    layout->addLayout(buttons);
    return layout;
}

void BatchPanel::addBelow(QWidget* widget) {
    const int row = rows_->rowCount();
    rows_->addWidget(widget, row, 0, 1, 2);
    rows_->setRowStretch(row, 1);
}

void BatchPanel::showSite(int site, const TextEncoding* connection) {
    connection_ = connection;
    if (site == site_) {
        return;
    }
    Typed& before = typed_[site_];
    before = {};
    for (const auto& [ticked, tick] : ticks_) {
        before.ticks.push_back(tick->isChecked());
    }
    for (const BytesEdit* const edit : edits_) {
        before.texts.push_back(edit->text());
    }
    site_ = site;
    const auto found = typed_.find(site);
    for (std::size_t i = 0; i < ticks_.size(); ++i) {
        ticks_[i].second->setChecked(found != typed_.end() && found->second.ticks[i]);
    }
    form_ = {};
    boxes_.show();
    for (std::size_t i = 0; found != typed_.end() && i < edits_.size(); ++i) {
        edits_[i]->setText(found->second.texts[i]);
    }
    showPlan();
}

const BatchForm& BatchPanel::collected() {
    for (const auto& [ticked, tick] : ticks_) {
        *ticked = tick->isChecked();
    }
    boxes_.collect(connection_);
    return form_;
}

void BatchPanel::showPlan() {
    lblBatchPlan_->setText(fromCore(batchPlanText(collected(), actions_.count())));
}

void BatchPanel::addRows() {
    addRow(form_.chkBatchFlags, "chkBatchFlags", tr("flags"),
           {{&form_.txtBatchFlags, "txtBatchFlags", tr("Flags")}});
    addRow(form_.chkBatchLogins, "chkBatchLogins", tr("logins"),
           {{&form_.txtBatchLogins[0], "txtBatchLogins_0", tr("FTP logins"), tr("FTP")},
            {&form_.txtBatchLogins[1], "txtBatchLogins_1", tr("Telnet logins"), tr("telnet")},
            {&form_.txtBatchLogins[2], "txtBatchLogins_2", tr("HTTP logins"), tr("HTTP")}});
    addRow(form_.chkBatchHomePath, "chkBatchHomePath", tr("home directory"),
           {{&form_.txtBatchHomePath, "txtBatchHomePath", tr("Home directory")}});
    addRow(form_.chkBatchVFS, "chkBatchVFS", tr("VFS file"),
           {{&form_.txtBatchVFS, "txtBatchVFS", tr("VFS file")}});
    addRow(form_.chkBatchTagLine, "chkBatchTagLine", tr("tagline"),
           {{&form_.txtBatchTagline, "txtBatchTagline", tr("Tagline")}});
    addRow(form_.chkBatchSpeed, "chkBatchSpeed", tr("speed limits (kB/s)"),
           {{&form_.txtBatchSpeedDn, "txtBatchSpeedDn", tr("Download limit in kB/s"), tr("download")},
            {&form_.txtBatchSpeedUp, "txtBatchSpeedUp", tr("Upload limit in kB/s"), tr("upload")}});
    addRow(form_.chkBatchCommand, "chkBatchCommand", tr("command"),
           {{&form_.txtBatchCommand, "txtBatchCommand", tr("Command")}});
    for (const char* const speed : {"txtBatchSpeedDn", "txtBatchSpeedUp"}) {
        findChild<QLineEdit*>(QLatin1String(speed))->setToolTip(tr("set this to -1 or 0 for uncapped speed"));
    }
    findChild<QLineEdit*>(QStringLiteral("txtBatchFlags"))->setToolTip(fromCore(flagsTip));
    findChild<QLineEdit*>(QStringLiteral("txtBatchCommand"))
        ->setToolTip(tr("%user stands for the name of each user"));
}

void BatchPanel::addRow(bool& ticked, const char* name, const QString& caption,
                        const std::vector<Box>& boxes) {
    auto* const tick = new QCheckBox(caption);
    tick->setObjectName(QLatin1String(name));
    ticks_.emplace_back(&ticked, tick);
    auto* const layout = new QHBoxLayout;
    for (const Box& box : boxes) {
        addBox(*layout, box);
    }
    if (boxes.size() > 1) {
        layout->addStretch(1);
    }
    const int row = rows_->rowCount();
    rows_->addWidget(tick, row, 0);
    rows_->addLayout(layout, row, 1);
}

void BatchPanel::addBox(QHBoxLayout& row, const Box& box) {
    BytesEdit* const edit = boxes_.add(*box.member);
    edits_.push_back(edit);
    QLabel* const label = labelFor(*edit, box.name, box.caption);
    edit->setAccessibleName(box.accessibleName);
    if (box.caption.isEmpty()) {
        delete label;
    } else {
        setDigitsWide(*edit, 6);
        row.addWidget(label);
    }
    row.addWidget(edit);
}

} // namespace corvel
