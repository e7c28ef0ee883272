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

TEST(ProfileFile, WritesTagUnitAndTypedEntriesAndReadsThemBackInEveryFamily) {
  for (F f : {F::Custom, F::Mv100, F::V10, F::Ma420, F::Bipo100mv, F::Bipo10mv}) {
    const ProfileFamilySpec& spec = FamilySpec(f);
    ProfileApp t;
    TypeProfile(t, f);
    const std::string path = t.Path(std::string("p") + spec.extension);
    t.Do([&] { WriteProfile(*t.app, f, path); });
    std::string expected = std::string("\"") + spec.tag + "\",\"rev01\",\"m/s\"\r\n\"1.5\"\r\n\"\"\r\n\"-2\"\r\n";
    for (int i = spec.F + 3; i <= spec.L; ++i) expected += "\"\"\r\n";
    EXPECT_EQ(t.ReadFile(std::string("p") + spec.extension), expected) << spec.name;

    ProfileApp u;
    u.Open(f);
    ASSERT_TRUE(LoadProfile(*u.app, f, path)) << spec.name;
    EXPECT_EQ(u.Cells(f, 'E'), t.Cells(f, 'E')) << spec.name;
    EXPECT_EQ(u.Cells(f, 'T'), t.Cells(f, 'T')) << spec.name;
    EXPECT_EQ(u.unit() + "|" + u.v(f).Text[3].caption + "|" + u.v(f).Text18.caption, "m/s|-2|m/s");
    EXPECT_EQ(u.P().ProfileFileName + "|" + u.v(f).Frame1.caption, path + "|" + path);
    EXPECT_EQ(u.d(f).ProfileLoaded, 1);
  }
}

TEST(ProfileFile, LoadsWhereTheTagFitsAndOtherwiseSaysSoButStillTakesTheUnit) {
  const struct {
    const char* file;
    F family;
    const char* message;  // "" when it loads
  } cases[] = {
      {"p.cus", F::Custom, ""},
      {"p.cus", F::Mv100, "Not a valid 0-10 V profile|Sorry"},
      {"p.cus", F::V10, "en124|en54"},
      {"p.cus", F::Bipo100mv, "Not a valid 100 mV file|Sorry"},
      {"p.cus", F::Bipo10mv, "en132|en54"},
      {"p.cmv", F::V10, ""},  // the same tag: the rows now mean volts
      {"p.420", F::Bipo10mv, ""},
      {"p.420", F::Custom, "Not a valid Custom profile|Sorry"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.file) + " " + FamilySpec(c.family).name);
    ProfileApp t;
    const F writer = FamilyByExtension(c.file)->family;
    TypeProfile(t, writer, "from file");
    t.Do([&] { WriteProfile(*t.app, writer, t.Path(c.file)); });
    t.Do([&] { ProfileClearAll(*t.app, writer); });
    t.Open(c.family);
    const auto before = t.Cells(c.family, 'E');
    t.ui.fileAnswers = {t.Path(c.file)};
    t.Do([&] { OpenProfile(*t.app, c.family); });
    EXPECT_EQ(t.unit(), "from file");
    EXPECT_EQ(t.d(c.family).ProfileLoaded, *c.message ? 0 : 1);
    if (*c.message) {
      ASSERT_EQ(t.ui.messages.size(), 1u);
      EXPECT_EQ(t.ui.messages[0].text + "|" + t.ui.messages[0].title, c.message);
      EXPECT_EQ(t.Cells(c.family, 'E'), before);
    } else {
      EXPECT_TRUE(t.ui.messages.empty());
      EXPECT_EQ(t.v(c.family).Text[1].caption + "|" + t.v(c.family).Text[3].caption, "1.5|-2");
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
  t.Do([&] { OpenProfile(*t.app, F::Custom); });
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.Cells(F::Custom, 'E')[1] + "|" + t.v(F::Custom).Text[2].caption, "5|");
  EXPECT_EQ(t.d(F::Custom).ProfileLoaded, 0);
  t.Do([&] { OpenProfile(*t.app, F::Custom); });  // binary garbage has no tag of ours
  EXPECT_EQ(t.ui.MessageTexts(), std::vector<std::string>{"Not a valid Custom profile"});
  // A missing file is told, and the file dialog comes again until the user cancels.
  for (F f : {F::Custom, F::Mv100}) {
    t.ui.messages.clear();
    t.ui.fileAnswers = {t.Path("none.cus"), ""};
    t.Do([&] { OpenProfile(*t.app, f); });
    ASSERT_EQ(t.ui.messages.size(), 1u);
    EXPECT_EQ(t.ui.messages[0].text + "|" + t.ui.messages[0].title,
              f == F::Custom ? "en77|en54" : "File does not exist|Sorry");
    EXPECT_EQ(t.d(f).SaveCancelled, 1);
  }
}

