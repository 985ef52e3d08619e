#include "admin/AccountLists.h"
#include "app/mdlMain.h"
#include "browser/BrowserCommands.h"
#include "browser/FileDialogs.h"

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace corvel {

namespace {

constexpr std::int16_t stopOnFailure = -1;
constexpr std::int16_t silence = -1;

// The console has shown the reply as it came; nothing else is to do.
void consoleOnly(const ReplyServices& /*services*/, Reply& /*reply*/) {}

ReplyReader beginListing(const ReplyServices& services, int site, SiteSession& session) {
    if (session.current.sCommand == listCommand().sCommand &&
        session.browser.listing.entries.size() > longListing) {
        dropRows(session.browser, session.sCwd);
        services.views.listingChanged(site);
    }
    return ListingReader({.mergeBlanks = services.settings.listing_merge_blanks || session.padsListings});
}

// The listing that a reply brought; none of a refusal to go somewhere.
BrowserListing listingOf(Reply& reply) {
    BrowserListing listing = mayList(reply.command.sCommand, reply.code)
                                 ? std::get<ListingReader>(reply.reader).take()
                                 : BrowserListing();
    if (!isSuccess(reply)) { // a refusal in many lines
        listing.strangeLines.clear();
        listing.strangeCount = 0;
    }
    return listing;
}

// A navigation runs CWD, then STAT -a, then PWD: each reply asks for the next.
void browserChain(const ReplyServices& services, Reply& reply) {
    SiteSession& session = reply.session;
    switch (recogniseBrowserReply(reply.command.sCommand, reply.firstLine, reply.lastLine, reply.code)) {
    case BrowserReply::cwdSucceeded:
        services.channel.SendCommand(reply.site, listCommand());
        return;
    case BrowserReply::directory:
        session.sCwd = directoryOf(reply.firstLine);
        session.sBrowserPWD = session.sCwd;
        session.browser.directory = session.sCwd;
        services.views.pathChanged(reply.site);
        return;
    case BrowserReply::directoryUnknown:
        return;
    case BrowserReply::listing: {
        dropRows(session.browser, session.sCwd);
        BrowserListing listing = listingOf(reply);
        const std::optional<std::string> message = badLinesMessage({.tooMany = listing.tooMany});
        session.browser.problem = isSuccess(reply) ? std::string_view() : reply.lastLine;
        showListing(session.browser, std::move(listing));
        services.views.listingChanged(reply.site);
        if (message) {
            reportProblem(services, reply, *message);
        }
        services.channel.SendCommand(reply.site, printDirectoryCommand());
        return;
    }
    }
}

ReplyReader beginWho(const ReplyServices& /*services*/, int /*site*/, SiteSession& session) {
    return WhoReader(session.activityRows);
}

void whoReply(const ReplyServices& services, Reply& reply) {
    ActivityRows& activity = reply.session.activityRows;
    const BadLines bad = std::get<WhoReader>(reply.reader).finish(reply.session.activity);
    activity.problem = isSuccess(reply) ? std::string_view() : reply.lastLine;
    services.views.activityChanged(reply.site);
    if (const std::optional<std::string> message = badLinesMessage(bad)) {
        reportProblem(services, reply, *message);
    }
}

void chattrReply(const ReplyServices& services, Reply& reply) {
    reply.session.chattrAnswer = {.sQuery = reply.command.sCommand,
                                  .txtCurrent = std::string(chattrText(reply.firstLine)),
                                  .isRefused = !isSuccess(reply)};
    services.views.chattrAnswered(reply.site);
}

void toBrowserReply(const ReplyServices& services, Reply& reply) {
    if (isSuccess(reply) && !reply.session.browser.isChanged) {
        reply.session.browser.isChanged = true;
        services.views.listingChanged(reply.site);
    }
    services.log.LogBrowserReply(reply.site, reply.lastChunk, LogLine::reply);
}

void toCommandResults(const ReplyServices& services, Reply& reply) {
    services.log.LogCommandResults(reply.site, reply.lastChunk, LogLine::reply);
}

// A sequence whose first command failed is abandoned. False when the sequence has come to its end, which the
// command results say.
bool stepAdding(const ReplyServices& services, Reply& reply, std::string_view endMarker) {
    toCommandResults(services, reply);
    const bool isFirst = reply.command.iTag == stopOnFailure;
    if (isFirst && !isSuccess(reply)) {
        reply.session.sBatchLines = {};
        return true;
    }
    if (services.channel.SendNextBatchLine(reply.site, reply.command.iHandler) || isFirst) {
        return true;
    }
    services.log.LogCommandResults(reply.site, endMarker);
    return false;
}

void addUserStep(const ReplyServices& services, Reply& reply) {
    stepAdding(services, reply, "-------------[ END ]-[ ADDUSER ]-------------");
}

void addGroupStep(const ReplyServices& services, Reply& reply) {
    if (!stepAdding(services, reply, "-------------[ END ]-[ ADDGROUP ]-------------")) {
        services.channel.SendCommand(reply.site, groupTableCommand());
    }
}

// The outbox sends the next line: another job may go first.
void batchStep(const ReplyServices& services, Reply& reply) {
    if (reply.command.iTag != silence) {
        toCommandResults(services, reply);
    }
}

constexpr std::array<ReplyHandler, 15> table = {{
    {handler::browser, std::nullopt, browserChain, beginListing},
    {handler::who, std::nullopt, whoReply, beginWho},
    {handler::userTable, std::nullopt, AccountTable<UserKind>::tableReply,
     AccountTable<UserKind>::beginTable},
    {handler::groupTable, std::nullopt, AccountTable<GroupKind>::tableReply,
     AccountTable<GroupKind>::beginTable},
    {handler::userFile, std::nullopt, AccountTable<UserKind>::detailsReply,
     AccountTable<UserKind>::beginDetails},
    {handler::groupFile, std::nullopt, AccountTable<GroupKind>::detailsReply,
     AccountTable<GroupKind>::beginDetails},
    {handler::groupChange, LogKind::commandResults, toCommandResults},
    {handler::userChange, LogKind::commandResults, toCommandResults},
    {handler::browserFile, LogKind::browserReply, toBrowserReply},
    {handler::addUser, LogKind::commandResults, addUserStep},
    {handler::addGroup, LogKind::commandResults, addGroupStep},
    {handler::menuFtp, LogKind::commandResults, toCommandResults},
    {handler::chattrQuery, std::nullopt, chattrReply},
    {handler::batch, std::nullopt, batchStep},
    {handler::console, LogKind::console, consoleOnly},
}};

} // namespace

std::span<const ReplyHandler> replyHandlers() {
    return table;
}

} // namespace corvel
