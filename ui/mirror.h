#pragma once
// Mirrors the view records of the logic into Qt widgets, touching only what changed.
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

#include "hub/view_model.h"

namespace quillet {

class Mirror {
 public:
  template <typename View>
  void ApplyAll(QObject* root, View& view) {
    view.ForEach([&](const char* name, Control& c) {
      if (Target* t = Find(root, name)) Apply(*t, c);
    });
  }

 private:
  // A widget or action found by name, and the control as last applied to it. The
  // guarded pointers notice when an object is gone, even if a new one later takes its
  // address.
  struct Target {
    QPointer<QObject> object;
    bool missing = false;  // no object of that name under the root
    Control last;
    bool applied = false;
  };
  struct Root {
    QPointer<QObject> object;
    QHash<QString, Target> byName;
  };
  Target* Find(QObject* root, const char* name);
  void Apply(Target& target, const Control& c);
  QHash<QObject*, Root> roots_;
};

}  // namespace quillet
