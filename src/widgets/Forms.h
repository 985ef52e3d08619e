#pragma once

#include "common/TextEncoding.h"

#include <QDialog>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QValidator>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QDialogButtonBox;
class QFormLayout;

namespace corvel {

// What panels and dialogs are put together from. Widgets that are given out have no parent yet and belong to
// the caller.

// NAME_index, the name of an element of a control array; the index of a per-site array is the site's.
QString elementName(const char* name, int index);

// A caption as it is spoken: without its & and its colon.
QString plainCaption(const QString& caption);

// Names input and puts a label before it, whose plain caption is the accessible name too.
QLabel* labelFor(QWidget& input, const char* name, const QString& caption);

// As wide as a number needs that has that many digits.
void setDigitsWide(QLineEdit& box, int digits);

// Puts a button into box that empties it, while there is anything in it. Qt's own has its picture looked for
// in all themes of the desktop, which takes a third of the program's start.
void addClearButton(QLineEdit& box);

// Makes box one that shows a text, to be copied but not changed, and looks like it.
void setShownOnly(QLineEdit& box);

// Gives page, which was added to its window behind all others, its turn for the Tab key right behind before.
void setTabOrderBehind(QWidget& before, QWidget& page);

// Shows a dialog that deletes itself when it is closed; returns at once.
void openDialog(QDialog& dialog);

// A message box over parent that is not shown yet: plain text, cut in the middle where it is too long for a
// screen.
QMessageBox* newMessageBox(QWidget* parent, const QString& text);

// The same with a question whose default answer is no. It is answered in finished, by QMessageBox::Yes or
// anything else.
QMessageBox* newQuestion(QWidget* parent, const QString& text);

// A line of plain text that gives way: where it has less room than it wants, its end is left out and its tool
// tip has the whole. It never makes a window wider.
class ElidedLabel : public QLabel {
  public:
    explicit ElidedLabel(const char* name);

    // Does nothing where the text is that already.
    void showText(const QString& text);
    // Puts a picture before the text; a null one takes it away.
    void setIcon(const QIcon& picture);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QIcon picture_;
};

// Takes line breaks, CR and LF, out of whatever is typed, pasted or set into a line edit, and refuses
// nothing. (Qt by itself keeps them in the text and shows them as other characters.) What else separates
// lines in Unicode can be in a name, and stays.
class LineBreakDropper : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override;
};

// A line edit whose text never has a line break in it. Give it no other validator.
class OneLineEdit : public QLineEdit {
  public:
    explicit OneLineEdit(QWidget* parent = nullptr);

    // Whether the whole text is selected when the box gets the focus, by a key or by a click; dragging the
    // mouse in that first click still selects what it passes. Off at first: then only keys select all.
    void setSelectAllOnFocus(bool isOn) { selectsAllOnFocus_ = isOn; }
    // The same for as long as the box holds only that sample.
    void selectSampleOnFocus(std::string_view sample);

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool selectsAllOnFocus_ = false;
    bool isFirstClick_ = false; // the click under way brought the focus
};

// A line edit over a text of the server: what a person leaves alone comes back as the same bytes, even where
// they cannot be told from what is on screen.
class BytesEdit : public OneLineEdit {
  public:
    using OneLineEdit::OneLineEdit;

    // Shows bytes. typed: what a person has made of them, which is shown instead; bytes come back only when
    // it is taken back. A text that stays the same keeps its cursor.
    void setBytes(std::string_view bytes, const std::optional<QString>& typed = {});

    // What is typed is in the encoding of the connection; without one in that of what it replaces.
    std::string bytes(const TextEncoding* connection = nullptr) const;
    // Whether the text is another one than what was shown.
    bool isTouched() const { return text() != shown_; }

  private:
    std::string bytes_;
    QString shown_; // what the box made of bytes_
};

// The text boxes over the members of one form record. The record must outlive it and stay where it is.
class FormBoxes {
  public:
    // A new box for member.
    BytesEdit* add(std::string& member);
    // The same with a label, in a new row of layout, which takes it over.
    BytesEdit* addRow(QFormLayout& layout, std::string& member, const char* name, const QString& caption);

    // Loads every box from its member.
    void show() const;

    // Stores what the boxes hold in the members, as BytesEdit has it.
    void collect(const TextEncoding* connection = nullptr) const;

  private:
    std::vector<std::pair<std::string*, BytesEdit*>> fields_;
};

// The two buttons at the foot of a dialog: one, the default, that confirms, and one that closes the dialog as
// Escape does.
struct ConfirmButtons {
    const char* confirmName = "cmdOK";
    QString confirmCaption = QStringLiteral("OK");
    const char* cancelName = "cmdCancel";
    QString cancelCaption = QDialog::tr("Cancel");
};

// What every FormDialog is. What is typed is in the encoding that its connection has as it is sent.
class DialogOverForm : public QDialog {
  protected:
    DialogOverForm(const char* name, const QString& title, const TextEncoding* encoding, QWidget* parent);

    // The buttons, to be put into its layout once.
    QDialogButtonBox* buttons(const ConfirmButtons& wanted = {});
    // Asks before the form is sent; the default answer is no.
    void askBefore(std::string_view question);

    // Stores in the record what the controls hold that are none of boxes_.
    virtual void collect() {}
    // Sends the record, or asks before.
    virtual void confirmed() { send(); }
    // Sends the record, and closes, or says why it was not sent and stays.
    void send();

    TextEncoding encoding() const { return connection_ != nullptr ? *connection_ : TextEncoding::utf8; }

    FormBoxes boxes_;

  private:
    virtual std::optional<std::string> accepted() = 0;
    // The record was not sent; a person is about to be told why.
    virtual void refused() {}

    const TextEncoding* connection_;
};

// A dialog over a form record. Its confirm button stores what the controls hold in the record, and Accept
// says what becomes of it: nothing, and the dialog closes, or a message, and it stays open. The message has
// the server's bytes in it, and CR LF between lines; an empty one is not shown: the person was told already.
template <typename Form>
class FormDialog : public DialogOverForm {
  public:
    using Accept = std::function<std::optional<std::string>(const Form&)>;

    // What it opens with. encoding: that of the connection, which outlives the dialog; nullptr for none.
    struct Opening {
        Form form;
        const TextEncoding* encoding = nullptr;
    };

  protected:
    FormDialog(const char* name, const QString& title, Opening opening, Accept accept, QWidget* parent)
        : DialogOverForm(name, title, opening.encoding, parent), form_(std::move(opening.form)),
          accept_(std::move(accept)) {}

    Form form_;

  private:
    std::optional<std::string> accepted() override { return accept_(form_); }

    Accept accept_;
};

} // namespace corvel
