// The profile dialogs: the entry rule of their fields, the table, slopes and preview built
// from the typed points, and the dialog's life through OK, Cancel, Close and Clear All.
#include <gtest/gtest.h>

#include "profiles/profile_test_app.h"

namespace quillet {
namespace {

using testing::ProfileApp;
using F = ProfileFamily;
using Strings = std::vector<std::string>;

TEST(ProfileEntryRule, AcceptsNumbersAndEmptyFieldsAndSilentlyPutsBackAnythingElse) {
  // "1a" fails the character filter; "-" and "1/2" pass it but are no numbers.
  for (auto [text, accepted] :
       {std::pair{"-.5", true}, {"", true}, {"1a", false}, {"-", false}, {"1/2", false}}) {
    for (bool enter : {true, false}) {
      ProfileApp t;
      t.Open(F::Custom);
      t.Type(F::Custom, 2, "7");
      t.v(F::Custom).focus = 3;  // the user has moved on
      t.v(F::Custom).Text[2].caption = text;
      t.Act(enter ? ProfileFieldEnter : ProfileFieldLostFocus, F::Custom, 2);
      const std::string kept = accepted ? text : "7";
      // A rejected field takes the focus back when it was left, not on Enter.
      const ProfileDialogView& v = t.v(F::Custom);
      EXPECT_EQ(std::tuple(t.Cells(F::Custom, 'E')[1], v.Text[2].caption, v.focus, t.Told()),
                std::tuple(kept, kept, !accepted && !enter ? 2 : 3, ""))
          << text;
    }
  }
}

TEST(ProfileEntryRule, UpAndDownMoveAlongTheFieldsAndTheFieldLeftIsChecked) {
  ProfileApp t;
  t.Open(F::Ma420);
  auto key = [&](int field, bool up) {
    t.Act(up ? ProfileFieldUp : ProfileFieldDown, F::Ma420, field);
    return t.v(F::Ma420).focus;
  };
  EXPECT_EQ(key(5, true), 4);
  EXPECT_EQ(key(5, false), 6);
  t.v(F::Ma420).focus = 1;
  EXPECT_EQ(key(1, true), 1);  // Text1 has no Up, the last field no Down
  t.v(F::Ma420).focus = 17;
  EXPECT_EQ(key(17, false), 17);
  t.v(F::Ma420).Text[8].caption = "x";
  EXPECT_EQ(key(8, false), 8);  // rejected: the focus comes back
  t.v(F::Ma420).Text[8].caption = "42";
  EXPECT_EQ(key(8, false), 9);
  EXPECT_EQ(t.Cells(F::Ma420, 'E')[7], "42");
}

TEST(BuildScaleTable, LinesRunThroughAndBeyondThePointsAndOnePointOrAFlatTableKeepsTheLastSlopes) {
  ProfileApp t;
  t.OpenCleared(F::V10);
  for (auto [field, text] : {std::pair{1, "0"}, {2, "1"}, {3, "3"}}) t.Type(F::V10, field, text);
  EXPECT_EQ(t.Cells(F::V10, 'T'), (Strings{"0", "1", "3", "5", "7", "9", "11", "13", "15", "17", "19"}));
  EXPECT_EQ(t.Cells(F::V10, 'S'), (Strings{"1", "2", "2", "2", "2", "2", "2", "2", "2", "2", "2"}));
  EXPECT_EQ(t.P().ScaleTableInvalid, 0);
  t.Type(F::V10, 2, "");
  const Strings slopes(11, "1.5");
  EXPECT_EQ(t.Cells(F::V10, 'S'), slopes);
  t.Type(F::V10, 3, "");  // one point left: blank table
  EXPECT_EQ(std::tuple(t.Cells(F::V10, 'T'), t.Cells(F::V10, 'S'), t.P().ScaleTableInvalid,
                       t.v(F::V10).Label23.visible),
            std::tuple(Strings(11, ""), slopes, 1, false));
  t.Type(F::V10, 4, "0");  // two equal points: a flat table, filled, on the bottom of the preview
  EXPECT_EQ(std::tuple(t.Cells(F::V10, 'T'), t.Cells(F::V10, 'S'), t.P().ScaleTableInvalid),
            std::tuple(Strings(11, "0"), slopes, 1));
  for (int k = 1; k <= 10; ++k) EXPECT_EQ(t.v(F::V10).Line[k].y1 + t.v(F::V10).Line[k].y2, 6000) << k;
}

TEST(BuildScaleTable, ThePreviewJoinsTheKnotsInsideTheBoxAndLabelsItsEnds) {
  ProfileApp t;
  t.OpenCleared(F::Custom, "bar");
  t.Type(F::Custom, 3, "5");
  t.Type(F::Custom, 5, "15");
  const ProfileDialogView& v = t.v(F::Custom);
  const PreviewLine a = v.Line[1], b = v.Line[10];
  EXPECT_EQ(std::vector<double>({a.x1, a.y1, a.x2, a.y2, b.x1, b.y1, b.x2, b.y2}),
            std::vector<double>({4000, 3000, 4192, 2800, 5728, 1200, 5920, 1000}));
  EXPECT_EQ(std::tuple(v.Label23.caption, v.Label24.caption, v.Label25.caption, v.segmentCount),
            std::tuple("-5.", "45.", "bar", 10));
  EXPECT_TRUE(v.Label23.visible && v.Label24.visible && v.Label25.visible);
  // The 4 to 20 mA preview: sixteen segments of 120, and no integer digit forced.
  t.OpenCleared(F::Ma420);
  t.Type(F::Ma420, 1, "0");
  t.Type(F::Ma420, 17, "0.5");
  const ProfileDialogView& w = t.v(F::Ma420);
  EXPECT_EQ(std::vector<double>({1.0 * w.segmentCount, w.Line[16].x2, w.Line[16].y2}),
            std::vector<double>({16, 5920, 1000}));
  EXPECT_EQ(w.Label23.caption + "|" + w.Label24.caption, ".|.5");
}

// A profile from 0 to 100 confirmed with OK, and the dialog opened again.
void OpenConfirmed(ProfileApp& t, F f, const std::string& unit = "") {
  t.OpenCleared(f, unit);
  t.Type(f, 1, "0");
  t.Type(f, 11, "100");
  t.Ok(f);
  t.ui.messages.clear();
  t.Open(f);
}

TEST(ProfileDialog, OkAsksToSaveOnlyAChangedProfileAndStaysOpenWhenTheSaveIsCancelled) {
  const std::string q = "Would you like to save this profile?|Save for future use\n";
  const struct {
    const char* what;
    F family;
    std::string typed;     // into field 6, "" for no change
    MsgAnswer answer;      // to the save question
    std::string savedAs;   // the save dialog's answer, "" for Cancel
    std::string question;  // "" when none is asked
    bool stillOpen;
  } cases[] = {
      {"no change", F::Custom, "", MsgAnswer::Yes, "", "", false},
      {"a change, no save", F::Custom, "70", MsgAnswer::No, "", q, false},
      {"a change, the save cancelled", F::Custom, "70", MsgAnswer::Yes, "", q, true},
      {"a change, saved", F::Custom, "70", MsgAnswer::Yes, "p1", q, false},
      {"the 10 V dialog asks in the language's words", F::V10, "70", MsgAnswer::No, "", "en126|en127\n",
       false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ProfileApp t;
    OpenConfirmed(t, c.family);
    if (!c.typed.empty()) t.Type(c.family, 6, c.typed);
    t.ui.saveAnswers = {c.savedAs.empty() ? "" : t.Path(c.savedAs)};
    t.Ok(c.family, c.answer);
    EXPECT_EQ(std::tuple(t.Told(), t.v(c.family).visible, t.P().ScaleChanged,
                         t.FileExists(c.savedAs + FamilySpec(c.family).extension)),
              std::tuple(c.question, c.stillOpen, c.question.empty() ? 0 : 1, !c.savedAs.empty()));
    for (const MessageRequest& m : t.ui.messages) EXPECT_EQ(m.buttons, MsgButtons::YesNo);
  }
}

TEST(ProfileDialog, CancelRestoresTheProfileButLeavesTheTableInvalid) {
  ProfileApp t;
  OpenConfirmed(t, F::Custom, "psi");
  const auto table = t.Cells(F::Custom, 'T');
  t.Type(F::Custom, 6, "7");
  t.Act(ProfileUnitChanged, F::Custom, "bar");
  t.Act(ProfileCancel, F::Custom);
  EXPECT_EQ(std::tuple(t.v(F::Custom).visible, t.Cells(F::Custom, 'T'), t.P().ScaleTableInvalid,
                       t.unit() + "|" + t.app->s.UnitByModel[32]),
            std::tuple(false, table, 1, "psi|psi"));
}

TEST(ProfileDialog, CloseRestoresAllButTheFirstRowAndEndsProfileEntry) {
  ProfileApp t;
  t.app->s.scales.ScaleEntry100mv[0] = Cell::OfNumber(1);
  t.app->s.scales.ScaleEntry100mv[1] = Cell::OfNumber(2);
  t.unit() = "mV";
  t.Act(OpenProfileEntry, F::Mv100);
  t.Type(F::Mv100, 1, "11");
  t.Type(F::Mv100, 2, "12");
  t.Act(ProfileUnitChanged, F::Mv100, "x");
  t.Act(ProfileCloseBox, F::Mv100);
  EXPECT_EQ(std::tuple(t.v(F::Mv100).visible, t.P().ProfileEntryOnly, t.Cells(F::Mv100, 'E')[0],
                       t.Cells(F::Mv100, 'E')[1], t.unit()),
            std::tuple(false, 0, "11", "2", "mV"));
}

TEST(ProfileDialog, ClearAllEmptiesFieldsUnitAndFrameButKeepsTheFileNameAndOkKeepsNoUnitAsTwoBlanks) {
  ProfileApp t;
  t.app->s.scales.ScaleEntry[3] = Cell::OfNumber(3);
  t.app->s.scales.ScaleEntry[9] = Cell::OfNumber(9);
  t.P().ProfileFileName = "/tmp/old";
  t.unit() = "psi";
  t.Open(F::Custom);
  const ProfileDialogView& v = t.v(F::Custom);
  EXPECT_EQ(v.Text[4].caption + "|" + v.Frame1.caption, "3|/tmp/old");
  EXPECT_EQ(t.P().ScaleTableInvalid, 0);
  t.Act(ProfileClearAll, F::Custom);
  for (int i = 1; i <= 11; ++i) EXPECT_EQ(v.Text[i].caption, "");
  EXPECT_EQ(v.Text18.caption + v.Frame1.caption + t.unit() + "|" + t.P().ProfileFileName, "|/tmp/old");
  EXPECT_EQ(std::tuple(t.Cells(F::Custom, 'E'), t.P().ScaleTableInvalid), std::tuple(Strings(11, ""), 1));
  t.Type(F::Custom, 1, "1");
  t.Type(F::Custom, 2, "2");
  t.Ok(F::Custom);
  EXPECT_EQ(t.unit() + "|" + t.app->s.UnitByModel[32], "  |  ");
}

TEST(ProfileDialog, ALoadFollowedByOkCountsAsAChangeEvenWithTheSameTable) {
  ProfileApp t;
  OpenConfirmed(t, F::Custom, "psi");
  t.Act(WriteProfile, F::Custom, t.Path("same.cus"));
  t.ui.fileAnswers = {t.Path("same.cus")};
  t.Act(OpenProfile, F::Custom);
  EXPECT_EQ(t.d(F::Custom).ProfileLoaded, 1);
  t.Ok(F::Custom);
  EXPECT_EQ(std::tuple(t.Told(), t.P().ScaleChanged, t.d(F::Custom).ProfileLoaded), std::tuple("", 1, 0));
}

}  // namespace
}  // namespace quillet
