#pragma once

#include "widgets/ReportView.h"

#include <QPointer>

class QLabel;
class QLineEdit;

namespace corvel {

// The line above a list in which a person types what the list is to show, and how many rows that are. Ctrl+F
// anywhere in the window goes to it while it is in sight; there, Escape clears it and Down goes to the list.
// The text belongs to the list: another list brings its own.
class FilterBox : public QWidget {
    Q_OBJECT

  public:
    // name, countName: of the box and of the count.
    FilterBox(const char* name, const char* countName);

    // Filters that list from now on; null for none.
    void setList(ReportView* list);

    // Begins the box where those begin whose captions are so wide, in pixels.
    void setCaptionWidth(int pixels);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showList();

    QPointer<ReportView> list_;
    QLineEdit* text_;
    QLabel* caption_;
    QLabel* count_;
};

} // namespace corvel
