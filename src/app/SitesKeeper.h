#pragma once

#include "common/Ports.h"
#include "config/FileReplacement.h"
#include "config/Files.h"
#include "config/Sites.h"

#include <string>
#include <vector>

namespace corvel {

// Loads sites.ini and saves it. What others wrote there is never lost unseen, and what was edited here
// neither: where both are there, the person chooses, and the text that loses is kept beside the file.
class SitesKeeper {
  public:
    // All are borrowed and must outlive the keeper. path: of the file, UTF-8.
    SitesKeeper(Prompts& prompts, FolderLock& lock, const Clock& clock, std::string path);

    // The sites of the file; call once.
    std::vector<SiteConfig> load();
    // What the person should know about the file since it was loaded, a line each.
    const std::vector<std::string>& problems() const { return problems_; }

    // Saves the sites if there is anything to save. False when the person is told or asked something instead;
    // what is to be written after an answer is on the disk before the question.
    bool save(const std::vector<SiteConfig>& sites);

  private:
    bool ask(const FileContent& now, const std::string& text);
    bool told(const SaveResult& result);

    Prompts& prompts_;
    FolderLock& lock_;
    const Clock& clock_;
    std::string path_;
    FileContent read_;
    std::string textRead_; // the sites that were read, as they would be written
    std::vector<std::string> problems_;
};

} // namespace corvel
