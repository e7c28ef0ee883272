#include "cli/headless_ui.h"

#include <cstdio>
#include <cstdlib>

#include "cli/cli_texts.h"
#include "hub/app.h"
#include "log1/language.h"
#include "graph/annotation.h"
#include "link/link_supervision.h"
#include "link/timeset.h"
#include "measure/probe_table.h"
#include "storage/text_export.h"

namespace quillet {

MsgAnswer HeadlessUi::Message(const MessageRequest& r) {
  lastMessage = r.text;
  ++messageCount;
  std::string text = r.text;
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  // A message with no words (a language table not chosen yet) has nothing to tell.
  if (printMessages && !text.empty()) {
    std::fprintf(stderr, "quillet-cli: %s%s%s\n", r.title.c_str(), r.title.empty() ? "" : ": ", text.c_str());
  }
  return r.buttons == MsgButtons::YesNo || r.buttons == MsgButtons::YesNoCancel ? yesNoAnswer : MsgAnswer::Ok;
}

void HeadlessUi::ShowModal(DialogId dialog) {
  if (!app) return;
  switch (dialog) {
    case DialogId::langfrm:
      LangfrmChoose(*app, 1);
      LangfrmOk(*app);
      break;
    case DialogId::frmTimeset:
      // OK on the present time: the logger's clock is taken as the computer's.
      SetClock(*app);
      app->s.clock.ClockOffset = 0;
      break;
    case DialogId::frmPort: FrmPortCancel(*app); break;
    case DialogId::about2: About2Close(*app); break;
    case DialogId::Func1: ProbeDialogCancel(*app, 1); break;
    case DialogId::FUNC2: ProbeDialogCancel(*app, 2); break;
    case DialogId::FUNC3: ProbeDialogCancel(*app, 3); break;
    case DialogId::Describe: DescribeCancel(*app); break;
    case DialogId::SaveOpt: SaveOptCancel(*app); break;
    default: break;
  }
}

void HeadlessUi::PutGraphOnClipboard() { std::fprintf(stderr, "quillet-cli: %s\n", Say(CliText::NoClipboard).c_str()); }

void HeadlessUi::FatalErrorReport(int, const std::string& text) {
  std::string t = text;
  for (char& c : t) {
    if (c == '\n') c = ' ';
  }
  std::fprintf(stderr, "quillet-cli: %s\n", t.c_str());
}

void HeadlessUi::FatalFault(const Fault& fault, const std::string&) {
  std::string why = FaultWords(fault.number());
  if (!fault.detail().empty()) why += " (" + fault.detail() + ")";
  if (!where.empty()) why = Say(CliText::FaultOn, {why, where});
  const std::string line = fault.doing().empty() ? Say(CliText::FaultUnhandled, {why})
                                                 : Say(CliText::Explained, {DoingWords(fault.doing()), why});
  std::fprintf(stderr, "quillet-cli: %s\n", line.c_str());
}

void HeadlessUi::EndProgramNow(int exitCode) {
  std::fflush(stdout);
  std::fflush(stderr);
  std::_Exit(exitCode == 0 ? 1 : exitCode);
}

}  // namespace quillet
