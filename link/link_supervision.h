#pragma once
// The port, the command frame, the mode field that orders the conversations, the choice
// of line speed and the watchdog that recovers from silence.
#include "link/link_state.h"

namespace quillet {
struct App;

constexpr char kAck = 0x04;          // every reply leads with it
constexpr int kHeaderRequestLimit = 20;  // the 20th unanswered tick gives up the logger
// How long a live reply may still be on the wire after its "D": the logger's turnaround
// and three bytes at 1200 bit/s, with room to spare. No "R" goes out inside it.
constexpr double kLiveReplyWindowSeconds = 0.25;

void SendCommand(App& app, char letter);
void OnHeaderTick(App& app);
void OnWatchdogTick(App& app);
void SwitchSpeed(App& app);
void OnSerialEvent(App& app);

// Start-up opening (end of LoadLanguageAndSettings) and its fall-backs.
void OpenPortAtStart(App& app);
void HandleStartupFault(App& app, int faultNumber);
void UseDefaultPort(App& app);

// Port dialog and menu.
void OpenFrmPort(App& app);
void FrmPortChoose(App& app, int option);  // 1..4 ports, 5 "No Logger"
void ChoosePort(App& app);                 // OK
void FrmPortCancel(App& app);
void MnuPort(App& app);
void Command1Click(App& app);              // "update"

// The line texts for the two speeds.
const char* SettingsFor(double baud);

}  // namespace quillet
