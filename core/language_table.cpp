#include "core/language_table.h"

#include "core/fault.h"
#include "core/formatting.h"
#include "core/int16.h"
#include "core/text_file.h"

namespace quillet {

void ReadLanguageFile(const std::string& path, LanguageData& L) {
  TextReader in = TextReader::Open(path);
  L.LanguageCount = ToInt16(LeadingNumber(in.ReadText()));
  const double strings = LeadingNumber(in.ReadText());
  for (int i = 1; i <= L.LanguageCount; ++i) L.LanguageName[i] = in.ReadText();
  for (int i = 1; i <= L.LanguageCount; ++i) L.LanguageHelpFile[i] = in.ReadText();
  for (long n = 1; n <= strings; ++n) {
    // A count beyond the table is a fault of the reading at the first string that has no
    // cell, whether or not any language would fill it.
    if (n > kStrings) throw Fault(kFaultSubscript);
    for (int i = 1; i <= L.LanguageCount; ++i) L.LanguageTable[i][n] = in.ReadText();
  }
}

}  // namespace quillet
