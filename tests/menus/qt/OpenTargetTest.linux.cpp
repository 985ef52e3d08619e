#include "menus/qt/OpenTarget.h"

#include "support/TemporaryDirectory.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// Takes the addresses that would go to the desktop.
class AddressCatcher : public QObject {
    Q_OBJECT

  public:
    AddressCatcher() {
        for (const QString& scheme : schemes) {
            QDesktopServices::setUrlHandler(scheme, this, "take");
        }
    }
    ~AddressCatcher() override {
        for (const QString& scheme : schemes) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    QStringList addresses;

  public slots:
    void take(const QUrl& address) { addresses << QString::fromLatin1(address.toEncoded()); }

  private:
    QStringList schemes = {u"http"_s, u"https"_s, u"file"_s, u"ftp"_s};
};

TEST(OpenTarget, LeavesAllButProgramsToTheDesktop) {
    const TemporaryDirectory directory;
    const QString name = u"no program; `x`"_s;
    directory.write(name.toStdString(), "");
    const QString notes = QString::fromStdString(directory.fileNamed(name.toStdString()));
    // As on disks that give this right to everything.
    ASSERT_TRUE(QFile::setPermissions(notes, QFile::ReadOwner | QFile::ExeOwner));
    const QString notesAddress = QString::fromLatin1(QUrl::fromLocalFile(notes).toEncoded());
    const std::vector<std::pair<QString, QStringList>> rows = {
        {u"https://example.org/a?b=c&d"_s, {u"https://example.org/a?b=c&d"_s}},
        {u"www.example.org"_s, {u"http://www.example.org"_s}},
        {notes, {notesAddress}},
        {name, {notesAddress}}, // beside the program
        {u"no-such-file"_s, {}},
        {u"C:\\x"_s, {}},
        {u"/no such; file"_s, {}},
        {u"/a & \"b\"; `c` | %(pwd) %s \u00FC"_s, {}},
    };
    const QWidget window;
    for (const auto& [target, addresses] : rows) {
        AddressCatcher desktop;
        openTarget(target, QString::fromStdString(directory.path()), window);
        EXPECT_EQ(desktop.addresses, addresses) << target.toStdString();
    }
}

} // namespace
} // namespace corvel::test

#include "OpenTargetTest.linux.moc"
