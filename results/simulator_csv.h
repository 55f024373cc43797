#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// The cells of a line of the combined file. They are views: who makes a row keeps the text alive.
using ResultRow = std::vector<std::string_view>;

/// A CSV of the simulator's export, taken apart: the header rows as they stood, then one row per
/// column of the table, its heading first.
struct SSimulatorCsv
{
    std::vector<ResultRow> rows;

    /// Cells that stood further right than the table's headings reach; they are in no row.
    std::size_t droppedCells = 0;
};

/// Views into `text`. A text without the mark "EXTRACTED DATA" has no rows.
SSimulatorCsv readSimulatorCsv(std::string_view text);
