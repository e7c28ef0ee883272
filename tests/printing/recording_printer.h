#pragma once
// A printer that keeps every call with its place, font and line width, for tests
// that assert a printout as numbers. A text line is 20 units per point of the font high.
// The dialog can answer Cancel, and the printer can fail at a given call.
#include <functional>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/printer_surface.h"
#include "graph/graph_test_app.h"

namespace quillet::testing {

class RecordingPrinter : public PrinterSurface {
 public:
  struct Call {
    std::string op;  // "line", "text" (TextAt) or "textline"
    double x1, y1, x2, y2;
    int colour, width;
    std::string text, font;
  };

  void ShowPrinterDialog(const std::string& title) override {
    titles.push_back(title);
    if (spy) spy("dialog");
    if (dialogFault) throw Fault(dialogFault);
  }
  double Width() const override { return 1000; }
  double Height() const override { return 2000; }
  void SetFont(const std::string& name, double size, bool bold) override {
    font = name + " " + std::to_string(static_cast<int>(size)) + (bold ? " bold" : "");
    size_ = size;
  }
  void SetLineWidth(int n) override { width = n; }
  void Line(double x1, double y1, double x2, double y2, int colour) override {
    Record({"line", x1, y1, x2, y2, colour, width, "", ""});
  }
  void TextAt(double x, double y, const std::string& text) override {
    Record({"text", x, y, 0, 0, 0, 0, text, font});
  }
  void MoveTo(double x, double y) override { x_ = x, y_ = y; }
  double CurrentY() const override { return y_; }
  void TextLine(const std::string& text) override {
    Record({"textline", x_, y_, 0, 0, 0, 0, text, font});
    x_ = 0;
    y_ += 20 * size_;
  }
  void NewPage() override { x_ = y_ = 0; }
  void EndDoc() override { ++endDocs; }

  // The calls of one kind; lines only of the given colour.
  std::vector<Call> Only(const std::string& op, int lineColour = 0) const {
    std::vector<Call> out;
    for (const Call& c : calls)
      if (c.op == op && (op != "line" || c.colour == lineColour)) out.push_back(c);
    return out;
  }

  int dialogFault = 0;  // the dialog's answer: 0 OK, 32755 Cancel, 482 a printer that fails
  long failAtCall = 0;  // the printer fails (482) at this drawing call, counting from 1
  std::function<void(const std::string& op)> spy;  // told of the dialog and each call
  std::vector<std::string> titles;
  std::vector<Call> calls;
  std::string font;
  int width = 1, endDocs = 0;

 private:
  void Record(const Call& c) {
    if (spy) spy(c.op);
    if (failAtCall != 0 && static_cast<long>(calls.size()) + 1 == failAtCall) throw Fault(kFaultPrinter);
    calls.push_back(c);
  }
  double size_ = 10, x_ = 0, y_ = 0;
};

// The graph's application with a printer of a page 1000 by 2000 units.
struct PrintApp : GraphApp {
  PrintApp() { platform->printer = &printer; }
  RecordingPrinter printer;
};

}  // namespace quillet::testing
