// Profile files: what is written, what loads where, and every refusal on the way.
#include <gtest/gtest.h>

#include "profiles/profile_test_app.h"

namespace quillet {
namespace {

using testing::ProfileApp;
using F = ProfileFamily;

// A profile typed into a family's dialog: 1.5 in the first field, -2 in the third.
void TypeProfile(ProfileApp& t, F f, const std::string& unit = "m/s") {
  t.OpenCleared(f, unit);
  t.Type(f, 1, "1.5");
  t.Type(f, 3, "-2");
}

TEST(ProfileFile, WritesTagUnitAndTypedEntriesAndLoadsOnlyWhereTheTagFitsButAlwaysTakesTheUnit) {
  ProfileApp w;
  TypeProfile(w, F::Custom);
  w.Act(WriteProfile, F::Custom, w.Path("p.cus"));
  std::string written = "\"customfile\",\"rev01\",\"m/s\"\r\n\"1.5\"\r\n\"\"\r\n\"-2\"\r\n";
  for (int i = 4; i <= 11; ++i) written += "\"\"\r\n";
  EXPECT_EQ(w.ReadFile("p.cus"), written);
  const struct {
    const char* file;
    F family;
    const char* message;  // "" when it loads
  } cases[] = {
      {"p.cus", F::Custom, ""},
      {"p.cmv", F::V10, ""},  // the same tag: the rows now mean volts
      {"p.cus", F::Mv100, "Not a valid 0-10 V profile|Sorry\n"},
      {"p.cus", F::V10, "en124|en54\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.file) + " " + FamilySpec(c.family).name);
    ProfileApp t;
    const F writer = FamilyByExtension(c.file)->family;
    TypeProfile(t, writer, "from file");
    t.Act(WriteProfile, writer, t.Path(c.file));
    t.Act(ProfileClearAll, writer);
    t.Open(c.family);
    const auto before = t.Cells(c.family, 'E');
    t.ui.fileAnswers = {t.Path(c.file)};
    t.Act(OpenProfile, c.family);
    EXPECT_EQ(std::tuple(t.unit(), t.Told(), t.d(c.family).ProfileLoaded),
              std::tuple("from file", c.message, *c.message ? 0 : 1));
    if (*c.message) {
      EXPECT_EQ(t.Cells(c.family, 'E'), before);
    } else {
      EXPECT_EQ(t.v(c.family).Text[1].caption + "|" + t.v(c.family).Text[3].caption, "1.5|-2");
      EXPECT_EQ(t.v(c.family).Text18.caption + "|" + t.v(c.family).Frame1.caption,
                "from file|" + t.Path(c.file));
    }
  }
}

TEST(ProfileFile, ShortGarbageAndMissingFilesLoseNothingAndSayOnlyWhatTheDialogSays) {
  ProfileApp t;
  t.WriteFile("short.cus", "\"customfile\",\"rev01\",\"u\"\r\n\"4\"\r\n\"5\"\r\n");
  t.WriteFile("junk.cus", std::string("\x01\xff\x00\x80,\x7f\r\n\x02", 10));
  t.OpenCleared(F::Custom);
  // A short file: the entries read so far stay in the cells, the fields are not updated.
  t.ui.fileAnswers = {t.Path("short.cus"), t.Path("junk.cus")};
  t.Act(OpenProfile, F::Custom);
  EXPECT_EQ(std::tuple(t.Told(), t.Cells(F::Custom, 'E')[1], t.v(F::Custom).Text[2].caption,
                       t.d(F::Custom).ProfileLoaded),
            std::tuple("", "5", "", 0));
  t.Act(OpenProfile, F::Custom);  // binary garbage has no tag of ours
  EXPECT_EQ(t.Told(), "Not a valid Custom profile|Sorry\n");
  // A missing file is told, and the file dialog comes again until the user cancels.
  for (F f : {F::Custom, F::Mv100}) {
    t.ui.messages.clear();
    t.ui.fileAnswers = {t.Path("none.cus"), ""};
    t.Act(OpenProfile, f);
    EXPECT_EQ(std::tuple(t.Told(), t.d(f).SaveCancelled),
              std::tuple(f == F::Custom ? "en77|en54\n" : "File does not exist|Sorry\n", 1));
  }
}

TEST(ProfileFile, TheSaveAddsTheExtensionUnlessTheFourthLastCharacterIsAPoint) {
  for (auto [chosen, written] : {std::pair{"a", "a.cus"}, {"x.cu", "x.cu.cus"}, {"x.txt", "x.txt"}})
    EXPECT_EQ(ProfileSaveName(F::Custom, chosen), written);
  ProfileApp t;
  TypeProfile(t, F::Custom);
  t.ui.saveAnswers = {t.Path("sensor")};
  t.Act(SaveProfile, F::Custom);
  EXPECT_TRUE(t.FileExists("sensor.cus"));
  // No extension after a save.
  EXPECT_EQ(t.P().ProfileFileName + "|" + t.v(F::Custom).Frame1.caption,
            t.Path("sensor") + "|" + t.Path("sensor"));
}

TEST(ProfileFile, AnExistingFileIsReplacedOnlyOnYes) {
  const std::string fixed = "File exists.  Do you want to replace it?|Warning\n";
  const struct {
    F family;
    MsgAnswer answer;
    bool replaced, secondName;
    std::string message;
  } cases[] = {
      {F::Custom, MsgAnswer::Yes, true, false, fixed},
      {F::Custom, MsgAnswer::No, false, true, fixed},
      {F::Custom, MsgAnswer::Cancel, false, false, fixed},
      {F::Ma420, MsgAnswer::Yes, true, false, "en144|en74\n"},
  };
  for (const auto& c : cases) {
    ProfileApp t;
    const std::string name = std::string("old") + FamilySpec(c.family).extension;
    t.WriteFile(name, "keep me");
    TypeProfile(t, c.family);
    t.ui.answer = [&](const MessageRequest&) { return c.answer; };
    t.ui.saveAnswers = {t.Path(name), t.Path("other")};
    t.Act(SaveProfile, c.family);
    const MessageRequest& q = t.ui.messages.at(0);
    EXPECT_EQ(std::tuple(t.Told(), q.buttons, q.defaultButton, t.ReadFile(name) != "keep me",
                         t.FileExists(std::string("other") + FamilySpec(c.family).extension),
                         t.d(c.family).SaveCancelled),
              std::tuple(c.message, MsgButtons::YesNoCancel, 2, c.replaced, c.secondName, 0));
  }
}

TEST(ProfileFile, RefusesToSaveFewerThanTwoPointsAndNeverLeavesHalfAFile) {
  ProfileApp t;
  t.OpenCleared(F::V10);
  t.Type(F::V10, 2, "5");
  t.Act(SaveProfile, F::V10);
  EXPECT_EQ(t.Told(), "No data to save.  Enter some values.|en54\n");
  EXPECT_TRUE(t.ui.saveFilters.empty());
  // A name that cannot be written ends the save without a message and without a file.
  t.Type(F::V10, 4, "6");
  t.ui.saveAnswers = {t.Path("no/such/folder/p")};
  t.Act(SaveProfile, F::V10);
  EXPECT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.saveFilters, std::vector<std::string>{"0 to 10 Volt files (*.10V)|*.10V"});
  EXPECT_FALSE(t.FileExists("no"));
}

}  // namespace
}  // namespace quillet
