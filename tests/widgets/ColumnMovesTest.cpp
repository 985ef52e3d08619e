#include "widgets/ReportView.h"

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

constexpr int columnCount = 5;
constexpr int fixedColumns = 2;
constexpr int columnPixels = 60;

class ColumnMoves : public testing::Test {
  protected:
    ColumnMoves() {
        ReportSource source;
        source.columns.resize(columnCount);
        source.text = [](int, int) { return QString(); };
        list_.setSource(source);
        list_.letColumnsMove(fixedColumns);
        for (int column = 0; column < columnCount; ++column) {
            header().resizeSection(column, columnPixels);
        }
        list_.resize(columnCount * columnPixels + 50, 200);
        list_.show();
    }

    QHeaderView& header() { return *list_.header(); }

    // Drags the column in one place to another, as a person does with the mouse.
    void drag(int from, int to) {
        const int offset = to > from ? columnPixels - 10 : 10; // past the middle, where columns change places
        const QPoint start(from * columnPixels + columnPixels / 2, header().height() / 2);
        const QPoint end(to * columnPixels + offset, start.y());
        QWidget* const area = header().viewport();
        QTest::mousePress(area, Qt::LeftButton, {}, start);
        for (const QPoint& place : {(start + end) / 2, end}) {
            QMouseEvent move(QEvent::MouseMove, place, area->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                             {});
            QApplication::sendEvent(area, &move);
        }
        QTest::mouseRelease(area, Qt::LeftButton, {}, end);
    }

    std::vector<int> order() {
        std::vector<int> columns;
        for (int place = 0; place < columnCount; ++place) {
            columns.push_back(header().logicalIndex(place));
        }
        return columns;
    }

    ReportView list_;
};

TEST_F(ColumnMoves, LeaveTheFixedColumnsInFront) {
    struct Row {
        const char* name;
        int from;
        int to;
        std::vector<int> order; // afterwards, each step upon the last
    };
    const std::vector<Row> rows = {
        {"to the end", 2, 4, {0, 1, 3, 4, 2}},
        {"to the first free place", 4, 2, {0, 1, 2, 3, 4}},
        {"before the fixed", 3, 0, {0, 1, 3, 2, 4}},
        {"between the fixed", 4, 1, {0, 1, 4, 3, 2}},
        {"the first fixed", 0, 3, {0, 1, 4, 3, 2}},
        {"the last fixed", 1, 2, {0, 1, 4, 3, 2}},
        {"another one afterwards", 2, 3, {0, 1, 3, 4, 2}},
    };
    for (const Row& row : rows) {
        drag(row.from, row.to);
        EXPECT_EQ(order(), row.order) << row.name;
    }
    list_.setSource(list_.source());
    EXPECT_EQ(order(), rows.back().order) << "with other content";
}

} // namespace
} // namespace corvel
