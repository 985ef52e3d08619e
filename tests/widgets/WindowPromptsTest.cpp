#include "widgets/WindowPrompts.h"

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvel {
namespace {

class WindowPromptsTest : public testing::Test {
  protected:
    WindowPromptsTest() { window_.show(); }

    // The box on the screen; there must be at most one.
    template <typename Box>
    Box* box() {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QList<QDialog*> boxes = window_.findChildren<QDialog*>();
        EXPECT_LE(boxes.size(), 1);
        return boxes.isEmpty() ? nullptr : qobject_cast<Box*>(boxes.front());
    }

    QWidget window_;
    std::unique_ptr<WindowPrompts> prompts_ = std::make_unique<WindowPrompts>(&window_);
};

TEST_F(WindowPromptsTest, AQuestionIsAnsweredOnceHoweverItEnds) {
    const std::vector<std::pair<std::function<void(QMessageBox&)>, bool>> cases = {
        {[](auto& box) { box.button(QMessageBox::Yes)->click(); }, true},
        {[](auto& box) { QTest::keyClick(&box, Qt::Key_Return); }, false},
        {[](auto& box) { QTest::keyClick(&box, Qt::Key_Escape); }, false},
        {[](auto& box) { box.close(); }, false},
    };
    for (const auto& [end, answer] : cases) {
        std::vector<bool> answers;
        prompts_->AskYesNo("Delete\r\n<b>" + std::string(20000, 'x') + "?",
                           [&](bool isYes) { answers.push_back(isYes); });
        auto* shown = box<QMessageBox>();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->textFormat(), Qt::PlainText);
        EXPECT_LT(shown->height(), 768) << "its buttons would not be on the screen";
        end(*shown);
        EXPECT_EQ(answers, std::vector<bool>{answer});
        EXPECT_EQ(box<QMessageBox>(), nullptr) << "deleted once closed";
    }
}

TEST_F(WindowPromptsTest, AnInputBoxGivesItsTextOrNothing) {
    const auto pasteAndAccept = [](QInputDialog& box) {
        QApplication::clipboard()->setText(QStringLiteral("new\r\nDELE\u2028x"));
        box.findChild<QLineEdit*>()->paste();
        box.accept();
    };
    const std::vector<std::pair<std::function<void(QInputDialog&)>, std::optional<std::string>>> cases = {
        {[](auto& box) { box.accept(); }, ""},
        {pasteAndAccept, "newDELE\u2028x"}, // which names can hold,
        {[](auto& box) { box.close(); }, std::nullopt},
    };
    for (const auto& [end, answer] : cases) {
        std::vector<std::optional<std::string>> answers;
        prompts_->AskText("", "<i>R&D</i>:", [&](const auto& text) { answers.push_back(text); });
        auto* shown = box<QInputDialog>();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->findChild<QLabel*>()->textFormat(), Qt::PlainText);
        end(*shown);
        EXPECT_EQ(answers, std::vector{answer});
        EXPECT_EQ(box<QInputDialog>(), nullptr);
    }
}

TEST_F(WindowPromptsTest, BoxesComeOneAfterAnotherInTheOrderOfAsking) {
    std::vector<std::string> seen;
    prompts_->AskYesNo("first", [&](bool) {
        seen.emplace_back("answered");
        prompts_->Message("asked by the answer");
    });
    prompts_->Message("second");
    while (auto* shown = box<QMessageBox>()) {
        seen.push_back(shown->text().toStdString());
        shown->close();
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"first", "answered", "second", "asked by the answer"}));
}

TEST_F(WindowPromptsTest, WhatIsOpenOrWaitsEndsWithThePromptsUnanswered) {
    int answers = 0;
    prompts_->AskYesNo("go?", [this](bool) { prompts_.reset(); });
    prompts_->AskYesNo("never shown", [&](bool) { ++answers; });
    box<QMessageBox>()->close();
    EXPECT_EQ(prompts_, nullptr);
    EXPECT_EQ(box<QMessageBox>(), nullptr);
    prompts_ = std::make_unique<WindowPrompts>(&window_);
    prompts_->AskYesNo("left open", [&](bool) { ++answers; });
    prompts_.reset();
    EXPECT_EQ(box<QMessageBox>(), nullptr);
    EXPECT_EQ(answers, 0);
}

} // namespace
} // namespace corvel
