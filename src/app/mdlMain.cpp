#include "app/mdlMain.h"

#include "app/SiteRemoval.h"
#include "common/ShownText.h"
#include "common/Text.h"
#include "config/FileReplacement.h"
#include "config/Files.h"
#include "config/RememberedServers.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

Command whoCommand() {
    return {.sCommand = "SITE CorvelExt who", .iHandler = handler::who};
}

// A password for the login is not kept.
void rememberTyped(std::vector<std::string>& typed, const std::string& command) {
    constexpr std::size_t most = 20;
    if (!toUpper(command).starts_with("PASS ")) {
        std::erase(typed, command);
        typed.insert(typed.begin(), command);
        typed.resize(std::min(typed.size(), most));
    }
}

} // namespace

mdlMain::mdlMain(Ports ports, std::string directory)
    : ports_(std::move(ports)), directory_(std::move(directory)),
      sitesKeeper_(ports_.prompts, ports_.lock, ports_.clock, BuildAppPath("sites.ini", directory_)),
      sites_(1), log_(sites_, ports_.clock, ports_.views),
      channel_(sites_, log_, ports_.views, settings_, ports_.store, replyHandlers()),
      outbox_(sites_, channel_, log_, ports_.views),
      browser_(sites_, outbox_, ports_.prompts, ports_.views, settings_, ports_.store),
      admin_({sites_, outbox_, log_, ports_.prompts, ports_.views}),
      menus_({sites_, settings_, browser_, admin_, outbox_, ports_.prompts, ports_.views, ports_.shell}) {}

std::vector<std::string> mdlMain::LoadWindowState() {
    WindowStateReading reading = loadWindowState(ports_.store, windowState_);
    windowState_ = reading.state;
    return std::move(reading.problems);
}

std::vector<std::string> mdlMain::LoadSettingsFile() {
    SettingsReading reading = readSettings(BuildAppPath("settings.ini", directory_));
    settings_ = std::move(reading.settings);
    return std::move(reading.problems);
}

std::vector<std::string> mdlMain::LoadSites() {
    for (const SiteConfig& config : sitesKeeper_.load()) {
        appendSite(config);
    }
    for (int site = 1; site <= siteCount(); ++site) {
        if (at(sites_, site).config.connectonstartup) {
            channel_.Connect(site);
        }
    }
    return sitesKeeper_.problems();
}

bool mdlMain::SaveSites() {
    return sitesKeeper_.save(siteConfigs());
}

std::vector<SiteConfig> mdlMain::siteConfigs() const {
    std::vector<SiteConfig> configs;
    for (const int site : siteIndexes()) {
        configs.push_back(at(sites_, site).config);
    }
    return configs;
}

// A person has changed the sites, which are saved only when the program ends.
void mdlMain::keepSites() {
    const std::string problem = sitesKeeper_.changed(siteConfigs());
    if (const int site = currentSite_ > 0 ? currentSite_ : siteCount(); !problem.empty() && isThere(site)) {
        log_.tell(site, "The sites are only saved when Corvel closes: sites.ini.unsaved: " + problem);
    }
}

SitesDifference mdlMain::unsavedDifference() const {
    return sitesDifference(siteConfigs(), *sitesKeeper_.offer());
}

std::string mdlMain::unsavedChanges() const {
    return sitesKeeper_.offer() ? differenceText(unsavedDifference()) : std::string();
}

void mdlMain::takeUnsavedChanges() {
    if (!sitesKeeper_.offer()) {
        return;
    }
    const SitesDifference difference = unsavedDifference();
    sitesKeeper_.takeOffer();
    const std::vector<int> indexes = siteIndexes();
    for (const auto& [place, config] : difference.changed) {
        at(sites_, indexes[place]).config = config;
        ports_.views.siteRenamed(indexes[place]);
    }
    for (const SiteConfig& config : difference.added) {
        appendSite(config);
    }
    for (const std::size_t place : difference.removed) {
        forgetSite(indexes[place]);
    }
    keepSites();
}

std::string mdlMain::writeSitesTo(const std::string& path) const {
    return replaceFile(path, sitesText(siteConfigs(), platformLineEnd)).reason;
}

void mdlMain::SaveWindowState() {
    saveWindowState(ports_.store, windowState_);
}

