#include "browser/qt/frmBrowserNUKE.h"

#include "widgets/DialogParts.h"
#include "widgets/FormBoxes.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>

#include <utility>

namespace corvel {

frmBrowserNUKE::frmBrowserNUKE(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), form_(std::move(opening.form)), accept_(std::move(accept)) {
    setObjectName(QStringLiteral("frmBrowserNUKE"));
    setWindowTitle(QStringLiteral("SITE NUKE"));
    auto* const layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto addText = [&](std::string& member, const char* name, const QString& caption) {
        BytesEdit* const box = boxes_.add(member);
        layout->addRow(labelFor(*box, name, caption), box);
        return box;
    };
    BytesEdit* const txtPath = addText(form_.txtPath, "txtPath", tr("&Path:"));
    setShownOnly(*txtPath);
    txtPath->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
    addText(form_.txtName, "txtName", tr("&Name:"));
    BytesEdit* const txtMultip = addText(form_.txtMultip, "txtMultip", tr("&Multiplier:"));
    setDigitsWide(*txtMultip, 6);
    txtReason_ = addText(form_.txtReason, "txtReason", tr("&Reason:"));
    if (!opening.hasSyntax) {
        auto* const hint = new QLabel(tr("Nothing will be sent: settings.ini has no site_nuke_syntax."));
        hint->setWordWrap(true);
        layout->addRow(hint);
    }
    layout->addRow(confirmButtons(*this, {}, [this] { okClicked(); }));
    boxes_.show(opening.encoding);
    txtMultip->installEventFilter(this);
    txtMultip->setFocus();
    txtMultip->selectAll();
}

// Enter goes on to the reason; without this it would press the default button, as it does in the reason.
bool frmBrowserNUKE::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            txtReason_->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmBrowserNUKE::okClicked() {
    boxes_.collect();
    closeOrSay(*this, accept_(form_), TextEncoding::utf8);
}

} // namespace corvel
