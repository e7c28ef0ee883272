#pragma once
// The family of loggers: one descriptor per model code, so "which models do X" is read
// from the table rather than scattered through the code.
#include <optional>
#include <string>

#include "core/bounded_table.h"
#include "core/number.h"
#include "core/scale_tables.h"
#include "measure/measure_state.h"

namespace quillet {

enum class UnitSource { Probe, Temperature, Fixed, ByModel };

struct ModelInfo {
  int code;
  const char* label;     // for 31 see ModelLabel; empty for 16, whose probe row names it
  UnitSource unitSource;
  const char* unit;      // for UnitSource::Fixed, else empty
  std::optional<double> rangeFactor;  // set when the header is decoded; empty: not set
};

// The row of a model code, or nullptr for a code with no row.
const ModelInfo* FindModel(double code);
std::string ModelLabel(const ModelInfo& m, int editionFlag);

// The range form 2^-(D mod 4), with the modulo as x - 4 * Int(x / 4).
double RangeForm(double d);
// Two deliberately different lists: the live reading applies the range form for model
// 32 too, the header decoding does not. They must not be merged.
bool LiveRangeFormModel(double code);
bool HeaderRangeFormModel(double code);

// Rows installed at start-up, after the settings file supplied its eight rows.
void InstallUnitRows(UnitTable& unitByModel);
void InstallTempUnitNames(TempUnitTable& names);

}  // namespace quillet
