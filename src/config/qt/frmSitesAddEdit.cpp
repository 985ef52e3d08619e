#include "config/qt/frmSitesAddEdit.h"

#include "widgets/DialogParts.h"
#include "widgets/OneLineEdit.h"
#include "widgets/TextConversion.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include <array>
#include <utility>

namespace corvel {

struct frmSitesAddEdit::Label {
    const char* name;
    const char* text;
    std::string SiteForm::*member;
};

frmSitesAddEdit::frmSitesAddEdit(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), opened_(std::move(opening.form)), accept_(std::move(accept)) {
    static constexpr std::array<Label, 6> labels = {{
        {"txtSitename", QT_TR_NOOP("Site &name:"), &SiteForm::txtSitename},
        {"txtHostname", QT_TR_NOOP("&Host name:"), &SiteForm::txtHostname},
        {"txtPort", QT_TR_NOOP("P&ort:"), &SiteForm::txtPort},
        {"txtUsername", QT_TR_NOOP("&User name:"), &SiteForm::txtUsername},
        {"txtPassword", QT_TR_NOOP("&Password:"), &SiteForm::txtPassword},
        {"txtIdent", QT_TR_NOOP("&Ident:"), &SiteForm::txtIdent},
    }};
    setObjectName(QStringLiteral("frmSitesAddEdit"));
    // Qt reads a single [*] as the place of a "modified" mark.
    setWindowTitle(opening.caption.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));

    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    for (const Label& label : labels) {
        addTextField(*layout, label);
    }
    texts_[4].box->setEchoMode(QLineEdit::Password);
    connectOnStartup_ = addCheckBox(*layout, "chkConnectOnStartup", tr("&Connect when starting Corvel"),
                                    opened_.chkConnectOnStartup);
    useSslProxy_ = addCheckBox(*layout, "chkUseSSLProxy", tr("Use SS&L proxy for this server (tunnelor)"),
                               opened_.chkUseSSLProxy);

    auto* const buttons = new QDialogButtonBox;
    QPushButton* const ok = buttons->addButton(opening.okCaption, QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("CancelButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmSitesAddEdit::okClicked);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addRow(buttons);
    setMinimumWidth(sizeHint().width() + fontMetrics().averageCharWidth() * 12);
}

void frmSitesAddEdit::addTextField(QFormLayout& layout, const Label& label) {
    auto* const box = new OneLineEdit;
    const std::string& value = opened_.*label.member;
    box->setObjectName(QLatin1String(label.name));
    box->setText(textOf(value, encodingOf(value)));
    auto* const caption = new QLabel(tr(label.text));
    caption->setBuddy(box);
    box->setAccessibleName(tr(label.text).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    layout.addRow(caption, box);
    texts_.push_back({label.member, box});
}

QCheckBox* frmSitesAddEdit::addCheckBox(QFormLayout& layout, const char* name, const QString& caption,
                                        bool checked) {
    auto* const box = new QCheckBox(caption);
    box->setObjectName(QLatin1String(name));
    box->setChecked(checked);
    layout.addRow(QString(), box);
    return box;
}

SiteForm frmSitesAddEdit::collect() const {
    SiteForm form;
    for (const TextField& field : texts_) {
        form.*field.member = bytesOf(field.box->text(), encodingOf(opened_.*field.member));
    }
    form.chkConnectOnStartup = connectOnStartup_->isChecked();
    form.chkUseSSLProxy = useSslProxy_->isChecked();
    return form;
}

void frmSitesAddEdit::okClicked() {
    closeOrSay(*this, accept_(collect()), TextEncoding::utf8);
}

} // namespace corvel
