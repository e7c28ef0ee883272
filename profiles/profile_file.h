#pragma once
// Profile files: the family tag, "rev01" and the unit text, then the typed entry of each
// knot, one a record. The table is never stored; it is rebuilt after each load.
#include <string>

#include "profiles/profile_state.h"

namespace quillet {
struct App;

// File, Open: asks for a name until the file exists or the user cancels.
void OpenProfile(App& app, ProfileFamily family);
// Reads and checks a file into the family's entries and the dialog's fields. Returns
// false for a wrong tag (after telling the user; the unit text is replaced all the same).
// Read faults (53 no such file, 62 a file that ends early, 75 unreadable) go to the
// caller, with the entries read so far kept.
bool LoadProfile(App& app, ProfileFamily family, const std::string& fileName);
// File, Save, also from OK: refuses fewer than two points, asks for a name and whether to
// replace an existing file, then writes.
void SaveProfile(App& app, ProfileFamily family);
// Writes the file whole or not at all; a name that cannot be written is a fault.
void WriteProfile(App& app, ProfileFamily family, const std::string& fileName);
// The save's extension rule: unless the fourth character from the end is a point, the
// family's extension is added.
std::string ProfileSaveName(ProfileFamily family, const std::string& chosen);

}  // namespace quillet
