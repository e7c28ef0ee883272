// Profile files: what is written, what loads where, and every refusal on the way.
#include <gtest/gtest.h>

#include "profiles/profile_test_app.h"

namespace quillet {
namespace {

using testing::ProfileApp;
using F = ProfileFamily;
const F kAll[] = {F::Custom, F::Mv100, F::V10, F::Ma420, F::Bipo100mv, F::Bipo10mv};

// A profile typed into a family's dialog: 1.5 in the first field, -2 in the third.
void TypeProfile(ProfileApp& t, F f, const std::string& unit = "m/s") {
  t.Open(f);
  t.Do([&] { ProfileClearAll(*t.app, f); ProfileUnitChanged(*t.app, f, unit); });
  t.Type(f, 1, "1.5");
  t.Type(f, 3, "-2");
}

TEST(ProfileFile, WritesTagUnitAndTypedEntriesAndReadsThemBackInEveryFamily) {
  for (F f : kAll) {
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
    EXPECT_EQ(u.unit(), "m/s");
    EXPECT_EQ(u.v(f).Text[3].caption, "-2");
    EXPECT_EQ(u.v(f).Text18.caption, "m/s");
    EXPECT_EQ(u.P().ProfileFileName, path);
    EXPECT_EQ(u.v(f).Frame1.caption, path);
    EXPECT_EQ(u.d(f).ProfileLoaded, 1);
  }
}

TEST(ProfileFile, LoadsWhereTheTagFitsAndOtherwiseSaysSoButStillTakesTheUnit) {
  struct Case {
    const char* file;
    F family;
    bool loads;
    const char *text, *title;
  } cases[] = {
      {"p.cus", F::Custom, true, "", ""},
      {"p.cus", F::Mv100, false, "Not a valid 0-10 V profile", "Sorry"},
      {"p.cus", F::V10, false, "en124", "en54"},
      {"p.cus", F::Ma420, false, "en132", "en54"},
      {"p.cus", F::Bipo100mv, false, "Not a valid 100 mV file", "Sorry"},
      {"p.cus", F::Bipo10mv, false, "en132", "en54"},
      {"p.cmv", F::V10, true, "", ""},  // the same tag: the rows now mean volts
      {"p.10V", F::Mv100, true, "", ""},
      {"p.420", F::Bipo100mv, true, "", ""},
      {"p.420", F::Bipo10mv, true, "", ""},
      {"p.420", F::Custom, false, "Not a valid Custom profile", "Sorry"},
  };
  for (const Case& c : cases) {
    ProfileApp t;
    const F writer = FamilyByExtension(c.file)->family;
    TypeProfile(t, writer, "from file");
    t.Do([&] { WriteProfile(*t.app, writer, t.Path(c.file)); });
    t.Do([&] { ProfileClearAll(*t.app, writer); ProfileUnitChanged(*t.app, writer, "mine"); });
    t.Open(c.family);
    const auto before = t.Cells(c.family, 'E');
    t.ui.fileAnswers = {t.Path(c.file)};
    t.Do([&] { OpenProfile(*t.app, c.family); });
    EXPECT_EQ(t.unit(), "from file") << c.file << " " << FamilySpec(c.family).name;
    EXPECT_EQ(t.d(c.family).ProfileLoaded, c.loads ? 1 : 0);
    if (c.loads) {
      EXPECT_TRUE(t.ui.messages.empty());
      EXPECT_EQ(t.v(c.family).Text[1].caption, "1.5");
      EXPECT_EQ(t.v(c.family).Text[3].caption, "-2");
    } else {
      ASSERT_EQ(t.ui.messages.size(), 1u) << c.file;
      EXPECT_EQ(t.ui.messages[0].text, c.text);
      EXPECT_EQ(t.ui.messages[0].title, c.title);
      EXPECT_EQ(t.Cells(c.family, 'E'), before);
    }
  }
}

TEST(ProfileFile, ShortGarbageAndMissingFilesLoseNothingAndSayOnlyWhatTheDialogSays) {
  ProfileApp t;
  t.WriteFile("short.cus", "\"customfile\",\"rev01\",\"u\"\r\n\"4\"\r\n\"5\"\r\n");
  t.WriteFile("junk.cus", std::string("\x01\xff\x00\x80,\x7f\r\n\x02", 10));
  t.Open(F::Custom);
  t.Do([&] { ProfileClearAll(*t.app, F::Custom); });

  // A short file: the entries read so far stay in the cells, the fields are not updated.
  t.ui.fileAnswers = {t.Path("short.cus")};
  t.Do([&] { OpenProfile(*t.app, F::Custom); });
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(CellText(t.app->s.scales.ScaleEntry[1]), "5");
  EXPECT_EQ(t.v(F::Custom).Text[2].caption, "");
  EXPECT_EQ(t.d(F::Custom).ProfileLoaded, 0);

  // Binary garbage has no tag of ours.
  t.ui.fileAnswers = {t.Path("junk.cus")};
  t.Do([&] { OpenProfile(*t.app, F::Custom); });
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "Not a valid Custom profile");

