#pragma once
// The application: the state object, the views of its windows, the serial port layer
// and the platform it runs on. Every event enters the logic through Dispatch.
#include <functional>
#include <memory>
#include <string>

#include "core/platform.h"
#include "core/printer_surface.h"
#include "hub/state.h"
#include "hub/view_model.h"
#include "link/comm_port.h"

namespace quillet {

struct Platform {
  UserInterface& ui;
  Clock& clock;
  TimerService& timers;
  EventPoster& poster;
  ByteTransport& transport;
  FilePlaces places;
  // The printer; none on a platform without one (the printouts then fail at once).
  PrinterSurface* printer = nullptr;
};

// Thrown to end the program at once from deep inside an event; Dispatch turns it into
// the platform's end.
struct ProgramEnd {
  int exitCode = 0;
};

struct App;

// Calls by which one subsystem makes something happen in another: the main window's
// composition installs them, so no subsystem includes another's handlers for that.
struct AppHooks {
  // Runs a dialog's opening logic (the dialog routing).
  void (*openDialog)(App& app, DialogId dialog) = nullptr;
  // Redraws the graph of the record on screen after its values or scales changed.
  void (*redrawGraph)(App& app) = nullptr;
};

// Posts work as an event of its own, entering through Dispatch.
class DispatchingPoster : public EventPoster {
 public:
  explicit DispatchingPoster(App& app) : app_(app) {}
  void Post(std::function<void()> work) override;

 private:
  App& app_;
};

struct App {
  App(Platform& platform, const AppHooks& hooks);
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  Platform& p;
  AppHooks hooks;
  State s;
  Views v;
  DispatchingPoster poster;
  CommPort port;
  int dispatchDepth = 0;
  // Told after each live reading has been shown (the command-line tool prints it).
  std::function<void()> onLiveReadingShown;
  // Told of each complete header reply before it is decoded, of the acknowledge of a
  // block, and of each record whose block has been unfolded (the command-line tool keeps
  // the raw bytes, times the block and writes files).
  std::function<void(const std::string& reply)> onHeaderReply;
  std::function<void()> onBlockStarted;
  std::function<void()> onRecordComplete;
  bool ended = false;
  int exitCode = 0;
};

// Runs one event: a fault nobody handled ends the present action; a fatal fault shows
// the platform's run-time error report and ends the program. Views are mirrored after.
void Dispatch(App& app, const std::function<void()>& action);

// Ends the program at once from anywhere inside an event (nothing is saved).
[[noreturn]] void EndProgramAtOnce(int exitCode);

// The present date-time of the platform.
DateTime Now(const App& app);

// Language string n of the selected language (fault 9 outside the table).
const std::string& LanguageText(const App& app, int n);

// Shows a message box; the answer comes back.
MsgAnswer MessageBox(App& app, const std::string& text, const std::string& title, MsgButtons buttons,
                     MsgIcon icon, int defaultButton = 1);

// Redraws the graph of the record on screen, where there is one.
void RedrawRecordGraph(App& app);

// Runs a dialog's opening logic and shows it modally until its logic hides it.
void ShowModal(App& app, DialogId dialog);

}  // namespace quillet
