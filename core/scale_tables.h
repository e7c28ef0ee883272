#pragma once
// The user's scale profiles as the settings file keeps them: per profile a table column
// and a slope column of 31 cells, plus eight carry columns that the file holds for
// profiles this program does not use and passes through untouched.
#include <array>
#include <string>

#include "core/bounded_table.h"
#include "core/cell.h"

namespace quillet {

using ScaleColumn = Table<Cell, 0, 30>;
using ScaleEntryColumn = Table<Cell, 0, 20>;
// The unit text of each model code; the file keeps the rows of the profile models.
using UnitTable = Table<std::string, 0, 100>;  // UnitByModel

struct ScaleTables {
  ScaleColumn ScaleTable100mv, ScaleSlope100mv;
  ScaleColumn ScaleTable10v, ScaleSlope10v;
  ScaleColumn ScaleTable420, ScaleSlope420;
  ScaleColumn ScaleTable, ScaleSlope;
  // Columns 2, 4, 6 and 7 of the table line, then of the slope line.
  std::array<ScaleColumn, 8> Carry;
  // The typed points of the profile dialogs, copies of the tables at start-up.
  ScaleEntryColumn ScaleEntry100mv, ScaleEntry10v, ScaleEntry420, ScaleEntry;
};

}  // namespace quillet