  // A missing file is told, and the file dialog comes again until the user cancels.
  for (F f : {F::Custom, F::Mv100}) {
    t.ui.messages.clear();
    t.ui.fileAnswers = {t.Path("none.cus"), ""};
    t.Do([&] { OpenProfile(*t.app, f); });
    ASSERT_EQ(t.ui.messages.size(), 1u);
    EXPECT_EQ(t.ui.messages[0].text, f == F::Custom ? "en77" : "File does not exist");
    EXPECT_EQ(t.ui.messages[0].title, f == F::Custom ? "en54" : "Sorry");
    EXPECT_EQ(t.d(f).SaveCancelled, 1);
  }
}

TEST(ProfileFile, TheSaveAddsTheExtensionUnlessTheFourthLastCharacterIsAPoint) {
  struct Case {
    F family;
    const char *chosen, *written;
  } cases[] = {{F::Custom, "a", "a.cus"},         {F::Custom, "x.cu", "x.cu.cus"}, {F::Custom, "x.txt", "x.txt"},
               {F::V10, "volts", "volts.10V"},    {F::Mv100, "m.10V", "m.10V"},    {F::Ma420, "ma", "ma.420"}};
  for (const Case& c : cases) EXPECT_EQ(ProfileSaveName(c.family, c.chosen), c.written) << c.chosen;

  ProfileApp t;
  TypeProfile(t, F::Custom);
  t.ui.saveAnswers = {t.Path("sensor")};
  t.Do([&] { SaveProfile(*t.app, F::Custom); });
  EXPECT_TRUE(t.FileExists("sensor.cus"));
  EXPECT_EQ(t.P().ProfileFileName, t.Path("sensor"));  // no extension after a save
  EXPECT_EQ(t.v(F::Custom).Frame1.caption, t.Path("sensor"));
}

TEST(ProfileFile, AnExistingFileIsReplacedOnlyOnYes) {
  struct Case {
    F family;
    MsgAnswer answer;
    bool replaced, secondName;
    const char *text, *title;
  } cases[] = {
      {F::Custom, MsgAnswer::Yes, true, false, "File exists.  Do you want to replace it?", "Warning"},
      {F::Custom, MsgAnswer::No, false, true, "File exists.  Do you want to replace it?", "Warning"},
      {F::Custom, MsgAnswer::Cancel, false, false, "File exists.  Do you want to replace it?", "Warning"},
      {F::Ma420, MsgAnswer::Yes, true, false, "en144", "en74"},
  };
  for (const Case& c : cases) {
    ProfileApp t;
    const std::string name = std::string("old") + FamilySpec(c.family).extension;
    t.WriteFile(name, "keep me");
    TypeProfile(t, c.family);
    t.ui.answer = [&](const MessageRequest&) { return c.answer; };
    t.ui.saveAnswers = {t.Path(name), t.Path("other")};
    t.Do([&] { SaveProfile(*t.app, c.family); });
    ASSERT_EQ(t.ui.messages.size(), 1u);
    EXPECT_EQ(t.ui.messages[0].text, c.text);
    EXPECT_EQ(t.ui.messages[0].title, c.title);
    EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::YesNoCancel);
    EXPECT_EQ(t.ui.messages[0].defaultButton, 2);
    EXPECT_EQ(t.ReadFile(name) != "keep me", c.replaced);
    EXPECT_EQ(t.FileExists(std::string("other") + FamilySpec(c.family).extension), c.secondName);
    EXPECT_EQ(t.d(c.family).SaveCancelled, 0);
  }
}

TEST(ProfileFile, RefusesToSaveFewerThanTwoPointsAndNeverLeavesHalfAFile) {
  ProfileApp t;
  t.Open(F::V10);
  t.Do([&] { ProfileClearAll(*t.app, F::V10); });
  t.Type(F::V10, 2, "5");
  t.Do([&] { SaveProfile(*t.app, F::V10); });
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "No data to save.  Enter some values.");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_TRUE(t.ui.saveFilters.empty());

  // A name that cannot be written ends the save without a message and without a file.
  t.Type(F::V10, 4, "6");
  t.ui.saveAnswers = {t.Path("no/such/folder/p")};
  t.Do([&] { SaveProfile(*t.app, F::V10); });
  EXPECT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.saveFilters, std::vector<std::string>{"0 to 10 Volt files (*.10V)|*.10V"});
  EXPECT_FALSE(t.FileExists("no"));
}

TEST(ProfileFile, TwoBlankUnitsFromOkAreWrittenAndReadBackAsTwoBlanks) {
  ProfileApp t;
  TypeProfile(t, F::Custom, "");
  t.ui.saveAnswers = {t.Path("blank")};
  t.Do([&] { ProfileOk(*t.app, F::Custom); });
  EXPECT_EQ(t.ReadFile("blank.cus").substr(0, 27), "\"customfile\",\"rev01\",\"  \"\r\n");
  ProfileApp u;
  u.Open(F::Custom);
  u.Do([&] { LoadProfile(*u.app, F::Custom, t.Path("blank.cus")); });
  EXPECT_EQ(u.unit(), "  ");
}

}  // namespace
}  // namespace quillet
