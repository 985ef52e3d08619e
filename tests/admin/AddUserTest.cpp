#include "admin/AddUser.h"

#include "admin/AdminSupport.h"
#include "admin/Batch.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace corvel {
namespace {

UserTable oneUser() {
    return ParseUserTable(1, Lines{"p | 7 | bob | staff | 3M"}).table;
}

AddUserForm goodForm() {
    AddUserForm form = addUserForm(threeGroups());
    form.txtUserName = "eve";
    form.txtPassword = "secret";
    form.txtMainGroup = "staff";
    form.lstUserIP = {"*@10.*"};
    form.txtUserFlags = "3";
    form.txtUserCredits = "3";
    form.txtRatio = "05";
    form.txtNumOfLogins = {"02", "", "1.5"};
    form.txtUserBwUp = "20";
    form.txtUserBwDn = "10";
    return form;
}

TEST(AddUser, ChecksInOrder) {
    struct Row {
        const char* name;
        std::function<void(AddUserForm&)> spoil;
        const char* problem;
    };
    const std::vector<Row> rows = {
        {"nothing wrong", [](AddUserForm&) {}, nullptr},
        {"all wrong", [](AddUserForm& form) { form = {}; }, "Please enter a valid username."},
        {"blank in the name", [](AddUserForm& form) { form.txtUserName = "e ve"; },
         "Please enter a valid username."},
        {"name taken, and no password",
         [](AddUserForm& form) {
             form.txtUserName = "bob";
             form.txtPassword = "";
         },
         "This user already exists: bob\r\nGroup: staff\r\nFlags: 3M"},
        {"another case is another name", [](AddUserForm& form) { form.txtUserName = "Bob"; }, nullptr},
        {"no password, and no group",
         [](AddUserForm& form) {
             form.txtPassword = "";
             form.txtMainGroup = "";
         },
         "Please enter a valid password."},
        {"no main group, and no mask",
         [](AddUserForm& form) {
             form.txtMainGroup = "";
             form.lstUserIP.clear();
         },
         "Please select a main group."},
        {"no mask", [](AddUserForm& form) { form.lstUserIP.clear(); }, "Please enter at least one ip/ident."},
    };
    for (const Row& row : rows) {
        AddUserForm form = goodForm();
        row.spoil(form);
        const std::optional<std::string> problem = addUserProblem(form, oneUser());
        EXPECT_EQ(problem.has_value(), row.problem != nullptr) << row.name;
        EXPECT_EQ(problem.value_or(""), row.problem == nullptr ? "" : row.problem) << row.name;
    }
}

TEST(AddUser, SendsTheUserAndThenItsProperties) {
    AddUserForm form = goodForm();
    const CommandSequence plain = addUserSequence(form);
    EXPECT_EQ(written({plain.first}), Texts{"109 tag -1 SITE gadduser staff eve secret *@10.*"});
    EXPECT_EQ(plain.sBegin, "-------------[ BEGIN ]-[ ADDUSER ]-------------");
    EXPECT_EQ(plain.beginLog, LogKind::console);
    const std::string common = "site change eve credits 3072 0\r\n"
                               "site change eve ratio 05 0\r\n"
                               "site change eve tagline Too lame to have a tagline\r\n"
                               "site change eve logins 2 ftp\r\n"
                               "site change eve logins 0 telnet\r\n"
                               "site change eve logins 2 http\r\n"
                               "site change eve flags 3\r\n"
                               "site change eve speedlimit 10 20\r\n";
    EXPECT_EQ(plain.sBatchLines, common);

    form.lstUserIP = {"a@1", "b@2", "", "c@3"};
    form.lstAllGroup[1].bSelected = true;
    form.lstAllGroup[2].bSelected = true;
    const CommandSequence more = addUserSequence(form);
    EXPECT_EQ(more.first.sCommand, "SITE gadduser staff eve secret a@1");
    EXPECT_EQ(more.sBatchLines, "site addip eve b@2 c@3\r\nsite chgrp eve guests crew\r\n" + common);
}

TEST(Batch, HoldsALineForEveryTickedFieldOfEveryUser) {
    struct Row {
        const char* name;
        std::function<void(BatchForm&)> tick;
        const char* lines; // for the users a and b
    };
    const std::vector<Row> rows = {
        {"an empty box that is ticked",
         [](BatchForm& form) {
             form.chkBatchFlags = true;
             form.txtBatchFlags = "";
         },
         "site change a flags \r\nsite change b flags \r\n"},
        {"logins without the empty box", [](BatchForm& form) { form.chkBatchLogins = true; },
         "site change a logins 02 ftp\r\nsite change a logins 0 http\r\n"
         "site change b logins 02 ftp\r\nsite change b logins 0 http\r\n"},
        {"free command with the name twice",
         [](BatchForm& form) {
             form.chkBatchCommand = true;
             form.txtBatchCommand = "%user%user x";
         },
         "aa x\r\nbb x\r\n"},
        {"everything",
         [](BatchForm& form) {
             form.chkBatchFlags = form.chkBatchLogins = form.chkBatchHomePath = form.chkBatchVFS = true;
             form.chkBatchTagLine = form.chkBatchSpeed = form.chkBatchCommand = true;
             form.txtBatchLogins = {"1", "2", "3"};
             form.txtBatchCommand = "site x";
         },
         "site change a flags 3\r\nsite change a logins 1 ftp\r\nsite change a logins 2 telnet\r\n"
         "site change a logins 3 http\r\nsite change a homedir /h\r\nsite change a vfsfile /v\r\n"
         "site change a tagline hi %user\r\nsite change a speedlimits -1 05\r\nsite x\r\n"
         "site change b flags 3\r\nsite change b logins 1 ftp\r\nsite change b logins 2 telnet\r\n"
         "site change b logins 3 http\r\nsite change b homedir /h\r\nsite change b vfsfile /v\r\n"
         "site change b tagline hi %user\r\nsite change b speedlimits -1 05\r\nsite x\r\n"},
    };
    for (const Row& row : rows) {
        BatchForm form{.txtBatchFlags = "3",
                       .txtBatchLogins = {"02", "", "0"},
                       .txtBatchHomePath = "/h",
                       .txtBatchVFS = "/v",
                       .txtBatchTagline = "hi %user",
                       .txtBatchSpeedDn = "-1",
                       .txtBatchSpeedUp = "05"};
        row.tick(form);
        const auto sequence = batchSequence(form, Lines{"a", "b"});
        ASSERT_TRUE(sequence) << row.name;
        EXPECT_EQ(sequence->sBatchLines, row.lines) << row.name;
        EXPECT_EQ(written({sequence->first}), Texts{"113 quiet NOOP"}) << row.name;
        EXPECT_EQ(sequence->sBegin, "-------------[ BEGIN ]-[ BATCH COMMAND ]-------------");
        EXPECT_EQ(sequence->beginLog, LogKind::commandResults);
    }
}

TEST(Batch, OfNothingIsNone) {
    BatchForm form;
    EXPECT_FALSE(batchSequence(form, Lines{"a"})) << "nothing ticked";
    form.chkBatchLogins = true;
    EXPECT_FALSE(batchSequence(form, Lines{"a"})) << "only empty boxes";
    form.chkBatchFlags = true;
    EXPECT_FALSE(batchSequence(form, {})) << "nobody selected";
}

TEST(Batch, TellsHowFarItHasCome) {
    EXPECT_EQ(batchProgressText(300, 259), "41 of 300");
    EXPECT_EQ(batchProgressText(3, 9), "0 of 3");
}

} // namespace
} // namespace corvel
