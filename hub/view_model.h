#pragma once
// Views of the state: each control the logic touches is a small record that the
// handlers write and the Qt shell mirrors into its widget after every event.
#include <string>

#include "core/bounded_table.h"

namespace quillet {

// Colours are kept as the platform keeps them: blue, green, red from the high byte.
constexpr int Rgb(int r, int g, int b) { return (b << 16) | (g << 8) | r; }
constexpr int kDefaultColor = -1;
constexpr int kYellow = Rgb(255, 255, 0);
constexpr int kGreen = Rgb(0, 255, 0);

struct Control {
  std::string caption;
  bool visible = true;
  bool enabled = true;
  bool checked = false;
  int foreColor = kDefaultColor;
  double value = 0;  // progress bars
};

// Controls of the main window, by the names the logic uses.
#define QUILLET_LOG1_CONTROLS(X)                                                          \
  X(Picture1) X(Picture2) X(Picture3) X(Picture4) X(Picture5) X(Picture6) X(Shape1)     \
  X(Frame1) X(Frame2) X(Label1) X(Label2) X(Label3) X(Label4) X(Label5) X(Label6)       \
  X(Label7) X(Label8) X(Label9) X(Label10) X(Label11) X(Label12) X(Label13) X(Label14)  \
  X(Label15) X(Label16) X(Label17) X(Label18) X(Label19) X(Label21) X(Label22)          \
  X(Label23) X(Label24) X(Label25) X(Label26) X(Label27) X(Label28) X(Label29)          \
  X(Label30) X(Label31) X(Label32) X(Label33) X(Label34) X(Label35) X(Label40)          \
  X(ProgressBar1) X(Command1) X(Command2) X(Command3) X(Command5) X(Command6)

// Menu entries of the main window in menu-bar order.
#define QUILLET_LOG1_MENUS(X)                                                             \
  X(mnuFile) X(mnuSaveTXT) X(mnuOpen) X(mnuPGraph) X(mnuPData) X(mnuGClip) X(mnuScaling) \
  X(mnu420sca) X(mnu100sca) X(mnu10sca) X(mnuLang) X(mnuExit) X(mnuSetTime)              \
  X(mnuDownload) X(mnuPort) X(mnuFunc) X(mnudegF) X(mnudegC) X(func01) X(func02)         \
  X(func03) X(mnuScale) X(mnuDate) X(mnuUsa) X(mnuEur) X(mnuHelp) X(mnuHelpCont)         \
  X(mnuHelpIndex) X(mnuHelpAbout)

// Place of a rectangle shown over a surface, in that surface's units.
struct Box {
  double left = 0, top = 0, width = 0, height = 0;
};

#define QUILLET_DECLARE_CONTROL(name) Control name;
#define QUILLET_VISIT_CONTROL(name) f(#name, name);

struct Log1View {
  QUILLET_LOG1_CONTROLS(QUILLET_DECLARE_CONTROL)
  QUILLET_LOG1_MENUS(QUILLET_DECLARE_CONTROL)
  Box Shape1Box;         // the zoom rectangle over Picture1; Shape1.visible shows it
  std::string caption;   // window title
  bool busy = false;     // hourglass pointer
  bool shown = false;

