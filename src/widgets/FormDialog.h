#pragma once

#include "widgets/DialogParts.h"
#include "widgets/FormBoxes.h"

#include <QDialog>
#include <QDialogButtonBox>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace corvel {

// A dialog over a form record. Its confirm button stores what the controls hold in the record, and Accept
// says what becomes of it: nothing, and the dialog closes, or a message, and it stays open. An empty message
// is not shown: the person was told already.
template <typename Form>
class FormDialog : public QDialog {
  public:
    using Accept = std::function<std::optional<std::string>(const Form&)>;

    // What it opens with. The texts are in the encoding, that of the connection.
    struct Opening {
        Form form;
        TextEncoding encoding = TextEncoding::utf8;
    };

  protected:
    FormDialog(const char* name, const QString& title, Opening opening, Accept accept, QWidget* parent)
        : QDialog(parent), form_(std::move(opening.form)), encoding_(opening.encoding),
          accept_(std::move(accept)) {
        setObjectName(QLatin1String(name));
        setWindowTitle(title);
    }

    // The buttons at its foot, to be put into its layout once.
    QDialogButtonBox* buttons(const ConfirmButton& confirm = {}) {
        return confirmButtons(*this, confirm, [this] {
            boxes_.collect();
            collect();
            confirmed();
        });
    }

    // Stores in the record what the controls hold that are none of boxes_.
    virtual void collect() {}
    // Sends the record, or asks before.
    virtual void confirmed() { send(); }
    void send() { closeOrSay(*this, accept_(form_), encoding_); }

    Form form_;
    TextEncoding encoding_;
    FormBoxes boxes_;

  private:
    Accept accept_;
};

} // namespace corvel
