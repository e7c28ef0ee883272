#pragma once
// The command line's own words (its error lines, progress and status lines, the usage
// text) in the eight languages of the language file, by LanguageIndex: English, Deutsch,
// Français, Español, Italiano, Português, Nederlands, Polski. Outside 1..8 they are
// English. %1..%9 stand for what is filled in. What the program says through the language
// table (loglang.txt) is not here: it is already in the chosen language.
#include <initializer_list>
#include <string>

namespace quillet {

enum class CliText {
  // Options and the program's own ending.
  UnexpectedArgument,  // %1 command, %2 the argument
  UnknownOption,       // %1 command, %2 the option
  NeedsValue,          // %1 command, %2 the option
  IsRequired,          // %1 command, %2 the option
  CannotReadWhy,       // %1 file, %2 why
  CannotRead,          // %1 file
  CannotWriteWhy,      // %1 file, %2 why
  CannotWrite,         // %1 file
  CannotOpenWhy,       // %1 device, %2 why
  CannotOpen,          // %1 device
  TimeoutNotSeconds,
  BaudNotSpeed,
  StartupFailed,
  UnknownCommand,      // %1 what was given
  FaultUnhandledIn,    // %1 command, %2 the fault
  InternalErrorIn,     // %1 command, %2 what
  // The headless user.
  NoClipboard,
  FaultUnhandled,      // %1 the fault
  FaultOn,             // %1 the fault, %2 device or file
  Explained,           // %1 something, %2 what about it
  // What was being done when a fault ended the program (the program's own English
  // wording, recognised and put in the language in force).
  DoingHeader,
  DoingMemory,
  DoingLive,
  DoingRecordWrite,    // %1 file
  DoingComPort,        // %1 port number
  // decode and the record it writes.
  NowNotDate,          // %1 what was given
  FahrenheitNotFlag,
  HeaderTooShort,      // %1 file, %2 its bytes, %3 a header's bytes
  HeaderNotDecoded,    // %1 file, %2 why
  ProbeFactorNotNumber,  // %1 probes file
  BlockNotDecoded,     // %1 file, %2 its bytes, %3 why
  TooManySamples,      // %1 samples announced, %2 the most a record takes
  // download.
  BlockTimes,          // %1 bytes, %2 seconds, %3 seconds on the wire, %4 whole seconds
  Wrote,               // %1 file, %2 samples
  NoProbeChosen,       // %1 device
  LoggerFound,         // %1 serial, %2 model, %3 bit/s, %4 samples, %5 bytes
  DownloadNotStarted,
  NoLoggerAnswered,    // %1 device, %2 seconds
  Downloading,         // %1 percent
  DownloadIncomplete,  // %1 device, %2 seconds, %3 percent
  // live.
  NoReading,           // %1 device, %2 seconds
  TooFewReadings,      // %1 came, %2 asked, %3 device, %4 seconds
  LiveStopped,         // %1 seconds, %2 readings
  // render.
  RenderOneRecord,
  RenderOutKind,
  RenderSize,          // %1 what was given
  NotARecordFile,
  CannotDraw,          // %1 file, %2 why
  NothingToDraw,       // %1 file, %2 samples
  // print.
  PrintKindAndRecord,
  PrintAnnotateGraphOnly,
  PrintOutOrPrinter,
  PrintOutPdf,
  PrintPaper,          // %1 what was given
  NoSuchPrinter,       // %1 printer name
  CannotPrintGraph,    // %1 record file, %2 why
  CannotPrintData,     // %1 record file, %2 why
  PrinterFailedGraph,  // %1 record file
  PrinterFailedData,   // %1 record file
  DescriptionTooLongGraph,  // %1 record file
  DescriptionTooLongData,   // %1 record file
  // profile, and decode --profile.
  UnknownFamily,       // %1 what was given
  FamilyByExtension,   // %1 file
  NotAProfile,
  NoSuchFile,
  ProfileEndsEarly,    // %1 file, %2 family, %3 records
  CannotUse,           // %1 file, %2 why
  ProfileFlat,         // %1 file
  EntryForm,           // %1 what was given
  KnotNotField,        // %1 knot, %2 family, %3 first, %4 last
  KnotNotNumber,       // %1 knot, %2 text
  NoDataToSave,
  ProfileExists,       // %1 file
  ProfileWriteFault,   // %1 the fault
  ShowOneFile,
  ProfileShowOrWrite,
  // The usage text; the lines of options between them stay as they are.
  UsageLine,
  UsageCommands,
  UsageText,
  // The platform's words for the fault numbers (core/fault.h), in the same order.
  FaultIllegalCall,
  FaultOverflow,
  FaultSubscript,
  FaultDivisionByZero,
  FaultTypeMismatch,
  FaultBadFileName,
  FaultFileNotFound,
  FaultBadFileMode,
  FaultDiskFull,
  FaultInputPastEnd,
  FaultDeviceUnavailable,
  FaultPermissionDenied,
  FaultPathAccess,
  FaultPathNotFound,
  FaultCancel,
  FaultOther,
  // The system's words for why a file or device cannot be opened; English ones, and
  // reasons not here, are the system's own.
  ErrNoEntry,
  ErrAccess,
  ErrIsDirectory,
  ErrNotDirectory,
  ErrBusy,
  Count
};

constexpr int kCliTextCount = static_cast<int>(CliText::Count);

std::string CliTextIn(double languageIndex, CliText text);

// %1..%9 replaced by the arguments in one pass: what is filled in is never read again.
std::string FillIn(const std::string& pattern, std::initializer_list<std::string> args);

// The language the command speaks: the one of the settings file named with --settings,
// English until one is set.
void SetCliLanguage(double languageIndex);
double CliLanguage();

// The text in the language in force, filled in.
std::string Say(CliText text, std::initializer_list<std::string> args = {});

// A fault number's words in the language in force.
std::string FaultWords(int faultNumber);

// The reason for a system error number (errno) in the language in force.
std::string SystemWords(int errorNumber);

// What was being done when a fault ended the program, in the language in force when the
// wording is one of the program's own; anything else as it stands.
std::string DoingWords(const std::string& doing);

}  // namespace quillet
