#include "core/settings_file.h"

#include <array>

#include "core/app.h"
#include "core/formatting.h"
#include "core/int16.h"
#include "core/text_file.h"

namespace quillet {

namespace {

// The rows of UnitByModel that the file's last line holds, in order.
constexpr std::array<int, 8> kUnitRows = {20, 21, 22, 23, 29, 30, 31, 32};

// The columns of the table line and the slope line, in file order.
std::array<ScaleColumn*, 8> TableLine(ScaleTables& t) {
  return {&t.ScaleTable100mv, &t.Carry[0], &t.ScaleTable10v, &t.Carry[1],
          &t.ScaleTable420,   &t.Carry[2], &t.Carry[3],      &t.ScaleTable};
}
std::array<ScaleColumn*, 8> SlopeLine(ScaleTables& t) {
  return {&t.ScaleSlope100mv, &t.Carry[4], &t.ScaleSlope10v, &t.Carry[5],
          &t.ScaleSlope420,   &t.Carry[6], &t.Carry[7],      &t.ScaleSlope};
}

// A numeric cell of the probe memory: number, or the empty number for nothing.
Number NumberCell(const Cell& c) {
  if (c.IsNumber()) return c.Number();
  if (c.EqualsEmptyText()) return Number();
  throw Fault(kFaultTypeMismatch, c.Text());
}

std::string TextCell(const Cell& c) {
  if (c.IsNumber()) return GeneralNumber(c.Number());
  return c.Text();
}

std::string Tail(const std::string& s, std::size_t n) { return s.size() <= n ? s : s.substr(s.size() - n); }

}  // namespace

std::string SettingsPath(const App& app) {
  if (!app.p.places.settingsFile.empty()) return app.p.places.settingsFile;
  return app.p.places.currentDir + "/" + kSettingsFileName;
}

void ReadSettings(App& app) {
  State& s = app.s;
  TextReader in = TextReader::Open(SettingsPath(app));
  std::array<std::string, 7> head;
  for (auto& field : head) field = in.ReadText();
  for (int i = 1; i <= 11; ++i) {
    s.probes.ProbeSerial[i] = NumberCell(in.ReadCell());
    s.probes.ProbeFactor[i] = NumberCell(in.ReadCell());
    s.probes.ProbeUnit[i] = TextCell(in.ReadCell());
    s.probes.ProbeLabel[i] = TextCell(in.ReadCell());
  }
  for (int i = 0; i <= 30; ++i) {
    for (ScaleColumn* col : TableLine(s.scales)) (*col)[i] = in.ReadCell();
    for (ScaleColumn* col : SlopeLine(s.scales)) (*col)[i] = in.ReadCell();
  }
  for (int row : kUnitRows) s.UnitByModel[row] = TextCell(in.ReadCell());
  // The file is closed here; what follows only takes effect for a file read whole.
  for (int i = 0; i <= 20; ++i) {
    s.scales.ScaleEntry420[i] = s.scales.ScaleTable420[i];
    s.scales.ScaleEntry10v[i] = s.scales.ScaleTable10v[i];
    s.scales.ScaleEntry100mv[i] = s.scales.ScaleTable100mv[i];
    s.scales.ScaleEntry[i] = s.scales.ScaleTable[i];
  }
  // Only the last characters of each settings line count; the words are never looked at.
  s.settings.ComPort = ToInt16(LeadingNumber(Tail(head[1], 1)));
  s.settings.LanguageIndex = LeadingNumber(Tail(head[2], 1));
  s.settings.BaudRate = LeadingNumber(Tail(head[3], 4));
  s.settings.UseFahrenheit = LeadingNumber(Tail(head[4], 1));
  s.settings.UsDateFormat = LeadingNumber(Tail(head[5], 1));
}

void WriteSettings(App& app) {
  State& s = app.s;
  TextWriter out;
  auto line = [&out](const std::string& text) {
    out.Text(text);
    out.EndLine();
  };
  line("[PORT etc]");
  line("comm port = " + StrOfNumber(s.settings.ComPort));
  line("language = " + StrOfNumber(s.settings.LanguageIndex));
  line("baud = " + StrOfNumber(s.settings.BaudRate));
  line("Fahrenheit = " + StrOfNumber(s.settings.UseFahrenheit));
  line("US Date Format = " + StrOfNumber(s.settings.UsDateFormat));
  line("[probe data]");
  for (int i = 1; i <= 11; ++i) {
    out.Num(s.probes.ProbeSerial[i]);
    out.Num(s.probes.ProbeFactor[i]);
    out.Text(s.probes.ProbeUnit[i]);
    out.Text(s.probes.ProbeLabel[i]);
    out.EndLine();
  }
  for (int i = 0; i <= 30; ++i) {
    for (ScaleColumn* col : TableLine(s.scales)) out.Put((*col)[i]);
    out.EndLine();
    for (ScaleColumn* col : SlopeLine(s.scales)) out.Put((*col)[i]);
    out.EndLine();
  }
  for (int row : kUnitRows) out.Text(s.UnitByModel[row]);
  out.EndLine();
  out.CommitTo(SettingsPath(app));
}

}  // namespace quillet
