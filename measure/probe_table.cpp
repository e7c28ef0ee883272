#include "measure/probe_table.h"

#include "hub/app.h"
#include "core/fault.h"
#include "core/text_file.h"
#include "measure/record_decoding.h"

namespace quillet {

namespace {

// A group, section or row of this title is not in use: its menu entry, caption or
// choice stays hidden.
constexpr const char* kUnused = "Future";

constexpr int kGroups = 3;
constexpr int kSections = 3;
constexpr int kRowsPerSection = 10;
constexpr int kRows = kSections * kRowsPerSection;

// ProbeMemory: entries 1..10 are the remembered loggers, oldest first; 11 the last choice.
constexpr int kRemembered = 10;
constexpr int kLastChoice = 11;

Control& GroupMenu(Log1View& w, int group) {
  Control* menus[] = {&w.func01, &w.func02, &w.func03};
  if (group < 1 || group > kGroups) throw Fault(kFaultSubscript);
  return *menus[group - 1];
}

// One group as the file holds it: title, then per section its title and ten rows of
// label, unit and factor. A factor that is not a number is a type mismatch.
void ReadGroup(TextReader& in, ProbeGroup& g) {
  g.title = in.ReadText();
  for (int section = 1; section <= kSections; ++section) {
    g.sectionTitles[section] = in.ReadText();
    for (int r = 1; r <= kRowsPerSection; ++r) {
      ProbeRow& row = g.rows[(section - 1) * kRowsPerSection + r];
      row.label = in.ReadText();
      row.unit = in.ReadText();
      row.factor = in.ReadNumber();
    }
  }
}

// A factor of 0 would divide every reading by nothing: it counts as 1.
Number UsableFactor(Number factor) { return factor == 0 ? Number(1) : factor; }

// Gives the present logger the probe of memory entry i.
void TakeRemembered(App& app, int i) {
  State& s = app.s;
  Log1View& w = app.v.log1;
  s.logger.RangeFactor = s.probes.ProbeFactor[i];
  s.logger.LiveUnitText = s.probes.ProbeUnit[i];
  w.Label34.caption = s.probes.ProbeLabel[i];
  w.Label34.visible = true;
  app.p.ui.Refresh();
  s.measure.ProbeUnset = s.logger.LiveUnitText.empty() ? 1 : 0;
  s.logger.RangeFactor = UsableFactor(s.logger.RangeFactor);
}

void ShiftMemoryDown(ProbeMemoryTables& m) {
  for (int i = 1; i <= kRemembered; ++i) {
    m.ProbeSerial[i] = m.ProbeSerial[i + 1];
    m.ProbeFactor[i] = m.ProbeFactor[i + 1];
    m.ProbeUnit[i] = m.ProbeUnit[i + 1];
    m.ProbeLabel[i] = m.ProbeLabel[i + 1];
  }
}

// The present logger and its probe into its memory entry (ProbeSlot) and the last choice.
void RememberPresentProbe(App& app) {
  State& s = app.s;
  ProbeMemoryTables& m = s.probes;
  for (double i : {s.measure.ProbeSlot.Value(), static_cast<double>(kLastChoice)}) {
    m.ProbeSerial.at(i) = s.logger.LoggerSerial;
    m.ProbeFactor.at(i) = s.logger.RangeFactor;
    m.ProbeUnit.at(i) = s.logger.LiveUnitText;
    m.ProbeLabel.at(i) = app.v.log1.Label34.caption;
  }
}

void IdentifyLogger(App& app) {
  State& s = app.s;
  for (int i = 1; i <= kRemembered; ++i) {
    // Compared as numbers: an empty entry counts as serial 0.
    if (s.probes.ProbeSerial[i].Value() == s.logger.LoggerSerial.Value()) {
      TakeRemembered(app, i);
      s.measure.ProbeSlot = i;
      RememberPresentProbe(app);
      return;
    }
  }
  // A new logger starts with the probe chosen last, in the newest entry; the oldest
  // logger is forgotten.
  TakeRemembered(app, kLastChoice);
  ShiftMemoryDown(s.probes);
  s.measure.ProbeSlot = kRemembered;
  RememberPresentProbe(app);
}

}  // namespace

void LoadProbeTable(App& app) {
  State& s = app.s;
  Log1View& w = app.v.log1;
  try {
    s.measure.ProbeUnset = 0;
    s.measure.ProbeFactorNotNumber = 0;
    w.func02.visible = w.func03.visible = false;
    TextReader in = TextReader::Open(app.p.places.probesFile.empty() ? app.p.places.programDir + "/probes.dat"
                                                                      : app.p.places.probesFile);
    for (int g = 1; g <= kGroups; ++g) {
      ProbeGroup& group = s.probeTable.groups[g];
      ReadGroup(in, group);
      Control& menu = GroupMenu(w, g);
      menu.caption = group.title;
      // func01 is never hidden from here: an unused first group leaves it as it was.
      if (group.title != kUnused) menu.visible = true;
    }
    IdentifyLogger(app);
  } catch (const Fault& f) {
    if (f.number() == kFaultTypeMismatch) {
      // A factor that is no number: the logger goes without a probe until one is chosen.
      s.logger.RangeFactor = 1;
      s.measure.ProbeUnset = 1;
      s.measure.ProbeFactorNotNumber = 1;
      s.logger.LiveUnitText.clear();
      return;
    }
    MessageBox(app, "Probes.dat is missing.", "Cannot run program", MsgButtons::Ok, MsgIcon::Information);
    EndProgramAtOnce(1);
  }
}

ProbeDialogView& ProbeDialog(App& app, int group) {
  switch (group) {
    case 1: return app.v.Func1;
    case 2: return app.v.FUNC2;
    case 3: return app.v.FUNC3;
    default: throw Fault(kFaultSubscript);
  }
}

DialogId ProbeDialogId(int group) {
  switch (group) {
    case 1: return DialogId::Func1;
    case 2: return DialogId::FUNC2;
    case 3: return DialogId::FUNC3;
    default: throw Fault(kFaultSubscript);
  }
}

void OpenProbeDialog(App& app, int group) {
  ProbeDialogView& d = ProbeDialog(app, group);
  const ProbeGroup& g = app.s.probeTable.groups[group];
  d.caption = g.title;
  for (int section = 1; section <= kSections; ++section) {
    Control& label = d.Label(section);
    label.caption = g.sectionTitles[section];
    label.visible = label.caption != kUnused;
  }
  for (int n = 1; n <= kRows; ++n) {
    d.Option[n].caption = g.rows[n].label;
    d.Option[n].visible = d.Option[n].caption != kUnused;
  }
  d.visible = true;
}

void ProbeDialogChoose(App& app, int group, int option) {
  ProbeDialogView& d = ProbeDialog(app, group);
  if (option < 1 || option > kRows) throw Fault(kFaultSubscript);
  for (int n = 1; n <= kRows; ++n) d.Option[n].checked = n == option;
}

void ProbeDialogOk(App& app, int group) {
  State& s = app.s;
  ProbeDialogView& d = ProbeDialog(app, group);
  int chosen = 0;
  for (int n = 1; n <= kRows; ++n) {
    if (d.Option[n].checked) chosen = n;
  }
  if (chosen == 0) return;
  const ProbeRow& row = s.probeTable.groups[group].rows[chosen];
  s.logger.LiveUnitText = row.unit;
  s.logger.RangeFactor = UsableFactor(row.factor);
  if (group != 3) {
    const bool fromFile = s.record.RecordFromFile == 1;
    s.measure.ProbeUnset = 0;
    if (!fromFile && s.link.DownloadPercent >= 100) {
      if (s.panel.OtherLoggerNotice == 1) {
        // The graph on screen belongs to another logger: this probe is not its probe.
        s.measure.RescaleApproved = 0;
      } else {
        const MsgAnswer a = MessageBox(app, "Do you want to rescale the displayed graph?", "Graph Rescaling",
                                       MsgButtons::YesNo, MsgIcon::Question);
        s.measure.RescaleApproved = a == MsgAnswer::Yes ? 1 : 0;
      }
    }
  }
  app.v.log1.Label34.caption = row.label;
  app.v.log1.Label34.visible = true;
  d.visible = false;
}

void ProbeDialogCancel(App& app, int group) { ProbeDialog(app, group).visible = false; }

void StoreProbeChoice(App& app, int group) {
  State& s = app.s;
  Log1View& w = app.v.log1;
  RememberPresentProbe(app);
  // FUNC3 never asks, so it acts on whatever approval stands from before.
  if (s.measure.RescaleApproved != 0 && s.record.RecordFromFile != 1) {
    s.record.RecordUnitText = s.logger.LiveUnitText;
    s.record.RecordRangeFactor = s.logger.RangeFactor;
    DecodeRecord(app);
    RedrawRecordGraph(app);
  }
  if (group != 1) return;
  w.Label21.caption = s.logger.LiveUnitText;
  app.p.ui.Refresh();
  w.Label34.visible = true;
  // A fresh header brings the logger's panel in line with the new probe.
  if (s.link.LoggerSeen == 1 && s.link.LinkMode != kModeBlock) s.link.LinkMode = kModeHeader;
}

namespace {
void RunProbeMenu(App& app, int group) {
  ShowModal(app, ProbeDialogId(group));
  StoreProbeChoice(app, group);
}
}  // namespace

void Func01(App& app) { RunProbeMenu(app, 1); }
void Func02(App& app) { RunProbeMenu(app, 2); }
void Func03(App& app) { RunProbeMenu(app, 3); }

}  // namespace quillet
