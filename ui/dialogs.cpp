#include "ui/dialogs.h"
#include "measure/probe_table.h"
#include <QButtonGroup>
#include <QIntValidator>
#include <algorithm>

#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWheelEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/own_texts.h"
#include "hub/app.h"
#include "log1/language.h"
#include "graph/annotation.h"
#include "link/link_supervision.h"
#include "link/timeset.h"
#include "storage/text_export.h"
#include "ui/mirror.h"

namespace quillet {

namespace {
Mirror& DialogMirror() {
  static Mirror m;
  return m;
}

QPushButton* Button(QWidget* parent, const char* name) {
  auto* b = new QPushButton(parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}
}  // namespace

ShellDialog::ShellDialog(App& app, QWidget* parent) : QDialog(parent), app_(app) {
  setModal(true);
  // A dialog, not a window: a title and a close box, nothing to minimise or maximise.
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
}

void ShellDialog::Run(const std::function<void()>& action) { Dispatch(app_, action); }

void ShellDialog::AddButtonRow(QBoxLayout* layout, std::initializer_list<ButtonSpec> buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  bool first = true;
  for (const ButtonSpec& spec : buttons) {
    QPushButton* b = Button(this, spec.name);
    b->setDefault(first);  // the first button answers Return
    first = false;
    row->addWidget(b);
    connect(b, &QPushButton::clicked, this, [this, action = spec.action] { Run(action); });
  }
  layout->addLayout(row);
}

void ShellDialog::reject() { CloseBox(); }

// ---- frmPort --------------------------------------------------------------------------

PortDialog::PortDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("frmPort");
  auto* layout = new QVBoxLayout(this);
  auto* text = new QLabel(this);
  text->setObjectName("Label1");
  text->setWordWrap(true);
  layout->addWidget(text);
  auto* grid = new QVBoxLayout;
  for (int n = 1; n <= 5; ++n) {
    auto* row = new QHBoxLayout;
    auto* option = new QRadioButton(this);
    option->setObjectName(QString("Option%1").arg(n));
    row->addWidget(option);
    if (n <= 4) {
      devices_[n - 1] = new QLabel(this);
      devices_[n - 1]->setEnabled(false);
      row->addWidget(devices_[n - 1]);
    }
    row->addStretch();
    grid->addLayout(row);
    connect(option, &QRadioButton::clicked, this, [this, n] { Run([this, n] { FrmPortChoose(app_, n); }); });
  }
  layout->addLayout(grid);
  AddButtonRow(layout, {{"Command1", [this] { ChoosePort(app_); }}, {"Command2", [this] { FrmPortCancel(app_); }}});
  setMinimumWidth(380);
}

bool PortDialog::LogicVisible() const { return app_.v.frmPort.visible; }

void PortDialog::MirrorView() {
  setWindowTitle(QString::fromStdString(app_.v.frmPort.caption));
  DialogMirror().ApplyAll(this, app_.v.frmPort);
}

void PortDialog::Opening() {
  // Which device each choice means here, looked up afresh at each opening.
  for (int n = 1; n <= 4; ++n) {
    const std::string device = app_.p.transport.DeviceName(n);
    devices_[n - 1]->setText(QString::fromStdString(
        device.empty() ? OwnTextIn(app_.s.settings.LanguageIndex.Value(), OwnText::NoDevice) : device));
  }
}

void PortDialog::CloseBox() { Run([this] { FrmPortCancel(app_); }); }

// ---- langfrm --------------------------------------------------------------------------

LanguageDialog::LanguageDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("langfrm");
  auto* layout = new QVBoxLayout(this);
  auto* frame = new QGroupBox(this);
  frame->setObjectName("Frame1");
  auto* options = new QVBoxLayout(frame);
  for (int n = 1; n <= 8; ++n) {
    auto* option = new QRadioButton(frame);
    option->setObjectName(QString("Option%1").arg(n));
    options->addWidget(option);
    connect(option, &QRadioButton::clicked, this, [this, n] { Run([this, n] { LangfrmChoose(app_, n); }); });
  }
  layout->addWidget(frame);
  AddButtonRow(layout, {{"Command1", [this] { LangfrmOk(app_); }}, {"Command2", [this] { LangfrmCancel(app_); }}});
  setMinimumWidth(280);
}

bool LanguageDialog::LogicVisible() const { return app_.v.langfrm.visible; }

