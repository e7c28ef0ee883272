#include "graph/annotation.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "hub/app.h"
#include "graph/panel.h"

namespace quillet {

namespace {

constexpr std::size_t kIdentLimit = 40;
constexpr std::size_t kLocationLimit = 40;
constexpr std::size_t kRemarksLimit = 1024;

constexpr int kRowSorry = 54;
constexpr int kRowNotSaved = 67;
constexpr const char* kNoGraphToCopy = "No Graph to Copy.  Download First";

// The first `limit` characters of a UTF-8 text; a character is never cut in half.
std::string FirstCharacters(const std::string& text, std::size_t limit) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) == 0x80) continue;  // continuation byte of the character before
    if (count == limit) return text.substr(0, i);
    ++count;
  }
  return text;
}

}  // namespace

void AnnotateGraph(App& app) {
  ShowModal(app, DialogId::Describe);
  if (app.s.graph.DescribeChanged == 1) ApplyAnnotation(app);
}

void OpenDescribe(App& app) {
  const SampleRecord& r = app.s.record;
  DescribeView& d = app.v.Describe;
  d.Text1.caption = r.RecordTitle;
  d.Text2.caption = r.RecordIdent;
  d.Text3.caption = r.RecordRemarks;
  d.Text5.caption = r.RecordLocation;
  d.visible = true;
}

void DescribeOk(App& app) {
  SampleRecord& r = app.s.record;
  DescribeView& d = app.v.Describe;
  // Compared before the cut, so a text over its limit counts as changed at every OK.
  if (d.Text1.caption != r.RecordTitle || d.Text2.caption != r.RecordIdent || d.Text3.caption != r.RecordRemarks ||
      d.Text5.caption != r.RecordLocation) {
    app.s.graph.DescribeChanged = 1;
  }
  r.RecordTitle = d.Text1.caption;
  r.RecordIdent = FirstCharacters(d.Text2.caption, kIdentLimit);
  r.RecordRemarks = FirstCharacters(d.Text3.caption, kRemarksLimit);
  r.RecordLocation = FirstCharacters(d.Text5.caption, kLocationLimit);
  // The record file keeps these texts between double quotes, with no escape for one inside.
  for (std::string* t : {&r.RecordTitle, &r.RecordIdent, &r.RecordRemarks, &r.RecordText4, &r.RecordLocation,
                         &r.RecordText6, &r.RecordStats}) {
    std::replace(t->begin(), t->end(), '"', ' ');
  }
  d.visible = false;
}

void DescribeCancel(App& app) {
  app.s.graph.DescribeChanged = 0;
  app.v.Describe.visible = false;
}

void ApplyAnnotation(App& app) {
  Log1View& w = app.v.log1;
  RedrawGraph(app);
  app.s.record.RecordSaved = 0;
  w.Label16.caption = LanguageText(app, kRowNotSaved);
  w.Label16.foreColor = kYellow;
  w.mnuSaveTXT.enabled = true;
}

void CopyGraphToClipboard(App& app) {
  if (app.s.link.DownloadPercent.Value() != 100) {
    MessageBox(app, kNoGraphToCopy, LanguageText(app, kRowSorry), MsgButtons::Ok, MsgIcon::Information);
    return;
  }
  app.p.ui.PutGraphOnClipboard();
}

}  // namespace quillet
