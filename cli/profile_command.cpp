// quillet-cli profile: scale profile files shown and written as the profile dialogs read
// and write them, and a profile put in place before a decode.
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "cli/headless_ui.h"
#include "core/fault.h"
#include "core/offline_platform.h"
#include "hub/app.h"
#include "log1/hooks.h"
#include "log1/startup.h"
#include "profiles/profile_dialog.h"
#include "profiles/profile_family.h"
#include "profiles/profile_file.h"

namespace quillet {

namespace {

// The program as at a first start, with nobody at the window.
struct Session {
  Session() : clock(0), places(ProgramDir(), ".") {
    places.settingsFile = NoSettingsFile();
    platform = std::make_unique<Platform>(Platform{ui, clock, timers, poster, transport, places});
    app = std::make_unique<App>(*platform, Log1Hooks());
    ui.app = app.get();
    StartCommandApp(*app);
  }
  HeadlessUi ui;
  FixedClock clock;
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  FilePlaces places;
  std::unique_ptr<Platform> platform;
  std::unique_ptr<App> app;
};

const ProfileFamilySpec& FamilyOf(const std::string* name, const std::string& path) {
  if (name) {
    const ProfileFamilySpec* f = FamilyByName(*name);
    if (!f) {
      throw CommandError{Say(CliText::UnknownFamily, {*name}), 2};
    }
    return *f;
  }
  const ProfileFamilySpec* f = FamilyByExtension(path);
  if (!f) throw CommandError{Say(CliText::FamilyByExtension, {path}), 2};
  return *f;
}

std::string CellNumber(const Cell& c) {
  if (c.EqualsEmptyText()) return "";
  if (!c.IsNumber()) return c.Text();
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.17g", c.Number());
  return buf;
}

}  // namespace

// Loads a profile file into its family's dialog, opened for a rescale. Throws CommandError.
void LoadProfileFile(App& app, HeadlessUi& ui, const ProfileFamilySpec& spec, const std::string& path) {
  const bool print = ui.printMessages;
  ui.printMessages = false;
  const int before = ui.messageCount;
  try {
    OpenProfileDialog(app, spec.family);
    const bool loaded = LoadProfile(app, spec.family, path);
    ui.printMessages = print;
    if (!loaded) {
      throw CommandError{
          Say(CliText::Explained, {path, ui.messageCount > before ? ui.lastMessage : Say(CliText::NotAProfile)})};
    }
  } catch (const Fault& f) {
    ui.printMessages = print;
    const int records = spec.L - spec.F + 2;
    switch (f.number()) {
      case kFaultFileNotFound: throw CommandError{Say(CliText::CannotReadWhy, {path, Say(CliText::NoSuchFile)})};
      case kFaultInputPastEnd:
        throw CommandError{Say(CliText::ProfileEndsEarly, {path, spec.name, std::to_string(records)})};
      default: throw CommandError{Say(CliText::CannotReadWhy, {path, FaultWords(f.number())})};
    }
  }
}

void ApplyDecodeProfile(App& app, HeadlessUi& ui, const std::string& path) {
  const ProfileFamilySpec& spec = FamilyOf(nullptr, path);
  LoadProfileFile(app, ui, spec, path);
  // As OK in the dialog, without the offer to save what was just read.
  const bool print = ui.printMessages;
  ui.printMessages = false;
  ui.yesNoAnswer = MsgAnswer::No;
  try {
    ProfileOk(app, spec.family);
  } catch (const Fault& f) {
    throw CommandError{Say(CliText::CannotUse, {path, FaultWords(f.number())})};
  }
  ui.printMessages = print;
  ui.yesNoAnswer = MsgAnswer::Yes;
  if (app.s.profiles.ScaleTableInvalid == 1) {
    throw CommandError{Say(CliText::ProfileFlat, {path})};
  }
}

namespace {

int Show(const std::string& path, const std::string* family) {
  const ProfileFamilySpec& spec = FamilyOf(family, path);
  Session s;
  App& app = *s.app;
  LoadProfileFile(app, s.ui, spec, path);
  const ProfileDialogView& v = ProfileView(app, spec.family);
  const ProfileDialogState& d = ProfileDialogOf(app, spec.family);
  std::string out = std::string("family\t") + spec.name + "\n";
  out += "unit\t" + app.s.logger.LiveUnitText + "\n";
  out += "points\t" + std::to_string(d.PointCount) + "\n";
  out += "invalid\t" + std::to_string(app.s.profiles.ScaleTableInvalid) + "\n";
  for (int i = spec.F; i <= spec.L; ++i) {
    out += "knot\t" + std::to_string(i) + "\t" + CellText(Entries(app.s.scales, spec)[i]) + "\t" +
           CellNumber(TableCells(app.s.scales, spec)[i]) + "\t" + CellNumber(SlopeCells(app.s.scales, spec)[i]) + "\n";
  }
  out += "preview\t" + (v.Label23.visible ? v.Label23.caption : "") + "\t" +
         (v.Label24.visible ? v.Label24.caption : "") + "\n";
  std::fputs(out.c_str(), stdout);
  return 0;
}

int Write(int argc, char** argv) {
  std::string family, out;
  const std::string* unit = nullptr;
  std::string unitText;
  bool replace = false, hasFamily = false;
  std::vector<std::pair<std::string, std::string>> entries;
  for (int i = 3; i < argc; ++i) {
    const std::string name = argv[i];
    if (name == "--replace") {
      replace = true;
      continue;
    }
    if (name != "--family" && name != "--unit" && name != "--entry" && name != "--out") {
      throw CommandError{Say(CliText::UnknownOption, {"profile write", name}), 2};
    }
    if (i + 1 >= argc) throw CommandError{Say(CliText::NeedsValue, {"profile write", name}), 2};
    const std::string value = argv[++i];
    if (name == "--family") {
      family = value;
      hasFamily = true;
    } else if (name == "--unit") {
      unitText = value;
      unit = &unitText;
    } else if (name == "--out") {
      out = value;
    } else {
      const std::size_t eq = value.find('=');
      if (eq == std::string::npos) throw CommandError{Say(CliText::EntryForm, {value}), 2};
      entries.emplace_back(value.substr(0, eq), value.substr(eq + 1));
    }
  }
  if (!hasFamily) throw CommandError{Say(CliText::IsRequired, {"profile write", "--family"}), 2};
  if (!unit) throw CommandError{Say(CliText::IsRequired, {"profile write", "--unit"}), 2};
  if (out.empty()) throw CommandError{Say(CliText::IsRequired, {"profile write", "--out"}), 2};
  const ProfileFamilySpec& spec = FamilyOf(&family, out);
  const int last = spec.F + spec.fields - 1;

  Session s;
  App& app = *s.app;
  try {
    OpenProfileDialog(app, spec.family);
    ProfileClearAll(app, spec.family);
    ProfileUnitChanged(app, spec.family, *unit);
    ProfileDialogView& v = ProfileView(app, spec.family);
    for (const auto& [knotText, text] : entries) {
      char* end = nullptr;
      const long knot = std::strtol(knotText.c_str(), &end, 10);
      if (knotText.empty() || *end != '\0' || knot < spec.F || knot > last) {
        throw CommandError{
            Say(CliText::KnotNotField, {knotText, spec.name, std::to_string(spec.F), std::to_string(last)}), 2};
      }
      const int field = static_cast<int>(knot) - spec.F + 1;
      v.Text[field].caption = text;
      ProfileFieldEnter(app, spec.family, field);
      if (v.Text[field].caption != text) {
        throw CommandError{Say(CliText::KnotNotNumber, {knotText, text})};
      }
    }
    BuildScaleTable(app, spec.family);
    if (ProfileDialogOf(app, spec.family).PointCount < 2) throw CommandError{Say(CliText::NoDataToSave)};
    const std::string name = ProfileSaveName(spec.family, out);
    if (std::FILE* f = std::fopen(name.c_str(), "rb")) {
      std::fclose(f);
      if (!replace) throw CommandError{Say(CliText::ProfileExists, {name})};
    }
    try {
      WriteProfile(app, spec.family, name);
    } catch (const Fault& f) {
      throw CommandError{Say(CliText::CannotWriteWhy, {name, FaultWords(f.number())})};
    }
  } catch (const Fault& f) {
    throw CommandError{Say(CliText::ProfileWriteFault, {FaultWords(f.number())})};
  }
  return 0;
}

}  // namespace

int RunProfile(int argc, char** argv) {
  const std::string sub = argc > 2 ? argv[2] : "";
  if (sub == "show") {
    const Options opts = ParseOptions("profile show", argc, argv, 3, {"", "--family"});
    const std::string* file = Find(opts, "");
    if (!file || file->empty() || file->find('\n') != std::string::npos) {
      throw CommandError{Say(CliText::ShowOneFile), 2};
    }
    return Show(*file, Find(opts, "--family"));
  }
  if (sub == "write") return Write(argc, argv);
  throw CommandError{Say(CliText::ProfileShowOrWrite), 2};
}

}  // namespace quillet
