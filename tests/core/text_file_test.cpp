#include "core/text_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "core/fault.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::FaultOf;

TEST(TextReader, SplitsOnCommasAndLineEndsAndTellsNumberEmptyTextAndNothingApart) {
  auto r = TextReader::FromText("  12 , abc ,\"x, y\"\r\n\"q\"  junk ,last\n1.5,\"\",,\"mV, peak\"\n");
  EXPECT_EQ(r.ReadNumber(), 12);
  for (const char* field : {"abc", "x, y", "q", "last"}) EXPECT_EQ(r.ReadText(), field);
  Cell a = r.ReadCell(), b = r.ReadCell(), c = r.ReadCell(), d = r.ReadCell();
  EXPECT_TRUE(a.IsNumber() && a.Number() == 1.5);
  EXPECT_EQ(b.kind(), Cell::Kind::EmptyText);
  EXPECT_TRUE(c.IsNothing() && c.EqualsEmptyText());
  EXPECT_EQ(d.Text(), "mV, peak");
  EXPECT_TRUE(r.AtEnd());
  EXPECT_EQ(FaultOf([&] { r.ReadText(); }), kFaultInputPastEnd);
  EXPECT_EQ(FaultOf([] { TextReader::FromText("abc\n").ReadNumber(); }), kFaultTypeMismatch);
  EXPECT_EQ(FaultOf([] { TextReader::Open("/nonexistent/dir/none.txt"); }), kFaultFileNotFound);
}

TEST(TextWriter, QuotesTextWritesNumbersBareAndCommitsWholeOrNotAtAll) {
  TextWriter w;
  w.Text("a");
  w.Num(0.5);
  w.Num(Number());
  w.Put(Cell::OfEmptyText());
  w.Put(Cell());
  w.Num(-1200);
  w.EndLine();
  EXPECT_EQ(w.content(), "\"a\",0.5,,\"\",,-1200\n");
  EXPECT_EQ(FaultOf([&] { w.CommitTo("/nonexistent/dir/x.txt"); }), kFaultPathAccess);
  const std::string path = ::testing::TempDir() + "/quillet_commit_test.txt";
  std::ofstream(path) << "old contents\n";
  w.CommitTo(path);
  std::ostringstream written;
  written << std::ifstream(path).rdbuf();
  EXPECT_EQ(written.str(), w.content());
  std::remove(path.c_str());
  EXPECT_EQ(StrOfNumber(4800) + StrOfNumber(-3), " 4800-3");  // a blank in place of the plus sign
}

}  // namespace
}  // namespace quillet
