#pragma once

#include "admin/Batch.h"
#include "widgets/Forms.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

class QCheckBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;

namespace corvel {

// The panel picUserBatchContainer: changes for every selected account at once. Each site has what was typed
// and ticked for it.
class BatchPanel : public QWidget {
    Q_OBJECT

  public:
    // What the panel does with its form. perform: for the button cmdBatchPerform; preview: for
    // cmdBatchPreview; count: how many accounts are selected.
    struct Actions {
        std::function<void(const BatchForm&)> perform;
        std::function<void(const BatchForm&)> preview;
        std::function<std::size_t()> count;
    };

    explicit BatchPanel(Actions actions, QWidget* parent = nullptr);

    // Puts a widget below the form, which gets the room that is left.
    void addBelow(QWidget* widget);

    // Shows the form of that site; 0 for none. connection: the encoding of its connection, in which what is
    // typed goes out; it outlives the panel; nullptr for none.
    void showSite(int site, const TextEncoding* connection);
    // Says what would go out, by now.
    void showPlan();

  private:
    // A box of a row. Only where a row has several do they have captions of their own.
    struct Box {
        std::string* member;
        const char* name;
        QString accessibleName;
        QString caption = {};
    };

    void addRows();
    void addRow(bool& ticked, const char* name, const QString& caption, const std::vector<Box>& boxes);
    void addBox(QHBoxLayout& row, const Box& box);
    QLayout* createButtons();
    const BatchForm& collected();

    // What a person has made of a site's form.
    struct Typed {
        std::vector<bool> ticks;
        std::vector<QString> texts;
    };

    BatchForm form_;
    Actions actions_;
    std::map<int, Typed> typed_; // of the sites that are not shown
    int site_ = 0;
    QLabel* lblBatchPlan_;
    std::vector<BytesEdit*> edits_;
    std::vector<std::pair<bool*, QCheckBox*>> ticks_;
    FormBoxes boxes_;
    const TextEncoding* connection_ = nullptr;
    QGridLayout* rows_;
};

} // namespace corvel
