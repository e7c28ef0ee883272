#pragma once
// A started application for the profile dialogs (strings read "en<n>", no logger) with
// helpers that act as the user does in a dialog.
#include <functional>
#include <string>
#include <vector>

#include "core/formatting.h"
#include "hub/app.h"
#include "profiles/profile_dialog.h"
#include "profiles/profile_family.h"
#include "profiles/profile_file.h"
#include "support/fake_platform.h"

namespace quillet::testing {

struct ProfileApp : StartedApp {
  ProfileDialogView& v(ProfileFamily f) { return ProfileView(*app, f); }
  ProfileDialogState& d(ProfileFamily f) { return ProfileDialogOf(*app, f); }
  ProfileState& P() { return app->s.profiles; }
  std::string& unit() { return app->s.logger.LiveUnitText; }
  // One user action in the dialog of family f.
  template <class... Params, class... Args>
  void Act(void (*action)(App&, ProfileFamily, Params...), ProfileFamily f, Args&&... args) {
    Do([&] { action(*app, f, args...); });
  }
  void Open(ProfileFamily f) { Act(OpenProfileDialog, f); }
  // Opens the dialog, Clear All, and the unit typed.
  void OpenCleared(ProfileFamily f, const std::string& typedUnit = "") {
    Open(f);
    Act(ProfileClearAll, f);
    Act(ProfileUnitChanged, f, typedUnit);
  }
  // Types a text into a field and presses Enter.
  void Type(ProfileFamily f, int field, const std::string& text) {
    v(f).Text[field].caption = text;
    Act(ProfileFieldEnter, f, field);
  }
  // The messages shown, each as "text|title", one a line.
  std::string Told() const {
    std::string out;
    for (const MessageRequest& m : ui.messages) out += m.text + "|" + m.title + "\n";
    return out;
  }
  // OK, answering the save question with `answer`.
  void Ok(ProfileFamily f, MsgAnswer answer = MsgAnswer::No) {
    ui.answer = [answer](const MessageRequest&) { return answer; };
    Act(ProfileOk, f);
  }
  // The table, slope or entry cells of a family over its knots, as texts ("" for none).
  std::vector<std::string> Cells(ProfileFamily f, char which) {
    const ProfileFamilySpec& s = FamilySpec(f);
    std::vector<std::string> out;
    for (int i = s.F; i <= s.L; ++i) {
      const Cell& c = which == 'T'   ? TableCells(app->s.scales, s)[i]
                      : which == 'S' ? SlopeCells(app->s.scales, s)[i]
                                     : Entries(app->s.scales, s)[i];
      out.push_back(CellText(c));
    }
    return out;
  }
};

}  // namespace quillet::testing
