// Files put in place whole: through symbolic links, with the old mode, past leftovers of
// a killed run, and with a child process killed at every step of a write and at random
// times: the file is always the old one or the complete new one.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <thread>

#include "core/fault.h"
#include "core/file_commit.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

std::string Slurp(const std::string& path) { return (std::ostringstream() << std::ifstream(path).rdbuf()).str(); }

void Put(const std::string& path, const std::string& text, mode_t mode = 0644) {
  std::ofstream(path, std::ios::binary) << text;
  ::chmod(path.c_str(), mode);
}

mode_t ModeOf(const std::string& path) { return static_cast<mode_t>(fs::status(path).permissions()); }

// Leftovers of a write beside the target.
int Temporaries(const std::string& dir) {
  int n = 0;
  for (const auto& e : fs::directory_iterator(dir)) n += e.path().string().find(".tmp~") != std::string::npos;
  return n;
}

// Runs `body` in a child process and gives back its wait status.
int InChild(const std::function<void()>& body) {
  const pid_t pid = ::fork();
  if (pid == 0) {
    body();
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  return status;
}

// The fault number a commit in a child raises (0: none), after `prepare` ran in the child.
int CommitFaultInChild(const std::string& path, const std::string& bytes, const std::function<void()>& prepare) {
  const int status = InChild([&] {
    prepare();
    try {
      CommitBytesTo(path, bytes);
    } catch (const Fault& f) {
      ::_exit(f.number());
    }
  });
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct FileCommit : ::testing::Test {
  void SetUp() override {
    dir = fs::temp_directory_path() / ("quillet-commit-" + std::to_string(::getpid()) + "-" +
                                       ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(dir);
    fs::create_directories(dir);
  }
  void TearDown() override {
    ::chmod(dir.c_str(), 0755);
    fs::remove_all(dir);
  }
  std::string P(const std::string& name) const { return (fs::path(dir) / name).string(); }
  std::string dir;
};

TEST_F(FileCommit, AWriteThroughASymbolicLinkReplacesItsTargetAndALeftoverLinkIsNotWrittenThrough) {
  fs::create_directories(P("keep"));
  Put(P("keep/real.txt"), "old", 0600);
  fs::create_symlink("keep/real.txt", P("link.txt"));
  fs::create_symlink("link.txt", P("link2.txt"));  // a link to a link
  Put(P("keep/real.txt.tmp~"), "half a file", 0400);  // left by a killed run, even unwritable
  CommitBytesTo(P("link2.txt"), "new");
  EXPECT_TRUE(fs::is_symlink(P("link.txt")) && fs::is_symlink(P("link2.txt")));
  EXPECT_EQ(Slurp(P("keep/real.txt")), "new");
  EXPECT_EQ(ModeOf(P("keep/real.txt")), 0600u);
  EXPECT_EQ(Temporaries(dir) + Temporaries(P("keep")), 0);
  Put(P("elsewhere.txt"), "untouched");
  fs::create_symlink("elsewhere.txt", P("rec.txt.tmp~"));
  CommitBytesTo(P("rec.txt"), "again");
  EXPECT_EQ(Slurp(P("elsewhere.txt")), "untouched");
  EXPECT_EQ(Slurp(P("rec.txt")), "again");
}

TEST_F(FileCommit, AWriteThatRunsOutOfRoomOrMayNotWriteTheFolderFaultsAndLeavesTheOldFile) {
  Put(P("r.txt"), "old");
  // A file size limit stands in for a full disk: the write stops part way.
  const int full = CommitFaultInChild(P("r.txt"), std::string(1 << 20, 'n'), [] {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit lim{100000, 100000};
    ::setrlimit(RLIMIT_FSIZE, &lim);
  });
  EXPECT_TRUE(full == kFaultPathAccess || full == kFaultDiskFull) << full;
  ::chmod(dir.c_str(), 0555);
  // Root writes anywhere: the writer is then a child that has given up root.
  EXPECT_EQ(CommitFaultInChild(P("r.txt"), "new",
                               [] {
                                 if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(100);
                               }),
            kFaultPathAccess);
  ::chmod(dir.c_str(), 0755);
  EXPECT_EQ(Slurp(P("r.txt")), "old");
  EXPECT_EQ(Temporaries(dir), 0);
}

std::string Content(char fill, std::size_t size) {
  std::string s(size, fill);
  s.replace(0, 6, std::string("begin") + fill);
  s.replace(size - 4, 4, "end\n");
  return s;
}

int g_killAt = 0;
void KillAtStep(int step) {
  if (step == g_killAt) ::kill(::getpid(), SIGKILL);
}

TEST_F(FileCommit, AWriterKilledAtAnyStepLeavesTheOldFileOrTheWholeNewOne) {
  const std::string path = P("record.txt");
  const std::string older = Content('o', 1 << 20), newer = Content('n', (1 << 20) + 12345);
  int killed = 0, keptOld = 0, gotNew = 0;
  for (int k = 1;; ++k) {
    Put(path, older, 0640);
    g_killAt = k;
    const int status = InChild([&] {
      SetCommitStepHook(KillAtStep);
      CommitBytesTo(path, newer);
    });
    const std::string now = Slurp(path);
    ASSERT_TRUE(now == older || now == newer) << "a mix after a kill at step " << k;
    EXPECT_EQ(ModeOf(path), 0640u);
    if (!WIFSIGNALED(status)) {
      EXPECT_EQ(now, newer);
      break;
    }
    ++killed;
    (now == older ? keptOld : gotNew)++;
    // The next run writes over whatever the killed one left.
    CommitBytesTo(path, older);
    EXPECT_EQ(Slurp(path), older);
    EXPECT_EQ(Temporaries(dir), 0) << "step " << k;
  }
  std::printf("killed at each of %d steps: old file %d times, whole new file %d times\n", killed, keptOld, gotNew);
  EXPECT_GT(killed, 16);  // the chunks of a megabyte, the flush, the close, the rename
  EXPECT_GT(keptOld, 0);
  EXPECT_GT(gotNew, 0);
}

TEST_F(FileCommit, AWriterKilledAtRandomTimesLeavesOneWholeFile) {
  const std::string path = P("settings.ini");
  const std::string a = Content('a', 3 << 20), b = Content('b', (2 << 20) + 777);
  Put(path, a);
  std::mt19937 g(11);
  int asA = 0, asB = 0;
  const int kills = 40;
  for (int i = 0; i < kills; ++i) {
    const pid_t pid = ::fork();
    if (pid == 0) {
      for (int n = 0;; ++n) CommitBytesTo(path, n % 2 ? a : b);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(500, 40000)(g)));
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
    const std::string now = Slurp(path);
    ASSERT_TRUE(now == a || now == b) << "a mix after kill " << i << " (" << now.size() << " bytes)";
    (now == a ? asA : asB)++;
  }
  std::printf("killed %d times at random: first version %d, second %d, never a mix\n", kills, asA, asB);
}

}  // namespace
}  // namespace quillet
