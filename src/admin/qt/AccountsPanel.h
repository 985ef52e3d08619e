#pragma once

#include "app/mdlMain.h"
#include "widgets/Forms.h"
#include "widgets/LinkLabel.h"
#include "widgets/ReportView.h"
#include "widgets/SitePages.h"
#include "widgets/TextConversion.h"

#include <QPalette>
#include <QPushButton>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvel {

// The ground of a row or a box in which something is typed and not saved.
QColor unsavedColour(const QPalette& palette);

// A button that acts on the current site, and does nothing without one. Belongs to the caller.
QPushButton* newSiteButton(mdlMain& program, const char* name, const QString& caption,
                           std::function<void(int site)> act);

// How a panel of users and one of groups differ. The functions are called with a site above 0.
struct AccountsOutline {
    const char* listName;
    const char* filterName; // of the box of the filter
    const char* countName;  // of how many rows there are
    QString accessibleName;
    bool isMultiple = false; // several rows can be selected
    QString refused;         // the text of a list that the server did not send; %1: its line
    QString none;            // of an empty one
    QString waiting;         // of one that has not come yet
    Accounts accounts = Accounts::users;
    AccountView SiteSession::*view = nullptr;
    std::function<QIcon(int site, int row)> icon = {};       // may be empty, as the next two
    std::function<QString(int site, int row)> iconText = {}; // of an icon; with it alone
    std::function<void()> insert = {};                       // the Insert key

    // The table's own, see withTable and AccountTable.
    std::function<ReportSource(int site)> source = {};
    std::function<void(int site, int row)> open = {};
    std::function<void(int site, const std::vector<int>& rows)> remove = {};
    std::function<void(int site)> save = {};
    std::function<void(int site)> reload = {};
    std::function<void(int site, int column)> sortBy = {};
    std::function<int(int site)> currentRow = {};
    std::function<int(int site, std::int16_t id)> rowOf = {}; // -1: there is none
    std::function<bool(int site, std::size_t index)> hasDraft = {};
};

// Completes an outline with what the table of program is and does. titles: of the columns, which are shown
// as rowText makes them of a record. sent: the texts of a record that they are made of.
template <typename Kind, typename Column, std::size_t count>
AccountsOutline withTable(AccountsOutline outline, mdlMain& program, AccountTable<Kind>& table,
                          const std::array<std::string_view, count>& titles,
                          std::array<std::string Kind::Record::*, count> sent,
                          std::array<Qt::AlignmentFlag, count> alignments) {
    outline.source = [&program, &titles, sent, alignments](int site) {
        const SiteSession& session = program.site(site).session;
        const auto recordIn = [&session](int row) -> const typename Kind::Record& {
            return (session.*Kind::table)[(session.*Kind::view).rows[static_cast<std::size_t>(row)]];
        };
        ReportSource source;
        for (std::size_t i = 0; i < count; ++i) {
            source.columns.push_back({.header = fromCore(titles[i]), .alignment = alignments[i]});
        }
        source.text = [recordIn](int row, int column) {
            return cellTextOf(rowText(recordIn(row), static_cast<Column>(column)));
        };
        source.sentText = [recordIn, sent](int row, int column) -> std::string_view {
            return recordIn(row).*sent[static_cast<std::size_t>(column)];
        };
        return source;
    };
    outline.accounts = Kind::accounts;
    outline.view = Kind::view;
    outline.open = [&table](int site, int row) { table.open(site, row); };
    outline.remove = [&table](int site, const std::vector<int>& rows) { table.remove(site, rows); };
    outline.save = [&table](int site) { table.save(site); };
    outline.reload = [&table](int site) { table.reload(site); };
    outline.sortBy = [&table](int site, int column) { table.sortBy(site, column); };
    outline.currentRow = [&table](int site) { return table.currentRow(site); };
    outline.rowOf = [&table](int site, std::int16_t id) { return table.rowOf(site, id); };
    outline.hasDraft = [&table](int site, std::size_t index) { return table.hasDraft(site, index); };
    return outline;
}

// The text boxes in which an editor's record is changed, by number, and the line that says why they are
// empty.
class EditorBoxes {
  public:
    // A person has typed text (UTF-8) into a box, or what the server has there: nothing.
    using Typed = std::function<void(std::size_t box, std::optional<std::string> text)>;

    // count: how many boxes there will be. problemName, outcomeName: of the lines.
    EditorBoxes(std::size_t count, const char* problemName, const char* outcomeName, Typed typed);

    // The box of that number, to be put into a layout once. The line, the same.
    BytesEdit* box(std::size_t number) const { return boxes_[number]; }
    // What the box says of itself in its tool tip.
    void setTip(std::size_t number, const QString& tip);
    ElidedLabel* problem() const { return problem_; }
    // What became of the last change; a click on it wants the results. The same.
    LinkLabel* outcome() const { return outcome_; }

  protected:
    void showBox(std::size_t number, const std::string& bytes, const Draft* draft);
    void showProblem(Details details, const std::string& problem);

