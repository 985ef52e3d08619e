#include "tools/Look.h"

#include "widgets/Forms.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLayout>
#include <QPushButton>

namespace corvel {

namespace {

QString nameOf(const QWidget& widget) {
    const QString name = widget.objectName();
    return QLatin1String(widget.metaObject()->className()) + QLatin1Char(' ') +
           (name.isEmpty() ? QStringLiteral("in ") + widget.parentWidget()->objectName() : name);
}

// Where it is in its window.
QRect placeOf(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint()), widget.size()};
}

QString cutText(const QWidget& widget) {
    const auto* const label = qobject_cast<const QLabel*>(&widget);
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    const bool hasText =
        (label != nullptr && !label->text().isEmpty()) || (button != nullptr && !button->text().isEmpty());
    if (!hasText || dynamic_cast<const ElidedLabel*>(&widget) != nullptr) {
        return {};
    }
    constexpr int edge = 4; // of a button, on either side of its text
    const bool wraps = label != nullptr && label->wordWrap();
    const auto* const push = qobject_cast<const QPushButton*>(&widget);
    const QSize wanted =
        wraps             ? QSize(0, label->heightForWidth(label->width()))
        : push == nullptr ? widget.sizeHint()
                          : push->fontMetrics().size(Qt::TextShowMnemonic, push->text()) +
                                QSize((push->icon().isNull() ? 0 : push->iconSize().width()) + 2 * edge, 0);
    const bool isCut = widget.width() < wanted.width() || widget.height() < widget.fontMetrics().height() ||
                       (wraps && widget.height() < wanted.height());
    return isCut ? nameOf(widget) + QStringLiteral(" is cut") : QString();
}

// Controls that one layout has put beside each other.
QStringList overlaps(const QLayout& layout) {
    QStringList faults;
    const QRect room = layout.parentWidget()->rect();
    for (int i = 0; i < layout.count(); ++i) {
        const QWidget* const one = layout.itemAt(i)->widget();
        if (one == nullptr || !one->isVisible()) {
            continue;
        }
        if (!room.contains(one->geometry())) {
            faults += nameOf(*one) + QStringLiteral(" reaches beyond the edge");
        }
        for (int j = i + 1; j < layout.count(); ++j) {
            const QWidget* const other = layout.itemAt(j)->widget();
            if (other != nullptr && other->isVisible() && one->geometry().intersects(other->geometry())) {
                faults += nameOf(*one) + QStringLiteral(" lies over ") + nameOf(*other);
            }
        }
    }
    return faults;
}

bool takesTab(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
           widget.focusProxy() == nullptr;
}

// Whether who reads down the columns, and in them from left to right, comes to first before second.
bool isBefore(const QRect& first, const QRect& second) {
    const bool isBeside = first.top() <= second.bottom() && second.top() <= first.bottom();
    return isBeside ? first.left() <= second.left()
                    : first.top() <= second.top() || first.right() <= second.left();
}

} // namespace

QStringList faultsOf(const QWidget& window) {
    QStringList faults;
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window) {
            continue;
        }
        if (const QString cut = cutText(*widget); !cut.isEmpty()) {
            faults += cut;
        }
        if (takesTab(*widget)) {
            const QAccessibleInterface* const spoken =
                QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
            if (spoken == nullptr || spoken->text(QAccessible::Name).isEmpty()) {
                faults += nameOf(*widget) + QStringLiteral(" has no name");
            }
        }
        const auto* const tool = qobject_cast<const QAbstractButton*>(widget);
        if (tool != nullptr && tool->text().isEmpty() && !tool->icon().isNull() &&
            tool->toolTip().isEmpty() && !tool->objectName().startsWith(QLatin1String("qt_"))) {
            faults += nameOf(*tool) + QStringLiteral(" has an icon without a tip");
        }
    }
    for (const QLayout* const layout : window.findChildren<QLayout*>()) {
        if (layout->parentWidget() != nullptr && layout->parentWidget()->isVisible() &&
            layout->parentWidget()->window() == &window) {
            faults += overlaps(*layout);
        }
    }
    const QWidget* last = nullptr;
    for (const QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
        if (!takesTab(*next) || next->window() != &window) {
            continue;
        }
        if (last != nullptr && !isBefore(placeOf(*last), placeOf(*next))) {
            faults += QStringLiteral("Tab goes back from ") + nameOf(*last) + QStringLiteral(" to ") +
                      nameOf(*next);
        }
        last = next;
    }
    faults.removeDuplicates();
    return faults;
}

} // namespace corvel
