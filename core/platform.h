#pragma once
// The seam between the logic and the outside world. The window program implements these
// with Qt; the tests implement them with fakes (scripted answers, a virtual clock).
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/date_time.h"
#include "core/fault.h"

namespace quillet {

// ---- Message boxes -------------------------------------------------------------------
enum class MsgIcon { None, Stop, Question, Exclamation, Information };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MsgAnswer { Ok, Cancel, Yes, No };

struct MessageRequest {
  std::string text;
  std::string title;
  MsgButtons buttons = MsgButtons::Ok;
  MsgIcon icon = MsgIcon::None;
  int defaultButton = 1;  // 1 first button, 2 second, ...
};

// Every dialog of the system that can be shown modally.
enum class DialogId {
  frmPort, langfrm, about2, frmTimeset, Func1, FUNC2, FUNC3, Describe, SaveOpt, PrintOpt,
  // The scale profile dialogs.
  custom, input100mv, input10v, input420, inputbipo100mv, inputbipo10mv
};

// Help service commands, as the help viewer understands them.
enum class HelpCommand { Contents = 3, KeywordSearch = 261 };

class DrawSurface;

class UserInterface {
 public:
  virtual ~UserInterface() = default;
  virtual MsgAnswer Message(const MessageRequest& request) = 0;
  // Shows the dialog and returns when its logic has hidden it. Timers and the receive
  // event keep running meanwhile.
  virtual void ShowModal(DialogId dialog) = 0;
  // Mirrors the view model into the windows at once (a control asked for a refresh).
  virtual void Refresh() = 0;
  virtual void Beep() = 0;
  // The file-open dialog, started with an empty name. The filter comes in pairs of
  // description and pattern separated by "|" ("txt files (*.txt)|*.txt"). Returns the
  // chosen path; Cancel is fault 32755.
  virtual std::string OpenFileDialog(const std::string& filter) = 0;
  // The file-save dialog, with the same filter form. It asks nothing about an existing
  // file: the logic asks that itself. Returns the chosen path; Cancel is fault 32755.
  virtual std::string SaveFileDialog(const std::string& filter) = 0;
  // Clears the clipboard and puts the present picture of the graph surface on it as a
  // bitmap.
  virtual void PutGraphOnClipboard() = 0;
  virtual void ShowHelp(const std::string& helpFile, HelpCommand command) = 0;
  // The platform's fatal run-time error report; the program ends after it.
  virtual void FatalErrorReport(int faultNumber, const std::string& text) = 0;
  // A fault that ends the program: the window shows the platform's report; a user
  // interface that can say more (what was being done, where) overrides this.
  virtual void FatalFault(const Fault& fault, const std::string& report) { FatalErrorReport(fault.number(), report); }
  // Ends the program at once, with nothing saved.
  virtual void EndProgramNow(int exitCode) = 0;
  // Draws the graph: the window hands draw its surface, then shows the picture. Without
  // a graph surface nothing is drawn.
  virtual void PaintGraph(const std::function<void(DrawSurface&)>& draw) { (void)draw; }
  // Shows a dialog without stopping the user; its logic hides it again.
  virtual void ShowModeless(DialogId dialog) { (void)dialog; }
  // Sends an image of the dialog as it stands to the default printer, with no dialog.
  virtual void PrintDialogImage(DialogId dialog) { (void)dialog; }
};

// ---- Time ----------------------------------------------------------------------------
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;  // present local date-time
};

class TimerService {
 public:
  virtual ~TimerService() = default;
  // Starts a repeating timer; it runs for the life of the window.
  virtual void StartTimer(const std::string& name, int intervalMs, std::function<void()> action) = 0;
};

// Runs work later, after the present event: how the receive event is posted.
class EventPoster {
 public:
  virtual ~EventPoster() = default;
  virtual void Post(std::function<void()> work) = 0;
};

// ---- Serial bytes --------------------------------------------------------------------
class ByteTransport {
 public:
  virtual ~ByteTransport() = default;
  // Opens port 1..4. Faults: 68 device unavailable, 70 permission denied, others as the
  // platform reports them.
  virtual void Open(int portNumber) = 0;
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  virtual void SetLine(int baud, int dataBits, char parity, int stopBits) = 0;
  virtual void Write(const std::vector<std::uint8_t>& bytes) = 0;
  // Lets the given time pass inside the present event while input keeps arriving into
  // the receive buffer (through onBytes); nothing else runs meanwhile.
  virtual void Settle(double seconds) = 0;
  // Called by the transport with each piece of input as it arrives.
  std::function<void(const std::uint8_t* data, std::size_t size)> onBytes;
  // Called when the device goes away while open (unplugged, removed).
  std::function<void()> onLost;
  // The device path that port number n means here, for the port dialog.
  virtual std::string DeviceName(int portNumber) const = 0;
};

// Where the program's files lie.
struct FilePlaces {
  FilePlaces(std::string program = ".", std::string current = ".")
      : programDir(std::move(program)), currentDir(std::move(current)) {}
  std::string programDir = ".";   // loglang.txt, probes.dat, help files
  std::string currentDir = ".";   // logger1.ini
  // The command-line tool may name the settings and probe files itself.
  std::string settingsFile;       // empty: currentDir/logger1.ini
  std::string probesFile;         // empty: programDir/probes.dat
};

}  // namespace quillet
