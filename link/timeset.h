#pragma once
// The clock dialog and the two calibration commands. The logger keeps no calendar, so
// setting the time changes nothing in the logger or on the PC: it only keeps in memory
// how far the PC's clock is from the time the user says it is (ClockOffset). "H" and
// "L" are the only commands that change something in the logger.
namespace quillet {
struct App;

// frmTimeset
void OpenFrmTimeset(App& app);
void TimesetUpClick(App& app, int upDown);  // UpDown1..UpDown6: month .. seconds
void TimesetDownClick(App& app, int upDown);
// A part typed into its field: taken when it lies in the part's range (the day within
// its month), otherwise the part stays as it was.
void TimesetTyped(App& app, int part, int value);
void OnTimesetTick(App& app);  // the dialog's Timer1
void SetClock(App& app);       // OK
void TimesetCancel(App& app);  // Cancel and the close box
// Hides the dialog without an answer, when the link gives up the logger behind it.
void HideTimesetDialog(App& app);

// Main window
void MnuSetTime(App& app);
void Command5Click(App& app);  // "High Cal"
void Command6Click(App& app);  // "Low Cal"
// A character typed in the main window; the code 23 unlocks the calibration buttons.
void Log1KeyPress(App& app, int keyAscii);

}  // namespace quillet
