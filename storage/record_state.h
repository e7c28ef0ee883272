#pragma once
// The record on screen, and what the Save and Open commands remember between runs.
#include <cstdint>
#include <string>

#include "core/bounded_table.h"
#include "core/number.h"

namespace quillet {

constexpr int kMaxSamples = 16384;

using SampleValues = Table<Number, 0, kMaxSamples>;
using SampleTimes = Table<double, 0, kMaxSamples>;
using ZoomValueTable = Table<float, 0, kMaxSamples>;

// The record on screen. Its numeric header is a frozen copy of the logger fields, so a
// later live reading or another logger's header cannot disturb it.
struct SampleRecord {
  std::string BlockData;
  Number RecordModelCode;
  std::string RecordUnitText;
  Number RecordRangeFactor, RecordScaleByte, LoggerNumber;
  Number RecordMemorySize, RecordHalfFills, RecordFillPosition, RecordStoredSamples;
  Table<Number, 1, 6> RecordRangeMarks;
  Number RecordLastTime, RecordInterval;
  Number FullSampleCount;
  Number RecordSampleCount;
  SampleValues FullValues, ShownValues;
  SampleTimes FullTimes, ShownTimes, ZoomTimes;
  ZoomValueTable ZoomValues;
  Number FullMin, FullMax, FullAvg;
  Number ShownMin, ShownMax, ShownAvg;  // statistics of what the graph shows
  // Descriptive texts. RecordText4 and RecordText6 are never edited: cleared at each
  // download, carried along from a file. RecordStats is composed at each save.
  std::string RecordTitle, RecordIdent, RecordRemarks, RecordText4, RecordLocation, RecordText6;
  std::string RecordStats;
  std::int16_t RecordFromFile = 0;
  Number RecordSaved;
};

struct FileState {
  std::int16_t DisplayedSaved = 0;     // the shown part has been saved
  std::int16_t SaveDisplayedOnly = 0;  // the next save writes the shown part only
  Number SaveCancelled;                // the user cancelled SaveOpt
  std::string SaveFileName;
  std::int16_t OpenRetry = 0;  // the Open command runs again after a failed read
  std::string OpenFileName;
};

}  // namespace quillet
