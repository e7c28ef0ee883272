#include "storage/record_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "hub/app.h"
#include "core/fault.h"
#include "core/formatting.h"
#include "core/text_file.h"

namespace quillet {

namespace {

constexpr const char* kFileTag = "loggerfile";
constexpr const char* kRevision = "rev02";
constexpr const char* kOldRevision = "rev01";
constexpr const char* kTimeFormat = "#####.########";  // days, to eight decimals
constexpr const char* kRecordFilter = "txt files (*.txt)|*.txt";
// The literals carry the blanks that space the three figures apart.
constexpr const char* kStatsMax = "Max = ";
constexpr const char* kStatsMin = "         Min = ";
constexpr const char* kStatsAvg = "         Avg = ";

// Language rows of the Open command and the reader.
constexpr int kRowNotRecordFile = 53;
constexpr int kRowOpenTitle = 54;
constexpr int kRowFileMissing = 55;
constexpr int kRowFileDamaged = 56;
constexpr int kRowSaved = 62;
constexpr int kRowOpenUnsavedTitle = 74;
constexpr int kRowOpenUnsaved = 76;

// The unit texts a file can name, and the graph's scale choice each stands for. "V rms "
// with its trailing blank is the lower of the two voltage ranges.
struct UnitCode {
  const char* unit;
  int code;
};
constexpr UnitCode kUnitCodes[] = {{"degF", 1}, {"degC", 2}, {"kOhm", 3},  {"Volt", 4},  {"Amp", 5},
                                   {"% RH", 6}, {"A rms", 7}, {"V rms", 10}, {"V rms ", 11}};

// The seven texts of lines 4 to 10, in file order.
std::array<std::string*, 7> DescriptionTexts(SampleRecord& r) {
  return {&r.RecordTitle,    &r.RecordIdent, &r.RecordRemarks, &r.RecordText4,
          &r.RecordLocation, &r.RecordText6, &r.RecordStats};
}

// The reader works on a file that may have been closed under it (a rejected first line);
// reading then is fault 52, which ends the routine without a word.
class RecordInput {
 public:
  void Open(const std::string& path) { file_.emplace(TextReader::Open(path)); }
  void Close() { file_.reset(); }
  TextReader& operator()() {
    if (!file_) throw Fault(kFaultBadFileName, "the record file was closed");
    return *file_;
  }