void mdlMain::selectSite(int site) {
    if (site != currentSite_ && (site == 0 || isThere(site))) {
        for (const int seen : {currentSite_, site}) {
            at(sites_, seen).session.isErrorUnseen = false;
        }
        currentSite_ = site;
        ports_.views.currentSiteChanged();
    }
}

void mdlMain::connectSite(int site) {
    if (site > 0) {
        outbox_.during(site, [&] { channel_.Connect(site); });
    }
}

void mdlMain::disconnectSite(int site) {
    if (site > 0) {
        outbox_.during(site, [&] {
            log_.tell(site, {});
            channel_.ResetSession(site);
        });
    }
}

void mdlMain::connectAll() {
    for (const int site : siteIndexes()) {
        if (at(sites_, site).wSock->state() == SocketState::closed) {
            connectSite(site);
        }
    }
}

void mdlMain::disconnectAll() {
    for (const int site : siteIndexes()) {
        if (at(sites_, site).wSock->state() != SocketState::closed) {
            disconnectSite(site);
        }
    }
}

std::vector<int> mdlMain::siteIndexes() const {
    std::vector<int> indexes;
    for (int site = 1; site <= siteCount(); ++site) {
        if (isThere(site)) {
            indexes.push_back(site);
        }
    }
    return indexes;
}

void mdlMain::removeSite(int site) {
    if (!isThere(site)) {
        return;
    }
    const Site& leaving = at(sites_, site);
    const std::string question = removalQuestion(
        {.name = shownName(leaving.config.name),
         .isConnected = leaving.wSock->state() != SocketState::closed,
         .drafts = leaving.session.userView.drafts.size() + leaving.session.groupView.drafts.size(),
         .batch = outbox_.batchProgress(site),
         .hasWaiting = outbox_.isWaiting(site)});
    ports_.prompts.AskYesNo(question, [this, site](bool isWanted) {
        if (isWanted && isThere(site)) {
            forgetSite(site);
        }
    });
}

// What was started for the site ends first, so that whoever started it learns of it; then nothing can happen
// to the site any more, since its socket is gone.
void mdlMain::forgetSite(int site) {
    disconnectSite(site);
    const int next = siteAfterRemoval(siteIndexes(), site);
    Site& leaving = at(sites_, site);
    leaving.wSock = std::make_unique<NoSocket>();
    leaving.isRemoved = true;
    wipe(leaving.config.pass);
    if (currentSite_ == site) {
        selectSite(next);
    }
    ports_.views.siteRemoved(site);
    keepSites();
}

std::optional<std::string> mdlMain::addSite(const SiteForm& form) {
    if (const std::optional<SiteFormProblem> problem = siteFormProblem(form)) {
        return problem->message;
    }
    appendSite(addedSite(form));
    keepSites();
    if (form.cmdAddConnect) {
        connectSite(siteCount());
    }
    return std::nullopt;
}

std::optional<std::string> mdlMain::changeSite(int site, const SiteForm& form) {
    if (const std::optional<SiteFormProblem> problem = siteFormProblem(form)) {
        return problem->message;
    }
    at(sites_, site).config = editedSite(form);
    keepSites();
    ports_.views.siteRenamed(site);
    return std::nullopt;
}

void mdlMain::wSock_Connect(int site) {
    outbox_.during(site, [&] { channel_.Connected(site); });
}

void mdlMain::wSock_Encrypted(int site) {
    outbox_.during(site, [&] { channel_.Encrypted(site); });
}

void mdlMain::wSock_Certificate(int site, std::vector<std::string> problems) {
    const Site& target = at(sites_, site);
    if (target.wSock->encryption().chain.empty()) {
        outbox_.during(site, [&] { channel_.Refuse(site, "the server has no certificate"); });
        return;
    }
    const CertificateQuestion question{
        .site = site,
        .siteName = target.config.name,
        .host = target.wSock->remoteHost(),
        .port = target.wSock->remotePort(),
        .problems = std::move(problems),
        .certificate = target.wSock->encryption().chain.front(),
        .remembered =
            corvel::trustedFingerprint(ports_.store, target.wSock->remoteHost(), target.wSock->remotePort())};
    ports_.prompts.AskCertificate(
        question, [this, question](CertificateAnswer answer) { answerCertificate(question, answer); });
}

