#include "admin/qt/EditorBoxes.h"

#include "widgets/ElidedLabel.h"
#include "widgets/FormBoxes.h"
#include "widgets/TextConversion.h"

#include <QCoreApplication>

#include <utility>

namespace corvel {

namespace {

QString say(const char* text) {
    return QCoreApplication::translate("EditorBoxes", text);
}

void mark(BytesEdit& box, bool isTouched) {
    QPalette palette;
    if (isTouched) {
        palette.setColor(QPalette::Base, unsavedColour(palette));
    }
    box.setPalette(palette);
    box.setToolTip(isTouched ? say("Not saved yet") : QString());
}

} // namespace

QColor unsavedColour(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    constexpr double share = 0.25;
    const auto mixed = [](int ground, int colour) {
        return static_cast<int>(ground * (1 - share) + colour * share);
    };
    return {mixed(base.red(), 0xFF), mixed(base.green(), 0xA5), mixed(base.blue(), 0x00)};
}

EditorBoxes::EditorBoxes(std::size_t count, Typed typed)
    : typed_(std::move(typed)), problem_(new ElidedLabel) {
    for (std::size_t number = 0; number < count; ++number) {
        auto* const box = new BytesEdit;
        QObject::connect(box, &QLineEdit::textEdited, box, [this, number, box](const QString& text) {
            mark(*box, box->isTouched());
            typed_(number, box->isTouched() ? std::optional(toCore(text)) : std::nullopt);
        });
        boxes_.push_back(box);
    }
}

void EditorBoxes::showBox(std::size_t number, const std::string& bytes, const Draft* draft,
                          TextEncoding encoding) {
    BytesEdit& box = *boxes_[number];
    box.setEnabled(isKnown_);
    const std::string* typed = nullptr;
    if (isKnown_ && draft != nullptr) {
        const auto found = draft->boxes.find(number);
        typed = found == draft->boxes.end() ? nullptr : &found->second;
    }
    box.setBytes(bytes, encoding, typed == nullptr ? std::nullopt : std::optional(fromCore(*typed)));
    mark(box, typed != nullptr);
}

void EditorBoxes::showProblem(Details details, const std::string& problem, TextEncoding encoding) {
    switch (details) {
    case Details::none:
    case Details::known:
        problem_->showText({});
        return;
    case Details::wanted:
    case Details::asked:
        problem_->showText(isKnown_ ? QString() : say("Waiting for the details ..."));
        return;
    case Details::refused:
        problem_->showText(say("No details: %1").arg(displayTextOf(problem, encoding)));
        return;
    }
}

} // namespace corvel
