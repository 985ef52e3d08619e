#include "ui/DemoHome.h"

#include "config/SitesFile.h"

#include <QFile>

#include <vector>

namespace corvel {

DemoHome::DemoHome() : server_(DemoOptions{}) {
    store_.setValue("show_sites_list", "1");
    store_.setValue("splitbar_left_wide", "3000");
    store_.setValue("window_state", "0");
    if (!server_.listen()) {
        errorText_ = server_.errorText();
    } else if (!directory_.isValid()) {
        errorText_ = directory_.errorString();
    } else if (!writeSites()) {
        errorText_ = QStringLiteral("the demo's sites.ini can't be written");
    }
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
    const std::string text = sitesText({home, backup}, "\n");
    QFile file(directory_.filePath(QStringLiteral("sites.ini")));
    return file.open(QIODevice::WriteOnly) && file.write(text.data(), static_cast<qint64>(text.size())) > 0;
}

} // namespace corvel
