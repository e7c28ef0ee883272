#pragma once
// Putting a whole file in place so that a crash, a kill or a full disk leaves either the
// old file or the complete new one, never a mix:
// - the bytes go to a temporary file beside the file they replace, are flushed to the
//   disk, and the temporary file is renamed over the old one;
// - a path that is a symbolic link writes the file the link points at, and the link stays;
// - a file that is replaced keeps its permission bits (and its owner where allowed);
// - a temporary file left by a run that was killed is removed by the next write of the
//   same file, and nothing ever reads one.
// Faults: 61 when the disk is full, 75 when the folder or file cannot be written; the
// old file is untouched either way.
#include <string>
#include <string_view>

namespace quillet {

// The file a write of `path` replaces: `path` with its symbolic links followed.
std::string CommitTarget(const std::string& path);
// The temporary file beside a target.
std::string TemporaryFileFor(const std::string& target);

void CommitBytesTo(const std::string& path, std::string_view bytes);

// For a writer that has put the whole file into TemporaryFileFor(CommitTarget(path))
// itself: flushes it, gives it the old file's mode and renames it over the old file.
// The temporary file is removed when this faults.
void CommitWrittenTemporary(const std::string& path);

// Test hook: called between the steps of every commit, with a running step count.
using CommitStepHook = void (*)(int step);
void SetCommitStepHook(CommitStepHook hook);

}  // namespace quillet
