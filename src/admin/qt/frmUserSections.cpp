#include "admin/qt/frmUserSections.h"

#include "widgets/DialogParts.h"
#include "widgets/OneLineEdit.h"
#include "widgets/TextConversion.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

#include <utility>

namespace corvel {

frmUserSections::frmUserSections(Opening opening, Accept accept, QWidget* parent)
    : QDialog(parent), form_(std::move(opening.form)), accept_(std::move(accept)) {
    setObjectName(QStringLiteral("frmUserSections"));
    setWindowTitle(tr("Sections - %1").arg(displayTextOf(opening.sUserName, opening.encoding)));
    auto* const layout = new QGridLayout(this);
    layout->addWidget(new QLabel(tr("Section")), 0, 0);
    layout->addWidget(new QLabel(tr("Ratio")), 0, 1, Qt::AlignRight);
    layout->addWidget(new QLabel(tr("Credits (MB)")), 0, 2, Qt::AlignRight);
    layout->setColumnStretch(2, 1);
    const int sections = static_cast<int>(form_.lbl.size());
    for (int i = 0; i < sections; ++i) {
        addSection(*layout, i);
    }
    layout->setRowStretch(sections + 1, 1);
    layout->addWidget(confirmButtons(*this, {"cmdSave", tr("Save")}, [this] { cmdSave_Click(); }),
                      sections + 2, 0, 1, 3);
}

void frmUserSections::addSection(QGridLayout& layout, int index) {
    const auto i = static_cast<std::size_t>(index);
    const QString section = fromCore(form_.lbl[i]);
    auto* const label = new QLabel(section);
    label->setObjectName(elementName("lbl", index));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout.addWidget(label, index + 1, 0);
    txtRatio_.push_back(addBox(layout, "txtRatio", index, 1));
    txtCredits_.push_back(addBox(layout, "txtCredits", index, 2));
    txtRatio_[i]->setText(fromCore(form_.txtRatio[i]));
    txtRatio_[i]->setAccessibleName(tr("Ratio of section %1").arg(section));
    txtCredits_[i]->setText(fromCore(form_.txtCredits[i]));
    txtCredits_[i]->setAccessibleName(tr("Credits of section %1 in MB").arg(section));
    label->setBuddy(txtRatio_[i]);
}

OneLineEdit* frmUserSections::addBox(QGridLayout& layout, const char* name, int index, int column) {
    auto* const box = new OneLineEdit;
    box->setObjectName(elementName(name, index));
    box->setAlignment(Qt::AlignRight);
    box->setSelectAllOnFocus(true);
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 12);
    layout.addWidget(box, index + 1, column);
    return box;
}

void frmUserSections::cmdSave_Click() {
    for (std::size_t i = 0; i < txtRatio_.size(); ++i) {
        form_.txtRatio[i] = toCore(txtRatio_[i]->text());
        form_.txtCredits[i] = toCore(txtCredits_[i]->text());
    }
    closeOrSay(*this, accept_(form_), TextEncoding::utf8);
}

} // namespace corvel
