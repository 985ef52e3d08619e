#include "admin/qt/GroupsPanel.h"

#include "admin/qt/AccountDialogs.h"
#include "config/MemoryStore.h"
#include "support/TemporaryDirectory.h"
#include "support/TestPorts.h"
#include "widgets/DialogDriver.h"
#include "widgets/ReportView.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvel::test {
namespace {

using Texts = std::vector<std::string>;

// Tells the panel what the program tells a window.
class PanelViews : public RecordingViews {
  public:
    void siteAdded(int site) override { panel->addSite(site); }
    void currentSiteChanged() override { panel->showSite(current()); }
    void groupsChanged(int site) override { panel->groupsChanged(site); }
    void sessionReset(int site) override { panel->groupsChanged(site); }
    void groupsSorted(int site) override { panel->groupsSorted(site); }
    void usersChanged(int site) override { panel->usersChanged(site); }
    void groupShown(int site, int index) override { panel->groupShown(site, index); }

    GroupsPanel* panel = nullptr;
    std::function<int()> current;
};

// The panel over two sites that answer every command by its line; site 1 is the current one and logged in.
class GroupsPanelTest : public testing::Test {
  protected:
    GroupsPanelTest() {
        views_.panel = &panel_;
        views_.current = [this] { return program_.currentSite(); };
        for (const char* const name : {"home", "backup"}) {
            program_.addSite({.txtSitename = name,
                              .txtHostname = "h",
                              .txtPort = "21",
                              .txtUsername = "u",
                              .txtPassword = "p"});
        }
        panel_.resize(800, 500);
        for (const int site : {2, 1}) {
            program_.selectSite(site);
            program_.connectSite(site);
            socket(site).current = SocketState::connected;
            program_.wSock_Connect(site);
            program_.wSock_DataArrival(site, "220 hi\r\n");
            serve();
            program_.admin().reloadUsers(site);
            program_.admin().reloadGroups(site);
            serve();
        }
        sent_.clear();
    }

    FakeSocket& socket(int site) { return *sockets_[site]; }

    // Answers the commands of both sites until nothing is outstanding.
    void serve() {
        for (bool isBusy = true; isBusy;) {
            isBusy = false;
            for (const int site : {1, 2}) {
                for (const std::string& line : socket(site).takeSentLines()) {
                    sent_.push_back(line);
                    const auto reply = replies_.find(line);
                    program_.wSock_DataArrival(site, reply == replies_.end() ? "200 ok\r\n" : reply->second);
                    isBusy = true;
                }
            }
        }
    }

    Texts takeSent() {
        serve();
        return std::exchange(sent_, {});
    }

    ReportView& list(int site = 1) {
        return driver_.find<ReportView>(site == 1 ? "lvwGroups_1" : "lvwGroups_2");
    }
    static Texts row(ReportView& view, int index) {
        Texts cells;
        for (int column = 0; column < 3; ++column) {
            cells.push_back(view.model()->index(index, column).data().toString().toStdString());
        }
        return cells;
    }
    void pick(int index) {
        const QPoint place = list().visualRect(list().model()->index(index, 0)).center();
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
    }

