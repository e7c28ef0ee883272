#pragma once
// The files a command leaves: the record, and on request the raw bytes it came from.
#include <string>

namespace quillet {
struct App;

// Checks what the logger announced before a block is unfolded: a record holds at most
// 16384 samples. Throws CommandError.
void CheckAnnouncedSamples(const App& app);

// Writes the whole record as a record file; with a raw prefix also PREFIX.header.bin and
// PREFIX.block.bin. Throws CommandError, leaving no half-written file.
void WriteRecordOutputs(App& app, const std::string& out, const std::string& rawPrefix, const std::string& header);

}  // namespace quillet
