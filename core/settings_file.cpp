#include "core/settings_file.h"

#include <array>

#include "core/fault.h"
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

void ReadSettingsFile(const std::string& path, const SettingsFields& f) {
  TextReader in = TextReader::Open(path);
  std::array<std::string, 7> head;
  for (auto& field : head) field = in.ReadText();
  for (int i = 1; i <= 11; ++i) {
    f.probes.ProbeSerial[i] = NumberCell(in.ReadCell());
    f.probes.ProbeFactor[i] = NumberCell(in.ReadCell());
    f.probes.ProbeUnit[i] = TextCell(in.ReadCell());
    f.probes.ProbeLabel[i] = TextCell(in.ReadCell());
  }
  for (int i = 0; i <= 30; ++i) {
    for (ScaleColumn* col : TableLine(f.scales)) (*col)[i] = in.ReadCell();
    for (ScaleColumn* col : SlopeLine(f.scales)) (*col)[i] = in.ReadCell();
  }
  for (int row : kUnitRows) f.unitByModel[row] = TextCell(in.ReadCell());
  // The file is closed here; what follows only takes effect for a file read whole.
  for (int i = 0; i <= 20; ++i) {
    f.scales.ScaleEntry420[i] = f.scales.ScaleTable420[i];
    f.scales.ScaleEntry10v[i] = f.scales.ScaleTable10v[i];
    f.scales.ScaleEntry100mv[i] = f.scales.ScaleTable100mv[i];
    f.scales.ScaleEntry[i] = f.scales.ScaleTable[i];
  }
  // Only the last characters of each settings line count; the words are never looked at.
  f.settings.ComPort = ToInt16(LeadingNumber(Tail(head[1], 1)));
  f.settings.LanguageIndex = LeadingNumber(Tail(head[2], 1));
  f.settings.BaudRate = LeadingNumber(Tail(head[3], 4));
  f.settings.UseFahrenheit = LeadingNumber(Tail(head[4], 1));
  f.settings.UsDateFormat = LeadingNumber(Tail(head[5], 1));
}

void WriteSettingsFile(const std::string& path, const SettingsFields& f) {
  TextWriter out;
  auto line = [&out](const std::string& text) {
    out.Text(text);
    out.EndLine();
  };
  line("[PORT etc]");
  line("comm port = " + StrOfNumber(f.settings.ComPort));
  line("language = " + StrOfNumber(f.settings.LanguageIndex));
  line("baud = " + StrOfNumber(f.settings.BaudRate));
  line("Fahrenheit = " + StrOfNumber(f.settings.UseFahrenheit));
  line("US Date Format = " + StrOfNumber(f.settings.UsDateFormat));
  line("[probe data]");
  for (int i = 1; i <= 11; ++i) {
    out.Num(f.probes.ProbeSerial[i]);
    out.Num(f.probes.ProbeFactor[i]);
    out.Text(f.probes.ProbeUnit[i]);
    out.Text(f.probes.ProbeLabel[i]);
    out.EndLine();
  }
  for (int i = 0; i <= 30; ++i) {
    for (ScaleColumn* col : TableLine(f.scales)) out.Put((*col)[i]);
    out.EndLine();
    for (ScaleColumn* col : SlopeLine(f.scales)) out.Put((*col)[i]);
    out.EndLine();
  }
  for (int row : kUnitRows) out.Text(f.unitByModel[row]);
  out.EndLine();
  out.CommitTo(path);
}

}  // namespace quillet
