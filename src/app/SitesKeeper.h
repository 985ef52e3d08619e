#pragma once

#include "common/Ports.h"
#include "config/FileReplacement.h"
#include "config/Files.h"
#include "config/Sites.h"

#include <optional>
#include <string>
#include <vector>

namespace corvel {

// Loads sites.ini and saves it. What others wrote there is never lost unseen, and what was edited here
// neither: where both are there, the person chooses, and the text that loses is kept beside the file. Until
// the sites are saved, what they have become lies beside the file as ".unsaved", for the next start to offer
// if this one crashes. Only the copy of the program that holds the folder has such a file.
class SitesKeeper {
  public:
    // All are borrowed and must outlive the keeper. path: of the file, UTF-8.
    SitesKeeper(Prompts& prompts, FolderLock& lock, const Clock& clock, std::string path);
    // Wipes the texts that it read, with their passwords.
    ~SitesKeeper();
    SitesKeeper(const SitesKeeper&) = delete;
    SitesKeeper& operator=(const SitesKeeper&) = delete;

    // The sites of the file; call once.
    std::vector<SiteConfig> load();
    // What the person should know about the file since it was loaded, a line each.
    const std::vector<std::string>& problems() const { return problems_; }
    // Whose the folder was then.
    FolderHold hold() const { return hold_; }

    // The sites of a copy that crashed before it saved them; nothing where there are none, or where they have
    // been taken or left already.
    const std::optional<std::vector<SiteConfig>>& offer() const { return offer_; }
    // Ends the offer: whoever takes it says next that the sites have changed.
    void takeOffer();
    void leaveOffer();

    // The sites have become others: keeps them, without waiting for the disk. Gives the reason where it
    // cannot, for a person.
    std::string changed(const std::vector<SiteConfig>& sites);

    // Saves the sites if there is anything to save. False when the person is told or asked something instead;
    // what is to be written after an answer is on the disk before the question.
    bool save(const std::vector<SiteConfig>& sites);

  private:
    void lookForUnsaved();
    void dropUnsaved();
    bool ask(const FileContent& now, const std::string& text);
    bool told(const SaveResult& result);

    Prompts& prompts_;
    FolderLock& lock_;
    const Clock& clock_;
    std::string path_;
    std::string unsavedPath_;
    FolderHold hold_ = FolderHold::nobodys;
    std::optional<std::string>
        left_; // by the copy that crashed: lies in the file until it is moved or dropped
    std::optional<std::vector<SiteConfig>> offer_;
    FileContent read_;
    std::string textRead_; // the sites that were read, as they would be written
    std::vector<std::string> problems_;
};

} // namespace corvel