  template <typename F>
  void ForEach(F&& f) {
    QUILLET_LOG1_CONTROLS(QUILLET_VISIT_CONTROL)
    QUILLET_LOG1_MENUS(QUILLET_VISIT_CONTROL)
  }
};

struct FrmPortView {
  std::string caption;
  bool visible = false;
  Control Label1, Option1, Option2, Option3, Option4, Option5, Command1, Command2;
  template <typename F>
  void ForEach(F&& f) {
    f("Label1", Label1); f("Option1", Option1); f("Option2", Option2); f("Option3", Option3);
    f("Option4", Option4); f("Option5", Option5); f("Command1", Command1); f("Command2", Command2);
  }
};

struct LangfrmView {
  std::string caption;
  bool visible = false;
  Control Frame1, Option1, Option2, Option3, Option4, Option5, Option6, Option7, Option8;
  Control Command1, Command2;
  double oldIndex = 0;  // LanguageIndex when the dialog opened; the empty number counts as 0
  bool oldIndexEmpty = true;
  Control& Option(int n) {
    Control* o[] = {&Option1, &Option2, &Option3, &Option4, &Option5, &Option6, &Option7, &Option8};
    return *o[n - 1];
  }
  template <typename F>
  void ForEach(F&& f) {
    f("Frame1", Frame1);
    for (int i = 1; i <= 8; ++i) f(("Option" + std::to_string(i)).c_str(), Option(i));
    f("Command1", Command1); f("Command2", Command2);
  }
};

struct About2View {
  std::string caption;
  bool visible = false;
  Control Label1, Label2, Label3, Label4, Label5, Label6, Label7, Label8, Label9, Label10, Label11;
  Control Command1;
  template <typename F>
  void ForEach(F&& f) {
    f("Label1", Label1); f("Label2", Label2); f("Label3", Label3); f("Label4", Label4);
    f("Label5", Label5); f("Label6", Label6); f("Label7", Label7); f("Label8", Label8);
    f("Label9", Label9); f("Label10", Label10); f("Label11", Label11); f("Command1", Command1);
  }
};

struct FrmTimesetView {
  std::string caption;
  bool visible = false;
  // Label1..Label6 caption the six parts, Text1..Text6 show them, UpDown1..UpDown6 step
  // them; Label7 is the date in words, Label8 the time, Label9 the notice.
  Control Label1, Label2, Label3, Label4, Label5, Label6;
  Control Text1, Text2, Text3, Text4, Text5, Text6;
  Control UpDown1, UpDown2, UpDown3, UpDown4, UpDown5, UpDown6;
  Control Label7, Label8, Label9, Command2, Command3;
  Table<int, 1, 12> DaysInMonth;          // built at each opening
  Table<std::string, 1, 12> MonthNames;   // copied from the language at each opening
  int timerInterval = 0;                  // Timer1; 0 until the first opening starts it
  Control& Text(int n) {
    Control* t[] = {&Text1, &Text2, &Text3, &Text4, &Text5, &Text6};
    return *t[n - 1];
  }
  Control& Caption(int n) {
    Control* l[] = {&Label1, &Label2, &Label3, &Label4, &Label5, &Label6};
    return *l[n - 1];
  }
  Control& UpDown(int n) {
    Control* u[] = {&UpDown1, &UpDown2, &UpDown3, &UpDown4, &UpDown5, &UpDown6};
    return *u[n - 1];
  }
  template <typename F>
  void ForEach(F&& f) {
    for (int i = 1; i <= 6; ++i) {
      const std::string n = std::to_string(i);
      f(("Label" + n).c_str(), Caption(i));
      f(("Text" + n).c_str(), Text(i));
      f(("UpDown" + n).c_str(), UpDown(i));
    }
    f("Label7", Label7); f("Label8", Label8); f("Label9", Label9);
    f("Command2", Command2); f("Command3", Command3);
  }
};

// Func1, FUNC2 and FUNC3: one probe group each, three section captions over ten choices.
struct ProbeDialogView {
  ProbeDialogView() {
    for (int n = 1; n <= 30; ++n) Option[n].visible = false;
  }
  std::string caption;
  bool visible = false;
  Control Label1, Label2, Label3;
  Table<Control, 1, 30> Option;  // Option1 .. Option30
  Control Command1, Command2;
  Control& Label(int section) {
    Control* l[] = {&Label1, &Label2, &Label3};
    if (section < 1 || section > 3) throw Fault(kFaultSubscript);
    return *l[section - 1];
  }
  template <typename F>
  void ForEach(F&& f) {
    f("Label1", Label1); f("Label2", Label2); f("Label3", Label3);
    for (int n = 1; n <= 30; ++n) f(("Option" + std::to_string(n)).c_str(), Option[n]);
    f("Command1", Command1); f("Command2", Command2);
  }
};

// Describe: the record's title and texts. A text field's caption is its text; the shell
// writes what the user types straight into it.
struct DescribeView {
  std::string caption;
  bool visible = false;
  // Label9 heads the form, Label2 says what it is for; Label1, Label3, Label4 and Label5
  // caption Text1 (title), Text2 (ident), Text5 (location) and Text3 (description).
  Control Label1, Label2, Label3, Label4, Label5, Label9;
  Control Text1, Text2, Text3, Text5;
  Control Command1, Command2;
  template <typename F>
  void ForEach(F&& f) {
    f("Label1", Label1); f("Label2", Label2); f("Label3", Label3); f("Label4", Label4);
    f("Label5", Label5); f("Label9", Label9);
    f("Text1", Text1); f("Text2", Text2); f("Text3", Text3); f("Text5", Text5);
    f("Command1", Command1); f("Command2", Command2);
  }
};

// SaveOpt: which samples the Save command writes.
struct SaveOptView {
  std::string caption;
  bool visible = false;
  Control Command1, Command2, Command3;  // "Entire Record", "Displayed Graph Only", "Cancel"
  template <typename F>
  void ForEach(F&& f) {
    f("Command1", Command1); f("Command2", Command2); f("Command3", Command3);
  }
};

// PrintOpt: which samples the data printout prints when the graph is zoomed.
struct PrintOptView {
  std::string caption = "Print Options";
  bool visible = false;
  Control Command1{"Entire Record"}, Command2{"Displayed Graph Only"}, Command3{"Cancel"};
  template <typename F>
  void ForEach(F&& f) {
    f("Command1", Command1); f("Command2", Command2); f("Command3", Command3);
  }
};

// The six scale profile dialogs (custom, input100mv, input10v, input420 and the two
// bipolar ones): one parametrised form. Positions of the preview are in twips, origin at
// the top left of the dialog; the box has its corners at (4000, 1000) and (5920, 3000).
struct PreviewLine {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

struct ProfileDialogView {
  std::string caption;
  bool visible = false;
  bool created = false;  // the stored words are in place
  int fieldCount = 11;   // entry fields Text1..TextN in use
  int segmentCount = 10; // preview segments Line1..LineN in use
  int focus = 1;         // the field that has the focus: 1..17, 18 the unit
  // Label1..Label17 caption the rows of the entry fields Text1..Text17, top to bottom.
  Table<Control, 1, 17> Label, Text;
  Control Text18, Frame1;
  // Label18 "UNITS"; Label19..Label22 the axis captions under the box; Label23 lowest,
  // Label24 highest value, Label25 the unit; Label26 and Label27 the profile entry notice.
  Control Label18, Label19, Label20, Label21, Label22, Label23, Label24, Label25, Label26, Label27;
  Control Command1, Command2, Command3, Command4;  // OK, Cancel, Close, Clear All
  Control mnuFile420, mnuOpen1, mnuSave1, mnuPrint;
  Table<PreviewLine, 1, 20> Line;  // Line1..Line16 the curve; Line17..Line20 the box
  Table<Box, 19, 25> Place;        // where the preview's labels stand (left, top of the text)

