#include "log1/scale_menu.h"

#include "hub/app.h"
#include "measure/record_decoding.h"
#include "profiles/profile_dialog.h"
#include "profiles/profile_family.h"

namespace quillet {

namespace {

constexpr int kRowNotSaved = 67;

// Which dialog rescales a model's record, and whether the run is guarded: a guarded run
// pauses the live poll while the dialog is up and does not rescale after an invalid table.
struct ScaleRun {
  int model;
  ProfileFamily family;
  bool guarded;
};
constexpr ScaleRun kScaleRuns[] = {
    {20, ProfileFamily::Mv100, false}, {21, ProfileFamily::Ma420, true}, {22, ProfileFamily::V10, true},
    {23, ProfileFamily::Ma420, true},  {29, ProfileFamily::Ma420, true}, {32, ProfileFamily::Custom, false},
};

}  // namespace

void MnuScale(App& app) {
  State& s = app.s;
  const ScaleRun* run = nullptr;
  for (const ScaleRun& r : kScaleRuns) {
    if (s.logger.ModelCode == r.model) run = &r;
  }
  if (!run || s.link.LinkMode == kModeBlock) return;
  const DialogId dialog = FamilySpec(run->family).dialog;
  if (run->guarded) {
    s.profiles.ScaleTableInvalid = 0;
    s.link.PollPaused = 1;
    struct Resume {
      LinkState& link;
      ~Resume() { link.PollPaused = 0; }
    } resume{s.link};
    ShowModal(app, dialog);
  } else {
    ShowModal(app, dialog);
  }
  if (run->guarded && s.profiles.ScaleTableInvalid == 1) return;
  if (s.record.RecordFromFile == 1 || s.link.DownloadPercent < 100) return;
  if (s.profiles.ScaleChanged != 0) {
    Log1View& w = app.v.log1;
    s.record.RecordSaved = 0;
    w.Label16.caption = LanguageText(app, kRowNotSaved);
    w.Label16.foreColor = kYellow;
    w.mnuSaveTXT.enabled = true;
  }
  s.record.RecordUnitText = s.logger.LiveUnitText;
  DecodeRecord(app);
  RedrawRecordGraph(app);
}

void Mnu420sca(App& app) { OpenProfileEntry(app, ProfileFamily::Ma420); }
void Mnu100sca(App& app) { OpenProfileEntry(app, ProfileFamily::Mv100); }
void Mnu10sca(App& app) { OpenProfileEntry(app, ProfileFamily::V10); }

}  // namespace quillet
