#pragma once

#include "common/Ports.h"
#include "demo/DemoServer.h"

#include <QString>
#include <QTemporaryDir>

#include <string>

namespace corvel {

// What the program runs on with --demo in place of the user's own: a server in the process, a directory with
// two sites and the sample settings in it, and a store that is forgotten at the end.
class DemoHome {
  public:
    DemoHome();

    // What went wrong while setting up; empty when all is well.
    const QString& errorText() const { return errorText_; }

    StateStore& store() { return store_; }
    std::string directory() const { return directory_.path().toStdString(); }

  private:
    bool writeSites();
    bool writeSettings() const;

    DemoServer server_;
    QTemporaryDir directory_;
    MemoryStore store_;
    QString errorText_;
};

} // namespace corvel