  Control& PreviewLabel(int n) {
    Control* l[] = {&Label19, &Label20, &Label21, &Label22, &Label23, &Label24, &Label25};
    if (n < 19 || n > 25) throw Fault(kFaultSubscript);
    return *l[n - 19];
  }
  template <typename F>
  void ForEach(F&& f) {
    for (int i = 1; i <= 17; ++i) {
      const std::string n = std::to_string(i);
      f(("Label" + n).c_str(), Label[i]);
      f(("Text" + n).c_str(), Text[i]);
    }
    f("Text18", Text18); f("Frame1", Frame1); f("Label18", Label18);
    f("Label26", Label26); f("Label27", Label27);
    f("Command1", Command1); f("Command2", Command2); f("Command3", Command3); f("Command4", Command4);
    f("mnuFile420", mnuFile420); f("mnuOpen1", mnuOpen1); f("mnuSave1", mnuSave1); f("mnuPrint", mnuPrint);
  }
};

struct Views {
  Log1View log1;
  FrmPortView frmPort;
  LangfrmView langfrm;
  About2View about2;
  FrmTimesetView frmTimeset;
  ProbeDialogView Func1, FUNC2, FUNC3;
  DescribeView Describe;
  SaveOptView SaveOpt;
  PrintOptView PrintOpt;
  ProfileDialogView custom, input100mv, input10v, input420, inputbipo100mv, inputbipo10mv;
};

}  // namespace quillet
