#include "widgets/column_alignment.h"

#include <QGridLayout>

#include <algorithm>

namespace {

int columnCount(const QList<QGridLayout*>& rows)
{
    int count = 0;
    for (const QGridLayout* row : rows) {
        count = std::max(count, row->columnCount());
    }
    return count;
}

int widestItem(const QList<QGridLayout*>& rows, int column)
{
    int widest = 0;
    for (const QGridLayout* row : rows) {
        const QLayoutItem* const item = row->itemAtPosition(0, column);
        widest = std::max(widest, item == nullptr ? 0 : item->sizeHint().width());
    }
    return widest;
}

} // namespace

void alignColumns(const QList<QGridLayout*>& rows)
{
    for (int column = 0; column < columnCount(rows); ++column) {
        const int widest = widestItem(rows, column);
        for (QGridLayout* row : rows) {
            // No spacing stands before a column in which there is nothing.
            const bool empty = row->itemAtPosition(0, column) == nullptr;
            row->setColumnMinimumWidth(column, widest + (empty ? row->horizontalSpacing() : 0));
        }
    }
}
