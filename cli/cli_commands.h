#pragma once
#include <map>
#include <string>

namespace quillet {
// Each command takes its options as "--name" -> value.
int RunLive(const std::map<std::string, std::string>& opts);
}  // namespace quillet
