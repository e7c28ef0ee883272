#pragma once
// The commands of quillet-cli. Each returns the exit code or throws CommandError.
#include "cli/cli_support.h"

namespace quillet {
int RunLive(const Options& opts);
int RunDecode(const Options& opts);
int RunDownload(const Options& opts);
int RunRender(const Options& opts);
int RunProfile(int argc, char** argv);

struct App;
class HeadlessUi;
// decode --profile: the file loaded into its family and accepted with OK. Throws
// CommandError when it cannot be read or yields no table.
void ApplyDecodeProfile(App& app, HeadlessUi& ui, const std::string& path);
int RunPrint(const Options& opts);
}  // namespace quillet
