#pragma once
// The commands of quillet-cli. Each returns the exit code or throws CommandError.
#include "cli/cli_support.h"

namespace quillet {
int RunLive(const Options& opts);
int RunDecode(const Options& opts);
int RunDownload(const Options& opts);
int RunRender(const Options& opts);
int RunPrint(const Options& opts);
}  // namespace quillet
