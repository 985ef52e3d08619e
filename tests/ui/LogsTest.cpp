#include "ui/WindowDriver.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

class Logs : public DemoWindow {
  protected:
    // Sends a command of the console and waits until its reply is shown.
    void send(const QString& command) {
        driver_->setText("txtSendFTP_1", command);
        driver_->press("txtSendFTP_1", Qt::Key_Return);
        ASSERT_TRUE(driver_->waitForIdle());
    }
    bool eventuallyShows(const QString& text) {
        return eventually([&] { return log().toPlainText().contains(text); });
    }
    // Of the console, which is one of several with these tools.
    template <typename Widget>
    Widget& tool(const char* name) {
        return *driver_->find<QWidget>("console").findChild<Widget*>(QLatin1String(name));
    }
    QPlainTextEdit& log() { return driver_->find<QPlainTextEdit>("txtLogFTP_1"); }
    QString selected() { return log().textCursor().selectedText(); }
};

TEST_F(Logs, AreFoundInHeldClearedAndSaved) {
    startOn(consoleTab, "mask_passwords = 1\n");
    send(u"SITE change nobody passwd Secret"_s);
    send(u"NOOP one"_s);
    send(u"NOOP two"_s);
    ASSERT_TRUE(eventuallyShows(u"> NOOP two"_s));
    EXPECT_TRUE(eventuallyShows(u"> SITE change nobody passwd *****"_s));
    EXPECT_FALSE(log().toPlainText().contains(u"Secret"_s));

    driver_->window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(driver_->window.get()));
    QTest::keyClick(&log(), Qt::Key_F, Qt::ControlModifier);
    auto& box = tool<QLineEdit>("txtFind");
    ASSERT_TRUE(eventually([&] { return box.hasFocus(); }));
    const auto& count = tool<QLabel>("lblFind");
    const auto find = [&](const QString& text) {
        box.setText(text);
        return count.text();
    };
    EXPECT_EQ(find(u"> noop"_s), u"2 of 2"_s);
    const auto place = [this] { return log().textCursor().selectionStart(); };
    const int newest = place();
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_LT(place(), newest);
    EXPECT_EQ(count.text(), u"1 of 2"_s);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(place(), newest); // from the first to the last
    QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(count.text(), u"1 of 2"_s);
    EXPECT_EQ(selected(), u"> NOOP"_s);
    EXPECT_EQ(find(u"nothing of that kind"_s), u"not found"_s);
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_TRUE(log().hasFocus() && selected().isEmpty());

    auto& hold = tool<QCheckBox>("chkLogHold");
    hold.setChecked(true);
    const QString held = log().toPlainText();
    send(u"NOOP three"_s);
    tool<QPushButton>("cmdLogSave").click();
    auto* const dialog = driver_->waitForBox<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    // Keys would not reach it where it is the system's own.
    Q_EMIT dialog->fileSelected(QString::fromStdString(driver_->directory.fileNamed("log.txt")));
    dialog->close();
    ASSERT_TRUE(driver_->waitForNoDialog());
    QFile saved(QString::fromStdString(driver_->directory.fileNamed("log.txt")));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly | QIODevice::Text)); // with the system's line ends
    EXPECT_EQ(QString::fromUtf8(saved.readAll()), held);
    hold.setChecked(false);
    EXPECT_TRUE(eventuallyShows(u"> NOOP three"_s));
    tool<QPushButton>("cmdLogClear").click();
    EXPECT_EQ(log().toPlainText(), QString());
}

// Every text that the objects of the program show or tell a screen reader.
QString allTexts() {
    QString texts;
    for (QWidget* const root : QApplication::topLevelWidgets()) {
        QObjectList objects = root->findChildren<QObject*>();
        for (const QObject* const object : objects << root) {
            for (int i = 0; i < object->metaObject()->propertyCount(); ++i) {
                texts += object->metaObject()->property(i).read(object).toString() + u'\n';
            }
            const auto* const list = qobject_cast<const QAbstractItemView*>(object);
            for (int row = 0; list != nullptr && row < list->model()->rowCount(); ++row) {
                for (int column = 0; column < list->model()->columnCount(); ++column) {
                    const QModelIndex cell = list->model()->index(row, column);
                    texts += cell.data().toString() + cell.data(Qt::ToolTipRole).toString() + u'\n';
                }
            }
        }
    }
    return texts;
}

TEST_F(Logs, HaveNoPassword) {
    testing::internal::CaptureStderr();
    startOn(consoleTab, "mask_passwords = 1\n");
    mdlMain& program = driver_->window->program();
    const std::string port = std::to_string(program.site(1).config.port);
    program.changeSite(1, {"home", "127.0.0.1", port, "demo", "Marker-1"});
    program.connectSite(1);
    ASSERT_TRUE(eventuallyShows(u"530"_s));
    program.changeSite(1, {"home", "127.0.0.1", port, "demo", DemoServer::password});
    ASSERT_TRUE(driver_->logIn(1));
    for (const char* const line : {"SITE ADDUSER newbie Marker-2", "SITE CHANGE newbie PASSWD Marker-3"}) {
        send(QLatin1String(line));
    }
    driver_->setText("txtSendFTP_1", QString()); // which is the person's own
    for (int tab = 0; tab < 8; ++tab) {
        driver_->showTab(tab);
    }
    driver_->find<QAction>("mnuViewQueue").trigger();
    const QString texts = allTexts();
    driver_->close();
    EXPECT_TRUE(texts.contains(u"SITE ADDUSER newbie *****"_s));
    EXPECT_FALSE(texts.contains(u"Marker-"_s));
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("Marker-"), std::string::npos);
    for (const auto& [key, value] : driver_->store.values()) {
        EXPECT_EQ(value.find("Marker-"), std::string::npos) << key;
    }
}

TEST_F(Logs, TypedCommandsComeBack) {
    startOn(consoleTab);
    for (int i = 0; i < 21; ++i) {
        send(u"NOOP %1"_s.arg(i));
    }
    send(u"NOOP 5"_s);
    auto& menu = driver_->find<QMenu>("mnuHistory_1");
    emit menu.aboutToShow();
    EXPECT_EQ(menu.actions().size(), 20);
    EXPECT_EQ(menu.actions().front()->text(), u"NOOP 5"_s);
    menu.actions().at(1)->trigger();
    EXPECT_EQ(driver_->text("txtSendFTP_1"), u"NOOP 20"_s);
}

} // namespace
} // namespace corvel::test