TEST(ProfileFile, TheSaveAddsTheExtensionUnlessTheFourthLastCharacterIsAPoint) {
  for (auto [family, chosen, written] : {std::tuple{F::Custom, "a", "a.cus"}, {F::Custom, "x.cu", "x.cu.cus"},
                                         {F::Custom, "x.txt", "x.txt"}, {F::V10, "volts", "volts.10V"},
                                         {F::Mv100, "m.10V", "m.10V"}, {F::Ma420, "ma", "ma.420"}})
    EXPECT_EQ(ProfileSaveName(family, chosen), written) << chosen;
  ProfileApp t;
  TypeProfile(t, F::Custom);
  t.ui.saveAnswers = {t.Path("sensor")};
  t.Do([&] { SaveProfile(*t.app, F::Custom); });
  EXPECT_TRUE(t.FileExists("sensor.cus"));
  // No extension after a save.
  EXPECT_EQ(t.P().ProfileFileName + "|" + t.v(F::Custom).Frame1.caption, t.Path("sensor") + "|" + t.Path("sensor"));
}

TEST(ProfileFile, AnExistingFileIsReplacedOnlyOnYes) {
  const std::string fixed = "File exists.  Do you want to replace it?|Warning";
  const struct {
    F family;
    MsgAnswer answer;
    bool replaced, secondName;
    std::string message;
  } cases[] = {
      {F::Custom, MsgAnswer::Yes, true, false, fixed},
      {F::Custom, MsgAnswer::No, false, true, fixed},
      {F::Custom, MsgAnswer::Cancel, false, false, fixed},
      {F::Ma420, MsgAnswer::Yes, true, false, "en144|en74"},
  };
  for (const auto& c : cases) {
    ProfileApp t;
    const std::string name = std::string("old") + FamilySpec(c.family).extension;
    t.WriteFile(name, "keep me");
    TypeProfile(t, c.family);
    t.ui.answer = [&](const MessageRequest&) { return c.answer; };
    t.ui.saveAnswers = {t.Path(name), t.Path("other")};
    t.Do([&] { SaveProfile(*t.app, c.family); });
    ASSERT_EQ(t.ui.messages.size(), 1u);
    EXPECT_EQ(t.ui.messages[0].text + "|" + t.ui.messages[0].title, c.message);
    EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::YesNoCancel);
    EXPECT_EQ(t.ui.messages[0].defaultButton, 2);
    EXPECT_EQ(t.ReadFile(name) != "keep me", c.replaced);
    EXPECT_EQ(t.FileExists(std::string("other") + FamilySpec(c.family).extension), c.secondName);
    EXPECT_EQ(t.d(c.family).SaveCancelled, 0);
  }
}

TEST(ProfileFile, RefusesToSaveFewerThanTwoPointsAndNeverLeavesHalfAFile) {
  ProfileApp t;
  t.OpenCleared(F::V10);
  t.Type(F::V10, 2, "5");
  t.Do([&] { SaveProfile(*t.app, F::V10); });
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text + "|" + t.ui.messages[0].title, "No data to save.  Enter some values.|en54");
  EXPECT_TRUE(t.ui.saveFilters.empty());
  // A name that cannot be written ends the save without a message and without a file.
  t.Type(F::V10, 4, "6");
  t.ui.saveAnswers = {t.Path("no/such/folder/p")};
  t.Do([&] { SaveProfile(*t.app, F::V10); });
  EXPECT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.saveFilters, std::vector<std::string>{"0 to 10 Volt files (*.10V)|*.10V"});
  EXPECT_FALSE(t.FileExists("no"));
}

}  // namespace
}  // namespace quillet
