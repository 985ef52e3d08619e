#include "config/FileReplacement.h"
#include "config/Files.h"
#include "config/PlatformFiles.h"
#include "ui/desktop/Desktop.h"
#include "ui/desktop/FrontDoor.h"
#include "ui/frmMain.h"
#include "widgets/NoticeBar.h"
#include "widgets/TextConversion.h"

#include <QDir>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>
#include <system_error>

// The bars on top: that others may read the passwords, and how the folder of the files is, another copy's,
// nobody's to write to, or this window's with something in it that was not saved.

namespace corvel {

NoticeBar& frmMain::noticeBar() {
    folderNotice_ = new NoticeBar("barNotice", "lblBarNotice");
    static_cast<QVBoxLayout*>(centralWidget()->layout())->insertWidget(0, folderNotice_);
    return *folderNotice_;
}

void frmMain::showFolderNotice() {
    const QString folder = fromCore(program_.directory());
    const auto add = [this](const char* name, const QString& caption, auto act) {
        connect(folderNotice_->addButton(name, caption), &QToolButton::clicked, this, act);
    };
    const auto hideNotice = [this] { folderNotice_->hide(); };
    switch (program_.folderHold()) {
    case FolderHold::anotherCopys:
        noticeBar().tell(
            tr("Another window of Corvel has these sites open. Changes of the sites that are made in "
               "this one will not be saved without a question."));
        add("cmdNoticeOther", tr("Open the other window instead"), [this, folder] {
            FrontDoor::knock(folder, *this, [this](bool isAnswered) {
                if (isAnswered) {
                    close();
                } else {
                    folderNotice_->tell(
                        tr("The other window does not answer. Its sites are those of %1; changes "
                           "made here will not be saved without a question.")
                            .arg(fromCore(program_.directory())));
                }
            });
        });
        add("cmdNoticeHide", tr("Close"), hideNotice);
        return;
    case FolderHold::nobodys:
        noticeBar().tell(
            tr("The folder %1 can't be written: what you change in the sites can't be saved there.")
                .arg(folder));
        if (QDir(folder) != QDir(userFolder())) {
            add("cmdNoticeFolder", tr("Use %1 instead").arg(QDir::toNativeSeparators(userFolder())),
                [this] { useUserFolder(); });
        }
        add("cmdNoticeHide", tr("Close"), hideNotice);
        return;
    case FolderHold::ours:
        break;
    }
    // Not before the window is seen.
    QTimer::singleShot(0, this, [this, folder] {
        door_ = std::make_unique<FrontDoor>(folder, [this] { bringToFront(*this); });
    });
    if (const std::string changes = program_.unsavedChanges(); !changes.empty()) {
        noticeBar().tell(tr("Corvel ended before it saved what you had changed in the sites (%1).")
                             .arg(fromCore(changes)));
        add("cmdNoticeTake", tr("Take the changes over"), [this] {
            folderNotice_->hide();
            program_.takeUnsavedChanges();
        });
        add("cmdNoticeLeave", tr("Forget them"), [this] {
            folderNotice_->hide();
            program_.leaveUnsavedChanges();
        });
    }
}

// sites.ini has the passwords as they are.
void frmMain::showReadableNotice() {
    const std::filesystem::path file = filePath(BuildAppPath("sites.ini", program_.directory()));
    const bool hasPasswords = std::ranges::any_of(
        program_.siteIndexes(), [this](int site) { return !program_.site(site).config.pass.empty(); });
    if (!hasPasswords || !isReadableByOthers(file)) {
        return;
    }
    auto* const bar = new NoticeBar("barReadable", "lblBarReadable");
    static_cast<QVBoxLayout*>(centralWidget()->layout())->insertWidget(0, bar);
    bar->tell(tr("sites.ini, with the passwords of the sites, is readable by others on this computer."));
    connect(bar->addButton("cmdReadableNarrow", tr("Make it yours alone")), &QToolButton::clicked, bar,
            [bar, file] {
                const std::error_code error = makePrivate(file);
                bar->hide();
                if (error) {
                    bar->tell(tr("sites.ini can't be made yours alone: %1").arg(fromCore(errorText(error))));
                }
            });
    connect(bar->addButton("cmdReadableHide", tr("Close")), &QToolButton::clicked, bar, &QWidget::hide);
}

// By starting anew there: the lock and the settings are the folder's too. What that folder has already stays.
void frmMain::useUserFolder() {
    const QString folder = QDir::toNativeSeparators(userFolder());
    QDir().mkpath(folder);
    const std::string sites = BuildAppPath("sites.ini", toCore(folder));
    const std::string settings = BuildAppPath("settings.ini", toCore(folder));
    const bool takesSites = !FileExists(sites);
    std::string problem = takesSites ? program_.writeSitesTo(sites) : std::string();
    const FileContent here = readFile(BuildAppPath("settings.ini", program_.directory()));
    if (problem.empty() && here.state == FileContent::State::known && !FileExists(settings)) {
        problem = replaceFile(settings, here.bytes).reason;
    }
    if (!problem.empty() || !startProgramAgain({QStringLiteral("--config-dir"), folder})) {
        prompts_.Message(toCore(folder) + " can't be used. " + problem);
        return;
    }
    isSavingTried_ = takesSites;
    close();
}

} // namespace corvel
