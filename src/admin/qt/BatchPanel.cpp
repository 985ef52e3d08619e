#include "admin/qt/BatchPanel.h"

#include "widgets/Forms.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace corvel {

BatchPanel::BatchPanel(Perform perform, QWidget* parent)
    : QWidget(parent), perform_(std::move(perform)), rows_(new QGridLayout(this)) {
    setObjectName(QStringLiteral("picUserBatchContainer"));
    rows_->setContentsMargins(6, 0, 0, 0); // only the splitter's handle is beside it
    rows_->setColumnStretch(1, 1);
    rows_->addWidget(new QLabel(tr("Change for every selected user:")), 0, 0, 1, 2);
    addRows();
    auto* const performButton = new QPushButton(tr("perform"));
    performButton->setObjectName(QStringLiteral("cmdBatchPerform"));
    performButton->setAutoDefault(false);
    performButton->setToolTip(tr("send what is ticked for every user that is selected in the list"));
    connect(performButton, &QPushButton::clicked, this, &BatchPanel::cmdBatchPerform_Click);
    const int row = rows_->rowCount();
    rows_->addWidget(performButton, row, 0, 1, 2, Qt::AlignLeft);
    rows_->setRowStretch(row + 1, 1);
    boxes_.show();
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

void BatchPanel::cmdBatchPerform_Click() {
    for (const auto& [ticked, tick] : ticks_) {
        *ticked = tick->isChecked();
    }
    boxes_.collect(connection_);
    perform_(form_);
}

} // namespace corvel
