#include "admin/qt/JobTable.h"

#include "admin/ShownCommand.h"
#include "widgets/Forms.h"
#include "widgets/ReportView.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace corvel {

namespace {

QString jobText(const char* text) {
    return QCoreApplication::translate("JobTable", text);
}

enum Column { accountColumn, commandColumn, codeColumn, replyColumn };

QString cellOf(const JobRecord& job, std::size_t place, int column, const Settings& settings) {
    const CommandRecord& record = job.commands[place];
    switch (column) {
    case accountColumn:
        return cellTextOf(job.accountOf(place));
    case commandColumn:
        return cellTextOf(shownCommand(record.command, settings));
    case codeColumn:
        return record.code == 0 ? QString() : QStringLiteral("%1").arg(record.code, 3, 10, QLatin1Char('0'));
    default:
        return cellTextOf(answerText(job, place));
    }
}

} // namespace

ReportSource jobSource(const JobHandle& job, std::vector<std::size_t> places, JobColumns columns,
                       const Settings& settings) {
    ReportSource source;
    source.rows = static_cast<int>(places.size());
    source.columns = {{.header = jobText("user")}, {.header = jobText("command")}};
    if (columns == JobColumns::results) {
        source.columns.push_back({.header = jobText("code"), .alignment = Qt::AlignRight});
        source.columns.push_back({.header = jobText("reply")});
    }
    const auto shared = std::make_shared<const std::vector<std::size_t>>(std::move(places));
    const auto placeOf = [shared](int row) { return (*shared)[static_cast<std::size_t>(row)]; };
    source.text = [job, placeOf, &settings](int row, int column) {
        return cellOf(*job, placeOf(row), column, settings);
    };
    source.sentText = [job, placeOf](int row, int column) -> std::string_view {
        const std::size_t place = placeOf(row);
        const CommandRecord& record = job->commands[place];
        return column == accountColumn                            ? job->accountOf(place)
               : column == commandColumn                          ? record.command
               : column == replyColumn && record.reply != nullptr ? std::string_view(*record.reply)
                                                                  : std::string_view();
    };
    return source;
}

QString tableText(const ReportSource& source) {
    QString text;
    const int columns = static_cast<int>(source.columns.size());
    for (int row = -1; row < source.rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            text +=
                row < 0 ? source.columns[static_cast<std::size_t>(column)].header : source.text(row, column);
            text += QLatin1Char(column + 1 < columns ? '\t' : '\n');
        }
    }
    return text;
}

void openBatchPreview(const JobHandle& job, const QString& plan, const Settings& settings, QWidget* parent) {
    auto* const dialog = new QDialog(parent);
    dialog->setObjectName(QStringLiteral("frmBatchPreview"));
    dialog->setWindowTitle(titleOf(jobText("Preview")));
    auto* const list = new ReportView;
    list->setPlaceholder(jobText("Nothing would go out: no user is selected, or nothing is ticked."));
    list->setSource(jobSource(job, rowsOf(*job, false), JobColumns::plan, settings));
    list->header()->setStretchLastSection(true);
    list->fitColumns(0, 1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(labelFor(*list, "lvwBatchPreview", jobText("&What would go out: %1").arg(plan)));
    layout->addWidget(list);
    layout->addWidget(buttons);
    const QFontMetrics metrics = dialog->fontMetrics();
    dialog->resize(metrics.averageCharWidth() * 80, metrics.height() * 24);
    openDialog(*dialog);
}

} // namespace corvel
