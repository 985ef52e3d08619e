#include "programs/makeCertificate.h"
#include "ui/WindowDriver.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace corvel::test {
namespace {

// An FTP server that nobody here wrote, from the packages that scripts/fetch-servers unpacks, and how it
// encrypts.
enum class ServerKind { proftpd, vsftpd };
struct ServerChoice {
    ServerKind kind = ServerKind::proftpd;
    const char* certificate = nullptr; // as make-certificate calls it; null where the server knows no TLS
    const char* version = "TLSv1.3";   // the only one that the server speaks
};

QString programOf(const ServerChoice& choice) {
    return QStringLiteral(CORVEL_SERVERS_DIR) + (choice.kind == ServerKind::proftpd
                                                     ? u"/proftpd/usr/sbin/proftpd"_s
                                                     : u"/vsftpd/usr/sbin/vsftpd"_s);
}

constexpr const char* password = "secret";

// Where there is root to give away, the sessions run as this user, whom every Debian has, with a home that
// exists.
constexpr const char* serviceUser = "daemon";

// The hash of password, as crypt(3) makes it.
constexpr const char* passwordHash = "$6$corvel$UGUhny..zY4u3iZkuLluQpjmlt.fLEl8yRux4kZakz.GuPOoee"
                                     "pyLZ6sBZP9IL7T1Dpy3ilKi.NV4Ij9u8xr6.";

bool isRoot() {
    return geteuid() == 0;
}

void require(bool isDone, const std::string& problem) {
    if (!isDone) {
        throw std::runtime_error(problem);
    }
}

// A file of this directory, to be filled in.
QByteArray settings(const std::string& name) {
    QFile file(QString::fromStdString(CORVEL_REAL_TESTS_DIR "/" + name));
    require(file.open(QIODevice::ReadOnly), file.fileName().toStdString() + " cannot be read");
    return file.readAll();
}

// The account that the sessions of a server run as.
const passwd& sessionAccount() {
    const passwd* account = isRoot() ? getpwnam(serviceUser) : getpwuid(geteuid());
    require(account != nullptr, "the account that the FTP server would run as does not exist");
    return *account;
}

// A port on which nothing listens, from below those that the system gives to outgoing connections and to
// whoever asks for any: nobody takes it between this look and the server's start.
std::uint16_t freePort() {
    auto port = static_cast<std::uint16_t>(20000 + getpid() % 10000);
    for (QTcpServer probe; !probe.listen(QHostAddress::LocalHost, port);) {
        ++port;
    }
    return port;
}

// One such server as a process of its own, listening on loopback, over a scratch home whose directory work it
// may change. As root the session is locked into the home, so that serverPath() is "/work"; otherwise the
// server names its files as the machine does. It ends with this object, with the process that made it, or
// after five minutes, whichever comes first.
class RealServer {
  public:
    // Starts the server and waits until it greets; ten seconds at most.
    // Throws std::runtime_error with what the server said if it cannot be had or does not start.
    explicit RealServer(const ServerChoice& choice)
        : choice_(choice), isProftpd_(choice.kind == ServerKind::proftpd), port_(freePort()) {
        const QString program = programOf(choice);
        makeHome();
        if (choice_.certificate != nullptr) {
            prepareEncryption();
        }
        // timeout leads a process group of its own and hands its end on to the whole group: to the sessions
        // as well.
        QStringList arguments{u"--kill-after=5"_s, u"300"_s, program};
        if (isProftpd_) {
            arguments += {u"--nodaemon"_s, u"--quiet"_s, u"--config"_s};
        }
        process_.setProcessChannelMode(QProcess::MergedChannels);
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        process_.start(u"timeout"_s, arguments += writeConfiguration());
        require(greets(), program.toStdString() + " does not answer: " + process_.readAll().toStdString());
    }
    ~RealServer() {
        process_.terminate();
        if (!process_.waitForFinished(5000)) {
            ::kill(static_cast<pid_t>(-process_.processId()), SIGKILL);
            process_.waitForFinished(5000);
        }
    }
    RealServer(const RealServer&) = delete;
    RealServer& operator=(const RealServer&) = delete;

