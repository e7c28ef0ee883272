#pragma once
// The scale profiles' part of the state: the flags the profile dialogs share with the
// rescale command, and what each of the six dialogs keeps while it exists. The profiles
// themselves (entries, tables, slopes) live in ScaleTables, beside the settings file.
#include <cstdint>
#include <string>

#include "core/bounded_table.h"
#include "core/cell.h"

namespace quillet {

// The six profile dialogs. The two bipolar ones edit the arrays of the 4 to 20 mA family.
enum class ProfileFamily { Custom = 0, Mv100 = 1, V10 = 2, Ma420 = 3, Bipo100mv = 4, Bipo10mv = 5 };
constexpr int kProfileFamilies = 6;

// What one dialog keeps between its opening and its OK, Cancel or Close.
struct ProfileDialogState {
  Table<int, 0, 20> PointIndex;  // knots with a typed entry, ascending, from 1
  int PointCount = 0;
  Table<Cell, 0, 20> SnapshotEntry, SnapshotTable, SnapshotSlope;
  std::string SnapshotUnits;
  std::int16_t ProfileLoaded = 0;  // a file was loaded since the last OK
  std::int16_t SaveCancelled = 0;  // the save file dialog was cancelled
};

struct ProfileState {
  std::int16_t ScaleTableInvalid = 0;  // 1: the last build found no usable table, or a cancel
  std::int16_t ScaleChanged = 0;       // 1: OK found another table or unit, or a file was loaded
  std::int16_t ProfileEntryOnly = 0;   // 1: opened from its own menu entry; the record is not touched
  std::string ProfileFileName;         // the profile last opened or saved
  Table<ProfileDialogState, 0, kProfileFamilies - 1> dialogs;
};

}  // namespace quillet
