#include "widgets/DialogParts.h"

#include "common/Text.h"
#include "widgets/TextConversion.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>

#include <utility>

namespace corvel {

namespace {

// What stands in a message may be as long as a server likes: too long a text would push the buttons off the
// screen.
QString withoutMiddle(const QString& text) {
    constexpr qsizetype longest = 1500;
    constexpr qsizetype end = longest / 3;
    return text.size() <= longest ? text
                                  : text.left(longest - end) + QStringLiteral(" \u2026 ") + text.right(end);
}

} // namespace

QString plainCaption(const QString& caption) {
    return QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')).trimmed();
}

QLabel* labelFor(QWidget& input, const char* name, const QString& caption) {
    input.setObjectName(QLatin1String(name));
    input.setAccessibleName(plainCaption(caption));
    auto* const label = new QLabel(caption);
    label->setBuddy(&input);
    return label;
}

void setDigitsWide(QLineEdit& box, int digits) {
    const int textWidth = box.fontMetrics().horizontalAdvance(QString(digits + 1, QLatin1Char('0')));
    QStyleOptionFrame option;
    option.initFrom(&box);
    option.lineWidth = box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &box);
    const QSize size(textWidth, box.fontMetrics().height());
    box.setFixedWidth(box.style()->sizeFromContents(QStyle::CT_LineEdit, &option, size, &box).width());
    box.setAlignment(Qt::AlignRight);
}

void setShownOnly(QLineEdit& box) {
    box.setReadOnly(true);
    QPalette palette = box.palette();
    palette.setBrush(QPalette::Base, palette.brush(QPalette::Window));
    box.setPalette(palette);
}

QDialogButtonBox* confirmButtons(QDialog& dialog, const ConfirmButton& confirm,
                                 std::function<void()> confirmed) {
    // In the dialog from the start: a button outside is not its default for good, and once the focus has
    // passed the other button, Enter would press that one.
    auto* const buttons = new QDialogButtonBox(&dialog);
    QPushButton* const button = buttons->addButton(confirm.caption, QDialogButtonBox::AcceptRole);
    button->setObjectName(QLatin1String(confirm.name));
    button->setDefault(true);
    QPushButton* const cancel = buttons->addButton(QDialog::tr("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, std::move(confirmed));
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

void openDialog(QDialog& dialog) {
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.open();
}

QMessageBox* newMessageBox(QWidget* parent, const QString& text, QMessageBox::StandardButtons buttons) {
    auto* const box = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("Corvel"), {}, buttons, parent);
    // Before the text: the automatic choice would read markup in it.
    box->setTextFormat(Qt::PlainText);
    box->setText(withoutMiddle(text));
    return box;
}

void closeOrSay(QDialog& dialog, const std::optional<std::string>& problem, TextEncoding encoding) {
    if (!problem) {
        dialog.accept();
    } else if (!problem->empty()) {
        QStringList lines;
        for (const std::string_view line : split(*problem, lineEnd)) {
            lines.append(displayTextOf(line, encoding));
        }
        openDialog(*newMessageBox(&dialog, lines.join(QLatin1Char('\n')), QMessageBox::Ok));
    }
}

void askBefore(QWidget& parent, std::string_view question, std::function<void()> confirmed) {
    QMessageBox* const box = newMessageBox(&parent, fromCore(question), QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::No);
    box->setEscapeButton(QMessageBox::No);
    QObject::connect(box, &QDialog::finished, &parent, [confirmed = std::move(confirmed)](int result) {
        if (result == QMessageBox::Yes) {
            confirmed();
        }
    });
    openDialog(*box);
}

} // namespace corvel
