#include "profiles/profile_file.h"

#include <cerrno>
#include <cstdio>

#include "core/fault.h"
#include "core/text_file.h"
#include "hub/app.h"
#include "profiles/profile_dialog.h"
#include "profiles/profile_family.h"

namespace quillet {

namespace {

constexpr const char* kRevision = "rev01";
constexpr const char* kSorry = "Sorry";
constexpr const char* kNoFile = "File does not exist";
constexpr const char* kNoData = "No data to save.  Enter some values.";
constexpr const char* kReplace = "File exists.  Do you want to replace it?";
constexpr const char* kWarning = "Warning";
constexpr int kRowSorry = 54, kRowWarning = 74, kRowNoFile = 77, kRowReplace = 144;

std::string Words(App& app, bool fromLanguage, int row, const char* fixed) {
  return fromLanguage ? LanguageText(app, row) : std::string(fixed);
}

// Whether a file can be opened for reading: error 53 is the one answer that means "no".
bool Missing(const std::string& name) {
  std::FILE* f = std::fopen(name.c_str(), "rb");
  if (f) {
    std::fclose(f);
    return false;
  }
  return errno == ENOENT;
}

}  // namespace

void OpenProfile(App& app, ProfileFamily family) {
  const ProfileFamilySpec& spec = FamilySpec(family);
  ProfileDialogState& d = ProfileDialogOf(app, family);
  for (;;) {
    d.SaveCancelled = 0;
    try {
      const std::string name = app.p.ui.OpenFileDialog(spec.openFilter);
      LoadProfile(app, family, name);
      return;
    } catch (const Fault& f) {
      if (f.number() == kFaultCancel) {
        d.SaveCancelled = 1;
        return;
      }
      if (f.number() != kFaultFileNotFound) return;  // any other read error: silent
      MessageBox(app, Words(app, spec.languageOpenTexts, kRowNoFile, kNoFile),
                 Words(app, spec.languageOpenTexts, kRowSorry, kSorry), MsgButtons::Ok, MsgIcon::Information);
    }
  }
}

bool LoadProfile(App& app, ProfileFamily family, const std::string& fileName) {
  const ProfileFamilySpec& spec = FamilySpec(family);
  TextReader in = TextReader::Open(fileName);
  const std::string tag = in.ReadText();
  in.ReadText();  // the revision: read, never looked at
  // The unit text is taken before the tag is looked at.
  app.s.logger.LiveUnitText = in.ReadText();
  if (tag != spec.tag) {
    const bool words = spec.wrongTag == nullptr;
    MessageBox(app, words ? LanguageText(app, spec.wrongTagRow) : std::string(spec.wrongTag),
               words ? LanguageText(app, kRowSorry) : std::string(kSorry), MsgButtons::Ok, MsgIcon::Information);
    return false;
  }
  app.s.profiles.ProfileFileName = fileName;
  ScaleEntryColumn& E = Entries(app.s.scales, spec);
  for (int i = spec.F; i <= spec.L; ++i) E[i] = in.ReadCell();
  CreateProfileDialog(app, family);
  ProfileDialogView& v = ProfileView(app, family);
  for (int field = 1; field <= spec.fields; ++field) v.Text[field].caption = CellText(E[spec.F + field - 1]);
  v.Text18.caption = app.s.logger.LiveUnitText;
  v.Frame1.caption = app.s.profiles.ProfileFileName;
  ProfileDialogOf(app, family).ProfileLoaded = 1;
  BuildScaleTable(app, family);
  return true;
}

std::string ProfileSaveName(ProfileFamily family, const std::string& chosen) {
  if (chosen.size() >= 4 && chosen[chosen.size() - 4] == '.') return chosen;
  return chosen + FamilySpec(family).extension;
}

void SaveProfile(App& app, ProfileFamily family) {
  const ProfileFamilySpec& spec = FamilySpec(family);
  ProfileDialogState& d = ProfileDialogOf(app, family);
  const bool words = spec.languageSaveTexts;
  d.SaveCancelled = 0;
  BuildScaleTable(app, family);
  for (;;) {
    if (d.PointCount <= 1) {
      MessageBox(app, kNoData, Words(app, words, kRowSorry, kSorry), MsgButtons::Ok, MsgIcon::Information);
      return;
    }
    std::string name;
    try {
      name = ProfileSaveName(family, app.p.ui.SaveFileDialog(spec.saveFilter));
    } catch (const Fault& f) {
      if (f.number() != kFaultCancel) throw;
      d.SaveCancelled = 1;
      return;
    }
    if (!Missing(name)) {
      const MsgAnswer answer = MessageBox(app, Words(app, words, kRowReplace, kReplace),
                                          Words(app, words, kRowWarning, kWarning), MsgButtons::YesNoCancel,
                                          MsgIcon::Question, 2);
      if (answer == MsgAnswer::Cancel) return;
      if (answer == MsgAnswer::No) continue;
    }
    // After a save the name has no extension; after a load it has.
    app.s.profiles.ProfileFileName = name.substr(0, name.size() - 4);
    ProfileView(app, family).Frame1.caption = app.s.profiles.ProfileFileName;
    WriteProfile(app, family, name);
    return;
  }
}

void WriteProfile(App& app, ProfileFamily family, const std::string& fileName) {
  const ProfileFamilySpec& spec = FamilySpec(family);
  TextWriter out("\r\n");
  out.Text(spec.tag);
  out.Text(kRevision);
  out.Text(app.s.logger.LiveUnitText);
  out.EndLine();
  const ScaleEntryColumn& E = Entries(app.s.scales, spec);
  for (int i = spec.F; i <= spec.L; ++i) {
    if (E[i].EqualsEmptyText()) {
      out.Text("");
    } else {
      out.Put(E[i]);
    }
    out.EndLine();
  }
  out.CommitTo(fileName);
}

}  // namespace quillet
