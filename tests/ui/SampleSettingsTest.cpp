#include "config/Files.h"
#include "ui/DemoHome.h"
#include "ui/WindowDriver.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

TEST(SampleSettings, ShowEveryKey) {
    const DemoHome home;
    std::vector<std::string> lines = ReadAllLines(home.directory() + "/settings.ini");
    for (std::string& line : lines) {
        static const QRegularExpression commentedOut(u"^# (?=[a-z_]+ = )"_s);
        line = QString::fromStdString(line).remove(commentedOut).toStdString();
    }
    const SettingsReading reading = parseSettings(lines);
    EXPECT_TRUE(reading.problems.empty());
    const Settings& shown = reading.settings;
    const Settings defaults;
    EXPECT_EQ(shown.site_nuke_syntax, "site nuke %(name) %(mult) %(reason)");
    EXPECT_TRUE(shown.show_trayicon && shown.minimize_to_tray && shown.listing_merge_blanks);
    EXPECT_NE(shown.textbox_fontsize, defaults.textbox_fontsize);
    EXPECT_NE(shown.ssl_tunnel_port, defaults.ssl_tunnel_port);
    EXPECT_NE(shown.site_nuke_replace_spaces, defaults.site_nuke_replace_spaces);
    for (const auto text : {&Settings::textbox_fontname, &Settings::ssl_tunnel_host,
                            &Settings::window_caption_online, &Settings::window_caption_offline,
                            &Settings::trayicon_text_online, &Settings::trayicon_text_offline}) {
        EXPECT_NE(shown.*text, defaults.*text);
    }
    for (std::size_t i = 0; i < imageKeys.size(); ++i) {
        EXPECT_NE(shown.images[i], "") << imageKeys[i].key;
    }
    EXPECT_EQ(shown.colors.size(), 1U);
}

// Every command of the sample's menus, sent for a row of the demo's server.
TEST(SampleSettings, DemoServerAnswersWhatTheMenusSend) {
    DemoHome home;
    frmMain window(home.store(), home.directory());
    window.start();
    mdlMain& program = window.program();
    const SiteSession& session = program.site(1).session;
    const auto isIdle = [&] {
        return session.bLoggedIn && !session.bAwaitingReply && !session.sBrowserPWD.empty() &&
               session.Groups.size() > 1;
    };
    ASSERT_TRUE(eventually(isIdle));
    const auto rowOf = [&](std::string_view name) {
        int row = 0;
        while (program.browser().entryAt(1, row) != nullptr &&
               program.browser().entryAt(1, row)->name != name) {
            ++row;
        }
        return row;
    };
    program.browser().open(1, rowOf("pub"));
    ASSERT_TRUE(eventually([&] { return isIdle() && session.sBrowserPWD == "/pub"; }));
    const std::string fileName(session.browser.listing.entries[session.browser.order.back()].name);
    program.browser().selectRow(1, static_cast<int>(session.browser.order.size()) - 1);
    program.admin().users().open(1, 5);
    program.admin().groups().open(1, 3);
    ASSERT_TRUE(eventually(isIdle));
    program.tmrRefreshWho_Timer(1, false);
    ASSERT_TRUE(eventually(isIdle));
    program.selectActivityRow(1, 1);
    int sent = 0;
    for (const int kind : {1, 2, 3, 4, 5}) {
        const std::vector<MenuItem> items = program.menus().ShowCustomMenu(1, kind);
        EXPECT_FALSE(items.empty()) << kind;
        for (const MenuItem& item : items) {
            const MenuCommand command = parseMenuCommand(item.command);
            EXPECT_NE(command.action, MenuAction::nothing) << item.command;
            if (command.action == MenuAction::ftp) {
                ++sent;
                program.menus().ExecuteMenuCommand(1, "ftp " + command.argument);
                ASSERT_TRUE(eventually(isIdle));
                EXPECT_FALSE(session.lastErrorLine.starts_with("50")) // not understood, or in another form
                    << item.command << ": " << session.lastErrorLine;
            }
        }
    }
    EXPECT_EQ(sent, 8);
    window.close();
}

} // namespace
} // namespace corvel::test