 private:
  std::optional<TextReader> file_;
};

double SampleField(std::string text, bool commasArePoints) {
  // Sample lines are written with the locale's decimal sign, so a comma may stand for the point.
  if (commasArePoints) std::replace(text.begin(), text.end(), ',', '.');
  return LeadingNumber(text);
}

void ReadRecordBody(App& app, const std::string& path, RecordInput& in) {
  State& s = app.s;
  SampleRecord& r = s.record;
  Log1View& w = app.v.log1;

  in.Open(path);
  if (in().ReadText() != kFileTag) {
    in.Close();
    MessageBox(app, LanguageText(app, kRowNotRecordFile), LanguageText(app, kRowOpenTitle), MsgButtons::Ok,
               MsgIcon::Information);
    s.files.OpenRetry = 1;
    MnuOpen(app);
    // Carries on with the file closed: the texts are emptied below, even those of a good
    // file just opened by the nested command, and the next read ends the routine.
  }
  const auto texts = DescriptionTexts(r);
  for (std::string* t : texts) t->clear();
  w.Command2.enabled = false;

  const std::string revision = in().ReadText();
  r.RecordSampleCount = LeadingNumber(in().ReadText());
  // rev02 keeps the seven texts one to a line, rev01 on one line; as fields they read
  // alike. Other revisions have none.
  if (revision == kRevision || revision == kOldRevision) {
    for (std::string* t : texts) *t = in().ReadText();
  }
  const double rangeFactor = in().ReadNumber();
  r.RecordRangeFactor = rangeFactor == 0 ? 1.0 : rangeFactor;
  r.LoggerNumber = in().ReadNumber();
  const std::string unit = in().ReadText();
  for (const UnitCode& u : kUnitCodes) {
    if (unit != u.unit) continue;
    r.RecordModelCode = u.code;
    if (u.code == 10) r.RecordRangeFactor = 2;
    if (u.code == 11) r.RecordRangeFactor = 1;
  }

  const double count = r.RecordSampleCount;
  const bool tabbed = revision == kRevision;
  for (long i = 1; i <= count; ++i) {
    double time = 0, value = 0;
    if (tabbed) {
      const std::string line = in().ReadLine();
      const std::size_t tab = line.find('\t');
      if (tab == std::string::npos) throw Fault(kFaultOverflow, "a sample line without a tab");
      time = SampleField(line.substr(0, tab), true);
      value = SampleField(line.substr(tab + 1), true);
    } else {
      time = SampleField(in().ReadText(), false);
      value = SampleField(in().ReadText(), false);
    }
    // Past the table's end (more samples than a record holds) this is fault 9.
    r.FullTimes[i] = time;
    r.FullValues[i] = value;
    r.ShownTimes[i] = time;
    r.ShownValues[i] = value;
  }
  in.Close();
  s.files.OpenRetry = 0;

  r.RecordUnitText = unit;
  w.Label16.caption = LanguageText(app, kRowSaved);
  w.Label16.foreColor = kGreen;
  w.Label16.visible = true;
  s.link.DownloadPercent = 100;
  w.ProgressBar1.visible = w.Label14.visible = w.Label17.visible = false;
  w.Command3.enabled = true;

  // A record from a file is final: no probe or scale choice applies to it any more.
  r.RecordFromFile = 1;
  w.mnuFunc.visible = w.mnuScale.visible = false;
  r.RecordSaved = 1;
  w.mnuSaveTXT.enabled = false;
  w.mnuPGraph.enabled = w.mnuPData.enabled = w.mnuGClip.enabled = true;
  for (Control* c : {&w.Label5, &w.Label11, &w.Label2, &w.Label4, &w.Label6, &w.Label3}) c->visible = false;

  r.FullSampleCount = r.RecordSampleCount;
  r.FullMax = r.FullValues.at(1);
  r.FullMin = r.FullValues.at(1);
  double sum = 0;
  for (long i = 1; i <= count; ++i) {
    const double v = r.FullValues[i];
    if (v > r.FullMax) r.FullMax = v;
    if (v < r.FullMin) r.FullMin = v;
    sum += v;
  }
  r.FullAvg = Divide(sum, count);
  RedrawRecordGraph(app);
}

}  // namespace

std::string RecordValueFormat(double modelCode) {
  switch (static_cast<long>(modelCode)) {
    case 16: case 28: case 29: return "###0.####";
    case 17: case 18: case 20: case 25: case 26: case 64: case 65: case 66: return "###0.##";
    case 19: case 27: case 31: return "###0.#";
    case 22: case 24: case 30: return "###0.###";
    default: return "";
  }
}

void WriteRecordFile(App& app, const std::string& path, bool displayedOnly) {
  State& s = app.s;
  SampleRecord& r = s.record;
  Log1View& w = app.v.log1;
  const std::string format = RecordValueFormat(r.RecordModelCode);

  const Number count = displayedOnly ? r.RecordSampleCount : r.FullSampleCount;
  const SampleTimes& times = displayedOnly ? r.ShownTimes : r.FullTimes;
  const SampleValues& values = displayedOnly ? r.ShownValues : r.FullValues;
  const Number max = displayedOnly ? r.ShownMax : r.FullMax;
  const Number min = displayedOnly ? r.ShownMin : r.FullMin;
  const Number avg = displayedOnly ? r.ShownAvg : r.FullAvg;
  r.RecordStats = kStatsMax + FormatNumber(max, format) + kStatsMin + FormatNumber(min, format) + kStatsAvg +
                  FormatNumber(avg, format);

  TextWriter out("\r\n");
  out.Text(kFileTag);
  out.EndLine();
  out.Text(kRevision);
  out.EndLine();
  out.Num(count);
  out.EndLine();
  for (const std::string* t : DescriptionTexts(r)) {
    out.Text(*t);
    out.EndLine();
  }
  out.Num(r.RecordRangeFactor);
  out.EndLine();
  out.Num(r.LoggerNumber);
  out.EndLine();
  out.Text(r.RecordUnitText);
  out.EndLine();
  for (long i = 1; i <= count; ++i) {
    out.Raw(FormatNumber(times[i], kTimeFormat) + '\t' + FormatNumber(values[i], format));
    out.EndLine();
  }
  out.CommitTo(path);

  if (displayedOnly) {
    w.Label16.caption = LanguageText(app, kRowSaved);
    w.Label16.foreColor = kGreen;
    w.Label16.visible = true;
    app.p.ui.Refresh();
    s.files.DisplayedSaved = 1;
    w.mnuSaveTXT.enabled = false;
    return;
  }
  r.RecordSaved = 1;
  // A zoomed part can still be saved after the whole record.
  w.mnuSaveTXT.enabled = s.graph.GraphZoomed != 0;
  if (s.graph.GraphZoomed != 1) {
    w.Label16.caption = LanguageText(app, kRowSaved);
    w.Label16.foreColor = kGreen;
    app.p.ui.Refresh();
  }
}

void ReadRecordFile(App& app, const std::string& path) {
  RecordInput in;
  try {
    ReadRecordBody(app, path, in);
  } catch (const Fault& f) {
    // What was read so far stays in the record; there are no statistics and no redraw.
    if (f.number() == kFaultBadFileName) return;
    in.Close();
    const int row = f.number() == kFaultFileNotFound ? kRowFileMissing : kRowFileDamaged;
    MessageBox(app, LanguageText(app, row), LanguageText(app, kRowOpenTitle), MsgButtons::Ok, MsgIcon::Information);
    app.s.files.OpenRetry = 1;
    MnuOpen(app);
  }
}

void MnuOpen(App& app) {
  State& s = app.s;
  if (s.files.OpenRetry != 1 && s.record.RecordSaved.Value() != 1 && s.link.DownloadPercent.Value() != 0) {
    if (MessageBox(app, LanguageText(app, kRowOpenUnsaved), LanguageText(app, kRowOpenUnsavedTitle),
                   MsgButtons::OkCancel, MsgIcon::Stop) != MsgAnswer::Ok) {
      return;
    }
  }
  std::string path;
  try {
    path = app.p.ui.OpenFileDialog(kRecordFilter);
  } catch (const Fault& f) {
    if (f.number() == kFaultCancel) return;
    throw;
  }
  s.files.OpenFileName = path;
  // A missing or damaged file is handled inside: the user is told and chooses again.
  ReadRecordFile(app, path);
}

}  // namespace quillet
