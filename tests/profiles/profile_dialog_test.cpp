// The entry rule of the profile fields and the life of a profile dialog: opening in
// both modes, OK, Cancel, Close and Clear All.
#include <gtest/gtest.h>

#include "profiles/profile_test_app.h"

namespace quillet {
namespace {

using testing::ProfileApp;
using F = ProfileFamily;

TEST(ProfileEntryRule, AcceptsNumbersAndEmptyFieldsAndSilentlyPutsBackAnythingElse) {
  struct Case {
    const char* text;
    bool accepted;
  } cases[] = {{"12.5", true}, {"-3", true}, {"-.5", true}, {"", true},    {"1a", false}, {"1 2", false},
               {"-", false},   {".", false}, {"1/2", false}, {"--3", false}, {"+4", false}, {"1e5", false}};
  for (const Case& c : cases) {
    for (bool enter : {true, false}) {
      ProfileApp t;
      t.Open(F::Custom);
      t.Type(F::Custom, 2, "7");
      t.Do([&] {
        t.v(F::Custom).focus = 3;  // the user has moved on
        t.v(F::Custom).Text[2].caption = c.text;
        if (enter) {
          ProfileFieldEnter(*t.app, F::Custom, 2);
        } else {
          ProfileFieldLostFocus(*t.app, F::Custom, 2);
        }
      });
      const std::string cell = CellText(t.app->s.scales.ScaleEntry[1]);
      EXPECT_EQ(cell, c.accepted ? c.text : "7") << c.text;
      EXPECT_EQ(t.v(F::Custom).Text[2].caption, c.accepted ? c.text : "7") << c.text;
      // A rejected field takes the focus back when it was left, not on Enter.
      EXPECT_EQ(t.v(F::Custom).focus, !c.accepted && !enter ? 2 : 3) << c.text;
      EXPECT_TRUE(t.ui.messages.empty()) << c.text;
    }
  }
}

TEST(ProfileEntryRule, UpAndDownMoveAlongTheFieldsAndTheFieldLeftIsChecked) {
  ProfileApp t;
  t.Open(F::Ma420);
  auto key = [&](int field, bool up) {
    t.Do([&] { up ? ProfileFieldUp(*t.app, F::Ma420, field) : ProfileFieldDown(*t.app, F::Ma420, field); });
    return t.v(F::Ma420).focus;
  };
  EXPECT_EQ(key(5, true), 4);
  EXPECT_EQ(key(5, false), 6);
  t.v(F::Ma420).focus = 1;
  EXPECT_EQ(key(1, true), 1);  // Text1 has no Up
  t.v(F::Ma420).focus = 17;
  EXPECT_EQ(key(17, false), 17);  // the last field has no Down
  t.v(F::Ma420).Text[8].caption = "x";
  EXPECT_EQ(key(8, false), 8);  // rejected: the focus comes back
  t.v(F::Ma420).Text[8].caption = "42";
  EXPECT_EQ(key(8, false), 9);
  EXPECT_EQ(CellText(t.app->s.scales.ScaleEntry420[11]), "42");
}

TEST(ProfileDialog, OpensWithTheButtonsOfItsMode) {
  ProfileApp t;
  for (int entryOnly : {0, 1}) {
    t.P().ProfileEntryOnly = static_cast<std::int16_t>(entryOnly);
    for (F f : {F::Custom, F::Mv100, F::V10, F::Ma420, F::Bipo100mv, F::Bipo10mv}) {
      t.Open(f);
      const ProfileDialogView& v = t.v(f);
      const bool entry = entryOnly == 1 && FamilySpec(f).entryOnlyMode;
      EXPECT_TRUE(v.visible);
      EXPECT_EQ(v.Command1.visible, !entry);
      EXPECT_EQ(v.Command2.visible, !entry);
      EXPECT_EQ(v.Command3.visible, entry);
      EXPECT_EQ(v.Label26.visible, entry);
      EXPECT_EQ(v.Label27.visible, entry);
    }
  }
}

TEST(ProfileDialog, OkAsksToSaveOnlyAChangedProfileAndStaysOpenWhenTheSaveIsCancelled) {
  struct Case {
    const char* what;
    F family;
    std::string typed;        // into field 6, "" for no change
    MsgAnswer answer;         // to the save question
    std::string savedAs;      // the save dialog's answer, "" for Cancel
    bool asked, stillOpen;
    std::string text, title;  // of the question
  } cases[] = {
      {"no change", F::Custom, "", MsgAnswer::Yes, "", false, false, "", ""},
      {"a change, no save", F::Custom, "70", MsgAnswer::No, "", true, false, "Would you like to save this profile?",
       "Save for future use"},
      {"a change, the save cancelled", F::Custom, "70", MsgAnswer::Yes, "", true, true,
       "Would you like to save this profile?", "Save for future use"},
      {"a change, saved", F::Custom, "70", MsgAnswer::Yes, "p1", true, false, "Would you like to save this profile?",
       "Save for future use"},
      {"the 10 V dialog asks in the language's words", F::V10, "70", MsgAnswer::No, "", true, false, "en126", "en127"},
  };
  for (const Case& c : cases) {
    ProfileApp t;
    t.Open(c.family);
    t.Do([&] { ProfileClearAll(*t.app, c.family); });
    t.Type(c.family, 1, "0");
    t.Type(c.family, 11, "100");
    t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
    t.Do([&] { ProfileOk(*t.app, c.family); });
    t.ui.messages.clear();

    t.Open(c.family);
    if (!c.typed.empty()) t.Type(c.family, 6, c.typed);
    t.ui.answer = [&](const MessageRequest&) { return c.answer; };
    t.ui.saveAnswers = {c.savedAs.empty() ? "" : t.Path(c.savedAs)};
    t.Do([&] { ProfileOk(*t.app, c.family); });
    ASSERT_EQ(t.ui.messages.size(), c.asked ? 1u : 0u) << c.what;
    if (c.asked) {
      EXPECT_EQ(t.ui.messages[0].text, c.text) << c.what;
      EXPECT_EQ(t.ui.messages[0].title, c.title) << c.what;
      EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::YesNo) << c.what;
    }
    EXPECT_EQ(t.v(c.family).visible, c.stillOpen) << c.what;
    EXPECT_EQ(t.P().ScaleChanged, c.asked ? 1 : 0) << c.what;
    EXPECT_EQ(t.FileExists(c.savedAs + FamilySpec(c.family).extension), !c.savedAs.empty()) << c.what;
  }
}

TEST(ProfileDialog, CancelRestoresTheProfileButLeavesTheTableInvalid) {
  ProfileApp t;
  t.Open(F::Custom);
  t.Do([&] { ProfileClearAll(*t.app, F::Custom); ProfileUnitChanged(*t.app, F::Custom, "psi"); });
  t.Type(F::Custom, 1, "0");
  t.Type(F::Custom, 11, "100");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Do([&] { ProfileOk(*t.app, F::Custom); });
  const auto table = t.Cells(F::Custom, 'T');

  t.Open(F::Custom);
  t.Type(F::Custom, 6, "7");
  t.Do([&] { ProfileUnitChanged(*t.app, F::Custom, "bar"); });
  t.Do([&] { ProfileCancel(*t.app, F::Custom); });
  EXPECT_FALSE(t.v(F::Custom).visible);
  EXPECT_EQ(t.Cells(F::Custom, 'T'), table);
  EXPECT_EQ(t.P().ScaleTableInvalid, 1);
  EXPECT_EQ(t.unit(), "psi");
  EXPECT_EQ(t.app->s.UnitByModel[32], "psi");
}

TEST(ProfileDialog, CloseRestoresAllButTheFirstRowAndEndsProfileEntry) {
  ProfileApp t;
  t.app->s.scales.ScaleEntry100mv[0] = Cell::OfNumber(1);
  t.app->s.scales.ScaleEntry100mv[1] = Cell::OfNumber(2);
  t.unit() = "mV";
  t.Do([&] { OpenProfileEntry(*t.app, F::Mv100); });
  EXPECT_EQ(t.P().ProfileEntryOnly, 1);
  t.Type(F::Mv100, 1, "11");
  t.Type(F::Mv100, 2, "12");
  t.Do([&] { ProfileUnitChanged(*t.app, F::Mv100, "x"); });
  t.Do([&] { ProfileCloseBox(*t.app, F::Mv100); });
  EXPECT_FALSE(t.v(F::Mv100).visible);
  EXPECT_EQ(t.P().ProfileEntryOnly, 0);
  EXPECT_EQ(CellText(t.app->s.scales.ScaleEntry100mv[0]), "11");
  EXPECT_EQ(CellText(t.app->s.scales.ScaleEntry100mv[1]), "2");
  EXPECT_EQ(t.unit(), "mV");
}

TEST(ProfileDialog, ClearAllEmptiesFieldsUnitAndFrameButKeepsTheFileName) {
  ProfileApp t;
  t.app->s.scales.ScaleEntry[3] = Cell::OfNumber(3);
  t.app->s.scales.ScaleEntry[9] = Cell::OfNumber(9);
  t.P().ProfileFileName = "/tmp/old";
  t.unit() = "psi";
  t.Open(F::Custom);
  EXPECT_EQ(t.v(F::Custom).Text[4].caption, "3");
  EXPECT_EQ(t.v(F::Custom).Frame1.caption, "/tmp/old");
  EXPECT_EQ(t.P().ScaleTableInvalid, 0);
  t.Do([&] { ProfileClearAll(*t.app, F::Custom); });
  const ProfileDialogView& v = t.v(F::Custom);
  for (int i = 1; i <= 11; ++i) EXPECT_EQ(v.Text[i].caption, "");
  EXPECT_EQ(v.Text18.caption, "");
  EXPECT_EQ(v.Frame1.caption, "");
  EXPECT_EQ(t.unit(), "");
  EXPECT_EQ(t.P().ProfileFileName, "/tmp/old");
  EXPECT_EQ(t.Cells(F::Custom, 'E'), std::vector<std::string>(11, ""));
  EXPECT_EQ(t.P().ScaleTableInvalid, 1);

  // OK with the unit left empty keeps it as two blanks.
  t.Type(F::Custom, 1, "1");
  t.Type(F::Custom, 2, "2");
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Do([&] { ProfileOk(*t.app, F::Custom); });
  EXPECT_EQ(t.unit(), "  ");
  EXPECT_EQ(t.app->s.UnitByModel[32], "  ");
}

TEST(ProfileDialog, ALoadFollowedByOkCountsAsAChangeEvenWithTheSameTable) {
  ProfileApp t;
  t.Open(F::Custom);
  t.Do([&] { ProfileClearAll(*t.app, F::Custom); ProfileUnitChanged(*t.app, F::Custom, "psi"); });
  t.Type(F::Custom, 1, "0");
  t.Type(F::Custom, 11, "100");
  t.Do([&] { WriteProfile(*t.app, F::Custom, t.Path("same.cus")); });
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Do([&] { ProfileOk(*t.app, F::Custom); });
  t.ui.messages.clear();

  t.Open(F::Custom);
  t.ui.fileAnswers = {t.Path("same.cus")};
  t.Do([&] { OpenProfile(*t.app, F::Custom); });
  EXPECT_EQ(t.d(F::Custom).ProfileLoaded, 1);
  t.Do([&] { ProfileOk(*t.app, F::Custom); });
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.P().ScaleChanged, 1);
  EXPECT_EQ(t.d(F::Custom).ProfileLoaded, 0);
}

}  // namespace
}  // namespace quillet
