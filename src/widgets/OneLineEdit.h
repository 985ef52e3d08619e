#pragma once

#include <QLineEdit>
#include <QValidator>

namespace corvel {

// Takes line breaks, CR and LF, out of whatever is typed, pasted or set into a line edit, and refuses
// nothing. (Qt by itself keeps them in the text and shows them as other characters.) What else separates
// lines in Unicode can be in a name, and stays.
class LineBreakDropper : public QValidator {
    Q_OBJECT

  public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override;
};

// A line edit whose text never has a line break in it. Give it no other validator.
class OneLineEdit : public QLineEdit {
    Q_OBJECT

  public:
    explicit OneLineEdit(QWidget* parent = nullptr);

    // Whether the whole text is selected when the box gets the focus, by a key or by a click; dragging the
    // mouse in that first click still selects what it passes. Off at first: then only keys select all.
    void setSelectAllOnFocus(bool isOn) { selectsAllOnFocus_ = isOn; }

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool selectsAllOnFocus_ = false;
    bool isFirstClick_ = false; // the click under way brought the focus
};

} // namespace corvel
