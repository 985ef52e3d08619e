#pragma once

#include "app/AccountTable.h"
#include "common/TextEncoding.h"

#include <QColor>
#include <QPalette>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvel {

class BytesEdit;
class ElidedLabel;

// The ground of a row or a box in which something is typed and not saved.
QColor unsavedColour(const QPalette& palette);

// The text boxes in which an editor's record is changed, by number, and the line that says why they are
// empty.
class EditorBoxes {
  public:
    // A person has typed text (UTF-8) into a box, or what the server has there: nothing.
    using Typed = std::function<void(std::size_t box, std::optional<std::string> text)>;

    // count: how many boxes there will be.
    EditorBoxes(std::size_t count, Typed typed);

    // The box of that number, to be put into a layout once. The line, the same.
    BytesEdit* box(std::size_t number) const { return boxes_[number]; }
    ElidedLabel* problem() const { return problem_; }

    // Shows what the server has in the boxes nobody has touched, and in the others what is typed. form: as
    // the editor shows it, its texts in the encoding. Whether the record's details are in the boxes now: they
    // stay there while they are asked for again.
    template <typename Form>
    bool show(AccountEditor<Form>& editor, TextEncoding encoding) {
        const bool isAsked = editor.details == Details::asked || editor.details == Details::wanted;
        const bool stays = isAsked && isKnown_ && editor.id == id_;
        if (!stays) {
            isKnown_ = editor.details == Details::known;
            for (std::size_t number = 0; number < boxes_.size(); ++number) {
                showBox(number, editor.form.box(number), editor.draft, encoding);
            }
        }
        id_ = editor.id;
        showProblem(editor.details, editor.problem, encoding);
        return isKnown_;
    }

  private:
    void showBox(std::size_t number, const std::string& bytes, const Draft* draft, TextEncoding encoding);
    void showProblem(Details details, const std::string& problem, TextEncoding encoding);

    Typed typed_;
    std::vector<BytesEdit*> boxes_;
    ElidedLabel* problem_;
    std::optional<std::int16_t> id_;
    bool isKnown_ = false;
};

} // namespace corvel
