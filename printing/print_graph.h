#pragma once
// The graph printout: the graph as it stands on screen, zoomed or not, on one page, laid
// out in the printer's proportions from the scales the last drawing left, with the
// statistics and, on request, the annotation.
#include <string>

#include "core/printer_surface.h"

namespace quillet {

struct App;

// mnuPGraph.
void PrintGraph(App& app);

// Prints text in lines of about 50 characters broken on blanks, each written with
// TextLine at x = left from the present y on. The right end of each line stays on the
// grid of multiples of 50, and the character at that end is never printed: the last
// character of the text is left out, and one character prints nothing. A stretch of 49
// or more characters without a blank fails with fault 5, with the lines before it
// printed.
void WrapDescription(PrinterSurface& printer, const std::string& text, double left);

}  // namespace quillet