    bool isKnown_ = false; // the record's details are in the boxes

  private:
    Typed typed_;
    std::vector<BytesEdit*> boxes_;
    std::vector<QString> tips_; // of the boxes
    ElidedLabel* problem_;
    LinkLabel* outcome_;
};

// What an editor of a table's records consists of, but for the places of its controls.
template <typename Kind>
class RecordEditor : public EditorBoxes {
  public:
    using Form = typename Kind::Form;

    // Both are borrowed and must outlive the editor.
    RecordEditor(mdlMain& program, AccountTable<Kind>& table, const char* problemName,
                 const char* outcomeName)
        : EditorBoxes(Form::boxCount, problemName, outcomeName,
                      [&program, &table](std::size_t box, std::optional<std::string> text) {
                          table.typed(program.currentSite(), box, std::move(text));
                      }),
          program_(program), table_(table) {}

    // A button that is enabled while there are details, or else while there is a record.
    QPushButton* newButton(const char* name, const QString& caption, bool needsDetails,
                           std::function<void(int site)> act) {
        QPushButton* const button = newSiteButton(program_, name, caption, std::move(act));
        (needsDetails ? forDetails_ : forRecords_).push_back(button);
        return button;
    }

    // Shows what the server has of the site's current record in the boxes nobody has touched, and in the
    // others what is typed. site: 0 for none. False where all else stays as it is shown: details stay while
    // they are asked for again.
    bool show(int site) {
        AccountEditor<Form> editor = site > 0 ? table_.editor(site) : AccountEditor<Form>();
        const bool isAsked = editor.details == Details::asked || editor.details == Details::wanted;
        const bool stays = isAsked && isKnown_ && editor.id == id_;
        if (!stays) {
            isKnown_ = editor.details == Details::known;
            for (std::size_t number = 0; number < Form::boxCount; ++number) {
                showBox(number, editor.form.box(number), editor.draft);
            }
            form_ = std::move(editor.form);
        }
        id_ = editor.id;
        showProblem(editor.details, editor.problem);
        outcome()->showText(fromCore(editor.outcome));
        for (QPushButton* const button : forDetails_) {
            button->setEnabled(editor.details == Details::known);
        }
        for (QPushButton* const button : forRecords_) {
            button->setEnabled(editor.id.has_value());
        }
        return !stays;
    }

    // As they were shown last.
    const Form& form() const { return form_; }

  private:
    mdlMain& program_;
    AccountTable<Kind>& table_;
    std::vector<QPushButton*> forDetails_;
    std::vector<QPushButton*> forRecords_;
    std::optional<std::int16_t> id_;
    Form form_;
};

// The outline of the users tab and of the groups tab: a list for every site, made when the site is first
// looked at, buttons below it, and beside it the editor, which belongs to the current site.
class AccountsPanel : public QWidget {
    Q_OBJECT

  public:
    void showSite(int site);
    void dropSite(int site) { lists_->drop(site); }
    void connectionChanged(int site); // an empty list says so
    void accountsChanged(int site, Accounts accounts, AccountChange change);

  signals:
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);
    // A person wants to see what the server answered.
    void resultsWanted();

  protected:
    // program: borrowed, must outlive the panel. side: stands beside the list. buttons: below it.
    AccountsPanel(mdlMain& program, QWidget* parent) : QWidget(parent), program_(program) {}
    void build(AccountsOutline outline, QLayout* buttons, QWidget* side);

    // Shows in the editor what it is to show now. site: the current one, 0 for none.
    virtual void showEditor(int site) = 0;

    mdlMain& program() const { return program_; }
    const SiteSession& session(int site) const { return program_.site(site).session; }
    // The selected rows of the site's list, in order, as indexes of the table.
    std::vector<std::size_t> selectedIndexes(int site) const;
    // Selects the rows of the records for whose indexes isWanted holds, and no others; a filter that hides
    // one of them is taken away.
    void selectWhere(int site, const std::function<bool(std::size_t index)>& isWanted);
    // Deletes the selected accounts of the site, after a question.
    void removeSelected(int site);
    // Puts the focus on the site's list.
    void focusList(int site) { lists_->at(site).widget->setFocus(); }
    // Goes to the row of the account with that id, as a click does, whatever a filter hides. Nothing where
    // there is none.
    void goTo(int site, std::int16_t id);
    // Ctrl+S.
    virtual void save(int site) { outline_.save(site); }
    // Other rows of a list are selected now, or it has other rows.
    virtual void selectionChanged() {}

  private:
    struct List {
        ReportView* widget = nullptr;
        std::vector<std::size_t> rows; // the index of the record in each row, as shown
    };

    List createList(int site);
    void fill(int site, List& list);
    void reorder(int site, List& list);
    void showCurrent(int site);
    QString emptyText(int site) const;
    void keyPressed(int site, Qt::Key key, int row);

    mdlMain& program_;
    AccountsOutline outline_;
    SitePages<List>* lists_ = nullptr;
};

} // namespace corvel
