#pragma once
// The link's part of the state: the serial conversation, what the connected logger
// reported, and the clock offset the user set.
#include <cstdint>
#include <string>

#include "core/bounded_table.h"
#include "core/number.h"

namespace quillet {

// Link modes: which reply is awaited.
constexpr int kModeIdle = 0, kModeHeader = 1, kModeBlock = 2, kModeLive = 3;

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
  // When the last live request went out (days, the clock's time): a header request waits
  // until its reply has had time to land, so that reply is flushed and not taken as the
  // header's acknowledge.
  double LiveRequestAt = -1;
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

struct ClockFields {
  Table<std::int16_t, 1, 6> ClockParts;  // month, day, year, hour, minute, second
  double ClockOffset = 0.0;              // PC time minus the time the user set, in days
};

}  // namespace quillet
