#pragma once
// The panel of the connected logger, kept in step with the link every 100 ms.
namespace quillet {
struct App;
void OnPanelTick(App& app);
// Redraws the graph of the record on screen, where there is one.
void RedrawGraph(App& app);
}  // namespace quillet
