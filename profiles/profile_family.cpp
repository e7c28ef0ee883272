#include "profiles/profile_family.h"

#include <algorithm>

namespace quillet {

namespace {

constexpr const char* kCustomFilterOpen = "Custom Scale files (*.cus)|*.cus";
constexpr const char* kCustomFilterSave = "custom scale files (*.cus)|*.cus";
constexpr const char* kFilter100mv = "0 to 100 mV files (*.cmv)|*.cmv";
constexpr const char* kFilter10v = "0 to 10 Volt files (*.10V)|*.10V";
constexpr const char* kFilter420 = "4 to 20 files (*.420)|*.420";

// The 100 mV family carries the 10 V tag: a ".cmv" and a ".10V" file load in each
// other's dialog, as a ".420" does in all three dialogs that share its tag.
const ProfileFamilySpec kFamilies[kProfileFamilies] = {
    {ProfileFamily::Custom, "custom", DialogId::custom, "Custom Scale", &ScaleTables::ScaleEntry,
     &ScaleTables::ScaleTable, &ScaleTables::ScaleSlope, 0, 10, 11, 0, 10, 192, "###0.##",
     {"0", "50", "100", "input"}, 32, true, true, false, false, true, 0, 10, 0, 10, false,
     "customfile", ".cus", kCustomFilterOpen, kCustomFilterSave, "Not a valid Custom profile", 0},
    {ProfileFamily::Mv100, "100mv", DialogId::input100mv, "100 mV", &ScaleTables::ScaleEntry100mv,
     &ScaleTables::ScaleTable100mv, &ScaleTables::ScaleSlope100mv, 0, 10, 11, 0, 10, 192, "###0.##",
     {"0", "50", "100", "mV"}, 20, true, true, true, false, false, 0, 10, 0, 10, false,
     "10vfile", ".cmv", kFilter100mv, kFilter100mv, "Not a valid 0-10 V profile", 0},
    {ProfileFamily::V10, "10v", DialogId::input10v, "10 Volt", &ScaleTables::ScaleEntry10v,
     &ScaleTables::ScaleTable10v, &ScaleTables::ScaleSlope10v, 0, 10, 11, 0, 1, 192, "###0.##",
     {"0", "5", "10", "Volt"}, 22, true, true, true, true, true, 0, 10, 0, 10, false,
     "10vfile", ".10V", kFilter10v, kFilter10v, nullptr, 124},
    {ProfileFamily::Ma420, "420", DialogId::input420, "4 to 20 ma", &ScaleTables::ScaleEntry420,
     &ScaleTables::ScaleTable420, &ScaleTables::ScaleSlope420, 4, 20, 17, 4, 1, 120, "####.##",
     {"4", "12", "20", "mA"}, 29, true, true, true, true, true, 1, 20, 4, 20, false,
     "4to20file", ".420", kFilter420, kFilter420, nullptr, 132},
    {ProfileFamily::Bipo100mv, "bipo100mv", DialogId::inputbipo100mv, "bipolar 100 milivolt",
     &ScaleTables::ScaleEntry420, &ScaleTables::ScaleTable420, &ScaleTables::ScaleSlope420, 4, 20, 11, -100, 20,
     120, "####.##", {"-100", "0", "100", "mV"}, 0, false, false, false, false, false, 4, 20, 4, 20, true,
     "4to20file", ".420", kFilter420, kFilter420, "Not a valid 100 mV file", 0},
    {ProfileFamily::Bipo10mv, "bipo10mv", DialogId::inputbipo10mv, "bipolar 10 milivolt",
     &ScaleTables::ScaleEntry420, &ScaleTables::ScaleTable420, &ScaleTables::ScaleSlope420, 4, 20, 11, -10, 2,
     120, "####.##", {"-10", "0", "10", "mV"}, 0, false, false, false, true, true, 4, 20, 4, 20, true,
     "4to20file", ".420", kFilter420, kFilter420, nullptr, 132},
};

}  // namespace

const ProfileFamilySpec& FamilySpec(ProfileFamily family) {
  const int i = static_cast<int>(family);
  if (i < 0 || i >= kProfileFamilies) throw Fault(kFaultSubscript);
  return kFamilies[i];
}

const ProfileFamilySpec* FamilyByName(const std::string& name) {
  for (const ProfileFamilySpec& f : kFamilies) {
    if (name == f.name) return &f;
  }
  return nullptr;
}

const ProfileFamilySpec* FamilyByExtension(const std::string& path) {
  if (path.size() < 4) return nullptr;
  const std::string ext = path.substr(path.size() - 4);
  // The four families with files of their own; a ".420" opens in the 4 to 20 mA dialog.
  for (ProfileFamily f : {ProfileFamily::Custom, ProfileFamily::Mv100, ProfileFamily::V10, ProfileFamily::Ma420}) {
    if (ext == FamilySpec(f).extension) return &FamilySpec(f);
  }
  return nullptr;
}

}  // namespace quillet
