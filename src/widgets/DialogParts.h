#pragma once

#include "common/TextEncoding.h"
#include "widgets/ElementName.h"

#include <QMessageBox>
#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QDialog;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QWidget;

namespace corvel {

// What the dialogs are put together from. Widgets that are given out have no parent yet and belong to the
// caller.

// A caption as it is spoken: without its & and its colon.
QString plainCaption(const QString& caption);

// Names input and puts a label before it, whose plain caption is the accessible name too.
QLabel* labelFor(QWidget& input, const char* name, const QString& caption);

// As wide as a number needs that has that many digits.
void setDigitsWide(QLineEdit& box, int digits);

// Makes box one that shows a text, to be copied but not changed, and looks like it.
void setShownOnly(QLineEdit& box);

// The two buttons at the foot of a dialog: one, the default, that calls confirmed, and cmdCancel, which
// closes the dialog as Escape does. They are in the dialog already, and have no place in a layout yet.
struct ConfirmButton {
    const char* name = "cmdOK";
    QString caption = QStringLiteral("OK");
};
QDialogButtonBox* confirmButtons(QDialog& dialog, const ConfirmButton& confirm,
                                 std::function<void()> confirmed);

// Shows a dialog that deletes itself when it is closed; returns at once.
void openDialog(QDialog& dialog);

// A message box over parent that is not shown yet: plain text, cut in the middle where it is too long for a
// screen.
QMessageBox* newMessageBox(QWidget* parent, const QString& text, QMessageBox::StandardButtons buttons);

// Closes dialog with OK where there is no problem, else shows the problem and leaves it open. It has the
// server's bytes in it, and CR LF between lines. An empty one is not shown: the person was told already.
void closeOrSay(QDialog& dialog, const std::optional<std::string>& problem, TextEncoding encoding);

// A question whose default answer is no; a yes calls confirmed. Returns at once.
void askBefore(QWidget& parent, std::string_view question, std::function<void()> confirmed);

} // namespace corvel
