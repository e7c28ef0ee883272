#include "ui/profile_dialog.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QPrinter>
#include <QTimer>
#include <QVBoxLayout>

#include "hub/app.h"
#include "profiles/profile_dialog.h"
#include "profiles/profile_family.h"
#include "profiles/profile_file.h"

namespace quillet {

namespace {

// Twips to pixels at 96 dots an inch; the preview shows the part of the dialog's twips
// plane that holds the box and its labels.
constexpr double kTwipsPerPixel = 15;
constexpr double kPreviewLeft = 2800, kPreviewTop = 760, kPreviewWidth = 3400, kPreviewHeight = 2900;

// An entry field: Enter, the arrow keys and the loss of the focus go to the logic.
class FieldEdit : public QLineEdit {
 public:
  FieldEdit(QWidget* parent, std::function<void()> enter, std::function<void(bool)> arrow,
            std::function<void()> left)
      : QLineEdit(parent), enter_(std::move(enter)), arrow_(std::move(arrow)), left_(std::move(left)) {}

 protected:
  void keyPressEvent(QKeyEvent* e) override {
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
      if (enter_) enter_();
      return;
    }
    if ((e->key() == Qt::Key_Up || e->key() == Qt::Key_Down) && arrow_) {
      arrow_(e->key() == Qt::Key_Up);
      return;
    }
    QLineEdit::keyPressEvent(e);
  }
  void focusOutEvent(QFocusEvent* e) override {
    QLineEdit::focusOutEvent(e);
    // Only a move to another control of the dialog counts, not a window switch.
    if (e->reason() != Qt::ActiveWindowFocusReason && e->reason() != Qt::PopupFocusReason && left_) left_();
  }

 private:
  std::function<void()> enter_;
  std::function<void(bool)> arrow_;
  std::function<void()> left_;
};

// The preview: the box, the curve and the labels, from the view's twips.
class PreviewWidget : public QWidget {
 public:
  PreviewWidget(QWidget* parent, std::function<ProfileDialogView&()> view) : QWidget(parent), view_(std::move(view)) {
    setObjectName("Preview");
    setFixedSize(static_cast<int>(kPreviewWidth / kTwipsPerPixel), static_cast<int>(kPreviewHeight / kTwipsPerPixel));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    ProfileDialogView& v = view_();
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    auto at = [](double x, double y) {
      return QPointF((x - kPreviewLeft) / kTwipsPerPixel, (y - kPreviewTop) / kTwipsPerPixel);
    };
    p.setPen(QPen(palette().color(QPalette::WindowText), 1));
    for (int i = 17; i <= 20; ++i) p.drawLine(at(v.Line[i].x1, v.Line[i].y1), at(v.Line[i].x2, v.Line[i].y2));
    p.setPen(QPen(QColor(0, 0, 200), 2));
    for (int i = 1; i <= v.segmentCount; ++i) {
      p.drawLine(at(v.Line[i].x1, v.Line[i].y1), at(v.Line[i].x2, v.Line[i].y2));
    }
    p.setPen(palette().color(QPalette::WindowText));
    for (int n = 19; n <= 25; ++n) {
      const Control& c = v.PreviewLabel(n);
      if (!c.visible) continue;
      const Box& b = v.Place[n];
      const QRectF r(at(b.left, b.top), at(b.left + b.width, b.top + b.height));
      p.drawText(r, (n >= 23 ? Qt::AlignRight : Qt::AlignHCenter) | Qt::AlignVCenter,
                 QString::fromStdString(c.caption));
    }
  }

 private:
  std::function<ProfileDialogView&()> view_;
};

const char* DialogName(ProfileFamily f) {
  const char* names[] = {"custom", "input100mv", "input10v", "input420", "inputbipo100mv", "inputbipo10mv"};
  return names[static_cast<int>(f)];
}

}  // namespace

