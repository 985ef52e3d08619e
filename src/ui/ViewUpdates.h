#pragma once

#include "common/Ports.h"

#include <QObject>

#include <functional>
#include <vector>

namespace corvel {

// The Views port for a window: gathers what has changed and tells the window each change once, in the order
// in which they came. That is at the next event of the program at the latest, so that nothing is painted and
// nothing clicked by what no longer holds; data of sockets alone does not hurry it.
class ViewUpdates : public QObject, public Views {
    Q_OBJECT

  public:
    // show: shows a change. openDialog: is told at once.
    ViewUpdates(std::function<void(const ViewChange&)> show, std::function<void(int, Dialog)> openDialog);

    void changed(const ViewChange& change) override;
    void dialogWanted(int site, Dialog dialog) override { openDialog_(site, dialog); }

    // Tells what has changed until now.
    void tell();

    // Tells nothing from now on: the window is going, and its parts before this one.
    void stop() {
        show_ = [](const ViewChange&) {};
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::function<void(const ViewChange&)> show_;
    std::function<void(int, Dialog)> openDialog_;
    std::vector<ViewChange> changes_;
};

} // namespace corvel
