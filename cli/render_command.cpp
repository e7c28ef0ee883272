// quillet-cli render: a record file's graph drawn as the window draws it, into a PNG
// picture or a PDF page, with the scale results on request.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QBuffer>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "log1/hooks.h"
#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "cli/offscreen_gui.h"
#include "cli/headless_ui.h"
#include "hub/app.h"
#include "core/formatting.h"
#include "core/offline_platform.h"
#include "log1/startup.h"
#include "graph/draw_graph.h"
#include "storage/record_file.h"
#include "ui/painter_surface.h"
#include "ui/png_encoder.h"

namespace quillet {

namespace {

constexpr int kDefaultWidth = 1200, kDefaultHeight = 600;

QSize ParseSize(const std::string* text) {
  if (!text) return {kDefaultWidth, kDefaultHeight};
  int w = 0, h = 0;
  char tail = 0;
  if (std::sscanf(text->c_str(), "%dx%d%c", &w, &h, &tail) != 2 || w < 16 || h < 16 || w > 20000 || h > 20000) {
    throw CommandError{Say(CliText::RenderSize, {*text}), 2};
  }
  return {w, h};
}

bool EndsWith(const std::string& s, const std::string& tail) {
  if (s.size() < tail.size()) return false;
  for (std::size_t i = 0; i < tail.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(s[s.size() - tail.size() + i])) != tail[i]) return false;
  }
  return true;
}

void PrintAxes(const App& app) {
  const GraphState& g = app.s.graph;
  const SampleRecord& r = app.s.record;
  auto num = [](const char* name, double v) { std::printf("%s=%s\n", name, GeneralNumber(v).c_str()); };
  auto text = [](const char* name, const std::string& v) { std::printf("%s=%s\n", name, v.c_str()); };
  num("YShownMin", g.YShownMin);
  num("YShownMax", g.YShownMax);
  num("YAxisBottom", g.YAxisBottom);
  num("YAxisTop", g.YAxisTop);
  num("YTickStep", g.YTickStep);
  num("YTickCount", g.YTickCount);
  text("YLabelFormat", g.YLabelFormat);
  text("ReadoutFormat", g.ReadoutFormat);
  num("TimeTickSeconds", g.TimeTickSeconds);
  num("MinorPerMajor", g.MinorPerMajor);
  text("TimeLabelFormat", g.TimeLabelFormat);
  num("AxisTimeStart", g.AxisTimeStart);
  num("AxisTimeEnd", g.AxisTimeEnd);
  text("ShownMin", r.ShownMin.IsEmpty() ? "" : GeneralNumber(r.ShownMin));
  text("ShownMax", r.ShownMax.IsEmpty() ? "" : GeneralNumber(r.ShownMax));
  text("ShownAvg", r.ShownAvg.IsEmpty() ? "" : GeneralNumber(r.ShownAvg));
  for (const std::string& l : g.timeLabels) text("time_label", l);
  for (const std::string& l : g.valueLabels) text("value_label", l);
}

// Draws the graph on the target; returns false when the drawing left the surface alone.
bool DrawOn(App& app, QPaintDevice& device, QSize size) {
  QPainter painter(&device);
  PainterSurface surface(painter, size);
  DrawGraph(app, surface);
  return surface.Erased();
}

}  // namespace

int RunRender(const Options& opts) {
  const std::string* positional = Find(opts, "");
  if (!positional || positional->empty() || positional->find('\n') != std::string::npos) {
    throw CommandError{Say(CliText::RenderOneRecord), 2};
  }
  const std::string record = *positional;
  const std::string out = Required(opts, "render", "--out");
  const bool pdf = EndsWith(out, ".pdf");
  if (!pdf && !EndsWith(out, ".png")) throw CommandError{Say(CliText::RenderOutKind), 2};
  const QSize size = ParseSize(Find(opts, "--size"));

  const auto qapp = StartOffscreenGui();

  HeadlessUi ui;
  ui.printMessages = false;
  FixedClock clock(0);
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  const FilePlaces places = CommandPlaces(opts);
  Platform platform{ui, clock, timers, poster, transport, places};
  App app(platform, Log1Hooks());
  ui.app = &app;

  StartCommandApp(app);
  const int before = ui.messageCount;
  Dispatch(app, [&app, &record] {
    app.s.files.OpenFileName = record;
    ReadRecordFile(app, record);
  });
  if (ui.messageCount != before) {
    throw CommandError{
        Say(CliText::CannotReadWhy, {record, ui.lastMessage.empty() ? Say(CliText::NotARecordFile) : ui.lastMessage})};
  }
  if (app.s.record.RecordFromFile != 1) throw CommandError{Say(CliText::CannotRead, {record})};

  // The picture is made in memory and then put in place whole (core/file_commit.h).
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  bool drawn = false;
  try {
    if (pdf) {
      QPdfWriter writer(&file);
      writer.setResolution(96);
      writer.setPageSize(QPageSize(QSizeF(size.width() * 0.75, size.height() * 0.75), QPageSize::Point));
      writer.setPageMargins(QMarginsF(0, 0, 0, 0));
      drawn = DrawOn(app, writer, size);
    } else {
      QImage image(size, QImage::Format_RGB32);
      drawn = DrawOn(app, image, size);
      if (drawn) {
        const QByteArray png = EncodePng(image);
        if (png.isEmpty() || file.write(png) != png.size()) throw CommandError{Say(CliText::CannotWrite, {out})};
      }
    }
  } catch (const Fault& f) {
    throw CommandError{Say(CliText::CannotDraw, {record, f.detail().empty() ? FaultWords(f.number()) : f.detail()})};
  }
  if (!drawn) {
    throw CommandError{Say(CliText::NothingToDraw, {record, GeneralNumber(app.s.record.RecordSampleCount.Value())})};
  }
  file.close();
  WriteBinaryFile(out, bytes.toStdString());
  if (Find(opts, "--axes")) PrintAxes(app);
  return 0;
}

}  // namespace quillet
