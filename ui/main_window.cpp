#include "ui/main_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "core/own_texts.h"
#include "hub/app.h"
#include "core/fault.h"
#include "log1/language.h"
#include "log1/startup.h"
#include "graph/annotation.h"
#include "link/download.h"
#include "link/link_supervision.h"
#include "link/timeset.h"
#include "graph/zoom.h"
#include "measure/probe_table.h"
#include "measure/temperature_unit.h"
#include "storage/record_file.h"
#include "storage/text_export.h"
#include "ui/dialogs.h"
#include "ui/graph_view.h"
#include "log1/scale_menu.h"
#include "ui/profile_dialog.h"
#include "printing/print_data.h"
#include "printing/print_graph.h"
#include "ui/print_opt_dialog.h"
#include "ui/printer_surface.h"

namespace quillet {

namespace {

// The start screen's picture: a small logger with its probe lead.
QPixmap StartPicture() {
  QPixmap pm(140, 110);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QColor(40, 60, 90), 2));
  p.setBrush(QColor(70, 110, 160));
  p.drawRoundedRect(20, 15, 70, 85, 10, 10);
  p.setBrush(QColor(210, 230, 240));
  p.drawRect(32, 28, 46, 26);
  p.setPen(QPen(QColor(30, 120, 60), 2));
  p.drawPolyline(QPolygon({QPoint(35, 48), QPoint(45, 40), QPoint(55, 45), QPoint(65, 33), QPoint(75, 37)}));
  p.setPen(QPen(QColor(40, 40, 40), 3));
  p.drawLine(90, 80, 125, 80);
  p.drawLine(125, 80, 125, 40);
  return pm;
}

// "description|pattern|description|pattern": Qt takes the descriptions, which name
// their patterns in brackets.
QString QtFilter(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i < parts.size(); i += 2) {
    QString d = parts[i];
    if (i + 1 < parts.size() && !d.contains('(')) d += " (" + parts[i + 1] + ")";
    filters << d;
  }
  return filters.join(";;");
}

QMessageBox::Icon IconOf(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::Stop: return QMessageBox::Critical;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Information: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

}  // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent) {
  setObjectName("Log1");
  BuildMenus();
  BuildCentral();
  resize(1100, 760);
  // Below this the plot gets too low to read and the panel's lines pile up.
  setMinimumSize(kMinimumWidth, kMinimumHeight);
}

MainWindow::~MainWindow() = default;

QMenu* MainWindow::AddMenu(QMenu* parent, const char* name) {
  QMenu* m = parent ? parent->addMenu(QString()) : menuBar()->addMenu(QString());
  m->setObjectName(name);
  return m;
}

void MainWindow::Run(std::function<void(App&)> handler) {
  if (!app_) return;
  App& app = *app_;
  Dispatch(app, [&app, handler] { handler(app); });
}

QAction* MainWindow::AddAction(QMenu* menu, const char* name, std::function<void(App&)> handler, bool checkable) {
  QAction* a = menu->addAction(QString());
  a->setObjectName(name);
  a->setCheckable(checkable);
  if (handler) {
    connect(a, &QAction::triggered, this, [this, handler, a, checkable] {
      // The logic owns the check marks; undo Qt's own toggle before it decides.
      if (checkable) a->setChecked(!a->isChecked());
      Run(handler);
    });
  }
  return a;
}

QAction* MainWindow::AddBarCommand(const char* name, std::function<void(App&)> handler) {
  QAction* a = menuBar()->addAction(QString());
  a->setObjectName(name);
  connect(a, &QAction::triggered, this, [this, handler] { Run(handler); });
  return a;
}

