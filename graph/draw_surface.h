#pragma once
// The surface the graph is drawn on, in its own units (the units of its mouse events too).
// The window program paints into an image; the tests record the calls.
#include <string>

#include "hub/view_model.h"

namespace quillet {

class DrawSurface {
 public:
  virtual ~DrawSurface() = default;
  virtual void Clear() = 0;
  // Inner size in surface units.
  virtual double Width() const = 0;
  virtual double Height() const = 0;
  // Applies to the text written after it.
  virtual void SetFont(const std::string& name, double size, bool bold) = 0;
  // A one-unit wide line. Colours as Rgb() makes them; kDefaultColor is the foreground
  // colour: the system text colour on the system background.
  virtual void Line(double x1, double y1, double x2, double y2, int colour = kDefaultColor) = 0;
  // Writes the text with its top left corner at (x, y); y grows downward.
  virtual void TextAt(double x, double y, const std::string& text) = 0;
};

}  // namespace quillet
