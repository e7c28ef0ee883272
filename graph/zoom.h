#pragma once
// Reading the graph with the mouse and zooming it by dragging a rectangle over it. All
// positions are in the units of the graph surface, as the last drawing laid it out.
#include "core/date_time.h"

namespace quillet {

struct App;
struct GraphState;
struct SampleRecord;

// Inverses of the plot transforms: the time under x and the value under y.
DateTime TimeAtX(const GraphState& g, double x);
double ValueAtY(const GraphState& g, double y);

// The shown sample at a time, from the time's place in the shown span alone, as if the
// samples were evenly spaced; held to 1..RecordSampleCount.
long IndexAtTime(const SampleRecord& r, DateTime t);

// Strictly inside the plot rectangle.
bool InsidePlot(const GraphState& g, double x, double y);

// Mouse events of the graph surface. buttons is nonzero while any button is held. The
// rectangle to show over the surface is Log1View::Shape1Box, shown while Shape1.visible.
void GraphMouseDown(App& app, double x, double y);
void GraphMouseMove(App& app, int buttons, double x, double y);
void GraphMouseUp(App& app, double x, double y);

// Cuts the shown samples down to the dragged selection and redraws.
void ApplyZoomSelection(App& app);

// Command2, "Unzoom": the whole record comes back in one step.
void UnzoomGraph(App& app);

}  // namespace quillet
