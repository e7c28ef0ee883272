#include "storage/text_export.h"

#include <cerrno>
#include <cstdio>

#include "hub/app.h"
#include "core/fault.h"
#include "storage/record_file.h"

namespace quillet {

namespace {

constexpr const char* kRecordFilter = "txt files (*.txt)|*.txt";
constexpr const char* kNoDataToSave = "No Data to Save.  Download First.";
constexpr int kRowSorry = 54;
constexpr int kRowWarning = 74;
constexpr int kRowReplaceFile = 144;

// Opened for reading and closed at once. Only a file that is plainly not there counts as
// missing; any other failure (no permission, a folder of that name) is treated as an
// existing file, so the user is asked before anything is written.
bool FileMayExist(const std::string& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (f) {
    std::fclose(f);
    return true;
  }
  return errno != ENOENT;
}

// Asks which samples to save when both choices can mean something; false when the user
// cancelled.
bool ChooseWhatToSave(App& app) {
  State& s = app.s;
  const int zoomed = s.graph.GraphZoomed;
  const double saved = s.record.RecordSaved.Value();
  if (zoomed == 1 && saved == 1) {
    s.files.SaveDisplayedOnly = 1;  // only the zoomed part is new
    return true;
  }
  // Unzoomed and unsaved: no question, and a displayed-only choice of an earlier save stands.
  if (zoomed == 0 && saved == 0) return true;
  ShowModal(app, DialogId::SaveOpt);
  return s.files.SaveCancelled.Value() != 1;
}

}  // namespace

std::string SaveNameFor(const std::string& chosen) {
  if (chosen.size() >= 4 && chosen[chosen.size() - 4] == '.') return chosen;
  return chosen + ".txt";
}

void MnuSaveTXT(App& app) {
  State& s = app.s;
  s.files.SaveCancelled = 0;
  if (!ChooseWhatToSave(app)) return;
  for (;;) {
    if (s.link.DownloadPercent.Value() != 100) {
      MessageBox(app, kNoDataToSave, LanguageText(app, kRowSorry), MsgButtons::Ok, MsgIcon::Information);
      return;
    }
    std::string chosen;
    try {
      chosen = app.p.ui.SaveFileDialog(kRecordFilter);
    } catch (const Fault& f) {
      if (f.number() == kFaultCancel) return;
      throw;
    }
    s.files.SaveFileName = SaveNameFor(chosen);
    if (!FileMayExist(s.files.SaveFileName)) break;
    const MsgAnswer answer = MessageBox(app, LanguageText(app, kRowReplaceFile), LanguageText(app, kRowWarning),
                                        MsgButtons::YesNoCancel, MsgIcon::Stop, 2);
    if (answer == MsgAnswer::Yes) break;
    if (answer != MsgAnswer::No) return;  // No: choose another name
  }
  try {
    WriteRecordFile(app, s.files.SaveFileName, s.files.SaveDisplayedOnly == 1);
  } catch (const Fault& f) {
    throw f.Fatal("the record could not be written to " + s.files.SaveFileName);  // nothing catches it
  }
}

void OpenSaveOpt(App& app) {
  SaveOptView& d = app.v.SaveOpt;
  d.Command1.enabled = app.s.record.RecordSaved.Value() == 0;
  d.Command2.enabled = app.s.files.DisplayedSaved == 0;
  d.visible = true;
}

void SaveOptEntireRecord(App& app) {
  app.s.files.SaveDisplayedOnly = 0;
  app.v.SaveOpt.visible = false;
}

void SaveOptDisplayedOnly(App& app) {
  app.s.files.SaveDisplayedOnly = 1;
  app.v.SaveOpt.visible = false;
}

void SaveOptCancel(App& app) {
  app.s.files.SaveCancelled = 1;
  app.v.SaveOpt.visible = false;
}

}  // namespace quillet
