#include "real/RealServer.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimeZone>

#include <csignal>
#include <filesystem>
#include <grp.h>
#include <pwd.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace corvel::test {

namespace {

// Where there is root to give away, the sessions run as this user, whom every Debian has, with a home that
// exists.
constexpr const char* serviceUser = "daemon";

// The hash of RealServer::password, as crypt(3) makes it.
constexpr const char* passwordHash = "$6$corvel$UGUhny..zY4u3iZkuLluQpjmlt.fLEl8yRux4kZakz.GuPOoee"
                                     "pyLZ6sBZP9IL7T1Dpy3ilKi.NV4Ij9u8xr6.";

constexpr const char* proftpdConfiguration = R"(ServerName scratch
ServerType standalone
Port {port}
DefaultAddress 127.0.0.1
SocketBindTight on
UseIPv6 off
UseReverseDNS off
ControlsEngine off
DelayEngine off
WtmpLog off
TransferLog none
ScoreboardFile none
PidFile {scratch}/pid
SystemLog {scratch}/log
User {user}
Group {group}
MaxInstances 16
AuthOrder mod_auth_file.c
AuthUserFile {scratch}/passwd
RequireValidShell off
)";

constexpr const char* vsftpdConfiguration = R"(listen=YES
listen_ipv6=NO
listen_address=127.0.0.1
listen_port={port}
background=NO
local_enable=NO
anonymous_enable=YES
anon_root={scratch}/home
write_enable=YES
anon_upload_enable=YES
anon_mkdir_write_enable=YES
anon_other_write_enable=YES
anon_world_readable_only=NO
anon_umask=022
secure_email_list_enable=YES
email_password_file={scratch}/passwords
ftp_username={service}
nopriv_user={service}
secure_chroot_dir={scratch}/empty
xferlog_enable=NO
vsftpd_log_file={scratch}/log
seccomp_sandbox=NO
isolate=NO
isolate_network=NO
)";

bool isRoot() {
    return geteuid() == 0;
}

QString programOf(ServerKind kind) {
    const QString servers = QStringLiteral(CORVEL_SERVERS_DIR);
    return servers +
           (kind == ServerKind::proftpd ? u"/proftpd/usr/sbin/proftpd"_s : u"/vsftpd/usr/sbin/vsftpd"_s);
}

// The account that the sessions of a server run as.
const passwd& sessionAccount() {
    const passwd* account = isRoot() ? getpwnam(serviceUser) : getpwuid(geteuid());
    if (account == nullptr) {
        throw std::runtime_error("the account that the FTP server would run as does not exist");
    }
    return *account;
}

// The name of the account's group, or its number where it has no name.
QByteArray groupOf(const passwd& account) {
    const group* found = getgrgid(account.pw_gid);
    return found != nullptr ? QByteArray(found->gr_name) : QByteArray::number(account.pw_gid);
}

// A port on which nothing listens, from below those that the system gives to outgoing connections and to
// whoever asks for any: nobody takes it between this look and the server's start.
std::uint16_t freePort() {
    constexpr int first = 20000;
    constexpr int count = 10000;
    for (int tried = 0; tried < count; ++tried) {
        const auto port = static_cast<std::uint16_t>(first + (static_cast<int>(getpid()) + tried) % count);
        if (QTcpServer probe; probe.listen(QHostAddress::LocalHost, port)) {
            return port;
        }
    }
    throw std::runtime_error("no free port on loopback");
}

void giveToSessions(const QString& path) {
    const passwd& account = sessionAccount();
    const std::filesystem::path top = path.toStdString();
    bool given = lchown(top.c_str(), account.pw_uid, account.pw_gid) == 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
        given = lchown(entry.path().c_str(), account.pw_uid, account.pw_gid) == 0 && given;
    }
    if (!given) {
        throw std::runtime_error("the scratch home could not be given to the FTP server");
    }
}

} // namespace

RealServer::RealServer(ServerKind kind) : kind_(kind), port_(freePort()) {
    const QString program = programOf(kind);
    if (!QFile::exists(program)) {
        throw std::runtime_error("no " + program.toStdString() + ": scripts/fetch-servers gets it");
    }
    makeHome();
    const QString configuration = writeConfiguration();

    // timeout leads a process group of its own and hands its end on to the whole group: to the sessions as
    // well.
    QStringList arguments{u"--kill-after=5"_s, u"300"_s, program};
    if (kind == ServerKind::proftpd) {
        arguments += {u"--nodaemon"_s, u"--quiet"_s, u"--config"_s, configuration};
    } else {
        arguments += configuration;
    }
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process_.start(u"timeout"_s, arguments);
    waitForGreeting();
}

