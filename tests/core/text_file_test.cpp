#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "core/fault.h"
#include "core/text_file.h"

namespace quillet {
namespace {

TEST(TextReader, SplitsOnCommasAndLineEndsAndDropsBlanksAroundUnquotedFields) {
  auto r = TextReader::FromText("  12 , abc ,\"x, y\"\r\n\"q\"  junk ,last\n");
  EXPECT_EQ(r.ReadNumber(), 12);
  EXPECT_EQ(r.ReadText(), "abc");
  EXPECT_EQ(r.ReadText(), "x, y");
  EXPECT_EQ(r.ReadText(), "q");
  EXPECT_EQ(r.ReadText(), "last");
  EXPECT_TRUE(r.AtEnd());
}

TEST(TextReader, ReadingPastTheEndIsFault62) {
  auto r = TextReader::FromText("1\n");
  r.ReadNumber();
  try {
    r.ReadText();
    FAIL();
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), kFaultInputPastEnd);
  }
}

TEST(TextReader, CellsTellNumberEmptyTextAndNothingApart) {
  auto r = TextReader::FromText("1.5,\"\",,\"mV, peak\"\n");
  Cell a = r.ReadCell(), b = r.ReadCell(), c = r.ReadCell(), d = r.ReadCell();
  EXPECT_TRUE(a.IsNumber());
  EXPECT_EQ(a.Number(), 1.5);
  EXPECT_EQ(b.kind(), Cell::Kind::EmptyText);
  EXPECT_TRUE(c.IsNothing());
  EXPECT_TRUE(c.EqualsEmptyText());
  EXPECT_EQ(d.Text(), "mV, peak");
}

TEST(TextReader, TextWhereANumberIsNeededIsFault13) {
  auto r = TextReader::FromText("abc\n");
  try {
    r.ReadNumber();
    FAIL();
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), kFaultTypeMismatch);
  }
}

TEST(TextReader, MissingFileIsFault53) {
  try {
    TextReader::Open("/nonexistent/dir/none.txt");
    FAIL();
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), kFaultFileNotFound);
  }
}

TEST(TextWriter, QuotesTextWritesNumbersBareAndNothingForEmptyCells) {
  TextWriter w;
  w.Text("a");
  w.Num(0.5);
  w.Num(Number());
  w.Put(Cell::OfEmptyText());
  w.Put(Cell());
  w.Num(-1200);
  w.EndLine();
  EXPECT_EQ(w.content(), "\"a\",0.5,,\"\",,-1200\n");
}

TEST(TextWriter, CommitReplacesTheFileWholeAndLeavesNoTemporary) {
  const std::string path = ::testing::TempDir() + "/quillet_commit_test.txt";
  { std::ofstream(path) << "old contents\n"; }
  TextWriter w;
  w.Text("new");
  w.EndLine();
  w.CommitTo(path);
  std::ifstream in(path);
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(line, "\"new\"");
  EXPECT_FALSE(std::ifstream(path + ".tmp~").good());
  std::remove(path.c_str());
}

TEST(TextWriter, CommitIntoAMissingFolderFaultsAndLeavesNothing) {
  TextWriter w;
  w.Text("x");
  EXPECT_THROW(w.CommitTo("/nonexistent/dir/x.txt"), Fault);
}

TEST(StrOfNumber, PutsABlankInPlaceOfThePlusSign) {
  EXPECT_EQ(StrOfNumber(1), " 1");
  EXPECT_EQ(StrOfNumber(4800), " 4800");
  EXPECT_EQ(StrOfNumber(-3), "-3");
  EXPECT_EQ("comm port = " + StrOfNumber(1), "comm port =  1");
}

}  // namespace
}  // namespace quillet
