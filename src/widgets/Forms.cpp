#include "widgets/Forms.h"

#include "common/ShownText.h"
#include "common/Text.h"
#include "widgets/Icons.h"
#include "widgets/TextConversion.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFocusEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>

namespace corvel {

namespace {

bool isLineBreak(QChar character) {
    return character == QChar::LineFeed || character == QChar::CarriageReturn;
}

} // namespace

QString elementName(const char* name, int index) {
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

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

void addClearButton(QLineEdit& box) {
    QAction* const clear = box.addAction(icon("clear"), QLineEdit::TrailingPosition);
    clear->setToolTip(QLineEdit::tr("Clear"));
    clear->setVisible(false);
    QObject::connect(clear, &QAction::triggered, &box, &QLineEdit::clear);
    QObject::connect(&box, &QLineEdit::textChanged, clear,
                     [clear](const QString& text) { clear->setVisible(!text.isEmpty()); });
}

void setShownOnly(QLineEdit& box) {
    box.setReadOnly(true);
    QPalette palette = box.palette();
    palette.setBrush(QPalette::Base, palette.brush(QPalette::Window));
    box.setPalette(palette);
}

void setTabOrderBehind(QWidget& before, QWidget& page) {
    std::vector<QWidget*> stops; // Qt moves no others, nor anything behind them
    QWidget* next = &page;
    do {
        if ((next == &page || page.isAncestorOf(next)) && next->focusPolicy() != Qt::NoFocus) {
            stops.push_back(next);
        }
        next = next->nextInFocusChain();
    } while (next != &page);
    const Qt::FocusPolicy policy = before.focusPolicy();
    before.setFocusPolicy(Qt::TabFocus);
    QWidget* last = &before;
    for (QWidget* const stop : stops) {
        QWidget::setTabOrder(last, stop);
        last = stop;
    }
    before.setFocusPolicy(policy);
}

void openDialog(QDialog& dialog) {
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.open();
}

// What stands in a message may be as long as a server likes: too long a text would push the buttons off the
// screen.
QMessageBox* newMessageBox(QWidget* parent, const QString& text) {
    constexpr std::size_t longest = 1500;
    auto* const box =
        new QMessageBox(QMessageBox::NoIcon, QStringLiteral("Corvel"), {}, QMessageBox::Ok, parent);
    // Before the text: the automatic choice would read markup in it.
    box->setTextFormat(Qt::PlainText);
    box->setText(shortenedText(text, longest));
    // Qt indents the text of a box without an icon all the same.
    if (auto* const grid = qobject_cast<QGridLayout*>(box->layout())) {
        grid->setHorizontalSpacing(0);
        grid->setColumnStretch(grid->columnCount() - 1, 1);
        for (int item = 0; item < grid->count(); ++item) {
            if (QSpacerItem* const indent = grid->itemAt(item)->spacerItem()) {
                indent->changeSize(0, 0, QSizePolicy::Fixed, QSizePolicy::Fixed);
            }
        }
    }
    return box;
}

QMessageBox* newQuestion(QWidget* parent, const QString& text) {
    QMessageBox* const box = newMessageBox(parent, text);
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::No);
    box->setEscapeButton(QMessageBox::No);
    return box;
}

ElidedLabel::ElidedLabel(const char* name) {
    setObjectName(QLatin1String(name));
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::showText(const QString& shown) {
    const QString wanted = shortenedText(shown, longestLine);
    if (text() != wanted) {
        setText(wanted);
        setToolTip(toolTipOf(shown));
    }
}

void ElidedLabel::setIcon(const QIcon& picture) {
    constexpr int gap = 4;
    picture_ = picture;
    setIndent(picture.isNull() ? -1 : style()->pixelMetric(QStyle::PM_SmallIconSize) + gap);
    update();
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QRect area = contentsRect();
    if (!picture_.isNull()) {
        const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
        picture_.paint(&painter, area.left(), area.top(), side, area.height());
        area.setLeft(area.left() + indent());
    }
    style()->drawItemText(&painter, area, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), palette(),
                          isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, area.width()),
                          foregroundRole());
}