// The connection may be another one by now, or none: only the certificate that was shown is accepted.
void mdlMain::answerCertificate(const CertificateQuestion& question, CertificateAnswer answer) {
    const std::string& fingerprint = question.certificate.fingerprint;
    if (answer == CertificateAnswer::alwaysTrust) {
        trustCertificate(ports_.store, question.host, question.port, fingerprint);
    }
    const Site& target = at(sites_, question.site);
    const std::vector<Certificate>& chain = target.wSock->encryption().chain;
    if (target.session.encryption != Encryption::handshake || chain.empty() ||
        chain.front().fingerprint != fingerprint) {
        return;
    }
    if (answer == CertificateAnswer::disconnect) {
        outbox_.during(question.site, [&] { channel_.Refuse(question.site, "the certificate was refused"); });
    } else {
        target.wSock->AcceptCertificate();
    }
}

std::string mdlMain::trustedFingerprint(int site) const {
    const SiteConfig& config = at(sites_, site).config;
    return corvel::trustedFingerprint(ports_.store, config.host, config.port);
}

void mdlMain::forgetFingerprint(int site) {
    const SiteConfig& config = at(sites_, site).config;
    trustCertificate(ports_.store, config.host, config.port, {});
}

void mdlMain::wSock_DataArrival(int site, std::string_view bytes) {
    outbox_.during(site, [&] {
        channel_.ReplyRouter(site, bytes);
        admin_.proceed(site);
    });
}

void mdlMain::wSock_Close(int site) {
    outbox_.during(site, [&] {
        log_.LogConsole(site, "wSock_Close()");
        const SiteSession& session = at(sites_, site).session;
        if (session.isHeldBack()) {
            constexpr std::string_view why = "The server ended the connection before it was encrypted";
            log_.LogConsole(site, why);
            log_.tell(site, why);
        } else if (session.lastErrorLine.empty()) { // or the server has said why
            log_.tell(site, "The server ended the connection");
        }
        channel_.ResetSession(site);
    });
}

void mdlMain::wSock_Error(int site, std::string_view description, int number) {
    outbox_.during(site, [&] {
        const std::string line =
            "wSock_Error() -> " + std::string(description) + " (" + std::to_string(number) + ")";
        log_.LogConsole(site, line);
        log_.tell(site, description);
        channel_.ResetSession(site);
    });
}

void mdlMain::tmrNoop_Timer(int site) {
    if (isAtRest(site)) {
        channel_.SendCommand(site, {.sCommand = "NOOP"});
    }
}

void mdlMain::tmrRefreshWho_Timer(int site, bool chkFreezeRefresh) {
    if (!chkFreezeRefresh && isAtRest(site)) {
        channel_.SendCommand(site, whoCommand());
    }
}

void mdlMain::askWho(int site) {
    if (site > 0) {
        outbox_.startOrTell(site, LogKind::console, {{whoCommand()}});
    }
}

// Whether a site is logged in and nobody wants anything of it.
bool mdlMain::isAtRest(int site) const {
    const SiteSession& session = at(sites_, site).session;
    return session.bLoggedIn && !session.bAwaitingReply && !outbox_.isWaiting(site);
}

void mdlMain::sendConsoleCommand(int site, const std::string& command) {
    const Command line{.sCommand = command, .bQuiet = false};
    if (command.empty()) {
        channel_.SendCommand(site, line);
    } else {
        rememberTyped(at(sites_, site).session.typedCommands, command);
        outbox_.startOrTell(site, LogKind::console, {{line}});
    }
}

bool mdlMain::sendTestCommand(int site, const std::string& command) {
    const Command line{.sCommand = command, .bQuiet = false};
    if (command.empty() || outbox_.isWaiting(site)) {
        return false;
    }
    bool isTaken = false; // as an event, which ends nothing that the status bar says
    outbox_.during(site, [&] { isTaken = !outbox_.start(site, {{line}}); });
    return isTaken;
}

void mdlMain::appendSite(const SiteConfig& config) {
    const int site = siteCount() + 1;
    Site& added = sites_.emplace_back();
    added.config = config;
    added.wSock = ports_.makeSocket(site);
    ports_.views.siteAdded(site);
}

} // namespace corvel
