#pragma once
// The platform for scenario tests: a virtual scheduler that fires timers and delivers
// serial bytes in time order, a scripted user, and a transport whose far end is a
// function (usually the emulator's firmware model).
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/platform.h"
#include "hub/app.h"

namespace quillet::testing {

class VirtualScheduler {
 public:
  double now_ms() const { return now_; }
  void At(double ms, std::function<void()> fn);
  void Every(double intervalMs, std::function<void()> fn);
  // Runs every event due up to now + ms, in time order; events may nest calls to this.
  void RunFor(double ms) { RunUntil(now_ + ms); }
  void RunUntil(double ms);
  void RunReady() { RunUntil(now_); }

 private:
  // By due time, then in the order set: equal times run first come, first served.
  using Key = std::pair<double, long>;
  double now_ = 0;
  long seq_ = 0;
  std::map<Key, std::function<void()>> events_;
};

struct FakeClock : Clock {
  FakeClock(const VirtualScheduler& s, DateTime start) : s_(s), start_(start) {}
  DateTime Now() const override { return start_ + s_.now_ms() / 86400000.0; }
  const VirtualScheduler& s_;
  DateTime start_;
};

struct FakeTimers : TimerService {
  explicit FakeTimers(VirtualScheduler& s) : s_(s) {}
  void StartTimer(const std::string& name, int intervalMs, std::function<void()> action) override {
    intervals[name] = intervalMs;
    s_.Every(intervalMs, std::move(action));
  }
  std::map<std::string, int> intervals;
  VirtualScheduler& s_;
};

struct FakePoster : EventPoster {
  explicit FakePoster(VirtualScheduler& s) : s_(s) {}
  void Post(std::function<void()> work) override { s_.At(s_.now_ms(), std::move(work)); }
  VirtualScheduler& s_;
};

struct TimedReply {
  double atSeconds;
  std::uint8_t byte;
};

struct WrittenBytes {
  double atMs;
  int baud, stopBits;
  std::string bytes;
};

class FakeTransport : public ByteTransport {
 public:
  explicit FakeTransport(VirtualScheduler& s) : s_(s) {}
  void Open(int portNumber) override;
  void Close() override;
  bool IsOpen() const override { return open_; }
  void SetLine(int baud, int dataBits, char parity, int stopBits) override;
  void Write(const std::vector<std::uint8_t>& bytes) override;
  void Settle(double seconds) override;
  std::string DeviceName(int portNumber) const override { return "/dev/fake" + std::to_string(portNumber); }

  // The far end: given what was written, when, and at what line speed, the bytes it
  // sends back with the times they have arrived (seconds on the scheduler's clock).
  std::function<std::vector<TimedReply>(const std::string& bytes, double nowSeconds, int baud, int stopBits)>
      peer;
  // Bytes that arrive unasked at a given time.
  void Inject(double atMs, const std::string& bytes);

  std::map<int, int> openFaults;  // port number -> fault raised by Open
  std::vector<WrittenBytes> written;
  std::vector<int> opened;
  int baud = 0, stopBits = 0;

 private:
  void Arrive(double atMs, std::uint8_t byte);
  void Deliver(std::uint64_t id);
  VirtualScheduler& s_;
  bool open_ = false;
  std::uint64_t nextId_ = 0;
  std::map<std::uint64_t, std::pair<double, std::uint8_t>> pending_;
};

class ScriptedUi : public UserInterface {
 public:
  MsgAnswer Message(const MessageRequest& request) override;
  void ShowModal(DialogId dialog) override;
  void Refresh() override { ++refreshes; }
  void Beep() override { ++beeps; }
  // Takes the next of fileAnswers; "" is Cancel, and so is running out (a test fault).
  std::string OpenFileDialog(const std::string& filter) override;
  // Takes the next of saveAnswers, the same way.
  std::string SaveFileDialog(const std::string& filter) override;
  void PutGraphOnClipboard() override { ++clipboardCopies; }
  void ShowHelp(const std::string& helpFile, HelpCommand command) override {
    help.push_back({helpFile, command});
  }
  void FatalErrorReport(int faultNumber, const std::string& text) override {
    fatal.push_back({faultNumber, text});
  }
  void EndProgramNow(int code) override {
    ended = true;
    exitCode = code;
  }

  std::vector<MessageRequest> messages;
  std::vector<std::string> MessageTexts() const;           // the text of each message, in order
  std::function<MsgAnswer(const MessageRequest&)> answer;  // default: the first button
  std::vector<DialogId> modals;
  // What the user does in a modal dialog; must hide it. Default: see ShowModal.
  std::function<void(DialogId)> onModal;
  std::vector<std::pair<std::string, HelpCommand>> help;
  std::vector<std::string> fileAnswers;  // paths the user picks, in order
  std::vector<std::string> fileFilters;  // the filter of each file dialog shown
  std::vector<std::string> saveAnswers;  // paths the user picks in the save dialog
  std::vector<std::string> saveFilters;  // the filter of each save dialog shown
  int clipboardCopies = 0;               // graph pictures put on the clipboard
  std::vector<std::pair<int, std::string>> fatal;
  int refreshes = 0, beeps = 0;
  bool ended = false;
  int exitCode = 0;
  App* app = nullptr;
};

// A whole application on the fake platform, with its files in a fresh folder.
struct TestApp {
  explicit TestApp(DateTime start = 46347.5);  // 2026-11-21 12:00:00
  ~TestApp();
  void WriteFile(const std::string& name, const std::string& content, bool programDir = false);
  std::string ReadFile(const std::string& name) const;
  bool FileExists(const std::string& name) const;
  void Start();  // StartProgram through the dispatcher
  void Run(double ms) { sched.RunFor(ms); }
  // Writes a language file of two languages whose strings read "en<n>" and "de<n>".
  void WriteTwoLanguageFile();
  // Writes logger1.ini with the given settings lines and everything else empty.
  void WriteSettings(int comPort, int language, int baud, int fahrenheit, int usDate);
  // "D" requests written at the given line speed, in order.
  std::vector<double> RequestTimes(char letter) const;
  std::size_t Count(char letter) const { return RequestTimes(letter).size(); }
  // One user action, as its own event.
  void Do(void (*action)(App&)) {
    Dispatch(*app, [this, action] { action(*app); });
  }
  void Do(const std::function<void()>& action) { Dispatch(*app, action); }
  State& s() { return app->s; }
  Log1View& w() { return app->v.log1; }
  std::string Path(const std::string& name) const { return dir + "/" + name; }

  std::string dir;
  VirtualScheduler sched;
  FakeClock clock;
  FakeTimers timers;
  FakePoster poster;
  FakeTransport transport;
  ScriptedUi ui;
  std::unique_ptr<Platform> platform;
  std::unique_ptr<App> app;
};

// A TestApp with the two-language file and a settings file, started.
struct StartedApp : TestApp {
  explicit StartedApp(int comPort = 1, int language = 1, int baud = 1200, int usDate = 0,
                      DateTime start = 46347.5)
      : TestApp(start) {
    WriteTwoLanguageFile();  // strings read "en<n>" and "de<n>"
    WriteSettings(comPort, language, baud, 0, usDate);
    Start();
  }
};

// The number of the fault the action raises, 0 when it raises none.
int FaultOf(const std::function<void()>& action);

}  // namespace quillet::testing
