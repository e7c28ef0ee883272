#pragma once
// The Save command: which samples go into the record file, the SaveOpt question, the
// file name rules and the replace question. The file itself is the record file.
#include <string>

namespace quillet {
struct App;

// mnuSaveTXT.
void MnuSaveTXT(App& app);

// The name a chosen file is saved under: ".txt" is added unless the fourth character
// from the end is a point, so a three-letter extension the user typed is kept.
std::string SaveNameFor(const std::string& chosen);

// SaveOpt: opening, and its three buttons.
void OpenSaveOpt(App& app);
void SaveOptEntireRecord(App& app);
void SaveOptDisplayedOnly(App& app);
void SaveOptCancel(App& app);

}  // namespace quillet
