#include "profiles/profile_dialog.h"

#include <cmath>

#include "core/fault.h"
#include "core/formatting.h"
#include "core/text_file.h"
#include "hub/app.h"
#include "profiles/profile_family.h"
#include "profiles/profile_file.h"

namespace quillet {

namespace {

// The preview box, in twips: corners (4000, 1000) and (5920, 3000).
constexpr double kBoxLeft = 4000, kBoxTop = 1000, kBoxRight = 5920, kBoxBottom = 3000;
constexpr double kBoxHeight = kBoxBottom - kBoxTop;

constexpr const char* kSaveQuestion = "Would you like to save this profile?";
constexpr const char* kSaveQuestionTitle = "Save for future use";
constexpr int kRowSaveQuestion = 126, kRowSaveQuestionTitle = 127;

// The model code a bipolar dialog leaves behind when OK or Cancel finds no table.
constexpr int kNoModel = 1;

struct Dialog {
  const ProfileFamilySpec& spec;
  ProfileDialogView& v;
  ProfileDialogState& d;
  ScaleEntryColumn& E;
  ScaleColumn& T;
  ScaleColumn& S;
  int CellOf(int field) const { return spec.F + field - 1; }
};

Dialog Open(App& app, ProfileFamily family) {
  const ProfileFamilySpec& spec = FamilySpec(family);
  return Dialog{spec, ProfileView(app, family), ProfileDialogOf(app, family), Entries(app.s.scales, spec),
                TableCells(app.s.scales, spec), SlopeCells(app.s.scales, spec)};
}

double KnotX(const Dialog& g, int k) { return kBoxLeft + g.spec.segmentWidth * k; }

// All segments on the bottom edge, the value labels hidden.
void EmptyPreview(Dialog& g) {
  for (int k = 0; k < g.v.segmentCount; ++k) g.v.Line[k + 1] = {KnotX(g, k), kBoxBottom, KnotX(g, k + 1), kBoxBottom};
  g.v.Label23.visible = g.v.Label24.visible = g.v.Label25.visible = false;
}

// Cells differ as the platform's values do: the empty text and nothing are alike, and a
// typed text equals the number it reads as.
bool CellsDiffer(const Cell& a, const Cell& b) {
  if (a.EqualsEmptyText() || b.EqualsEmptyText()) return a.EqualsEmptyText() != b.EqualsEmptyText();
  if (a.IsNumber() || b.IsNumber()) {
    double x = 0, y = 0;
    if (!EntryValue(a, x) || !EntryValue(b, y)) return true;
    return x != y;
  }
  return a.Text() != b.Text();
}

void ShowFields(Dialog& g) {
  for (int field = 1; field <= g.spec.fields; ++field) g.v.Text[field].caption = CellText(g.E[g.CellOf(field)]);
}

void Hide(Dialog& g) { g.v.visible = false; }

// Accepts or rejects the text of a field. Returns false when it was rejected.
bool CommitField(App& app, ProfileFamily family, int field) {
  Dialog g = Open(app, family);
  if (field < 1 || field > g.spec.fields) throw Fault(kFaultSubscript);
  const std::string text = g.v.Text[field].caption;
  const int cell = g.CellOf(field);
  if (text.empty()) {
    g.E[cell] = Cell::OfEmptyText();
  } else {
    // A text that passes the character filter but is no number ("-", ".", "1/2", "--3")
    // is rejected like a text with a wrong character: the table is never built from it.
    double value = 0;
    if (!EntryPassesFilter(text) || !ParseWholeNumber(text, value)) {
      g.v.Text[field].caption = CellText(g.E[cell]);
      return false;
    }
    g.E[cell] = Cell::OfText(text);
  }
  BuildScaleTable(app, family);
  return true;
}

}  // namespace

ProfileDialogView& ProfileView(App& app, ProfileFamily family) {
  Views& v = app.v;
  ProfileDialogView* views[] = {&v.custom, &v.input100mv, &v.input10v, &v.input420, &v.inputbipo100mv,
                                &v.inputbipo10mv};
  const int i = static_cast<int>(family);
  if (i < 0 || i >= kProfileFamilies) throw Fault(kFaultSubscript);
  return *views[i];
}

ProfileDialogState& ProfileDialogOf(App& app, ProfileFamily family) {
  return app.s.profiles.dialogs[static_cast<int>(family)];
}

bool EntryPassesFilter(const std::string& text) {
  for (unsigned char c : text) {
    if (!((c > 45 && c < 58) || c == 45 || c == 46)) return false;
  }
  return true;
}

bool EntryValue(const Cell& cell, double& value) {
  if (cell.IsNumber()) {
    value = cell.Number();
    return true;
  }
  if (cell.EqualsEmptyText()) return false;
  return ParseWholeNumber(cell.Text(), value);
}

std::string CellText(const Cell& cell) {
  if (cell.IsNumber()) return GeneralNumber(cell.Number());
  return cell.Text();
}

void CreateProfileDialog(App& app, ProfileFamily family) {
  Dialog g = Open(app, family);
  ProfileDialogView& v = g.v;
  if (v.created) return;
  v.created = true;
  v.caption = g.spec.caption;
  v.fieldCount = g.spec.fields;
  v.segmentCount = g.spec.L - g.spec.F;
  for (int field = 1; field <= 17; ++field) {
    const bool used = field <= g.spec.fields;
    v.Label[field].caption = used ? GeneralNumber(g.spec.rowFirst + g.spec.rowStep * (field - 1)) : "";
    v.Label[field].visible = v.Text[field].visible = used;
  }
  v.Label18.caption = "UNITS";
  v.Label19.caption = g.spec.axis[0];
  v.Label21.caption = g.spec.axis[1];
  v.Label20.caption = g.spec.axis[2];
  v.Label22.caption = g.spec.axis[3];
  v.Label26.caption = "PROFILE ENTRY";
  v.Label27.caption = "Will not affect existing data";
  v.Command1.caption = "OK";
  v.Command2.caption = "Cancel";
  v.Command3.caption = "Close";
  v.Command4.caption = "Clear All";
  v.mnuFile420.caption = "&File";
  v.mnuOpen1.caption = "Open";
  v.mnuSave1.caption = "Save";
  v.mnuPrint.caption = "Print";
  v.mnuSave1.visible = g.spec.hasSave;
  v.Command3.visible = v.Label26.visible = v.Label27.visible = false;
  // The box, and where the preview's labels stand: values to the left of the box at its
  // top, bottom and half way; axis captions under its left end, middle and right end.
  v.Line[17] = {kBoxLeft, kBoxBottom, kBoxRight, kBoxBottom};
  v.Line[18] = {kBoxLeft, kBoxTop, kBoxLeft, kBoxBottom};
  v.Line[19] = {kBoxRight, kBoxTop, kBoxRight, kBoxBottom};
  v.Line[20] = {kBoxLeft, kBoxTop, kBoxRight, kBoxTop};
  v.Place[24] = {2900, kBoxTop - 120, 1000, 240};
  v.Place[25] = {2900, (kBoxTop + kBoxBottom) / 2 - 120, 1000, 240};
  v.Place[23] = {2900, kBoxBottom - 120, 1000, 240};
  v.Place[19] = {kBoxLeft - 400, kBoxBottom + 60, 800, 240};
  v.Place[21] = {(kBoxLeft + kBoxRight) / 2 - 400, kBoxBottom + 60, 800, 240};
  v.Place[20] = {kBoxRight - 400, kBoxBottom + 60, 800, 240};
  v.Place[22] = {(kBoxLeft + kBoxRight) / 2 - 600, kBoxBottom + 300, 1200, 240};
  EmptyPreview(g);
}

void BuildScaleTable(App& app, ProfileFamily family) {
  CreateProfileDialog(app, family);
  Dialog g = Open(app, family);
  const int F = g.spec.F, L = g.spec.L;
  app.s.profiles.ScaleTableInvalid = 1;
  for (int i = F; i <= L; ++i) g.T[i] = Cell::OfEmptyText();

  // The typed points. A cell that reads as no number (one that came from a file) is left
  // out, as the entry rule keeps such texts out of the fields.
  Table<double, 0, 20> e;
  int n = 0;
  for (int i = F; i <= L; ++i) {
    double value = 0;
    if (EntryValue(g.E[i], value)) {
      ++n;
      g.d.PointIndex[n] = i;
      e[i] = value;
    }
  }
  g.d.PointCount = n;
  if (n < 2) {
    EmptyPreview(g);
    return;
  }
  Table<double, 0, 20> t;
  // Between the typed points: straight lines through them.
  for (int j = 1; j <= n - 1; ++j) {
    const int a = g.d.PointIndex[j], b = g.d.PointIndex[j + 1];
    for (int i = a; i <= b; ++i) t[i] = Checked(e[a] + (e[b] - e[a]) * (i - a) / (b - a));
  }
  // Beyond them: the line of the first two and of the last two points carries on.
  {
    const int p = g.d.PointIndex[1], q = g.d.PointIndex[2];
    for (int i = F; i < p; ++i) t[i] = Checked(e[p] - (p - i) * (e[q] - e[p]) / (q - p));
  }
  {
    const int p = g.d.PointIndex[n], q = g.d.PointIndex[n - 1];
    for (int i = p + 1; i <= L; ++i) t[i] = Checked(e[p] + (i - p) * (e[p] - e[q]) / (p - q));
  }
  double lo = t[F], hi = t[F];
  for (int i = F; i <= L; ++i) {
    g.T[i] = Cell::OfNumber(t[i]);
    lo = std::min(lo, t[i]);
    hi = std::max(hi, t[i]);
  }
  const double range = Checked(hi - lo);
  if (range == 0) {
    // A flat table counts as no table: it stays filled, the slopes keep their old cells.
    EmptyPreview(g);
    return;
  }
  for (int i = F; i < L; ++i) g.S[i] = Cell::OfNumber(t[i + 1] - t[i]);
  g.S[L] = g.S[L - 1];
  app.s.profiles.ScaleTableInvalid = 0;

  ProfileDialogView& v = g.v;
  v.Label23.caption = FormatNumber(lo, g.spec.valueFormat);
  v.Label24.caption = FormatNumber(hi, g.spec.valueFormat);
  v.Label25.caption = v.Text18.caption;
  v.Label23.visible = v.Label24.visible = v.Label25.visible = true;
  auto y = [&](int i) { return kBoxBottom - kBoxHeight * (t[i] - lo) / range; };
  for (int k = 0; k < v.segmentCount; ++k) v.Line[k + 1] = {KnotX(g, k), y(F + k), KnotX(g, k + 1), y(F + k + 1)};
}

void ProfileFieldEnter(App& app, ProfileFamily family, int field) { CommitField(app, family, field); }

void ProfileFieldLostFocus(App& app, ProfileFamily family, int field) {
  if (!CommitField(app, family, field)) ProfileView(app, family).focus = field;
}

void ProfileFieldUp(App& app, ProfileFamily family, int field) {
  if (field <= 1) return;
  ProfileView(app, family).focus = field - 1;
  ProfileFieldLostFocus(app, family, field);
}

void ProfileFieldDown(App& app, ProfileFamily family, int field) {
  if (field >= FamilySpec(family).fields) return;
  ProfileView(app, family).focus = field + 1;
  ProfileFieldLostFocus(app, family, field);
}

void ProfileUnitChanged(App& app, ProfileFamily family, const std::string& text) {
  ProfileDialogView& v = ProfileView(app, family);
  v.Text18.caption = text;
  v.Label25.caption = text;
  app.s.logger.LiveUnitText = text;
}

void ProfileUnitLostFocus(App& app, ProfileFamily family) {
  app.s.logger.LiveUnitText = ProfileView(app, family).Text18.caption;
}

void OpenProfileDialog(App& app, ProfileFamily family) {
  CreateProfileDialog(app, family);
  Dialog g = Open(app, family);
  ProfileDialogView& v = g.v;
  const bool entryOnly = g.spec.entryOnlyMode && app.s.profiles.ProfileEntryOnly == 1;
  v.Command3.visible = v.Label26.visible = v.Label27.visible = entryOnly;
  v.Command1.visible = v.Command2.visible = !entryOnly;
  if (g.spec.compareEntries) {
    for (int i = g.spec.F; i <= g.spec.L; ++i) g.T[i] = g.E[i];
  }
  for (int i = g.spec.snapshotFirst; i <= g.spec.snapshotLast; ++i) {
    g.d.SnapshotTable[i] = g.T[i];
    g.d.SnapshotEntry[i] = g.E[i];
    g.d.SnapshotSlope[i] = g.S[i];
  }
  g.d.SnapshotUnits = app.s.logger.LiveUnitText;
  EmptyPreview(g);
  ShowFields(g);
  v.Text18.caption = app.s.logger.LiveUnitText;
  v.Frame1.caption = app.s.profiles.ProfileFileName;
  v.focus = 1;
  BuildScaleTable(app, family);
  v.visible = true;
}

void ProfileOk(App& app, ProfileFamily family) {
  ProfileState& P = app.s.profiles;
  BuildScaleTable(app, family);
  Dialog g = Open(app, family);
  if (g.d.PointCount >= 2) {
    P.ScaleChanged = 0;
    for (int i = g.spec.compareFirst; i <= g.spec.compareLast; ++i) {
      const bool differs = g.spec.compareEntries ? CellsDiffer(g.E[i], g.d.SnapshotEntry[i])
                                                 : CellsDiffer(g.T[i], g.d.SnapshotTable[i]);
      if (differs) P.ScaleChanged = 1;
    }
    std::string& unit = app.s.logger.LiveUnitText;
    unit = g.v.Text18.caption;
    if (g.spec.unitCell != 0) app.s.UnitByModel[g.spec.unitCell] = unit;
    if (unit != g.d.SnapshotUnits) P.ScaleChanged = 1;
    if (unit.empty()) unit = "  ";
    if (P.ScaleChanged == 1) {
      const bool words = g.spec.languageSaveTexts;
      const MsgAnswer answer =
          MessageBox(app, words ? LanguageText(app, kRowSaveQuestion) : kSaveQuestion,
                     words ? LanguageText(app, kRowSaveQuestionTitle) : kSaveQuestionTitle, MsgButtons::YesNo,
                     MsgIcon::Question);
      if (answer != MsgAnswer::No) {
        SaveProfile(app, family);
        if (g.d.SaveCancelled == 1) return;
      }
    }
  }
  if (g.d.ProfileLoaded == 1) P.ScaleChanged = 1;
  g.d.ProfileLoaded = 0;
  if (g.d.PointCount < 2) {
    P.ScaleTableInvalid = 1;
    if (g.spec.compareEntries) app.s.logger.ModelCode = kNoModel;
  }
  if (g.spec.unitCell != 0) app.s.UnitByModel[g.spec.unitCell] = app.s.logger.LiveUnitText;
  Hide(g);
}

void ProfileCancel(App& app, ProfileFamily family) {
  Dialog g = Open(app, family);
  for (int i = g.spec.compareFirst; i <= g.spec.compareLast; ++i) {
    g.E[i] = g.d.SnapshotEntry[i];
    g.T[i] = g.d.SnapshotTable[i];
    g.S[i] = g.d.SnapshotSlope[i];
  }
  app.s.logger.LiveUnitText = g.d.SnapshotUnits;
  BuildScaleTable(app, family);
  // A cancelled dialog never leads to a rescale, whatever the build found.
  app.s.profiles.ScaleTableInvalid = 1;
  if (g.spec.compareEntries && g.d.PointCount < 2) app.s.logger.ModelCode = kNoModel;
  if (g.spec.unitCell != 0) app.s.UnitByModel[g.spec.unitCell] = app.s.logger.LiveUnitText;
  Hide(g);
}

void ProfileClose(App& app, ProfileFamily family) {
  Dialog g = Open(app, family);
  if (!g.spec.entryOnlyMode) return;
  // From cell 1, not 0: what was typed in the first row of a 0..10 family survives Close.
  for (int i = 1; i <= 20; ++i) {
    g.T[i] = g.d.SnapshotTable[i];
    g.E[i] = g.d.SnapshotEntry[i];
    g.S[i] = g.d.SnapshotSlope[i];
  }
  app.s.logger.LiveUnitText = g.d.SnapshotUnits;
  app.s.profiles.ProfileEntryOnly = 0;
  Hide(g);
}

void ProfileClearAll(App& app, ProfileFamily family) {
  Dialog g = Open(app, family);
  for (int field = 1; field <= g.spec.fields; ++field) g.v.Text[field].caption.clear();
  ProfileUnitChanged(app, family, "");
  g.v.Frame1.caption.clear();
  for (int i = g.spec.F; i <= g.spec.L; ++i) g.E[i] = Cell::OfEmptyText();
  BuildScaleTable(app, family);
}

void ProfileCloseBox(App& app, ProfileFamily family) {
  if (ProfileView(app, family).Command3.visible) {
    ProfileClose(app, family);
  } else {
    ProfileCancel(app, family);
  }
}

void ProfilePrint(App& app, ProfileFamily family) { app.p.ui.PrintDialogImage(FamilySpec(family).dialog); }

void OpenProfileEntry(App& app, ProfileFamily family) {
  app.s.profiles.ProfileEntryOnly = 1;
  OpenProfileDialog(app, family);
  app.p.ui.ShowModeless(FamilySpec(family).dialog);
}

void OpenCustomProfileEntry(App& app) { OpenProfileEntry(app, ProfileFamily::Custom); }

void ApplyProfileLanguage(App& app) {
  for (int f = 0; f < kProfileFamilies; ++f) {
    const ProfileFamily family = static_cast<ProfileFamily>(f);
    CreateProfileDialog(app, family);
    if (!FamilySpec(family).followsLanguage) continue;
    auto t = [&app](int n) { return LanguageText(app, n); };
    ProfileDialogView& v = ProfileView(app, family);
    v.mnuFile420.caption = t(20);
    v.mnuOpen1.caption = t(22);
    v.Command2.caption = t(119);
    v.Command1.caption = t(120);
    v.Label26.caption = t(122);
    v.Label27.caption = t(123);
    v.Label18.caption = t(153);
    v.Command4.caption = t(154);
    v.Command3.caption = t(155);
    v.mnuSave1.caption = t(156);
    v.mnuPrint.caption = t(157);
  }
}

}  // namespace quillet
