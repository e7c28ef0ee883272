#pragma once
// The platform of a command that works from files alone: a clock that stands at a given
// moment, no serial port, and timers and posted events that never run. The command calls
// the handlers it needs itself, in the order a download would.
#include "core/platform.h"

namespace quillet {

// Nobody at the screen: messages are answered OK, dialogs and files are not shown.
class SilentUser : public UserInterface {
 public:
  MsgAnswer Message(const MessageRequest&) override { return MsgAnswer::Ok; }
  void ShowModal(DialogId) override {}
  void Refresh() override {}
  void Beep() override {}
  std::string OpenFileDialog(const std::string&) override { return {}; }
  std::string SaveFileDialog(const std::string&) override { return {}; }
  void PutGraphOnClipboard() override {}
  void ShowHelp(const std::string&, HelpCommand) override {}
  void FatalErrorReport(int, const std::string&) override {}
  void EndProgramNow(int) override {}
};

class FixedClock : public Clock {
 public:
  explicit FixedClock(DateTime at) : at_(at) {}
  DateTime Now() const override { return at_; }

 private:
  DateTime at_;
};

class IdleTimers : public TimerService {
 public:
  void StartTimer(const std::string&, int, std::function<void()>) override {}
};

class DroppingPoster : public EventPoster {
 public:
  void Post(std::function<void()>) override {}
};

// No device behind it: opening succeeds, what is written goes nowhere, and input comes
// only from Feed.
class OfflineTransport : public ByteTransport {
 public:
  void Open(int) override { open_ = true; }
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  void SetLine(int, int, char, int) override {}
  void Write(const std::vector<std::uint8_t>&) override {}
  void Settle(double) override {}
  std::string DeviceName(int) const override { return "(none)"; }
  void Feed(const std::string& bytes) {
    if (onBytes) onBytes(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }

 private:
  bool open_ = false;
};

}  // namespace quillet
