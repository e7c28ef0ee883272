#pragma once
// Start-up and exit of the main window.
#include <string>

namespace quillet {
struct App;

void StartProgram(App& app);
// Returns false when the window must stay open (the user cancelled).
bool EndProgram(App& app);
void ArrangeMainWindow(App& app);
void LoadLanguageAndSettings(App& app);

// logger1.ini in the folder the program was started in (or where the platform says).
std::string SettingsPath(const App& app);
void ReadSettings(App& app);   // faults go to the caller; what was read before stays
void WriteSettings(App& app);

void InstallUsFormats(App& app);
void InstallEurFormats(App& app);
void MnuUsa(App& app);
void MnuEur(App& app);

struct TimerSpec {
  const char* name;
  int intervalMs;
  void (*action)(App&);
};
// The nine timers of the main window, in the order they are started.
const TimerSpec* MainTimers(int& count);

}  // namespace quillet
