#pragma once
// Probes of model 16 loggers: the table of probes.dat, the three probe dialogs, and the
// choice remembered per logger serial.
#include "core/platform.h"

namespace quillet {
struct App;
struct ProbeDialogView;

// Reads probes.dat beside the program and gives the present logger the probe remembered
// for its serial, or the one chosen last. A missing or short file ends the program.
void LoadProbeTable(App& app);

// The dialogs Func1, FUNC2 and FUNC3 serve groups 1, 2 and 3.
ProbeDialogView& ProbeDialog(App& app, int group);
DialogId ProbeDialogId(int group);
void OpenProbeDialog(App& app, int group);
void ProbeDialogChoose(App& app, int group, int option);  // 1..30, as a click does
void ProbeDialogOk(App& app, int group);
void ProbeDialogCancel(App& app, int group);

// Writes the present probe into the logger's memory slot once a probe dialog has closed,
// and re-decodes the record on screen when the user approved it.
void StoreProbeChoice(App& app, int group);

// The menu entries func01, func02, func03.
void Func01(App& app);
void Func02(App& app);
void Func03(App& app);

}  // namespace quillet
