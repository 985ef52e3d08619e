#pragma once

#include <QLocalServer>
#include <QString>

#include <functional>

namespace corvel {

// Where a copy of the program that holds the lock on a folder hears the others which were started on it.
class FrontDoor {
  public:
    // directory: of the configuration. knocked: another copy asks this one to come to the front.
    FrontDoor(const QString& directory, std::function<void()> knocked);

    // Asks the copy that holds the folder to come to the front. Returns at once; answered is called once,
    // from the event loop, with whether it did, and not any more when owner has ended.
    static void knock(const QString& directory, QObject& owner, std::function<void(bool)> answered);

  private:
    QLocalServer server_;
};

} // namespace corvel
