// Files put in place whole: a writer killed at any moment leaves the old file or the whole new one.
#include "core/file_commit.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

#include "core/fault.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

std::string Slurp(const std::string& path) {
  std::ostringstream s;
  s << std::ifstream(path, std::ios::binary).rdbuf();
  return s.str();
}

int g_killAt = 0;
void KillAtStep(int step) {
  if (step == g_killAt) ::kill(::getpid(), SIGKILL);
}

struct FileCommit : ::testing::Test {
  FileCommit() { fs::remove_all(dir), fs::create_directories(dir + "/keep"); }
  ~FileCommit() override { fs::remove_all(dir); }
  std::string P(const std::string& name) const { return dir + "/" + name; }
  const std::string dir = ::testing::TempDir() + "quillet-" + std::to_string(::getpid()) + "-" +
                          ::testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(FileCommit, AWriterKilledAtAnyStepThroughALinkLeavesTheOldFileOrTheWholeNewOne) {
  fs::create_symlink("keep/record.txt", P("link.txt"));
  fs::create_symlink("link.txt", P("record.txt"));  // a link to a link
  std::ofstream(P("keep/elsewhere.txt")) << "untouched";
  fs::create_symlink("elsewhere.txt", P("keep/record.txt.tmp~"));  // a leftover link is not written through
  const std::string path = P("record.txt");
  const std::string older(1 << 20, 'o'), newer((1 << 20) + 12345, 'n');
  int killed = 0, keptOld = 0, gotNew = 0;
  for (int k = 1;; ++k) {
    std::ofstream(path, std::ios::binary) << older;
    fs::permissions(path, fs::perms(0640));
    g_killAt = k;
    const pid_t pid = ::fork();
    if (pid == 0) SetCommitStepHook(KillAtStep), CommitBytesTo(path, newer), ::_exit(0);
    int status = 0;
    ::waitpid(pid, &status, 0);
    const std::string now = Slurp(path);
    ASSERT_TRUE(now == older || now == newer) << "a mix after a kill at step " << k;
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
    if (!WIFSIGNALED(status)) {
      EXPECT_EQ(now, newer);
      break;
    }
    ++killed;
    (now == older ? keptOld : gotNew)++;
    // The next run writes over whatever the killed one left.
    CommitBytesTo(path, older);
    EXPECT_EQ(Slurp(path), older);
    for (const auto& e : fs::directory_iterator(P("keep")))
      EXPECT_FALSE(e.path().string().ends_with(".tmp~")) << "step " << k;
  }
  EXPECT_GT(killed, 16);  // the chunks of a megabyte, the flush, the close, the rename
  EXPECT_TRUE(keptOld > 0 && gotNew > 0) << keptOld << " old, " << gotNew << " new";
  EXPECT_TRUE(fs::is_symlink(P("record.txt")) && fs::is_symlink(P("link.txt")));
  EXPECT_EQ(Slurp(P("keep/elsewhere.txt")), "untouched");
}

TEST_F(FileCommit, AWriterKilledAtRandomTimesLeavesOneWholeFile) {
  const std::string path = P("settings.ini");
  const std::string a(3 << 20, 'a'), b((2 << 20) + 777, 'b');
  std::ofstream(path, std::ios::binary) << a;
  std::mt19937 g(11);
  for (int i = 0; i < 40; ++i) {
    const pid_t pid = ::fork();
    if (pid == 0)
      for (int n = 0;; ++n) CommitBytesTo(path, n % 2 ? a : b);
    std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(500, 40000)(g)));
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
    const std::string now = Slurp(path);
    ASSERT_TRUE(now == a || now == b) << "a mix after kill " << i << " (" << now.size() << " bytes)";
  }
}

// A full disk (a file size limit stands in for it) and a read-only folder (for a writer
// that has given up root): one fault, the old file as it was, no temporary left beside it.
TEST_F(FileCommit, AWriteThatCannotFinishFaultsAndLeavesTheOldFileAlone) {
  for (const bool full : {true, false}) {
    SCOPED_TRACE(full ? "full disk" : "read-only folder");
    const std::string path = P("r.txt");
    std::ofstream(path, std::ios::binary) << "old";
    if (!full) ::chmod(dir.c_str(), 0555);
    const pid_t pid = ::fork();
    if (pid == 0) {
      ::signal(SIGXFSZ, SIG_IGN);
      const rlimit lim{100000, 100000};
      if (full) ::setrlimit(RLIMIT_FSIZE, &lim);
      if (!full && ::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(100);
      try {
        CommitBytesTo(path, std::string(1 << 20, 'n'));
      } catch (const Fault& f) {
        ::_exit(f.number());
      }
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    ::chmod(dir.c_str(), 0755);
    ASSERT_TRUE(WIFEXITED(status));
    const int fault = WEXITSTATUS(status);
    EXPECT_TRUE(fault == kFaultPathAccess || (full && fault == kFaultDiskFull)) << fault;
    EXPECT_EQ(Slurp(path), "old");
    for (const auto& e : fs::directory_iterator(dir)) EXPECT_EQ(e.path().string().find(".tmp~"), std::string::npos);
  }
}

}  // namespace
}  // namespace quillet
