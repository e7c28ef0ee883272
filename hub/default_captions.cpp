#include "hub/default_captions.h"

#include "hub/view_model.h"

namespace quillet {

// The captions stored in the windows themselves: they stand until the language table is
// applied, and wherever it is never applied (a dialog shown before the language is known).
void InstallDefaultCaptions(Views& v) {
  Log1View& w = v.log1;
  w.caption = "Quillet\u00ae Software";
  w.Label5.caption = "First data point:";
  w.Label11.caption = "Last data point:";
  w.Label23.caption = "points";
  w.Label24.caption = "Points:";
  w.mnuFile.caption = "&File";
  w.mnuSaveTXT.caption = "Save As .TXT";
  w.mnuOpen.caption = "Open";
  w.mnuPGraph.caption = "Print Graph";
  w.mnuPData.caption = "Print Data";
  w.mnuGClip.caption = "Graph to Clipboard";
  w.mnuScaling.caption = "Scaling";
  w.mnu420sca.caption = "4 to 20 mA";
  w.mnu100sca.caption = "0 to 100 mV";
  w.mnu10sca.caption = "0 to 10 V";
  w.mnuExit.caption = "Exit";
  w.mnuSetTime.caption = "&Time Set";
  w.mnuDownload.caption = "&Download";
  w.mnuPort.caption = "&Port";
  w.mnuFunc.caption = "Fu&nction";
  w.mnudegF.caption = "degF";
  w.mnudegC.caption = "degC";
  w.mnuScale.caption = "&Scale";
  w.mnuDate.caption = "Date Fr&mt";
  w.mnuUsa.caption = "USA";
  w.mnuEur.caption = "Europe";
  w.mnuHelp.caption = "&Help";
  w.mnuHelpCont.caption = "Contents";
  w.mnuHelpIndex.caption = "Search";
  w.mnuHelpAbout.caption = "About";
  w.mnuLang.caption = "Language";
  w.Frame2.caption = "Displayed Graph";
  w.Label33.caption = "Max:";
  w.Label32.caption = "Min:";
  w.Label27.caption = "Avg:";
  w.Command1.caption = "update";
  w.Command2.caption = "Unzoom";
  w.Command3.caption = "Annotate";
  w.Command5.caption = "High Cal";
  w.Command6.caption = "Low Cal";
  w.Label17.caption = "%";
  w.Label35.caption = "*";
  w.Label2.caption = "Label2";
  w.Label3.caption = "Label3";
  w.Shape1.visible = false;  // the zoom rectangle shows only during a drag

  FrmPortView& p = v.frmPort;
  p.caption = "PORT SELECTION";
  p.Label1.caption = "Select a communications port to connect with the logger";
  p.Option1.caption = "COM 1";
  p.Option2.caption = "COM 2";
  p.Option3.caption = "COM 3";
  p.Option4.caption = "COM 4";
  p.Option5.caption = "No Logger";
  p.Command1.caption = "OK";
  p.Command2.caption = "Cancel";

  LangfrmView& l = v.langfrm;
  l.caption = "Language";
  l.Command1.caption = "OK";
  l.Command2.caption = "Cancel";

  FrmTimesetView& c = v.frmTimeset;
  c.caption = "Set Date and Time";
  c.Label9.caption =
      "The program needs the correct present time to calculate timing for logger downloads.  Your system clock "
      "will not change.";
  const char* parts[] = {"Month:", "Day:", "Year:", "Hour:", "Minutes:", "Seconds:"};
  for (int i = 1; i <= 6; ++i) c.Caption(i).caption = parts[i - 1];
  c.Command2.caption = "OK";
  c.Command3.caption = "Cancel";
  for (ProbeDialogView* d : {&v.Func1, &v.FUNC2, &v.FUNC3}) {
    d->Command1.caption = "OK";
    d->Command2.caption = "Cancel";
  }

  DescribeView& d = v.Describe;
  d.caption = "Graph Description:";
  d.Label9.caption = "Graph Description:";
  d.Label2.caption = "Information which will be stored with the graph file";
  d.Label1.caption = "Graph Title:";
  d.Label3.caption = "Ident:";
  d.Label4.caption = "Location:";
  d.Label5.caption = "Description:";
  d.Command1.caption = "OK";
  d.Command2.caption = "Cancel";

  SaveOptView& so = v.SaveOpt;
  so.caption = "Save Options";
  so.Command1.caption = "Entire Record";
  so.Command2.caption = "Displayed Graph Only";
  so.Command3.caption = "Cancel";

  v.about2.caption = "About";
  v.about2.Command1.caption = "OK";
  v.about2.Label11.caption = "Desktop companion for serial data loggers";
}

}  // namespace quillet