void MainWindow::BuildMenus() {
  QMenu* file = AddMenu(nullptr, "mnuFile");
  AddAction(file, "mnuSaveTXT", MnuSaveTXT);
  AddAction(file, "mnuOpen", MnuOpen);
  file->addSeparator();
  AddAction(file, "mnuPGraph", PrintGraph);
  AddAction(file, "mnuPData", PrintData);
  AddAction(file, "mnuGClip", CopyGraphToClipboard);
  file->addSeparator();
  QMenu* scaling = AddMenu(file, "mnuScaling");
  AddAction(scaling, "mnu420sca", Mnu420sca);
  AddAction(scaling, "mnu100sca", Mnu100sca);
  AddAction(scaling, "mnu10sca", Mnu10sca);
  file->addSeparator();
  AddAction(file, "mnuLang", MnuLang);
  file->addSeparator();
  AddAction(file, "mnuExit", [this](App&) { close(); });

  AddBarCommand("mnuSetTime", MnuSetTime);
  AddBarCommand("mnuDownload", StartDownload);
  AddBarCommand("mnuPort", MnuPort);

  QMenu* func = AddMenu(nullptr, "mnuFunc");
  func->addSeparator();
  AddAction(func, "mnudegF", [](App& a) { SetTemperatureUnit(a, 1); }, true);
  AddAction(func, "mnudegC", [](App& a) { SetTemperatureUnit(a, 0); }, true);
  AddAction(func, "func01", Func01);
  AddAction(func, "func02", Func02);
  AddAction(func, "func03", Func03);

  AddBarCommand("mnuScale", MnuScale);

  QMenu* date = AddMenu(nullptr, "mnuDate");
  AddAction(date, "mnuUsa", MnuUsa, true);
  AddAction(date, "mnuEur", MnuEur, true);

  QMenu* help = AddMenu(nullptr, "mnuHelp");
  AddAction(help, "mnuHelpCont", MnuHelpCont);
  AddAction(help, "mnuHelpIndex", MnuHelpIndex);
  help->addSeparator();
  AddAction(help, "mnuHelpAbout", MnuHelpAbout);

  // The usual keys, beside the mnemonics of the captions.
  const std::pair<const char*, QKeySequence> keys[] = {
      {"mnuOpen", QKeySequence(Qt::CTRL | Qt::Key_O)},   {"mnuSaveTXT", QKeySequence(Qt::CTRL | Qt::Key_S)},
      {"mnuPGraph", QKeySequence(Qt::CTRL | Qt::Key_P)}, {"mnuExit", QKeySequence(Qt::CTRL | Qt::Key_Q)},
      {"mnuHelpCont", QKeySequence(Qt::Key_F1)}};
  for (const auto& [name, key] : keys) {
    if (QAction* a = findChild<QAction*>(name)) {
      a->setShortcut(key);
      a->setShortcutContext(Qt::ApplicationShortcut);
    }
  }
}

QLabel* MainWindow::AddLabel(QWidget* parent, const char* name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  return l;
}

namespace {

// The rows under the graph keep their height while their labels come and go: otherwise
// the graph shrinks and is drawn again the moment the pointer first crosses it, and a
// zoom drag would start on one drawing and end on another.
void KeepPlaceWhenHidden(QWidget* w) {
  QSizePolicy policy = w->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  w->setSizePolicy(policy);
  if (qobject_cast<QLabel*>(w)) w->setMinimumHeight(w->fontMetrics().height() + w->contentsMargins().top() +
                                                     w->contentsMargins().bottom());
}

}  // namespace

