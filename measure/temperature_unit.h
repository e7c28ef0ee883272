#pragma once
namespace quillet {
struct App;
// mnudegC (0) and mnudegF (1).
void SetTemperatureUnit(App& app, int unit);
void ShowTemperatureUnitChecks(App& app);
}  // namespace quillet
