#include "admin/AddUser.h"

#include "admin/AdminSupport.h"
#include "admin/Batch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

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
        const char* txtUserName;
        const char* txtPassword;
        const char* txtMainGroup;
        bool hasMask;
        const char* problem; // empty: none
    };
    const std::vector<Row> rows = {
        {"nothing wrong", "eve", "secret", "staff", true, ""},
        {"all wrong", "", "", "", false, "Please enter a valid username."},
        {"blank in the name", "e ve", "secret", "staff", true, "Please enter a valid username."},
        {"name taken, and no password", "bob", "", "staff", true,
         "This user already exists: bob\r\nGroup: staff\r\nFlags: 3M"},
        {"another case is another name", "Bob", "secret", "staff", true, ""},
        {"no password, and no group", "eve", "", "", true, "Please enter a valid password."},
        {"no main group, and no mask", "eve", "secret", "", false, "Please select a main group."},
        {"no mask", "eve", "secret", "staff", false, "Please enter at least one ip/ident."},
    };
    const UserTable users = ParseUserTable(1, Lines{"p | 7 | bob | staff | 3M"}).table;
    for (const Row& row : rows) {
        AddUserForm form = goodForm();
        form.txtUserName = row.txtUserName;
        form.txtPassword = row.txtPassword;
        form.txtMainGroup = row.txtMainGroup;
        form.lstUserIP.resize(row.hasMask ? 1 : 0);
        EXPECT_EQ(addUserProblem(form, users).value_or(""), row.problem) << row.name;
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

void expectBatch(const char* name, void (*tick)(BatchForm&), const Lines& users, const std::string& lines) {
    BatchForm form{.txtBatchFlags = "3",
                   .txtBatchLogins = {"02", "", "0"},
                   .txtBatchHomePath = "/h",
                   .txtBatchVFS = "/v",
                   .txtBatchTagline = "hi %user",
                   .txtBatchSpeedDn = "-1",
                   .txtBatchSpeedUp = "05"};
    tick(form);
    const auto sequence = batchSequence(form, users);
    ASSERT_TRUE(sequence) << name;
    EXPECT_EQ(sequence->sBatchLines, lines) << name;
    EXPECT_EQ(written({sequence->first}), Texts{"113 quiet NOOP"}) << name;
    EXPECT_EQ(sequence->sBegin, "-------------[ BEGIN ]-[ BATCH COMMAND ]-------------");
    EXPECT_EQ(sequence->beginLog, LogKind::commandResults);
}

TEST(Batch, HoldsALineForEveryTickedFieldOfEveryUser) {
    const auto everything = [](BatchForm& form) {
        form.chkBatchFlags = form.chkBatchLogins = form.chkBatchHomePath = form.chkBatchVFS = true;
        form.chkBatchTagLine = form.chkBatchSpeed = form.chkBatchCommand = true;
        form.txtBatchLogins[1] = "2";
        form.txtBatchCommand = "%user%user x";
    };
    expectBatch("everything, and the name twice", everything, {"a"},
                "site change a flags 3\r\nsite change a logins 02 ftp\r\nsite change a logins 2 telnet\r\n"
                "site change a logins 0 http\r\nsite change a homedir /h\r\nsite change a vfsfile /v\r\n"
                "site change a tagline hi %user\r\nsite change a speedlimits -1 05\r\naa x\r\n");
    const auto emptyBoxes = [](BatchForm& form) {
        form.chkBatchFlags = form.chkBatchLogins = true;
        form.txtBatchFlags = "";
    };
    expectBatch("flags, but no logins, of an empty box", emptyBoxes, {"a", "b"},
                "site change a flags \r\nsite change a logins 02 ftp\r\nsite change a logins 0 http\r\n"
                "site change b flags \r\nsite change b logins 02 ftp\r\nsite change b logins 0 http\r\n");
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
