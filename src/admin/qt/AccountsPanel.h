#pragma once

#include "app/mdlMain.h"
#include "widgets/ReportModel.h"
#include "widgets/SitePages.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <vector>

class QPoint;
class QPushButton;

namespace corvel {

class ReportView;

// How a panel of users and one of groups differ. The functions are called with a site above 0.
struct AccountsOutline {
    const char* listName;
    QString accessibleName;
    bool isMultiple = false; // several rows can be selected
    QString refused;         // the text of a list that the server did not send; %1: its line
    QString none;            // of an empty one
    QString waiting;         // of one that has not come yet
    Accounts accounts = Accounts::users;
    AccountView SiteSession::*view = nullptr;
    std::function<ReportSource(int site)> source; // but for the rows, the order and the marks
    std::function<void()> insert = {};            // the Insert key; may be empty

    // The table's own, see AccountTable.
    std::function<void(int site, int row)> open = {};
    std::function<void(int site, int row)> remove = {};
    std::function<void(int site)> reload = {};
    std::function<void(int site, int column)> sortBy = {};
    std::function<int(int site)> currentRow = {};
    std::function<bool(int site, std::size_t index)> hasDraft = {};
};

template <typename Kind>
AccountsOutline withTable(AccountsOutline outline, AccountTable<Kind>& table) {
    outline.accounts = Kind::accounts;
    outline.view = Kind::view;
    outline.open = [&table](int site, int row) { table.open(site, row); };
    outline.remove = [&table](int site, int row) { table.remove(site, row); };
    outline.reload = [&table](int site) { table.reload(site); };
    outline.sortBy = [&table](int site, int column) { table.sortBy(site, column); };
    outline.currentRow = [&table](int site) { return table.currentRow(site); };
    outline.hasDraft = [&table](int site, std::size_t index) { return table.hasDraft(site, index); };
    return outline;
}

// The outline of the users tab and of the groups tab: a list for every site, made when the site is first
// looked at, buttons below it, and beside it the editor, which belongs to the current site.
class AccountsPanel : public QWidget {
    Q_OBJECT

  public:
    void showSite(int site);
    void connectionChanged(int site); // an empty list says so
    void accountsChanged(int site, Accounts accounts, AccountChange change);

  signals:
    // The current site's list wants its pop-up menu, at a place on screen.
    void menuRequested(const QPoint& globalPosition);

  protected:
    // program: borrowed, must outlive the panel. side: stands beside the list. buttons: below it.
    AccountsPanel(mdlMain& program, QWidget* parent) : QWidget(parent), program_(program) {}
    void build(AccountsOutline outline, QLayout* buttons, QWidget* side);

    // Shows in the editor what it is to show now. site: the current one, 0 for none.
    virtual void showEditor(int site) = 0;

    // A button below the list that acts on the current site, and does nothing without one.
    template <typename Act>
    QPushButton* addButton(const char* name, const QString& caption, Act act) {
        return newButton(name, caption, [this, act] {
            if (program_.currentSite() > 0) {
                act(program_.currentSite());
            }
        });
    }

    mdlMain& program() const { return program_; }
    const SiteSession& session(int site) const { return program_.site(site).session; }
    // The selected rows of the site's list, in order, as indexes of the table.
    std::vector<std::size_t> selectedIndexes(int site) const;

  private:
    struct List {
        ReportView* widget = nullptr;
        std::vector<std::size_t> rows; // the index of the record in each row, as shown
    };

    QPushButton* newButton(const char* name, const QString& caption, std::function<void()> act);
    List createList(int site);
    void fill(int site, List& list);
    void reorder(int site, List& list);
    QString emptyText(int site) const;
    void keyPressed(int site, Qt::Key key, int row);

    mdlMain& program_;
    AccountsOutline outline_;
    SitePages<List>* lists_ = nullptr;
};

} // namespace corvel
