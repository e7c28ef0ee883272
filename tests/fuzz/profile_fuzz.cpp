// Scale profile files (.cus, .cmv, .10V, .420), read by File, Open in the six profile
// dialogs. The first byte picks the dialog; the rest is the file. What a load leaves must
// build, show and save again.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "profiles/profile_dialog.h"
#include "profiles/profile_file.h"

QUILLET_FUZZ_TARGET(profile) {
  using namespace quillet;
  if (size < 1) return 0;
  static fuzz::StartedApp t;
  t.NextInput();
  const auto family = static_cast<ProfileFamily>(data[0] % kProfileFamilies);
  const std::string path = t.dir + "/fuzzed";
  t.WriteFile("fuzzed", std::string(reinterpret_cast<const char*>(data + 1), size - 1));
  t.Do([&] { OpenProfileDialog(*t.app, family); });
  t.Do([&] { ProfileClearAll(*t.app, family); });
  t.ui.fileAnswers = {path, "", "", ""};  // a save asked on the way is cancelled
  t.Do([&] { OpenProfile(*t.app, family); });
  t.app->ended = false;
  t.Do([&] { BuildScaleTable(*t.app, family); });
  t.Do([&] { WriteProfile(*t.app, family, t.dir + "/again"); });
  t.app->ended = false;
  t.Do([&] { ProfileCancel(*t.app, family); });
  fuzz::CheckNoInternalError(t.ui);
  return 0;
}