void MainWindow::BuildCentral() {
  auto* central = new QWidget(this);
  setCentralWidget(central);
  auto* outer = new QVBoxLayout(central);
  outer->setContentsMargins(10, 6, 10, 6);
  outer->setSpacing(6);

  // Graph surface; before the first graph it shows the start screen's pictures and
  // product labels.
  graph_ = new GraphView(central);
  auto* graph = graph_;
  auto* start = new QVBoxLayout(graph->StartScreen());
  start->addStretch();
  auto* picture = AddLabel(graph->StartScreen(), "Picture2");
  picture->setPixmap(StartPicture());
  picture->setAlignment(Qt::AlignCenter);
  start->addWidget(picture);
  for (const char* name : {"Picture3", "Picture4", "Picture5", "Picture6"}) {
    auto* p = AddLabel(graph->StartScreen(), name);
    p->hide();
  }
  auto* product = AddLabel(graph->StartScreen(), "Label8");
  QFont big("Arial");
  big.setPointSizeF(13.5);
  big.setBold(true);
  product->setFont(big);
  product->setAlignment(Qt::AlignCenter);
  start->addWidget(product);
  auto* sub = AddLabel(graph->StartScreen(), "Label28");
  QFont small("Arial");
  small.setPointSizeF(10);
  sub->setFont(small);
  sub->setAlignment(Qt::AlignCenter);
  start->addWidget(sub);
  start->addStretch();
  outer->addWidget(graph, 62);

  // Cursor readout and notices under the graph; a clear gap keeps "10:15:00 am" and
  // the value that follows from reading as one.
  auto* readout = new QHBoxLayout;
  readout->setSpacing(16);
  for (const char* name : {"Label25", "Label9", "Label10", "Label12"}) {
    auto* l = AddLabel(central, name);
    l->setMinimumWidth(70);
    readout->addWidget(l);
  }
  readout->addStretch();
  auto* other = AddLabel(central, "Label7");
  QPalette warn = other->palette();
  warn.setColor(QPalette::WindowText, QColor(180, 0, 0));
  other->setPalette(warn);
  readout->addWidget(other);
  readout->addSpacing(20);
  readout->addWidget(AddLabel(central, "Label18"));
  for (int i = 0; i < readout->count(); ++i) {
    if (QWidget* w = readout->itemAt(i)->widget()) KeepPlaceWhenHidden(w);
  }
  outer->addLayout(readout);

  // Logger panel, displayed-graph frame and buttons: the live display group.
  auto* middle = new QHBoxLayout;
  auto* panel = new QGroupBox(central);
  panel->setObjectName("Frame1");
  auto* pg = new QGridLayout(panel);
  pg->addWidget(AddLabel(panel, "Label13"), 0, 0);
  pg->addWidget(AddLabel(panel, "Label34"), 0, 1, 1, 2);
  auto* mark = AddLabel(panel, "Label35");
  QFont markFont = mark->font();
  markFont.setBold(true);
  markFont.setPointSizeF(markFont.pointSizeF() + 4);
  mark->setFont(markFont);
  pg->addWidget(mark, 0, 3, Qt::AlignRight);
  auto* value = AddLabel(panel, "Label19");
  QFont valueFont = value->font();
  valueFont.setPointSizeF(valueFont.pointSizeF() * 2.2);
  valueFont.setBold(true);
  value->setFont(valueFont);
  value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  pg->addWidget(value, 1, 0, 1, 2);
  auto* unit = AddLabel(panel, "Label21");
  QFont unitFont = unit->font();
  unitFont.setPointSizeF(unitFont.pointSizeF() * 1.4);
  unit->setFont(unitFont);
  pg->addWidget(unit, 1, 2, 1, 2);
  pg->addWidget(AddLabel(panel, "Label5"), 2, 0);
  pg->addWidget(AddLabel(panel, "Label2"), 2, 1, 1, 3);
  pg->addWidget(AddLabel(panel, "Label11"), 3, 0);
  pg->addWidget(AddLabel(panel, "Label3"), 3, 1, 1, 3);
  pg->addWidget(AddLabel(panel, "Label4"), 4, 0, Qt::AlignRight);
  pg->addWidget(AddLabel(panel, "Label6"), 4, 1);
  pg->addWidget(AddLabel(panel, "Label22"), 4, 2, Qt::AlignRight);
  pg->addWidget(AddLabel(panel, "Label23"), 4, 3);
  auto* clock = AddLabel(panel, "Label1");
  QFont clockFont = clock->font();
  clockFont.setBold(true);
  clock->setFont(clockFont);
  pg->addWidget(clock, 5, 0, 1, 4);
  pg->setColumnStretch(1, 1);
  middle->addWidget(panel, 5);

  auto* shown = new QGroupBox(central);
  shown->setObjectName("Frame2");
  auto* sg = new QGridLayout(shown);
  const char* names[][2] = {{"Label24", "Label40"}, {"Label33", "Label29"}, {"Label32", "Label30"}, {"Label27", "Label31"}};
  for (int r = 0; r < 4; ++r) {
    sg->addWidget(AddLabel(shown, names[r][0]), r, 0);
    auto* v = AddLabel(shown, names[r][1]);
    v->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    sg->addWidget(v, r, 1);
  }
  middle->addWidget(shown, 3);

  auto* buttons = new QVBoxLayout;
  for (const char* name : {"Command1", "Command2", "Command3", "Command5", "Command6"}) {
    auto* b = new QPushButton(central);
    b->setObjectName(name);
    buttons->addWidget(b);
  }
  findChild<QPushButton*>("Command5")->setText("High Cal");
  findChild<QPushButton*>("Command6")->setText("Low Cal");
  connect(findChild<QPushButton*>("Command1"), &QPushButton::clicked, this, [this] { Run(Command1Click); });
  connect(findChild<QPushButton*>("Command2"), &QPushButton::clicked, this, [this] { Run(UnzoomGraph); });
  connect(findChild<QPushButton*>("Command3"), &QPushButton::clicked, this, [this] { Run(AnnotateGraph); });
  connect(findChild<QPushButton*>("Command5"), &QPushButton::clicked, this, [this] { Run(Command5Click); });
  connect(findChild<QPushButton*>("Command6"), &QPushButton::clicked, this, [this] { Run(Command6Click); });
  buttons->addStretch();
  middle->addLayout(buttons, 1);
  outer->addLayout(middle, 30);

  // Status line, save note, percent and progress, at the lower edge.
  auto* status = new QHBoxLayout;
  for (const char* name : {"Label15", "Label16"}) {
    auto* l = AddLabel(central, name);
    // The work line is as wide as its longest text, so the save note beside it keeps
    // its place whichever text stands there, or none.
    if (std::string(name) == "Label15") l->setMinimumWidth(kStatusWidth);
    l->setAutoFillBackground(true);
    QPalette dark = l->palette();
    dark.setColor(QPalette::Window, QColor(40, 40, 48));
    l->setPalette(dark);
    l->setContentsMargins(6, 2, 6, 2);
    status->addWidget(l);
  }
  status->addStretch();
  status->addWidget(AddLabel(central, "Label14"));
  auto* percent = AddLabel(central, "Label17");
  percent->setText("%");
  status->addWidget(percent);
  auto* bar = new QProgressBar(central);
  bar->setObjectName("ProgressBar1");
  bar->setRange(0, 100);
  bar->setTextVisible(false);
  bar->setMaximumWidth(260);
  status->addWidget(bar);
  status->addWidget(AddLabel(central, "Label26"));
  for (int i = 0; i < status->count(); ++i) {
    if (QWidget* w = status->itemAt(i)->widget()) KeepPlaceWhenHidden(w);
  }
  outer->addLayout(status);

  // The zoom rectangle: the graph view draws it over its picture from the view model;
  // this stand-in only carries the name and never takes space or the mouse.
  auto* shape = new QFrame(graph);
  shape->setObjectName("Shape1");
  shape->setAttribute(Qt::WA_TransparentForMouseEvents);
  shape->setFixedSize(0, 0);
  shape->hide();
}

