#pragma once
// The one state object behind the main window: settings, the serial conversation, what
// the connected logger reported, and the record on screen. Dialogs and handlers read and
// write these fields directly; there is no other shared store.
#include <cstdint>
#include <string>

#include "core/bounded_table.h"
#include "core/date_time.h"
#include "core/number.h"
#include "core/scale_tables.h"
#include "graph/graph_state.h"
#include "measure/model_table.h"

namespace quillet {

constexpr int kMaxSamples = 16384;

struct AppSettings {
  std::int16_t ComPort = 0;   // 1..4; 0 means none ("No Logger")
  Number LanguageIndex;       // 1..8 when valid
  Number BaudRate = 1200;     // 1200 or 4800
  Number UseFahrenheit;       // 1 degF, 0 degC
  Number UsDateFormat;        // 1 month first, 0 day first
};

struct LinkState {
  Number PortChosen;
  Number LinkOff;
  Number LinkMode = 0;        // 0 idle, 1 header, 2 block, 3 live reading
  Number LinkModeSeen;
  Number ModeTicks;
  Number LivePollEnabled = 0;
  std::int16_t PollPaused = 0;
  std::int16_t LoggerSeen = 0;
  std::int16_t HeaderPhase = 0, BlockPhase = 0, LivePhase = 0;
  std::int16_t HeaderRetries = 0;
  std::int16_t HeaderRead = 0;
  std::int16_t DownloadActive = 0;
  Number BaudConfirmed;
  Number BaudJustSwitched;
  Number BlockTimeLimit;
  Number SkipSavePrompt;
  std::int16_t TimeSetDone = 0;
  std::int16_t DownloadRefused = 0;
  std::int16_t SetTimeFromMenu = 0;
  Number DownloadPercent;
};

// What the connected logger reported; all of it survives the loss of the logger.
struct LoggerFields {
  Number ModelCode;
  Number LoggerSerial;
  Number ReplyFormat, RecordReplyFormat;
  Number MemorySize, TotalSamples, HalfFills, FillPosition, StoredSamples, BlockBytes;
  Number ElapsedDays;
  Table<std::int16_t, 0, 8> StatusBits;
  Table<Number, 1, 5> RangeMarks;
  // Raw mark bytes of the last layout 1 header (positions 4..11); layout 2 keeps them.
  Table<Number, 1, 8> RangeMarkBytes;
  Number ScaleByte, RangeFactor;
  std::string LiveUnitText;
  Number RawValue;
  Number FirstSampleTime, LastSampleTime, SampleInterval;
};

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

struct ClockFields {
  Table<std::int16_t, 1, 6> ClockParts;  // month, day, year, hour, minute, second
  double ClockOffset = 0.0;              // PC time minus the time the user set, in days
};

// Date and time patterns, set by mnuUsa or mnuEur.
struct DateFormats {
  std::string FmtStampLong, FmtStamp, FmtDate, FmtTime, FmtHourMinute, FmtHour;
  std::string DateStyle;
};

struct Fonts {
  std::string FontName1 = "Arial", FontName2 = "Arial";
  Table<int, 1, 6> FontSizes;
};

constexpr int kLanguages = 8;
constexpr int kStrings = 200;

struct LanguageData {
  Table<Table<std::string, 0, kStrings>, 0, kLanguages> LanguageTable;
  std::int16_t LanguageCount = 0;
  Table<std::string, 0, kLanguages> LanguageName;
  Table<std::string, 0, kLanguages> LanguageHelpFile;
  std::string CurrentHelpFile;
};

struct ProbeMemoryTables {
  Table<Number, 0, 12> ProbeSerial, ProbeFactor;
  Table<std::string, 0, 12> ProbeUnit, ProbeLabel;
};

// The probes of probes.dat: three function groups of three sections of ten rows. Rows
// are numbered 1..30 within their group, so section 2 holds rows 11..20.
struct ProbeRow {
  std::string label, unit;
  Number factor;
};

struct ProbeGroup {
  std::string title;
  Table<std::string, 1, 3> sectionTitles;
  Table<ProbeRow, 1, 30> rows;
};

struct ProbeTable {
  Table<ProbeGroup, 1, 3> groups;
};

// Scale and panel results shared with the graph and the readouts.
struct PanelState {
  Number PanelSerial;
  std::int16_t PanelTitled = 0;
  std::int16_t OtherLoggerNotice = 0;
  Number GraphLoggerNumber;
};

struct State {
  AppSettings settings;
  LinkState link;
  LoggerFields logger;
  SampleRecord record;
  ClockFields clock;
  DateFormats fmt;
  Fonts fonts;
  LanguageData lang;
  ProbeMemoryTables probes;
  ProbeTable probeTable;
  std::int16_t ProbeUnset = 0;
  Number ProbeSlot;
  std::int16_t RescaleApproved = 0;
  ScaleTables scales;
  UnitTable UnitByModel;
  TempUnitTable TempUnitNames;
  PanelState panel;
  GraphState graph;  // scales of the last drawing, and the zoom drag
  std::int16_t EditionFlag = 1;
  std::int16_t DisplayedSaved = 0;    // the shown part has been saved
  std::int16_t SaveDisplayedOnly = 0; // the next save writes the shown part only
  Number SaveCancelled;               // the user cancelled SaveOpt
  std::string SaveFileName;
  std::int16_t DescribeChanged = 0;   // OK in Describe found a text changed; only Cancel clears it
  std::int16_t GraphZoomed = 0;
  std::int16_t OpenRetry = 0;  // the Open command runs again after a failed read
  std::string OpenFileName;
};

}  // namespace quillet