    // How a site logs in to it.
    std::string site() const { return siteRecord("real", port_, isProftpd_ ? "corvel" : "ftp", password); }
    // The certificate of the authority that signed its own, unless that is self-signed.
    QString authorityPath() const { return scratch_.filePath(u"authority.pem"_s); }
    // The directory work as the machine names it, and as the server does.
    QString localPath() const { return scratch_.filePath(u"home/work"_s); }
    QString serverPath() const { return isRoot() ? u"/work"_s : localPath(); }

  private:
    void makeHome() const {
        // Sessions of another account have to reach the home through the scratch directory.
        QFile::setPermissions(scratch_.path(),
                              QFile::permissions(scratch_.path()) | QFile::ExeGroup | QFile::ExeOther);
        for (const QString& directory : {u"empty"_s, u"home/work/My Docs"_s, u"home/work/dir"_s}) {
            QDir(scratch_.path()).mkpath(directory);
        }
        for (const QString& file : {u"My Docs/letter.txt"_s, u"dir/inner.txt"_s, u"Gr\u00fc\u00dfe.txt"_s}) {
            writeFile(u"home/work/"_s + file, "text\n");
        }
        QFile::link(u"dir"_s, localPath() + u"/link"_s);
        if (isRoot()) {
            const std::filesystem::path top = localPath().toStdString();
            const passwd& account = sessionAccount();
            bool isGiven = lchown(top.c_str(), account.pw_uid, account.pw_gid) == 0;
            for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
                isGiven = lchown(entry.path().c_str(), account.pw_uid, account.pw_gid) == 0 && isGiven;
            }
            require(isGiven, "the scratch home could not be given to the FTP server");
        }
    }

    // The certificate for the server, and what makes the library below it speak one version of TLS alone.
    void prepareEncryption() {
        makeCertificate(choice_.certificate, scratch_.path());
        QFile::setPermissions(scratch_.filePath(u"server.pem"_s), QFile::ReadOwner | QFile::WriteOwner);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(
            u"OPENSSL_CONF"_s,
            writeFile(u"openssl.conf"_s, settings("openssl.conf").replace("{version}", choice_.version)));
        process_.setProcessEnvironment(environment);
    }

    // Writes a file below the scratch directory, readable by its owner alone outside the home; gives its full
    // path.
    QString writeFile(const QString& name, const QByteArray& text) const {
        QFile file(scratch_.filePath(name));
        const auto others =
            name.startsWith("home/"_L1) ? QFile::ReadGroup | QFile::ReadOther : QFile::Permissions();
        require(file.open(QIODevice::WriteOnly) && file.write(text) == text.size() &&
                    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | others),
                file.fileName().toStdString() + ": " + file.errorString().toStdString());
        return file.fileName();
    }

    // Writes what the server reads at its start; gives the path of its configuration file.
    QString writeConfiguration() const {
        const passwd& account = sessionAccount();
        const group* const owners = getgrgid(account.pw_gid);
        const std::string program = isProftpd_ ? "proftpd" : "vsftpd";
        QByteArray text = settings(program + ".conf");
        if (isProftpd_) {
            writeFile(u"passwd"_s, QByteArray("corvel:") + passwordHash + ':' +
                                       QByteArray::number(account.pw_uid) + ':' +
                                       QByteArray::number(account.pw_gid) + "::" + scratch_.path().toUtf8() +
                                       "/home:/bin/false\n");
            text += isRoot() ? "DefaultRoot ~\n" : "";
        } else {
            writeFile(u"passwords"_s, QByteArray(password) + '\n');
            text += isRoot() ? "" : "run_as_launching_user=YES\n";
        }
        if (choice_.certificate != nullptr) {
            text += settings(program + "-encrypted.conf");
        }
        text.replace("{port}", QByteArray::number(port_))
            .replace("{scratch}", scratch_.path().toUtf8())
            .replace("{servers}", CORVEL_SERVERS_DIR)
            .replace("{user}", account.pw_name)
            .replace("{group}",
                     owners != nullptr ? QByteArray(owners->gr_name) : QByteArray::number(account.pw_gid))
            .replace("{service}", serviceUser);
        return writeFile(u"configuration"_s, text);
    }

    // Whether the server greets before its process ends.
    bool greets() {
        const QDeadlineTimer deadline(10'000);
        while (!deadline.hasExpired() && process_.state() != QProcess::NotRunning) {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, port_);
            if (socket.waitForConnected(1000) && socket.waitForReadyRead(5000)) {
                return true;
            }
            process_.waitForFinished(20);
        }
        return false;
    }

    ServerChoice choice_;
    bool isProftpd_;
    std::uint16_t port_;
    QTemporaryDir scratch_; // outlives the process
    QProcess process_;
};

