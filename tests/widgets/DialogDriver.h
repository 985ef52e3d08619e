#pragma once

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest/QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace corvel {

// Drives a window as a person does, by the names of its controls.
class DialogDriver {
  public:
    explicit DialogDriver(QWidget& window) : window_(window) {
        window_.show();
        window_.activateWindow();
        QApplication::processEvents();
    }

    template <typename Widget>
    Widget& find(const char* name) {
        auto* const widget = window_.findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr) {
            throw std::runtime_error(std::string("no control is named ") + name);
        }
        return *widget;
    }

    std::string text(const char* name) { return find<QLineEdit>(name).text().toStdString(); }

    // Replaces what the box holds, key by key.
    void type(const char* name, const QString& text) {
        auto& box = find<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClicks(&box, text);
    }

    void press(const char* name, Qt::Key key) { QTest::keyClick(&find<QWidget>(name), key); }
    void click(const char* name) { QTest::mouseClick(&find<QWidget>(name), Qt::LeftButton); }

    void clickRow(const char* name, int row) {
        auto& list = find<QListWidget>(name);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
    }

    // The text of the message box over the window, which is answered with button; empty where there is none.
    std::string answer(QMessageBox::StandardButton button = QMessageBox::Ok) {
        for (auto* const box : window_.findChildren<QMessageBox*>()) {
            if (box->isVisible()) {
                std::string text = box->text().toStdString();
                QTest::mouseClick(box->button(button), Qt::LeftButton);
                QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                return text;
            }
        }
        return {};
    }

    // The names of the controls that the Tab key comes by, from the first box on, once round.
    std::vector<std::string> tabOrder() {
        std::vector<std::string> names;
        const QWidget* const first = window_.focusWidget();
        do {
            names.push_back(window_.focusWidget()->objectName().toStdString());
            QTest::keyClick(window_.focusWidget(), Qt::Key_Tab);
        } while (window_.focusWidget() != first && names.size() < 100);
        return names;
    }

  private:
    QWidget& window_;
};

// The checks that every dialog passes: its inputs are named and have an accessible name, Escape closes it.
inline void expectUsableByKeys(QDialog& dialog) {
    for (const auto* const input : dialog.findChildren<QWidget*>()) {
        const bool isInput = qobject_cast<const QLineEdit*>(input) != nullptr ||
                             qobject_cast<const QComboBox*>(input) != nullptr ||
                             qobject_cast<const QListWidget*>(input) != nullptr;
        if (isInput) {
            EXPECT_FALSE(input->objectName().isEmpty());
            EXPECT_FALSE(input->accessibleName().isEmpty()) << input->objectName().toStdString();
        }
    }
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

} // namespace corvel