RealServer::~RealServer() {
    process_.terminate();
    if (!process_.waitForFinished(5000)) {
        ::kill(static_cast<pid_t>(-process_.processId()), SIGKILL);
        process_.waitForFinished(5000);
    }
}

std::string_view RealServer::userName() const {
    return kind_ == ServerKind::proftpd ? "corvel" : "ftp";
}

std::string RealServer::serverPath() const {
    return isRoot() ? "/work" : localPath().toStdString();
}

QString RealServer::localPath() const {
    return scratch_.filePath(u"home/work"_s);
}

void RealServer::makeHome() const {
    // Sessions of another account have to reach the home through the scratch directory.
    QFile::setPermissions(scratch_.path(),
                          QFile::permissions(scratch_.path()) | QFile::ExeGroup | QFile::ExeOther);
    QDir(scratch_.path()).mkdir(u"empty"_s);
    for (const QString& directory : {u"home/work/My Docs"_s, u"home/work/dir"_s}) {
        QDir(scratch_.path()).mkpath(directory);
    }
    for (const QString& file : {u"My Docs/letter.txt"_s, u"dir/inner.txt"_s, u"Gr\u00fc\u00dfe.txt"_s}) {
        writeFile(u"home/work/"_s + file, "text\n");
    }
    QFile::link(u"dir"_s, localPath() + u"/link"_s);

    QFile old(writeFile(u"home/work/old.txt"_s, "old\n"));
    const QDateTime dated(QDate(2020, 1, 5), QTime(12, 0), QTimeZone::utc());
    if (!old.open(QIODevice::ReadWrite) || !old.setFileTime(dated, QFileDevice::FileModificationTime)) {
        throw std::runtime_error("old.txt could not be dated");
    }
    if (isRoot()) {
        giveToSessions(localPath());
    }
}

// Writes a file below the scratch directory, readable by its owner alone outside the home; gives its full
// path.
QString RealServer::writeFile(const QString& name, const QByteArray& text) const {
    QFile file(scratch_.filePath(name));
    const bool inHome = name.startsWith("home/"_L1);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner |
                             (inHome ? QFile::ReadGroup | QFile::ReadOther : QFile::Permissions()))) {
        throw std::runtime_error(file.fileName().toStdString() + ": " + file.errorString().toStdString());
    }
    return file.fileName();
}

// Writes what the server reads at its start; gives the path of its configuration file.
QString RealServer::writeConfiguration() const {
    const passwd& account = sessionAccount();
    QByteArray text;
    if (kind_ == ServerKind::proftpd) {
        writeFile(u"passwd"_s, QByteArray("corvel:") + passwordHash + ':' +
                                   QByteArray::number(account.pw_uid) + ':' +
                                   QByteArray::number(account.pw_gid) + "::" + scratch_.path().toUtf8() +
                                   "/home:/bin/false\n");
        text = proftpdConfiguration;
        text += isRoot() ? "DefaultRoot ~\n" : "";
    } else {
        writeFile(u"passwords"_s, QByteArray(password.data()) + '\n');
        text = vsftpdConfiguration;
        text += isRoot() ? "" : "run_as_launching_user=YES\n";
    }
    text.replace("{port}", QByteArray::number(port_))
        .replace("{scratch}", scratch_.path().toUtf8())
        .replace("{user}", account.pw_name)
        .replace("{group}", groupOf(account))
        .replace("{service}", serviceUser);
    return writeFile(u"configuration"_s, text);
}

void RealServer::waitForGreeting() {
    const QDeadlineTimer deadline(10'000);
    while (!deadline.hasExpired()) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, port_);
        if (socket.waitForConnected(1000) && socket.waitForReadyRead(5000)) {
            return;
        }
        // Not there yet: the process ending is the only news worth an earlier look.
        if (process_.waitForFinished(20) || process_.state() == QProcess::NotRunning) {
            break;
        }
    }
    throw std::runtime_error(programOf(kind_).toStdString() + " does not answer: " +
                             process_.errorString().toStdString() + ", " + process_.readAll().toStdString());
}

} // namespace corvel::test