void LanguageDialog::MirrorView() {
  setWindowTitle(QString::fromStdString(app_.v.langfrm.caption));
  DialogMirror().ApplyAll(this, app_.v.langfrm);
}

void LanguageDialog::CloseBox() {
  // With nothing to go back to, the dialog stays until a language is chosen.
  if (app_.v.langfrm.Command2.visible) Run([this] { LangfrmCancel(app_); });
}

// ---- about2 ---------------------------------------------------------------------------

AboutDialog::AboutDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("about2");
  auto* layout = new QVBoxLayout(this);
  auto addLabel = [this, layout](const char* name, int pointDelta, bool bold) {
    auto* l = new QLabel(this);
    l->setObjectName(name);
    l->setWordWrap(true);
    QFont f = l->font();
    f.setPointSizeF(f.pointSizeF() + pointDelta);
    f.setBold(bold);
    l->setFont(f);
    layout->addWidget(l);
    return l;
  };
  addLabel("Label1", 4, true);
  addLabel("Label2", 0, false);
  addLabel("Label10", 0, true);
  for (const char* n : {"Label3", "Label4", "Label5", "Label6", "Label7"}) addLabel(n, 0, false);
  addLabel("Label9", 0, false);
  addLabel("Label11", 0, false);
  layout->addSpacing(8);
  addLabel("Label8", -1, false);
  AddButtonRow(layout, {{"Command1", [this] { About2Close(app_); }}});
  setMinimumWidth(420);
}

bool AboutDialog::LogicVisible() const { return app_.v.about2.visible; }

void AboutDialog::MirrorView() {
  setWindowTitle(QString::fromStdString(app_.v.about2.caption));
  DialogMirror().ApplyAll(this, app_.v.about2);
}

void AboutDialog::CloseBox() { Run([this] { About2Close(app_); }); }

// ---- frmTimeset -----------------------------------------------------------------------

TimesetDialog::TimesetDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("frmTimeset");
  auto* layout = new QVBoxLayout(this);
  auto* notice = new QLabel(this);
  notice->setObjectName("Label9");
  notice->setWordWrap(true);
  layout->addWidget(notice);
  auto* grid = new QGridLayout;
  for (int n = 1; n <= 6; ++n) {
    auto* caption = new QLabel(this);
    caption->setObjectName(QString("Label%1").arg(n));
    auto* text = new QLineEdit(this);
    text->setObjectName(QString("Text%1").arg(n));
    text->setAlignment(Qt::AlignRight);
    text->setMaximumWidth(70);
    text->setValidator(new QIntValidator(0, 9999, text));
    text->installEventFilter(this);
    connect(text, &QLineEdit::editingFinished, this, [this, n, text] {
      if (!text->isModified()) return;
      text->setModified(false);
      const int value = text->text().toInt();
      Run([this, n, value] { TimesetTyped(app_, n, value); });
      // A value out of range leaves the part as it was: show it again.
      text->setText(QString::fromStdString(app_.v.frmTimeset.Text(n).caption));
    });
    fields_[n - 1] = text;
    auto* upDown = new QWidget(this);
    upDown->setObjectName(QString("UpDown%1").arg(n));
    auto* arrows = new QVBoxLayout(upDown);
    arrows->setContentsMargins(0, 0, 0, 0);
    arrows->setSpacing(0);
    for (bool up : {true, false}) {
      auto* b = new QToolButton(upDown);
      b->setObjectName(QString("UpDown%1%2").arg(n).arg(up ? "Up" : "Down"));
      b->setArrowType(up ? Qt::UpArrow : Qt::DownArrow);
      b->setAutoRepeat(true);  // held down, it keeps stepping
      b->setFixedSize(20, 12);
      arrows->addWidget(b);
      connect(b, &QToolButton::clicked, this, [this, n, up] {
        Run([this, n, up] {
          if (up) {
            TimesetUpClick(app_, n);
          } else {
            TimesetDownClick(app_, n);
          }
        });
      });
    }
    grid->addWidget(caption, n - 1, 0);
    grid->addWidget(text, n - 1, 1);
    grid->addWidget(upDown, n - 1, 2, Qt::AlignLeft);
  }
  grid->setColumnStretch(3, 1);
  layout->addLayout(grid);
  for (const char* name : {"Label7", "Label8"}) {
    auto* l = new QLabel(this);
    l->setObjectName(name);
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    layout->addWidget(l);
  }
  AddButtonRow(layout, {{"Command2", [this] { SetClock(app_); }}, {"Command3", [this] { TimesetCancel(app_); }}});
  setMinimumWidth(380);
}

