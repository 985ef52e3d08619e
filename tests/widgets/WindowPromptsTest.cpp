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

TEST_F(WindowPromptsTest, ALongQuestionLeavesItsButtonsOnTheScreen) {
    prompts_->AskYesNo("Delete " + std::string(20000, 'x') + "?", [](bool) {});
    const auto& shown = *box<QMessageBox>();
    EXPECT_LT(shown.height(), 768);
    EXPECT_TRUE(shown.text().startsWith(QStringLiteral("Delete x")));
    EXPECT_TRUE(shown.text().endsWith(QStringLiteral("x?")));
}

TEST_F(WindowPromptsTest, AQuestionIsAnsweredOnceHoweverItEnds) {
    struct Row {
        const char* name;
        std::function<void(QMessageBox&)> end;
        bool answer;
    };
    const auto enter = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); };
    const std::vector<Row> table = {
        {"Yes", [](auto& box) { box.button(QMessageBox::Yes)->click(); }, true},
        {"No", [](auto& box) { box.button(QMessageBox::No)->click(); }, false},
        {"Enter", enter, false},
        {"Escape", [](auto& box) { QTest::keyClick(&box, Qt::Key_Escape); }, false},
        {"closed", [](auto& box) { box.close(); }, false},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        std::vector<bool> answers;
        prompts_->AskYesNo("Are u sure\r\n<b>bob</b>", [&](bool isYes) { answers.push_back(isYes); });
        EXPECT_TRUE(answers.empty());
        auto* shown = box<QMessageBox>();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->windowTitle(), QStringLiteral("Corvel"));
        EXPECT_EQ(shown->windowModality(), Qt::WindowModal);
        EXPECT_EQ(shown->text(), QStringLiteral("Are u sure\n<b>bob</b>"));
        EXPECT_EQ(shown->textFormat(), Qt::PlainText);
        row.end(*shown);
        EXPECT_EQ(answers, std::vector<bool>{row.answer});
        EXPECT_EQ(box<QMessageBox>(), nullptr) << "deleted once closed";
    }
}

TEST_F(WindowPromptsTest, AnInputBoxGivesItsTextOrNothing) {
    struct Row {
        const char* name;
        std::function<void(QInputDialog&)> end;
        std::optional<std::string> answer;
    };
    const auto pasteAndAccept = [](QInputDialog& box) {
        QApplication::clipboard()->setText(QStringLiteral("new\r\nDELE x"));
        box.findChild<QLineEdit*>()->paste();
        box.accept();
    };
    const std::vector<Row> table = {
        {"accepted empty", [](auto& box) { box.accept(); }, ""},
        {"pasted lines", pasteAndAccept, "newDELE x"},
        {"Escape", [](auto& box) { QTest::keyClick(&box, Qt::Key_Escape); }, std::nullopt},
        {"closed", [](auto& box) { box.close(); }, std::nullopt},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        std::vector<std::optional<std::string>> answers;
        prompts_->AskText("", "<i>R&D</i>:", [&](const auto& text) { answers.push_back(text); });
        auto* shown = box<QInputDialog>();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->windowTitle(), QStringLiteral("Corvel"));
        const auto* label = shown->findChild<QLabel*>();
        EXPECT_EQ(label->text(), QStringLiteral("<i>R&&D</i>:")) << "a lone ampersand would mark a letter";
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        row.end(*shown);
        ASSERT_EQ(answers.size(), 1U);
        EXPECT_EQ(answers.front(), row.answer);
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
