#pragma once
// The profile dialogs' logic: the table build and its preview, the entry rule, and the
// dialog's life (opening, OK, Cancel, Close, Clear All). One set of routines serves all
// six dialogs, parametrised by their family's properties.
#include <string>

#include "profiles/profile_state.h"

namespace quillet {
struct App;
struct ProfileDialogView;
struct ProfileFamilySpec;

ProfileDialogView& ProfileView(App& app, ProfileFamily family);
ProfileDialogState& ProfileDialogOf(App& app, ProfileFamily family);

// Puts the dialog's stored words in place, once; the dialog stays hidden.
void CreateProfileDialog(App& app, ProfileFamily family);

// Builds the family's table and slopes from its typed entries, and the preview.
void BuildScaleTable(App& app, ProfileFamily family);

// The character filter of the entry fields: "-", ".", "/" and the digits.
bool EntryPassesFilter(const std::string& text);
// The value of an entry cell: a number, or a text that reads whole as a number.
bool EntryValue(const Cell& cell, double& value);
// What a field or a file shows for a cell: the number's plain form, the text, or "".
std::string CellText(const Cell& cell);

// The entry rule of the fields Text1..TextN (field numbers from 1). The shell writes what
// the user types into the field's caption; these decide when it counts.
void ProfileFieldEnter(App& app, ProfileFamily family, int field);
void ProfileFieldLostFocus(App& app, ProfileFamily family, int field);
void ProfileFieldUp(App& app, ProfileFamily family, int field);
void ProfileFieldDown(App& app, ProfileFamily family, int field);
// Text18, the unit: every change goes to the preview and to LiveUnitText at once.
void ProfileUnitChanged(App& app, ProfileFamily family, const std::string& text);
void ProfileUnitLostFocus(App& app, ProfileFamily family);

// Opening logic: runs when the dialog is loaded and each time it is shown.
void OpenProfileDialog(App& app, ProfileFamily family);
void ProfileOk(App& app, ProfileFamily family);         // Command1
void ProfileCancel(App& app, ProfileFamily family);     // Command2
void ProfileClose(App& app, ProfileFamily family);      // Command3, profile entry only
void ProfileClearAll(App& app, ProfileFamily family);   // Command4
// The window's close box: Close while entering profiles, Cancel otherwise.
void ProfileCloseBox(App& app, ProfileFamily family);
void ProfilePrint(App& app, ProfileFamily family);      // File, Print

// Opens a dialog for profile entry only: not modal, no effect on the record.
void OpenProfileEntry(App& app, ProfileFamily family);
// The custom dialog's profile entry: nothing in the menus calls it.
void OpenCustomProfileEntry(App& app);

// The language rows of the 100 mV, 10 V and 4 to 20 mA dialogs; creates all six.
void ApplyProfileLanguage(App& app);

}  // namespace quillet