bool TimesetDialog::LogicVisible() const { return app_.v.frmTimeset.visible; }

void TimesetDialog::MirrorView() {
  setWindowTitle(QString::fromStdString(app_.v.frmTimeset.caption));
  DialogMirror().ApplyAll(this, app_.v.frmTimeset);
}

void TimesetDialog::CloseBox() { Run([this] { TimesetCancel(app_); }); }

bool TimesetDialog::eventFilter(QObject* watched, QEvent* event) {
  // The arrow keys and the mouse wheel step a field as its small arrows do.
  for (int n = 1; n <= 6; ++n) {
    if (watched != fields_[n - 1]) continue;
    int step = 0;
    if (event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Up) step = 1;
      if (key == Qt::Key_Down) step = -1;
    } else if (event->type() == QEvent::Wheel) {
      const int dy = static_cast<QWheelEvent*>(event)->angleDelta().y();
      step = dy > 0 ? 1 : dy < 0 ? -1 : 0;
    }
    if (step == 0) return false;
    fields_[n - 1]->setModified(false);
    Run([this, n, step] {
      if (step > 0) {
        TimesetUpClick(app_, n);
      } else {
        TimesetDownClick(app_, n);
      }
    });
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

// ---- Func1, FUNC2, FUNC3 --------------------------------------------------------------

ProbeGroupDialog::ProbeGroupDialog(App& app, int group, QWidget* parent) : ShellDialog(app, parent), group_(group) {
  const char* names[] = {"Func1", "FUNC2", "FUNC3"};
  setObjectName(names[group - 1]);
  auto* layout = new QVBoxLayout(this);
  auto* boxes = new QHBoxLayout;
  // One choice among all thirty, whichever box it stands in.
  auto* choices = new QButtonGroup(this);
  choices->setExclusive(true);
  for (int section = 1; section <= 3; ++section) {
    auto* box = new QGroupBox(this);
    box->setObjectName(QString("Frame%1").arg(section));
    auto* rows = new QVBoxLayout(box);
    for (int r = 1; r <= 10; ++r) {
      const int n = (section - 1) * 10 + r;
      auto* option = new QRadioButton(box);
      option->setObjectName(QString("Option%1").arg(n));
      choices->addButton(option, n);
      rows->addWidget(option);
      connect(option, &QRadioButton::clicked, this, [this, n] { Run([this, n] { ProbeDialogChoose(app_, group_, n); }); });
    }
    rows->addStretch();
    boxes->addWidget(box, 0, Qt::AlignTop);
    sections_[section - 1] = box;
  }
  layout->addLayout(boxes);
  AddButtonRow(layout, {{"Command1", [this] { ProbeDialogOk(app_, group_); }},
                        {"Command2", [this] { ProbeDialogCancel(app_, group_); }}});
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

bool ProbeGroupDialog::LogicVisible() const { return ProbeDialog(app_, group_).visible; }

void ProbeGroupDialog::MirrorView() {
  ProbeDialogView& d = ProbeDialog(app_, group_);
  setWindowTitle(QString::fromStdString(d.caption));
  DialogMirror().ApplyAll(this, d);
  // A hidden section caption leaves its box untitled; a box with nothing to show goes.
  for (int section = 1; section <= 3; ++section) {
    const Control& label = d.Label(section);
    bool any = label.visible;
    for (int r = 1; r <= 10; ++r) any = any || d.Option[(section - 1) * 10 + r].visible;
    QGroupBox* box = sections_[section - 1];
    const QString title = label.visible ? QString::fromStdString(label.caption) : QString();
    if (box->title() != title) box->setTitle(title);
    if (box->isVisibleTo(this) != any) box->setVisible(any);
  }
}

void ProbeGroupDialog::CloseBox() { Run([this] { ProbeDialogCancel(app_, group_); }); }

// ---- Describe -------------------------------------------------------------------------

namespace {
// The record keeps line breaks of the description as carriage return and line feed.
std::string RecordLines(QString text) { return text.replace("\n", "\r\n").toStdString(); }
QString EditorLines(const std::string& text) { return QString::fromStdString(text).replace("\r\n", "\n"); }
}  // namespace

DescribeDialog::DescribeDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("Describe");
  auto* layout = new QVBoxLayout(this);
  auto* heading = new QLabel(this);
  heading->setObjectName("Label9");
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  layout->addWidget(heading);
  auto* info = new QLabel(this);
  info->setObjectName("Label2");
  info->setWordWrap(true);
  layout->addWidget(info);

  auto* grid = new QGridLayout;
  struct Line {
    const char* label;
    const char* text;
    Control DescribeView::*field;
  };
  const Line lines[] = {{"Label1", "Text1", &DescribeView::Text1},
                        {"Label3", "Text2", &DescribeView::Text2},
                        {"Label4", "Text5", &DescribeView::Text5}};
  int row = 0;
  for (const Line& line : lines) {
    auto* caption = new QLabel(this);
    caption->setObjectName(line.label);
    auto* edit = new QLineEdit(this);
    edit->setObjectName(line.text);
    grid->addWidget(caption, row, 0);
    grid->addWidget(edit, row, 1);
    ++row;
    connect(edit, &QLineEdit::textEdited, this, [this, field = line.field](const QString& text) {
      Run([this, field, t = text.toStdString()] { (app_.v.Describe.*field).caption = t; });
    });
  }
  auto* caption = new QLabel(this);
  caption->setObjectName("Label5");
  grid->addWidget(caption, row, 0, Qt::AlignTop);
  description_ = new QPlainTextEdit(this);
  description_->setObjectName("Text3");
  description_->setTabChangesFocus(true);
  grid->addWidget(description_, row, 1);
  connect(description_, &QPlainTextEdit::textChanged, this, [this] {
    const std::string t = RecordLines(description_->toPlainText());
    if (t != app_.v.Describe.Text3.caption) Run([this, t] { app_.v.Describe.Text3.caption = t; });
  });
  grid->setColumnStretch(1, 1);
  layout->addLayout(grid);
  AddButtonRow(layout, {{"Command1", [this] { DescribeOk(app_); }}, {"Command2", [this] { DescribeCancel(app_); }}});
  setMinimumWidth(480);
}

bool DescribeDialog::LogicVisible() const { return app_.v.Describe.visible; }

void DescribeDialog::MirrorView() {
  DescribeView& d = app_.v.Describe;
  setWindowTitle(QString::fromStdString(d.caption));
  DialogMirror().ApplyAll(this, d);
  const QString text = EditorLines(d.Text3.caption);
  if (description_->toPlainText() != text) description_->setPlainText(text);
}

void DescribeDialog::CloseBox() { Run([this] { DescribeCancel(app_); }); }

// ---- SaveOpt --------------------------------------------------------------------------

SaveOptDialog::SaveOptDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("SaveOpt");
  auto* layout = new QVBoxLayout(this);
  AddButtonRow(layout, {{"Command1", [this] { SaveOptEntireRecord(app_); }},
                        {"Command2", [this] { SaveOptDisplayedOnly(app_); }},
                        {"Command3", [this] { SaveOptCancel(app_); }}});
  setMinimumWidth(360);
}

