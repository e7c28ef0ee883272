#include "ui/mirror.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QWidget>

namespace quillet {

namespace {

QColor ColorOf(int bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

bool Same(const Control& a, const Control& b) {
  return a.caption == b.caption && a.visible == b.visible && a.enabled == b.enabled && a.checked == b.checked &&
         a.foreColor == b.foreColor && a.value == b.value;
}

}  // namespace

Mirror::Target* Mirror::Find(QObject* root, const char* name) {
  Root& r = roots_[root];
  if (r.object != root) {
    // A new root, or a new object where a destroyed one stood: nothing found before counts.
    r.object = root;
    r.byName.clear();
  }
  const QString key = QString::fromLatin1(name);
  auto it = r.byName.find(key);
  if (it == r.byName.end() || (!it->missing && !it->object)) {
    QObject* found = root->findChild<QObject*>(key);
    it = r.byName.insert(key, Target{found, found == nullptr, Control{}, false});
  }
  return it->missing ? nullptr : &it.value();
}

void Mirror::Apply(Target& t, const Control& c) {
  if (t.applied && Same(t.last, c)) return;
  t.last = c;
  t.applied = true;
  QObject* target = t.object;
  const QString text = QString::fromStdString(c.caption);
  if (auto* menu = qobject_cast<QMenu*>(target)) {
    menu->menuAction()->setText(text);
    menu->menuAction()->setVisible(c.visible);
    menu->menuAction()->setEnabled(c.enabled);
    return;
  }
  if (auto* action = qobject_cast<QAction*>(target)) {
    action->setText(text);
    action->setVisible(c.visible);
    action->setEnabled(c.enabled);
    if (action->isCheckable()) action->setChecked(c.checked);
    return;
  }
  auto* widget = qobject_cast<QWidget*>(target);
  if (!widget) return;
  if (auto* label = qobject_cast<QLabel*>(widget)) {
    if (label->pixmap().isNull()) label->setText(text);
  } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
    group->setTitle(text);
  } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    button->setText(text);
    if (button->isCheckable() && button->isChecked() != c.checked) button->setChecked(c.checked);
  } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
    // A field the user is typing in keeps the typing until it is done.
    if (edit->text() != text && !(edit->hasFocus() && edit->isModified())) edit->setText(text);
  } else if (auto* bar = qobject_cast<QProgressBar*>(widget)) {
    bar->setValue(static_cast<int>(c.value));
  }
  if (c.foreColor != kDefaultColor) {
    QPalette pal = widget->palette();
    pal.setColor(QPalette::WindowText, ColorOf(c.foreColor));
    pal.setColor(QPalette::ButtonText, ColorOf(c.foreColor));
    widget->setPalette(pal);
  }
  widget->setEnabled(c.enabled);
  widget->setVisible(c.visible);
}

}  // namespace quillet