void MainWindow::Attach(App& app) {
  app_ = &app;
  graph_->Attach(app);
  dialogs_[DialogId::frmPort] = new PortDialog(app, this);
  dialogs_[DialogId::langfrm] = new LanguageDialog(app, this);
  dialogs_[DialogId::about2] = new AboutDialog(app, this);
  dialogs_[DialogId::frmTimeset] = new TimesetDialog(app, this);
  dialogs_[DialogId::Func1] = new ProbeGroupDialog(app, 1, this);
  dialogs_[DialogId::FUNC2] = new ProbeGroupDialog(app, 2, this);
  dialogs_[DialogId::FUNC3] = new ProbeGroupDialog(app, 3, this);
  dialogs_[DialogId::Describe] = new DescribeDialog(app, this);
  dialogs_[DialogId::SaveOpt] = new SaveOptDialog(app, this);
  dialogs_[DialogId::custom] = new ProfileDialog(app, ProfileFamily::Custom, this);
  dialogs_[DialogId::input100mv] = new ProfileDialog(app, ProfileFamily::Mv100, this);
  dialogs_[DialogId::input10v] = new ProfileDialog(app, ProfileFamily::V10, this);
  dialogs_[DialogId::input420] = new ProfileDialog(app, ProfileFamily::Ma420, this);
  dialogs_[DialogId::inputbipo100mv] = new ProfileDialog(app, ProfileFamily::Bipo100mv, this);
  dialogs_[DialogId::inputbipo10mv] = new ProfileDialog(app, ProfileFamily::Bipo10mv, this);
  dialogs_[DialogId::PrintOpt] = new PrintOptDialog(app, this);
  printer_ = std::make_unique<QtPrinterSurface>(this);
  app.p.printer = printer_.get();
  help_ = new HelpWindow(this);
}

