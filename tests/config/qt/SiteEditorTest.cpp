#include "config/qt/frmSitesAddEdit.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace corvel {
namespace {

const QStringList fieldOrder = {u"txtSitename"_qs,         u"txtHostname"_qs,   u"txtPort"_qs,
                                u"txtUsername"_qs,         u"txtPassword"_qs,   u"txtIdent"_qs,
                                u"chkConnectOnStartup"_qs, u"chkUseSSLProxy"_qs};

// The dialog as the window opens it; remembers the forms that it gave and answers with problem.
class SiteEditor {
  public:
    explicit SiteEditor(SiteForm form)
        : dialog(new frmSitesAddEdit(
              {.caption = u"Editing site \"x\""_qs, .okCaption = u"Save changes"_qs, .form = std::move(form)},
              [this](const SiteForm& given) {
                  forms.push_back(given);
                  return problem;
              })) {
        dialog->open();
    }
    ~SiteEditor() { delete dialog; }
    SiteEditor(const SiteEditor&) = delete;
    SiteEditor& operator=(const SiteEditor&) = delete;

    QLineEdit& box(const char* name) { return *dialog->findChild<QLineEdit*>(QLatin1String(name)); }
    void click(const char* name) { dialog->findChild<QPushButton*>(QLatin1String(name))->click(); }
    void press(Qt::Key key) { QTest::keyClick(dialog, key); }

    std::vector<SiteForm> forms;
    std::optional<std::string> problem;
    QPointer<frmSitesAddEdit> dialog;
};

const SiteForm& anyForm() {
    static const SiteForm form = {.txtSitename = "h\xC3\xB6me",
                                  .txtHostname = "ftp.example",
                                  .txtPort = "2121x",
                                  .txtUsername = "caf\xE9", // from a file in the ANSI code page
                                  .txtPassword = "\xEF\xBB\xBFp=\x01\xFF",
                                  .txtIdent = " i ",
                                  .chkConnectOnStartup = true,
                                  .chkUseSSLProxy = false};
    return form;
}

TEST(SiteEditor, GivesBackEveryByteThatWasLeftAlone) {
    SiteEditor editor(anyForm());
    editor.click("OKButton");
    EXPECT_EQ(editor.forms, std::vector<SiteForm>{anyForm()});
    EXPECT_FALSE(editor.dialog->isVisible());
}

TEST(SiteEditor, StaysOpenWithAMessage) {
    SiteEditor editor(anyForm());
    editor.problem = "Please enter a <b>";
    editor.click("OKButton");
    auto* const box = editor.dialog->findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"Please enter a <b>"_qs);
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    box->button(QMessageBox::Ok)->click();
    EXPECT_TRUE(editor.dialog->isVisible());
}

TEST(SiteEditor, IsLeftWithoutAFormByEscapeAndCancel) {
    SiteEditor escaped(anyForm());
    escaped.press(Qt::Key_Escape);
    EXPECT_FALSE(escaped.dialog->isVisible());
    SiteEditor cancelled(anyForm());
    cancelled.click("CancelButton");
    EXPECT_FALSE(cancelled.dialog->isVisible());
    EXPECT_TRUE(escaped.forms.empty() && cancelled.forms.empty());
}

TEST(SiteEditor, CanBeUsedWithTheKeyboardAndAScreenReader) {
    SiteEditor editor({});
    EXPECT_EQ(editor.box("txtPassword").echoMode(), QLineEdit::Password);
    QStringList mnemonics;
    for (const QLabel* label : editor.dialog->findChildren<QLabel*>()) {
        ASSERT_NE(label->buddy(), nullptr) << label->text().toStdString();
        EXPECT_FALSE(label->buddy()->accessibleName().isEmpty()) << label->text().toStdString();
        mnemonics << label->text().section(u'&', 1).left(1).toLower();
    }
    for (const QCheckBox* box : editor.dialog->findChildren<QCheckBox*>()) {
        mnemonics << box->text().section(u'&', 1).left(1).toLower();
    }
    EXPECT_FALSE(mnemonics.contains(QString()));
    EXPECT_EQ(mnemonics.removeDuplicates(), 0);
    EXPECT_EQ(mnemonics.size(), fieldOrder.size());

    QStringList order;
    for (QWidget* widget = editor.dialog->nextInFocusChain(); widget != editor.dialog;
         widget = widget->nextInFocusChain()) {
        if (fieldOrder.contains(widget->objectName())) {
            order << widget->objectName();
        }
    }
    EXPECT_EQ(order, fieldOrder);
}

TEST(SiteEditor, ShowsTheWholeNameInItsCaption) {
    frmSitesAddEdit dialog({.caption = u"Editing site \"a[*]b\""_qs, .okCaption = {}, .form = {}}, {});
    // Qt takes a single [*] for the place of a "modified" mark, and two of them for the text itself.
    EXPECT_EQ(dialog.windowTitle(), u"Editing site \"a[*][*]b\""_qs);
}

} // namespace
} // namespace corvel