bool SaveOptDialog::LogicVisible() const { return app_.v.SaveOpt.visible; }

void SaveOptDialog::MirrorView() {
  setWindowTitle(QString::fromStdString(app_.v.SaveOpt.caption));
  DialogMirror().ApplyAll(this, app_.v.SaveOpt);
}

void SaveOptDialog::CloseBox() { Run([this] { SaveOptCancel(app_); }); }

// ---- help -----------------------------------------------------------------------------

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("helpWindow");
  auto* layout = new QHBoxLayout(this);
  auto* split = new QSplitter(this);
  auto* side = new QWidget(split);
  auto* sideLayout = new QVBoxLayout(side);
  sideLayout->setContentsMargins(0, 0, 0, 0);
  search_ = new QLineEdit(side);
  search_->setObjectName("helpSearch");
  search_->setPlaceholderText(QString::fromStdString(OwnTextIn(1, OwnText::TypeAKeyword)));
  keywords_ = new QListWidget(side);
  keywords_->setObjectName("helpKeywords");
  sideLayout->addWidget(search_);
  sideLayout->addWidget(keywords_);
  browser_ = new QTextBrowser(split);
  browser_->setObjectName("helpBrowser");
  browser_->setOpenExternalLinks(false);
  split->addWidget(side);
  split->addWidget(browser_);
  split->setStretchFactor(1, 3);
  split->setChildrenCollapsible(false);
  keywords_->setMinimumWidth(200);
  split_ = split;
  layout->addWidget(split);
  connect(search_, &QLineEdit::textChanged, this, &HelpWindow::FilterKeywords);
  connect(search_, &QLineEdit::returnPressed, this, [this] {
    QListWidgetItem* item = keywords_->currentItem();
    if (item && !item->isHidden()) GoTo(item);
  });
  connect(keywords_, &QListWidget::itemActivated, this, &HelpWindow::GoTo);
  connect(keywords_, &QListWidget::itemClicked, this, &HelpWindow::GoTo);
  resize(900, 640);
}