// One server and what is to come of a connection to it.
struct Encounter {
    const char* name;
    ServerChoice server;
    const char* result; // empty where the site is not to be encrypted
    bool isAuthorityTrusted = true;
};

// How the list of the tests names it.
void PrintTo(const Encounter& encounter, std::ostream* out) {
    *out << encounter.name;
}

std::string nameOf(const testing::TestParamInfo<Encounter>& test) {
    return test.param.name;
}

// Corvel's window on a server that nobody here wrote, with the authority of its certificate among those that
// the system trusts.
class RealServers : public testing::TestWithParam<Encounter> {
  protected:
    void SetUp() override {
        if (!QFile::exists(programOf(GetParam().server))) {
            GTEST_SKIP() << programOf(GetParam().server).toStdString()
                         << " is not here: scripts/fetch-servers gets it";
        }
        server_.emplace(GetParam().server);
        QSslConfiguration configuration = before_;
        // What is too old Corvel has to refuse by itself, not the library below it.
        configuration.setBackendConfigurationOption("CipherString", QByteArray("DEFAULT:@SECLEVEL=0"));
        if (GetParam().isAuthorityTrusted) {
            configuration.addCaCertificates(server_->authorityPath());
        }
        QSslConfiguration::setDefaultConfiguration(configuration);
        driver_.emplace(server_->site() + (*GetParam().result != '\0' ? "usesslproxy = 1\n" : ""),
                        "listing_merge_blanks = 1\n");
    }
    void TearDown() override { QSslConfiguration::setDefaultConfiguration(before_); }

    bool arrivesAt(const QString& directory) {
        return eventually(
            [&] { return driver_->isIdle(1) && driver_->path() == server_->serverPath() + directory; });
    }
    const Socket& socket() { return *driver_->window->program().site(1).wSock; }

    std::optional<RealServer> server_;
    std::optional<WindowDriver> driver_;

  private:
    const QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();
};

// result: the protocol.
INSTANTIATE_TEST_SUITE_P(
    Kinds, RealServers,
    testing::Values(Encounter{"ProFTPD", {ServerKind::proftpd}, ""},
                    Encounter{"vsftpd", {ServerKind::vsftpd}, ""},
                    Encounter{"ProFTPDWithTls12", {ServerKind::proftpd, "trusted", "TLSv1.2"}, "TLS 1.2"},
                    Encounter{"ProFTPDWithTls13", {ServerKind::proftpd, "trusted"}, "TLS 1.3"},
                    Encounter{"vsftpdWithTls12", {ServerKind::vsftpd, "trusted", "TLSv1.2"}, "TLS 1.2"},
                    Encounter{"vsftpdWithTls13", {ServerKind::vsftpd, "trusted"}, "TLS 1.3"}),
    nameOf);

