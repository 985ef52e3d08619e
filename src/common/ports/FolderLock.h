#pragma once

namespace corvel {

// The lock on the folder of the configuration, by which copies of the program that share it know of each
// other. It is held until the object ends.
class FolderLock {
  public:
    virtual ~FolderLock() = default;

    // Takes the lock unless it is held already. False exactly while another copy holds it; a folder in which
    // nothing can be locked counts as this copy's.
    virtual bool take() = 0;
};

} // namespace corvel
