#include "ui/desktop/SystemPorts.h"

#include "config/WindowState.h"
#include "support/TemporaryDirectory.h"
#include "ui/desktop/Desktop.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>
#include <QWidget>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

TEST(LockFile, IsHeldByOneUntilItEndsAndNeverInTheWayWhereNothingCanBeLocked) {
    const TemporaryDirectory directory;
    std::optional<LockFile> first(directory.path());
    LockFile second(directory.path());
    EXPECT_EQ(first->take(), FolderHold::ours);
    EXPECT_EQ(second.take(), FolderHold::anotherCopys);
    first.reset();
    EXPECT_EQ(second.take(), FolderHold::ours);
    EXPECT_EQ(LockFile(directory.fileNamed("missing")).take(), FolderHold::nobodys);
}

TEST(SettingsStore, KeepsEveryTextInThePlaceOfTheProgramsState) {
    const TemporaryDirectory directory;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(directory.path()));
    for (const char* const value : {"", "-1500", "True", "a, b;c", "@Invalid()", "  x ", "a\r\nb", "Ж"}) {
        EXPECT_EQ(SettingsStore().value(std::string("never written") + value), std::nullopt);
        SettingsStore().setValue("key", value);
        EXPECT_EQ(SettingsStore().value("key"), value);
    }
    EXPECT_NE(directory.read("Voskar Drennix/Corvel2.conf").find("\nkey="), std::string::npos);
}

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
    QStringList schemes = {u"http"_s, u"https"_s, u"file"_s};
};

TEST(OpenTarget, LeavesAllButProgramsToTheDesktop) {
    const TemporaryDirectory directory;
    const QString name = u"no program; `x`"_s;
    directory.write(name.toStdString(), "");
    const QString notes = QString::fromStdString(directory.fileNamed(name.toStdString()));
    // As on disks that give this right to everything.
    ASSERT_TRUE(QFile::setPermissions(notes, QFile::ReadOwner | QFile::ExeOwner));
    const QString notesAddress = QString::fromLatin1(QUrl::fromLocalFile(notes).toEncoded());
    const std::vector<std::pair<QString, QStringList>> cases = {
        {u"https://example.org/a?b=c&d"_s, {u"https://example.org/a?b=c&d"_s}},
        {u"www.example.org"_s, {u"http://www.example.org"_s}},
        {notes, {notesAddress}},
        {name, {notesAddress}}, // beside the program
        {u"no-such-file"_s, {}},
        {u"/a & \"b\"; `c` | %(pwd) %s \u00FC"_s, {}},
    };
    const QWidget window;
    for (const auto& [target, addresses] : cases) {
        AddressCatcher desktop;
        openTarget(target, QString::fromStdString(directory.path()), window);
        EXPECT_EQ(desktop.addresses, addresses) << target.toStdString();
    }
}

} // namespace
} // namespace corvel::test

#include "SystemPortsTest.linux.moc"