MsgAnswer MainWindow::Message(const MessageRequest& r) {
  QMessageBox box(IconOf(r.icon), QString::fromStdString(r.title), QString::fromStdString(r.text), QMessageBox::NoButton,
                  isVisible() ? this : nullptr);
  QList<QAbstractButton*> order;
  switch (r.buttons) {
    case MsgButtons::Ok: order << box.addButton(QMessageBox::Ok); break;
    case MsgButtons::OkCancel: order << box.addButton(QMessageBox::Ok) << box.addButton(QMessageBox::Cancel); break;
    case MsgButtons::YesNo: order << box.addButton(QMessageBox::Yes) << box.addButton(QMessageBox::No); break;
    case MsgButtons::YesNoCancel:
      order << box.addButton(QMessageBox::Yes) << box.addButton(QMessageBox::No) << box.addButton(QMessageBox::Cancel);
      break;
  }
  // The buttons speak the selected language: OK and Cancel from the language table (a
  // row left empty keeps the platform's word), Yes and No from the program's own.
  const double language = app_ ? app_->s.settings.LanguageIndex.Value() : 0;
  auto rowText = [this, language](int row) -> QString {
    if (!app_ || !(language >= 0 && language <= 8)) return {};
    return QString::fromStdString(app_->s.lang.LanguageTable.at(language)[row]);
  };
  for (QAbstractButton* b : order) {
    QString word;
    switch (box.standardButton(b)) {
      case QMessageBox::Ok: word = rowText(120); break;
      case QMessageBox::Cancel: word = rowText(119); break;
      case QMessageBox::Yes: word = QString::fromStdString(OwnTextIn(language, OwnText::Yes)); break;
      case QMessageBox::No: word = QString::fromStdString(OwnTextIn(language, OwnText::No)); break;
      default: break;
    }
    if (!word.isEmpty()) b->setText(word);
  }
  if (r.defaultButton >= 1 && r.defaultButton <= order.size()) {
    box.setDefaultButton(qobject_cast<QPushButton*>(order[r.defaultButton - 1]));
  }
  box.exec();
  switch (box.standardButton(box.clickedButton())) {
    case QMessageBox::Ok: return MsgAnswer::Ok;
    case QMessageBox::Yes: return MsgAnswer::Yes;
    case QMessageBox::No: return MsgAnswer::No;
    default: return MsgAnswer::Cancel;
  }
}