TEST_P(RealServers, AreWalkedAndChanged) {
    ASSERT_TRUE(driver_->logIn(1));
    EXPECT_EQ(socket().encryption().protocol, GetParam().result);
    driver_->window->program().sendConsoleCommand(1, "CWD " + server_->serverPath().toStdString());
    driver_->refresh();
    ASSERT_TRUE(arrivesAt(u""_s) && driver_->waitForRow(u"Grüße.txt"_s));
    driver_->doubleClick(u"link -> dir"_s);
    ASSERT_TRUE(driver_->waitForRow(u"inner.txt"_s) && eventually([&] { return driver_->isIdle(1); }));
    driver_->doubleClick(u".."_s);
    ASSERT_TRUE(driver_->waitForRow(u"My Docs"_s));
    driver_->doubleClick(u"My Docs"_s);
    ASSERT_TRUE(arrivesAt(u"/My Docs"_s) && driver_->waitForRow(u"letter.txt"_s));

    const auto onDisk = [this] {
        return QDir(server_->localPath() + u"/My Docs"_s)
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    };
    driver_->press(Qt::Key_Insert);
    driver_->answerText(u"new dir"_s);
    driver_->refresh();
    ASSERT_TRUE(driver_->waitForRow(u"new dir"_s));
    driver_->rename(u"new dir"_s, u"old dir"_s);
    driver_->refresh();
    ASSERT_TRUE(driver_->waitForRow(u"old dir"_s));
    EXPECT_EQ(onDisk(), (QStringList{u"letter.txt"_s, u"old dir"_s}));

    driver_->select(u"letter.txt"_s);
    driver_->press(Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::Yes), u"Are u sure u want to delete this file:"_s);
    driver_->refresh();
    driver_->select(u"old dir"_s);
    driver_->press(Qt::Key_Delete);
    EXPECT_EQ(driver_->answer(QMessageBox::Yes), u"Are u sure u want to delete this directory:\nold dir"_s);
    driver_->refresh();
    ASSERT_TRUE(driver_->waitForNoRow(u"old dir"_s));
    EXPECT_EQ(onDisk(), QStringList());

    driver_->chooseSitesMenu(1);
    EXPECT_FALSE(driver_->session(1).bLoggedIn);
}

// result: what the console says.
using RealServersThatDoNotFit = RealServers;
INSTANTIATE_TEST_SUITE_P(
    Kinds, RealServersThatDoNotFit,
    testing::Values(Encounter{"ProFTPDInClear", {ServerKind::proftpd}, "said \"500"},
                    Encounter{"ProFTPDWithTls11", {ServerKind::proftpd, "trusted", "TLSv1.1"}, "version"},
                    Encounter{"vsftpdWithTls11", {ServerKind::vsftpd, "trusted", "TLSv1.1"}, "version"}),
    nameOf);

TEST_P(RealServersThatDoNotFit, AreLeft) {
    driver_->chooseSitesMenu(0);
    ASSERT_TRUE(eventually([this] { return !driver_->session(1).lastErrorLine.empty(); }));
    EXPECT_EQ(socket().state(), SocketState::closed);
    EXPECT_NE(driver_->session(1).lastErrorLine.find(GetParam().result), std::string::npos)
        << driver_->session(1).lastErrorLine;
}

// result: what the question says to be wrong.
using RealServersInDoubt = RealServers;
INSTANTIATE_TEST_SUITE_P(
    Kinds, RealServersInDoubt,
    testing::Values(
        Encounter{"SelfSigned", {ServerKind::proftpd, "self-signed"}, "It is self-signed."},
        Encounter{"Expired", {ServerKind::vsftpd, "expired"}, "It expired on 2001-01-01 00:00 UTC."},
        Encounter{"OtherName",
                  {ServerKind::proftpd, "other-name", "TLSv1.2"},
                  "It is for another name than 127.0.0.1."},
        Encounter{
            "OtherPurpose", {ServerKind::vsftpd, "other-purpose", "TLSv1.2"}, "It is not meant for servers."},
        Encounter{"UnknownAuthority",
                  {ServerKind::vsftpd, "trusted"},
                  "It comes from an unknown authority.",
                  false}),
    nameOf);

TEST_P(RealServersInDoubt, AreAskedAbout) {
    for (const char* const answer : {"cmdCertDisconnect", "cmdCertOnce", "cmdCertTrust"}) {
        driver_->chooseSitesMenu(0);
        QWidget* const question = waitForCertificateQuestion();
        ASSERT_NE(question, nullptr);
        Driver driver(*question);
        EXPECT_EQ(driver.find<QPlainTextEdit>("txtCertProblems").toPlainText(),
                  QLatin1String(GetParam().result));
        EXPECT_EQ(driver_->session(1).encryption, Encryption::handshake);
        driver.click(answer);
        ASSERT_TRUE(eventually([this] { return driver_->session(1).encryption != Encryption::handshake; }));
        EXPECT_EQ(driver_->session(1).encryption == Encryption::on,
                  answer != std::string("cmdCertDisconnect"));
        driver_->chooseSitesMenu(1);
    }
    EXPECT_TRUE(driver_->logIn(1)) << "without a question";
}

} // namespace
} // namespace corvel::test
