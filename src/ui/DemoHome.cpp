#include "ui/DemoHome.h"

#include "config/FileReplacement.h"
#include "config/RememberedServers.h"
#include "config/Sites.h"
#include "widgets/TextConversion.h"

#include <QFile>

#include <vector>

// The resource lies in a library, whose parts are left out of a program that does not ask for them. It has to
// be asked for outside of any namespace.
static void loadDemoResource() {
    Q_INIT_RESOURCE(demo);
}

namespace corvel {

DemoHome::DemoHome() : server_(DemoOptions{.tls = DemoTls::offered}) {
    store_.setValue("show_sites_list", "1");
    store_.setValue("splitbar_left_wide", "3000");
    store_.setValue("window_state", "0");
    if (!server_.listen()) {
        errorText_ = server_.errorText();
    } else if (!directory_.isValid()) {
        errorText_ = directory_.errorString();
    } else if (!writeSites() || !writeSettings()) {
        errorText_ = QStringLiteral("the demo's settings can't be written to %1").arg(directory_.path());
    }
}

// The sample that comes with the program.
bool DemoHome::writeSettings() const {
    loadDemoResource();
    return QFile::copy(QStringLiteral(":/demo/settings.ini"),
                       directory_.filePath(QStringLiteral("settings.ini")));
}

bool DemoHome::writeSites() {
    const SiteConfig home = {.name = "home",
                             .host = "127.0.0.1",
                             .port = server_.port(),
                             .user = DemoServer::userName,
                             .pass = DemoServer::password,
                             .connectonstartup = true};
    SiteConfig backup = home;
    backup.name = "backup";
    backup.usesslproxy = true; // none is configured: it encrypts by itself
    trustCertificate(store_, backup.host, backup.port, DemoServer::fingerprint());
    const std::string text = sitesText({home, backup}, "\n");
    const std::string path = toCore(directory_.filePath(QStringLiteral("sites.ini")));
    return replaceFile(path, text, Waiting::forNothing).outcome == SaveResult::Outcome::saved;
}

} // namespace corvel