    TemporaryDirectory directory_;
    MemoryStore store_;
    FixedClock clock_;
    RecordingShell shell_;
    PanelViews views_;
    RecordingPrompts prompts_;
    std::map<int, FakeSocket*> sockets_;
    std::map<std::string, std::string> replies_ = {
        {"USER u", "331 password\r\n"},
        {"PASS ", "230 in\r\n"},
        {"SITE CorvelExt usertable", "200- | 7 | bob | staff | 3\r\n200 end\r\n"},
        {"SITE CorvelExt grouptable", "200- | 10 | staff | 2\r\n200- | 9 | crew | 0\r\n200 end\r\n"},
        {"SITE CorvelExt groupfile 10",
         "200-groupname | staff\r\n200-description | caf\xC3\xA9\x07\r\n200-groupslots | 5\r\n"
         "200-leechslots | 1\r\n200-vfs | /vfs\r\n200-members | 7 | 8\r\n200-gadmins | 7\r\n200 end\r\n"},
        {"SITE CorvelExt groupfile 9", "200-groupname | crew\r\n200 end\r\n"},
    };
    mdlMain program_{{views_, prompts_, store_, clock_, shell_,
                      [this](int site) {
                          auto made = std::make_unique<FakeSocket>();
                          sockets_[site] = made.get();
                          return made;
                      }},
                     directory_.path()};
    GroupsPanel panel_{program_};
    DialogDriver driver_{panel_};
    Texts sent_;
};

TEST_F(GroupsPanelTest, AClickShowsAGroupWithItsMembers) {
    EXPECT_EQ(row(list(), 0), (Texts{"  10", "staff", "   2"}));
    pick(0);
    EXPECT_EQ(takeSent(), (Texts{"SITE CorvelExt groupfile 10"}));
    EXPECT_EQ(driver_.text("txtGroupGID"), "10");
    EXPECT_EQ(driver_.text("txtGroupname"), "staff");
    EXPECT_EQ(driver_.text("txtGroupGroupslots"), "5");
    EXPECT_EQ(driver_.text("txtGroupLeechslots"), "1");
    EXPECT_EQ(driver_.text("txtGroupVFS"), "/vfs");
    auto& members = driver_.find<ReportView>("lvwGroupMembers");
    ASSERT_EQ(members.source().rows, 2);
    EXPECT_EQ(row(members, 0), (Texts{"7", "bob", "Yes"}));
    EXPECT_EQ(row(members, 1), (Texts{"8", "(bad_uid)", "No"}));
    EXPECT_EQ(driver_.find<QLabel>("lblGroupMembers").text(), QStringLiteral("2"));
    pick(0);
    EXPECT_EQ(takeSent(), Texts{}) << "the details are known";
    driver_.click("cmdReloadGroupfile");
    EXPECT_EQ(takeSent(), (Texts{"SITE CorvelExt groupfile 10"}));
}

TEST_F(GroupsPanelTest, NewUsersNameTheMembersAndLeaveTheBoxes) {
    pick(0);
    serve();
    driver_.type("txtGroupVFS", QStringLiteral("/typed"));
    replies_["SITE CorvelExt usertable"] = "200- | 8 | carl | staff | 3\r\n200 end\r\n";
    program_.admin().reloadUsers(1);
    serve();
    EXPECT_EQ(row(driver_.find<ReportView>("lvwGroupMembers"), 1), (Texts{"8", "carl", "No"}));
    EXPECT_EQ(driver_.text("txtGroupVFS"), "/typed");
}

TEST_F(GroupsPanelTest, SaveSendsWhatDiffers) {
    struct Row {
        const char* name;
        const char* box;
        const char* typed;
        Texts sent;
    };
    const std::string reload = "SITE CorvelExt groupfile 10";
    // The control character in the description counts as unchanged, though a box may show it otherwise.
    const std::vector<Row> table = {
        {"nothing", "txtGroupVFS", "/vfs", {reload}},
        {"the leech slots", "txtGroupLeechslots", "3", {"SITE change staff groupslots 5 3", reload}},
        {"the same number", "txtGroupGroupslots", "005", {reload}},
        {"the description", "txtGroupdescr", "new", {"SITE change staff groupdescription new", reload}},
        {"the VFS file", "txtGroupVFS", "/v ", {"SITE change staff groupvfsfile /v ", reload}},
        {"the name", "txtGroupname", "people", {"SITE grpren staff people", reload}},
    };
    pick(0);
    takeSent();
    for (const Row& changed : table) {
        SCOPED_TRACE(changed.name);
        driver_.type(changed.box, QString::fromLatin1(changed.typed));
        driver_.click("cmdGroupSaveChanges");
        EXPECT_EQ(takeSent(), changed.sent);
    }
}

TEST_F(GroupsPanelTest, WhileAnotherGroupIsOnItsWayNothingIsSaved) {
    pick(0);
    takeSent();
    driver_.type("txtGroupname", QStringLiteral("typed"));
    pick(1);
    driver_.click("cmdGroupSaveChanges");
    EXPECT_EQ(driver_.text("txtGroupname"), "typed");
    EXPECT_EQ(takeSent(), (Texts{"SITE CorvelExt groupfile 9"}));
    EXPECT_EQ(driver_.text("txtGroupname"), "crew");
}

TEST_F(GroupsPanelTest, TheEditorBelongsToTheCurrentSite) {
    pick(0);
    takeSent();
    program_.selectSite(2);
    EXPECT_EQ(driver_.text("txtGroupGID"), "");
    program_.admin().openGroup(2, 1);
    takeSent();
    EXPECT_EQ(driver_.text("txtGroupGID"), "9");
    program_.selectSite(1);
    EXPECT_EQ(driver_.text("txtGroupGID"), "10");
    program_.admin().openGroup(2, 0);
    takeSent();
    EXPECT_EQ(driver_.text("txtGroupname"), "staff");
    program_.disconnectSite(1);
    EXPECT_EQ(driver_.text("txtGroupGID"), "");
    EXPECT_EQ(driver_.find<ReportView>("lvwGroupMembers").source().rows, 0);
}

TEST_F(GroupsPanelTest, KeysAndButtonsOfTheList) {
    driver_.click("cmdGroupsReloadTable");
    EXPECT_EQ(takeSent(), (Texts{"SITE CorvelExt grouptable"}));
    pick(1);
    takeSent();
    prompts_.answers = {"yes"};
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(takeSent(), (Texts{"SITE GRPDEL crew"}));
    EXPECT_TRUE(prompts_.asked.back().starts_with("Are u sure u want to delete this group:\r\ncrew\r\n"));
    program_.admin().sortGroups(1, 0);
    EXPECT_EQ(row(list(), 0), (Texts{"   9", "crew", "   0"}));
    EXPECT_EQ(list().currentRow(), 0) << "the current group moves with its row";
}

TEST_F(GroupsPanelTest, AddsAGroupUnlessASequenceRuns) {
    driver_.click("cmdGroupAdd");
    const auto fillAndConfirm = [this] {
        auto* const dialog = panel_.findChild<QDialog*>(QStringLiteral("frmAddGroup"));
        ASSERT_NE(dialog, nullptr);
        QTest::keyClicks(dialog->findChild<QLineEdit*>(QStringLiteral("txtGroupname")),
                         QStringLiteral("new"));
        QTest::keyClick(dialog, Qt::Key_Return);
        EXPECT_EQ(dialog->isVisible(), !prompts_.asked.empty());
        delete dialog;
    };
    fillAndConfirm();
    driver_.click("cmdGroupAdd");
    fillAndConfirm();
    EXPECT_EQ(prompts_.asked, (Texts{"Another sequence of commands is still running on this site."}));
    EXPECT_EQ(takeSent().front(), "SITE grpadd new");
}

TEST_F(GroupsPanelTest, UsersAreAddedAndCopiedOnTheirSite) {
    openAddUser(program_, 1, &panel_);
    auto* const adding = panel_.findChild<QDialog*>(QStringLiteral("frmAddUser"));
    ASSERT_NE(adding, nullptr);
    EXPECT_EQ(adding->findChild<QComboBox*>()->count(), 2);
    openCopyUser(program_, 1, 1, &panel_);
    EXPECT_EQ(panel_.findChild<QDialog*>(QStringLiteral("frmCopyUser")), nullptr) << "no such record";
    openCopyUser(program_, 1, 0, &panel_);
    auto* const copying = panel_.findChild<QDialog*>(QStringLiteral("frmCopyUser"));
    ASSERT_NE(copying, nullptr);
    QTest::keyClicks(copying->findChild<QLineEdit*>(QStringLiteral("txtNewUsername")),
                     QStringLiteral("dora"));
    QTest::keyClick(copying, Qt::Key_Return);
    EXPECT_EQ(takeSent(), (Texts{"SITE CorvelExt copyuser 7 dora", "SITE CorvelExt usertable"}));
}

} // namespace
} // namespace corvel::test
