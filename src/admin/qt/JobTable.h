#pragma once

#include "app/Journal.h"
#include "config/Settings.h"
#include "widgets/ReportModel.h"

#include <cstddef>
#include <vector>

class QWidget;

namespace corvel {

// Which columns a list of a job's commands has: the account and the command, and behind them code and reply.
enum class JobColumns { plan, results };

// The content of such a list: the job's commands at these places, in this order. The source keeps the job.
// settings: borrowed by the source.
ReportSource jobSource(const JobHandle& job, std::vector<std::size_t> places, JobColumns columns,
                       const Settings& settings);

// What such a list shows, for a clipboard: a line of headers and one for each row, with tabs between the
// cells.
QString tableText(const ReportSource& source);

// Opens the dialog frmBatchPreview with what a job would send. plan: how much that is.
void openBatchPreview(const JobHandle& job, const QString& plan, const Settings& settings, QWidget* parent);

} // namespace corvel
