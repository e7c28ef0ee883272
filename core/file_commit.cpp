#include "core/file_commit.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "core/fault.h"

namespace quillet {

namespace {

CommitStepHook g_hook = nullptr;
int g_step = 0;

void Step() {
  if (g_hook) g_hook(++g_step);
}

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

[[noreturn]] void Fail(int err, const std::string& path) {
  throw Fault(err == ENOSPC || err == EDQUOT ? kFaultDiskFull : kFaultPathAccess, path);
}

// Flushes the temporary file, carries the old file's mode over and renames it in place.
void Finish(int fd, const std::string& tmp, const std::string& target, const std::string& path) {
  struct stat old {};
  if (::stat(target.c_str(), &old) == 0) {
    ::fchmod(fd, old.st_mode & 07777);
    if (::fchown(fd, old.st_uid, old.st_gid) != 0) {
      // Another owner is only possible for the owner's own writes as root; the mode stays.
    }
  }
  if (::fsync(fd) != 0) {
    const int err = errno;
    ::close(fd);
    ::unlink(tmp.c_str());
    Fail(err, path);
  }
  Step();
  if (::close(fd) != 0) {
    const int err = errno;
    ::unlink(tmp.c_str());
    Fail(err, path);
  }
  Step();
  if (::rename(tmp.c_str(), target.c_str()) != 0) {
    const int err = errno;
    ::unlink(tmp.c_str());
    Fail(err, path);
  }
  Step();
  // The rename itself reaches the disk with the folder.
  const int dir = ::open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    ::fsync(dir);
    ::close(dir);
  }
}

}  // namespace

void SetCommitStepHook(CommitStepHook hook) {
  g_hook = hook;
  g_step = 0;
}

std::string CommitTarget(const std::string& path) {
  std::string p = path;
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st {};
    if (::lstat(p.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return p;
    std::string to(static_cast<std::size_t>(st.st_size > 0 ? st.st_size : 4096) + 1, '\0');
    const ssize_t n = ::readlink(p.c_str(), to.data(), to.size());
    if (n <= 0) return p;
    to.resize(static_cast<std::size_t>(n));
    p = to.front() == '/' ? to : FolderOf(p) + "/" + to;
  }
  return p;  // a loop of links: the write then fails on the last one
}

std::string TemporaryFileFor(const std::string& target) { return target + ".tmp~"; }

void CommitBytesTo(const std::string& path, std::string_view bytes) {
  const std::string target = CommitTarget(path);
  const std::string tmp = TemporaryFileFor(target);
  ::unlink(tmp.c_str());  // left by a run that was killed while writing
  Step();
  const int fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
  if (fd < 0) Fail(errno, path);
  Step();
  constexpr std::size_t kChunk = 64 * 1024;
  std::size_t done = 0;
  while (done < bytes.size()) {
    const std::size_t want = bytes.size() - done < kChunk ? bytes.size() - done : kChunk;
    const ssize_t n = ::write(fd, bytes.data() + done, want);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      const int err = n < 0 ? errno : ENOSPC;
      ::close(fd);
      ::unlink(tmp.c_str());
      Fail(err, path);
    }
    done += static_cast<std::size_t>(n);
    Step();
  }
  Finish(fd, tmp, target, path);
}

void CommitWrittenTemporary(const std::string& path) {
  const std::string target = CommitTarget(path);
  const std::string tmp = TemporaryFileFor(target);
  const int fd = ::open(tmp.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW);
  if (fd < 0) {
    const int err = errno;
    ::unlink(tmp.c_str());
    Fail(err, path);
  }
  Finish(fd, tmp, target, path);
}

}  // namespace quillet
