#pragma once
// The user of the command-line tool: messages go to standard error, questions get the
// answer that lets the work go on, dialogs are answered as a script needs them.
#include <string>

#include "core/fault.h"
#include "core/platform.h"

namespace quillet {
struct App;

class HeadlessUi : public UserInterface {
 public:
  MsgAnswer Message(const MessageRequest& request) override;
  void ShowModal(DialogId dialog) override;
  void Refresh() override {}
  void Beep() override {}
  void ShowHelp(const std::string&, HelpCommand) override {}
  void FatalErrorReport(int faultNumber, const std::string& text) override;
  // One line in words: what was being done, the fault, and the device or file.
  void FatalFault(const Fault& fault, const std::string& report) override;
  void EndProgramNow(int exitCode) override;
  // Nothing to choose from without a window: the command names its files itself.
  std::string OpenFileDialog(const std::string&) override { throw Fault(kFaultCancel); }
  std::string SaveFileDialog(const std::string&) override { throw Fault(kFaultCancel); }
  // There is no clipboard without a window; the user is told so.
  void PutGraphOnClipboard() override;

  App* app = nullptr;
  // The device or file the command works on, named in a fatal fault's line.
  std::string where;
  std::string lastMessage;
  int messageCount = 0;
  // Off: messages are only kept, for a command that reports in its own words.
  bool printMessages = true;
  // The answer to a Yes/No question; Yes lets the work go on.
  MsgAnswer yesNoAnswer = MsgAnswer::Yes;
};

}  // namespace quillet