void MainWindow::ShowModal(DialogId id) {
  ShellDialog* dlg = dialogs_.value(id, nullptr);
  if (!dlg || !dlg->LogicVisible()) return;
  dlg->MirrorView();
  dlg->Opening();
  if (!dlg->isVisible()) dlg->setWindowModality(Qt::ApplicationModal);
  FitDialog(dlg);
  dlg->show();
  dlg->raise();
  dlg->activateWindow();
  QEventLoop loop;
  modalLoops_[id] = &loop;
  loop.exec(QEventLoop::DialogExec);
  modalLoops_.remove(id);
  dlg->hide();
}

void MainWindow::FitDialog(QDialog* dlg) const {
  // Fixed at the size its controls need in the present language, centred on the window.
  // The width its shell was built with is a floor: wrapped texts read better at it.
  if (!dlg->property("builtMinimumWidth").isValid()) dlg->setProperty("builtMinimumWidth", dlg->minimumWidth());
  const int floorWidth = dlg->property("builtMinimumWidth").toInt();
  dlg->setMinimumSize(floorWidth, 0);
  dlg->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  QLayout* layout = dlg->layout();
  if (layout) layout->activate();
  dlg->adjustSize();
  // Wide enough for its title beside the window manager's buttons, too.
  const int titleWidth = dlg->fontMetrics().horizontalAdvance(dlg->windowTitle()) + kTitleAllowance;
  const int width = std::max({dlg->width(), titleWidth, floorWidth});
  // Wrapped texts take the height they need at that width.
  int height = dlg->height();
  if (layout && layout->hasHeightForWidth()) height = std::max(layout->totalMinimumSize().height(),
                                                               layout->totalHeightForWidth(width));
  dlg->setFixedSize(width, height);
  CentreOnWindow(dlg);
}

void MainWindow::CentreOnWindow(QWidget* w) const {
  const QRect area = isVisible() ? frameGeometry() : (screen() ? screen()->availableGeometry() : QRect());
  if (area.isEmpty()) return;
  QRect place(QPoint(0, 0), w->size());
  place.moveCenter(area.center());
  w->move(place.topLeft());
}

void MainWindow::ShowModeless(DialogId id) {
  ShellDialog* dlg = dialogs_.value(id, nullptr);
  if (!dlg || !dlg->LogicVisible()) return;
  if (!dlg->isVisible()) dlg->setWindowModality(Qt::NonModal);
  dlg->MirrorView();
  dlg->Opening();
  FitDialog(dlg);
  dlg->show();
  dlg->raise();
  dlg->activateWindow();
}

void MainWindow::PrintDialogImage(DialogId id) {
  ShellDialog* dlg = dialogs_.value(id, nullptr);
  if (!dlg) return;
  // The default printer; QUILLET_PRINT_PDF names a PDF file to print to instead, for
  // scripted runs and tests.
  QPrinter printer(QPrinter::HighResolution);
  const QString pdf = qEnvironmentVariable("QUILLET_PRINT_PDF");
  if (!pdf.isEmpty()) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
  }
  quillet::PrintDialogImage(dlg, printer);
}

void MainWindow::PaintGraph(const std::function<void(DrawSurface&)>& draw) { graph_->Paint(draw); }

void MainWindow::Refresh() {
  if (!app_) return;
  Log1View& v = app_->v.log1;
  const QString title = QString::fromStdString(v.caption);
  if (windowTitle() != title) setWindowTitle(title);
  if (v.busy) {
    setCursor(Qt::WaitCursor);
  } else {
    unsetCursor();
  }
  mirror_.ApplyAll(this, v);
  graph_->SyncOverlay();
  for (auto it = dialogs_.begin(); it != dialogs_.end(); ++it) {
    ShellDialog* dlg = it.value();
    dlg->MirrorView();  // hidden dialogs keep their captions in step too
    if (!dlg->LogicVisible() && (dlg->isVisible() || modalLoops_.contains(it.key()))) {
      dlg->hide();
      if (QEventLoop* loop = modalLoops_.value(it.key(), nullptr)) loop->quit();
    }
  }
}

