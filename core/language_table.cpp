#include "core/language_table.h"

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
  for (int n = 1; n <= strings; ++n) {
    for (int i = 1; i <= L.LanguageCount; ++i) L.LanguageTable[i][n] = in.ReadText();
  }
}

}  // namespace quillet
