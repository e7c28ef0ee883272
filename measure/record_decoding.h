#pragma once
// DecodeRecord: unfolds the raw block kept in the record into timed values, walking
// from the newest sample to the oldest through the thinned memory and the range steps.
namespace quillet {
struct App;
void DecodeRecord(App& app);
// Adapts the menus to the model of the present logger.
void ShowModelMenus(App& app);
}  // namespace quillet