QValidator::State LineBreakDropper::validate(QString& text, int& cursor) const {
    const auto beforeCursor = text.cbegin() + std::clamp<qsizetype>(cursor, 0, text.size());
    cursor -= static_cast<int>(std::count_if(text.cbegin(), beforeCursor, isLineBreak));
    text.removeIf(isLineBreak);
    return Acceptable;
}

OneLineEdit::OneLineEdit(QWidget* parent) : QLineEdit(parent) {
    setValidator(new LineBreakDropper(this));
}

void OneLineEdit::selectSampleOnFocus(std::string_view sample) {
    connect(this, &QLineEdit::textChanged, this, [this, sampleText = fromCore(sample)](const QString& now) {
        selectsAllOnFocus_ = now == sampleText;
    });
}

void OneLineEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    isFirstClick_ = selectsAllOnFocus_ && event->reason() == Qt::MouseFocusReason;
    if (selectsAllOnFocus_ && event->reason() != Qt::PopupFocusReason) {
        selectAll();
    }
}

void OneLineEdit::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (isFirstClick_ && !hasSelectedText()) {
        selectAll();
    }
    isFirstClick_ = false;
}

void BytesEdit::setBytes(std::string_view bytes, const std::optional<QString>& typed) {
    if (bytes == bytes_ && typed == text()) {
        return; // nothing new, and the person can still undo
    }
    const QString before = text();
    const int cursor = cursorPosition();
    bytes_ = bytes;
    setText(textOf(bytes));
    shown_ = text();
    if (typed) {
        setText(*typed);
    }
    setCursorPosition(text() == before ? cursor : 0);
}

std::string BytesEdit::bytes(const TextEncoding* connection) const {
    const TextEncoding own = isValidUtf8(bytes_) ? TextEncoding::utf8 : TextEncoding::windows1252;
    return isTouched() ? bytesOf(text(), connection != nullptr ? *connection : own) : bytes_;
}

BytesEdit* FormBoxes::add(std::string& member) {
    return fields_.emplace_back(&member, new BytesEdit).second;
}

BytesEdit* FormBoxes::addRow(QFormLayout& layout, std::string& member, const char* name,
                             const QString& caption) {
    BytesEdit* const box = add(member);
    layout.addRow(labelFor(*box, name, caption), box);
    return box;
}

void FormBoxes::show() const {
    for (const auto& [member, box] : fields_) {
        box->setBytes(*member);
    }
}

void FormBoxes::collect(const TextEncoding* connection) const {
    for (const auto& [member, box] : fields_) {
        *member = box->bytes(connection);
    }
}

DialogOverForm::DialogOverForm(const char* name, const QString& title, const TextEncoding* encoding,
                               QWidget* parent)
    : QDialog(parent), connection_(encoding) {
    setObjectName(QLatin1String(name));
    setWindowTitle(titleOf(title));
}

QDialogButtonBox* DialogOverForm::buttons(const ConfirmButtons& wanted) {
    // In the dialog from the start: a button outside is not its default for good, and once the focus has
    // passed the other button, Enter would press that one.
    auto* const both = new QDialogButtonBox(this);
    QPushButton* const confirm = both->addButton(wanted.confirmCaption, QDialogButtonBox::AcceptRole);
    confirm->setObjectName(QLatin1String(wanted.confirmName));
    confirm->setDefault(true);
    both->addButton(wanted.cancelCaption, QDialogButtonBox::RejectRole)
        ->setObjectName(QLatin1String(wanted.cancelName));
    connect(both, &QDialogButtonBox::accepted, this, [this] {
        boxes_.collect(connection_);
        collect();
        confirmed();
    });
    connect(both, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return both;
}

void DialogOverForm::askBefore(std::string_view question) {
    QMessageBox* const box = newQuestion(this, fromCore(question));
    connect(box, &QDialog::finished, this, [this](int answer) {
        if (answer == QMessageBox::Yes) {
            send();
        }
    });
    openDialog(*box);
}

void DialogOverForm::send() {
    const std::optional<std::string> problem = accepted();
    if (!problem) {
        accept();
    } else if (!problem->empty()) {
        refused();
        QStringList lines;
        for (const std::string_view line : split(*problem, lineEnd)) {
            lines.append(cellTextOf(line));
        }
        openDialog(*newMessageBox(this, lines.join(QLatin1Char('\n'))));
    }
}

} // namespace corvel
