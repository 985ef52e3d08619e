#pragma once

#include "admin/AdminForms.h"
#include "widgets/Forms.h"

#include <QWidget>

#include <functional>
#include <string>
#include <utility>
#include <vector>

class QCheckBox;
class QGridLayout;
class QHBoxLayout;

namespace corvel {

// The panel picUserBatchContainer: changes for every selected account at once. It keeps what was typed and
// ticked when the site changes.
class BatchPanel : public QWidget {
    Q_OBJECT

  public:
    // What becomes of the form when the button cmdBatchPerform is pressed.
    using Perform = std::function<void(const BatchForm&)>;

    explicit BatchPanel(Perform perform, QWidget* parent = nullptr);

    // How what is typed goes out: the encoding of the current site's connection, which outlives the panel;
    // nullptr for none.
    void setConnection(const TextEncoding* encoding) { connection_ = encoding; }

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
    void cmdBatchPerform_Click();

    BatchForm form_;
    Perform perform_;
    std::vector<std::pair<bool*, QCheckBox*>> ticks_;
    FormBoxes boxes_;
    const TextEncoding* connection_ = nullptr;
    QGridLayout* rows_;
};

} // namespace corvel
