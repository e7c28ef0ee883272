#pragma once
// A drawing surface that keeps every call, for tests that assert what was drawn.
#include <string>
#include <vector>

#include "graph/draw_surface.h"

namespace quillet::testing {

class RecordingSurface : public DrawSurface {
 public:
  struct LineCall {
    double x1, y1, x2, y2;
    int colour;
  };
  struct TextCall {
    double x, y;
    std::string text;
    std::string font;  // "name size" with " bold" when bold
  };

  RecordingSurface(double width = 8835, double height = 4215) : width_(width), height_(height) {}

  void Clear() override {
    ++clears;
    lines.clear();
    texts.clear();
  }
  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetFont(const std::string& name, double size, bool bold) override {
    font = name + " " + std::to_string(static_cast<int>(size)) + (bold ? " bold" : "");
  }
  void Line(double x1, double y1, double x2, double y2, int colour) override {
    lines.push_back({x1, y1, x2, y2, colour});
  }
  void TextAt(double x, double y, const std::string& text) override { texts.push_back({x, y, text, font}); }

  int clears = 0;
  std::string font;
  std::vector<LineCall> lines;
  std::vector<TextCall> texts;

 private:
  double width_, height_;
};

}  // namespace quillet::testing
