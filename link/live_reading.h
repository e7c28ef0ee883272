#pragma once
// The live reading: "D" every 200 ms until acknowledged, about every two seconds. It is
// also the logger detector: the first reply tells that a logger is there at this speed.
#include <string>

namespace quillet {
struct App;

void OnLiveIntervalTick(App& app);
void OnLiveTick(App& app);
void LiveReplyEvent(App& app);  // receive event in live mode
void ShowLiveReading(App& app, const std::string& reply);

}  // namespace quillet
