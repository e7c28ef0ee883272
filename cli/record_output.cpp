#include "cli/record_output.h"

#include "cli/cli_support.h"
#include "cli/cli_texts.h"
#include "hub/app.h"
#include "core/fault.h"
#include "core/formatting.h"
#include "storage/record_file.h"

namespace quillet {

void CheckAnnouncedSamples(const App& app) {
  const double stored = app.s.logger.StoredSamples.Value();
  if (stored > kMaxSamples) {
    throw CommandError{Say(CliText::TooManySamples, {GeneralNumber(stored), std::to_string(kMaxSamples)})};
  }
}

void WriteRecordOutputs(App& app, const std::string& out, const std::string& rawPrefix, const std::string& header) {
  if (!rawPrefix.empty()) {
    std::string block = app.s.record.BlockData;
    if (block.size() >= 2) block.resize(block.size() - 2);  // the two blanks behind the bytes
    WriteBinaryFile(rawPrefix + ".header.bin", header);
    WriteBinaryFile(rawPrefix + ".block.bin", block);
  }
  try {
    WriteRecordFile(app, out, false);
  } catch (const Fault& f) {
    throw CommandError{Say(CliText::CannotWriteWhy, {out, FaultWords(f.number())})};
  }
}

}  // namespace quillet