void HelpWindow::SetLanguage(double languageIndex) {
  language_ = languageIndex;
  search_->setPlaceholderText(QString::fromStdString(OwnTextIn(language_, OwnText::TypeAKeyword)));
}

void HelpWindow::PlaceOnScreen() {
  // Whole on the screen the main window is on, with room for the index beside the text.
  QWidget* owner = parentWidget();
  QScreen* screen = owner && owner->screen() ? owner->screen() : QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect avail = screen->availableGeometry();
  const int margin = 40;
  const QSize size(std::min(960, avail.width() - margin), std::min(700, avail.height() - margin));
  resize(size);
  const int frameExtra = frameGeometry().height() - geometry().height();
  QRect place(QPoint(0, 0), size);
  place.moveCenter(owner && owner->isVisible() ? owner->frameGeometry().center() : avail.center());
  place.moveLeft(std::clamp(place.left(), avail.left(), avail.right() - size.width()));
  place.moveTop(std::clamp(place.top(), avail.top(), avail.bottom() - size.height() - std::max(0, frameExtra)));
  move(place.topLeft());
  const int side = std::max(keywords_->minimumWidth(), keywords_->sizeHintForColumn(0) + 24);
  split_->setSizes({side, std::max(300, size.width() - side)});
}

bool HelpWindow::Load(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return false;
  const QString html = QString::fromUtf8(f.readAll());
  file_ = path;
  browser_->setSearchPaths({QFileInfo(path).absolutePath()});
  browser_->setHtml(html);
  setWindowTitle(browser_->documentTitle().isEmpty() ? QString::fromStdString(OwnTextIn(language_, OwnText::Help))
                                                    : browser_->documentTitle());
  keywords_->clear();
  static const QRegularExpression heading(R"re(<h[23][^>]*id="([^"]+)"[^>]*>(.*?)</h[23]>)re",
                                          QRegularExpression::DotMatchesEverythingOption |
                                              QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression tags("<[^>]*>");
  for (auto it = heading.globalMatch(html); it.hasNext();) {
    const auto m = it.next();
    QTextDocument plain;
    plain.setHtml(m.captured(2));
    auto* item = new QListWidgetItem(plain.toPlainText().simplified(), keywords_);
    item->setData(Qt::UserRole, m.captured(1));
  }
  keywords_->sortItems();
  return true;
}

void HelpWindow::ShowContents() {
  search_->clear();
  browser_->moveCursor(QTextCursor::Start);
  anchor_ = "contents";
  browser_->scrollToAnchor(anchor_);
  if (!isVisible()) PlaceOnScreen();
  show();
  raise();
  activateWindow();
}

void HelpWindow::ShowSearch() {
  if (!isVisible()) PlaceOnScreen();
  show();
  raise();
  activateWindow();
  search_->setFocus();
  search_->selectAll();
}

void HelpWindow::FilterKeywords(const QString& text) {
  for (int i = 0; i < keywords_->count(); ++i) {
    QListWidgetItem* item = keywords_->item(i);
    item->setHidden(!text.isEmpty() && !item->text().contains(text, Qt::CaseInsensitive));
  }
  // The first entry that matches is the one Enter opens.
  QListWidgetItem* first = nullptr;
  for (int i = 0; i < keywords_->count() && !first; ++i) {
    if (!keywords_->item(i)->isHidden()) first = keywords_->item(i);
  }
  keywords_->setCurrentItem(first);
  if (first) keywords_->scrollToItem(first);
  if (!text.isEmpty()) browser_->find(text);
}

void HelpWindow::GoTo(QListWidgetItem* item) {
  if (!item) return;
  anchor_ = item->data(Qt::UserRole).toString();
  browser_->scrollToAnchor(anchor_);
}

}  // namespace quillet
