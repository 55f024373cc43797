#pragma once

#include <QList>

class QGridLayout;

/// Gives the columns of one-row grids that stand below one another the same least widths, so that
/// they look like one grid.
void alignColumns(const QList<QGridLayout*>& rows);
