#pragma once
// What sets the six profile dialogs apart: one table of properties drives the one dialog,
// the one table build and the one file reader and writer.
#include <string>

#include "core/platform.h"
#include "core/scale_tables.h"
#include "profiles/profile_state.h"

namespace quillet {

struct ProfileFamilySpec {
  ProfileFamily family;
  const char* name;     // on the command line: custom, 100mv, 10v, 420, bipo100mv, bipo10mv
  DialogId dialog;
  const char* caption;  // window caption
  ScaleEntryColumn ScaleTables::*entry;
  ScaleColumn ScaleTables::*table;
  ScaleColumn ScaleTables::*slope;
  int F, L;              // first and last knot
  int fields;            // entry fields Text1..Text<fields> edit cells F..F+fields-1
  double rowFirst, rowStep;  // row captions: rowFirst + rowStep * (field - 1)
  int segmentWidth;      // preview: L - F segments of this width
  const char* valueFormat;   // lowest and highest value under and over the box
  const char* axis[4];       // Label19 low, Label21 middle, Label20 high, Label22 name
  int unitCell;              // UnitByModel row set on OK and Cancel; 0: none
  bool entryOnlyMode;        // has the Close button and the profile entry notice
  bool hasSave;              // File, Save in its menu
  bool followsLanguage;      // ApplyLanguage re-captions it
  // Save question, save steps and wrong-tag title from the language table (rows 126, 127,
  // 54, 144, 74) instead of fixed English.
  bool languageSaveTexts;
  // "File does not exist" and "Sorry" of File, Open from rows 77 and 54.
  bool languageOpenTexts;
  // Opening: snapshot span; OK and Cancel: compare and restore span.
  int snapshotFirst, snapshotLast, compareFirst, compareLast;
  bool compareEntries;   // OK compares entries, not tables (bipolar)
  // Files.
  const char* tag;
  const char* extension;
  const char* openFilter;
  const char* saveFilter;
  const char* wrongTag;  // fixed text, or nullptr for language row wrongTagRow
  int wrongTagRow;
};

const ProfileFamilySpec& FamilySpec(ProfileFamily family);
const ProfileFamilySpec* FamilyByName(const std::string& name);
// The family a file opens in by its extension (.cus, .cmv, .10V, .420), or nullptr.
const ProfileFamilySpec* FamilyByExtension(const std::string& path);

// The family's arrays in the state.
inline ScaleEntryColumn& Entries(ScaleTables& s, const ProfileFamilySpec& f) { return s.*f.entry; }
inline ScaleColumn& TableCells(ScaleTables& s, const ProfileFamilySpec& f) { return s.*f.table; }
inline ScaleColumn& SlopeCells(ScaleTables& s, const ProfileFamilySpec& f) { return s.*f.slope; }

}  // namespace quillet