void MainWindow::Beep() { QApplication::beep(); }

std::string MainWindow::RunFileDialog(const std::string& filter, bool save) {
  QFileDialog dialog(isVisible() ? this : nullptr, QString(), QString(), QtFilter(filter));
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  // The logic asks about an existing file itself, and adds the extension by its own rule.
  if (save) dialog.setOption(QFileDialog::DontConfirmOverwrite);
  // Names, sizes and dates side by side, with room to read them.
  dialog.setViewMode(QFileDialog::Detail);
  dialog.resize(kFileDialogWidth, kFileDialogHeight);
  CentreOnWindow(&dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) throw Fault(kFaultCancel);
  const QString path = dialog.selectedFiles().constFirst();
  if (path.isEmpty()) throw Fault(kFaultCancel);
  return path.toStdString();
}

std::string MainWindow::OpenFileDialog(const std::string& filter) { return RunFileDialog(filter, false); }

std::string MainWindow::SaveFileDialog(const std::string& filter) { return RunFileDialog(filter, true); }

void MainWindow::PutGraphOnClipboard() {
  // The picture the last drawing left, without the zoom rectangle over it; before any
  // drawing, the empty white surface.
  QImage picture = graph_->Picture();
  if (picture.isNull()) {
    picture = QImage(graph_->contentsRect().size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    picture.fill(Qt::white);
  }
  QClipboard* clipboard = QGuiApplication::clipboard();
  clipboard->clear();
  clipboard->setImage(picture);
}

void MainWindow::ShowHelp(const std::string& helpFile, HelpCommand command) {
  const QString path = QString::fromStdString(app_->p.places.programDir + "/" + helpFile);
  const double language = app_->s.settings.LanguageIndex.Value();
  help_->SetLanguage(language);
  if (helpFile.empty() || !help_->Load(path)) {
    QMessageBox::warning(this, QString::fromStdString(OwnTextIn(language, OwnText::Help)),
                         QString::fromStdString(OwnTextIn(language, OwnText::HelpFileMissing)).arg(path));
    return;
  }
  if (command == HelpCommand::KeywordSearch) {
    help_->ShowSearch();
  } else {
    help_->ShowContents();
  }
}

void MainWindow::FatalErrorReport(int, const std::string& text) {
  QMessageBox::critical(isVisible() ? this : nullptr, QStringLiteral("Quillet"), QString::fromStdString(text));
}

void MainWindow::EndProgramNow(int exitCode) {
  std::fflush(stdout);
  std::fflush(stderr);
  std::_Exit(exitCode);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!app_) {
    event->accept();
    return;
  }
  bool close = true;
  App& app = *app_;
  Dispatch(app, [&app, &close] { close = EndProgram(app); });
  if (close) {
    event->accept();
    QApplication::quit();
  } else {
    event->ignore();
  }
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  // The character a key gives, as the window receives it: Ctrl with a letter is the
  // control code 1..26 whatever text the platform attaches to it.
  int code = -1;
  const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier) && !event->modifiers().testFlag(Qt::AltModifier);
  if (ctrl && event->key() >= Qt::Key_A && event->key() <= Qt::Key_Z) {
    code = event->key() - Qt::Key_A + 1;
  } else if (!event->text().isEmpty()) {
    code = event->text().at(0).unicode();
  }
  if (code < 0) {
    QMainWindow::keyPressEvent(event);
    return;
  }
  Run([code](App& app) { Log1KeyPress(app, code); });
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  Run(ArrangeMainWindow);
}

}  // namespace quillet