ProfileDialog::ProfileDialog(App& app, ProfileFamily family, QWidget* parent)
    : ShellDialog(app, parent), family_(family) {
  setObjectName(DialogName(family));
  Dispatch(app_, [this] { CreateProfileDialog(app_, family_); });
  const ProfileFamilySpec& spec = FamilySpec(family);
  auto* layout = new QVBoxLayout(this);

  auto* bar = new QMenuBar(this);
  QMenu* file = bar->addMenu(QString());
  file->setObjectName("mnuFile420");
  auto addAction = [this, file](const char* name, std::function<void()> action) {
    QAction* a = file->addAction(QString());
    a->setObjectName(name);
    connect(a, &QAction::triggered, this, [this, action] { Run(action); });
  };
  addAction("mnuOpen1", [this] { OpenProfile(app_, family_); });
  addAction("mnuSave1", [this] { SaveProfile(app_, family_); });
  addAction("mnuPrint", [this] { ProfilePrint(app_, family_); });
  layout->setMenuBar(bar);

  auto* notice = new QHBoxLayout;
  for (const char* name : {"Label26", "Label27"}) {
    auto* l = new QLabel(this);
    l->setObjectName(name);
    QFont f = l->font();
    f.setBold(std::string(name) == "Label26");
    l->setFont(f);
    notice->addWidget(l);
  }
  notice->addStretch();
  layout->addLayout(notice);

  auto* body = new QHBoxLayout;
  auto* frame = new QGroupBox(this);
  frame->setObjectName("Frame1");
  auto* rows = new QGridLayout(frame);
  rows->setVerticalSpacing(1);
  for (int field = 1; field <= 17; ++field) {
    auto* caption = new QLabel(frame);
    caption->setObjectName(QString("Label%1").arg(field));
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* edit = new FieldEdit(
        frame, [this, field] { Run([this, field] { ProfileFieldEnter(app_, family_, field); }); },
        [this, field](bool up) { FieldKey(field, up); }, [this, field] { FieldLeft(field); });
    edit->setObjectName(QString("Text%1").arg(field));
    edit->setMaximumWidth(90);
    connect(edit, &QLineEdit::textEdited, this, [this, field](const QString& text) {
      Run([this, field, t = text.toStdString()] { View().Text[field].caption = t; });
    });
    fields_[field - 1] = edit;
    rows->addWidget(caption, field - 1, 0);
    rows->addWidget(edit, field - 1, 1);
    if (field > spec.fields) caption->hide(), edit->hide();
  }
  body->addWidget(frame, 0, Qt::AlignTop);

  auto* side = new QVBoxLayout;
  auto* unitCaption = new QLabel(this);
  unitCaption->setObjectName("Label18");
  auto* unit = new QLineEdit(this);
  unit->setObjectName("Text18");
  unit->setMaximumWidth(140);
  fields_[17] = unit;
  connect(unit, &QLineEdit::textEdited, this, [this](const QString& text) {
    Run([this, t = text.toStdString()] { ProfileUnitChanged(app_, family_, t); });
  });
  connect(unit, &QLineEdit::editingFinished, this, [this] { Run([this] { ProfileUnitLostFocus(app_, family_); }); });
  side->addWidget(unitCaption);
  side->addWidget(unit);
  preview_ = new PreviewWidget(this, [this]() -> ProfileDialogView& { return View(); });
  side->addWidget(preview_);
  side->addStretch();
  body->addLayout(side);
  layout->addLayout(body);

  AddButtonRow(layout, {{"Command1", [this] { ProfileOk(app_, family_); }},
                        {"Command2", [this] { ProfileCancel(app_, family_); }},
                        {"Command3", [this] { ProfileClose(app_, family_); }},
                        {"Command4", [this] { ProfileClearAll(app_, family_); }}});
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

ProfileDialogView& ProfileDialog::View() const { return ProfileView(app_, family_); }

bool ProfileDialog::LogicVisible() const { return View().visible; }

void ProfileDialog::MirrorView() {
  ProfileDialogView& v = View();
  const QString title = QString::fromStdString(v.caption);
  if (windowTitle() != title) setWindowTitle(title);
  mirror_.ApplyAll(this, v);
  // A text field's caption is its text; Text18 is mirrored too.
  const QString unit = QString::fromStdString(v.Text18.caption);
  if (fields_[17]->text() != unit) fields_[17]->setText(unit);
  preview_->update();
}

void ProfileDialog::FocusField(int field) {
  if (field < 1 || field > 18) return;
  moving_ = true;
  fields_[field - 1]->setFocus(Qt::OtherFocusReason);
  moving_ = false;
}

void ProfileDialog::FieldLeft(int field) {
  if (moving_) return;
  bool rejected = false;
  Run([this, field, &rejected] {
    ProfileDialogView& v = View();
    v.focus = 0;
    ProfileFieldLostFocus(app_, family_, field);
    rejected = v.focus == field;
  });
  // The focus goes back to a field whose text was put back, once the move has ended.
  if (rejected) QTimer::singleShot(0, this, [this, field] { FocusField(field); });
}

void ProfileDialog::FieldKey(int field, bool up) {
  Run([this, field, up] {
    if (up) {
      ProfileFieldUp(app_, family_, field);
    } else {
      ProfileFieldDown(app_, family_, field);
    }
  });
  FocusField(View().focus);
}

void ProfileDialog::CloseBox() { Run([this] { ProfileCloseBox(app_, family_); }); }

bool PrintDialogImage(QWidget* dialog, QPrinter& printer) {
  dialog->ensurePolished();
  if (!dialog->isVisible()) dialog->adjustSize();
  const QPixmap image = dialog->grab();
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const QRectF page = printer.pageRect(QPrinter::DevicePixel);
  const double scale = std::min(page.width() / image.width(), page.height() / image.height());
  painter.drawPixmap(QRectF(0, 0, image.width() * scale, image.height() * scale), image, QRectF(image.rect()));
  return painter.end();
}

}  // namespace quillet
