#pragma once
// Mirrors the view records of the logic into Qt widgets, touching only what changed.
#include <QHash>
#include <QObject>
#include <QString>

#include "core/view_model.h"

namespace quillet {

class Mirror {
 public:
  // Applies one control to the widget or action of that name under root.
  void Apply(QObject* target, const Control& c);
  template <typename View>
  void ApplyAll(QObject* root, View& view) {
    view.ForEach([&](const char* name, Control& c) {
      QObject* target = Find(root, name);
      if (target) Apply(target, c);
    });
  }

 private:
  QObject* Find(QObject* root, const char* name);
  QHash<QObject*, QHash<QString, QObject*>> found_;
  QHash<QObject*, Control> last_;
};

}  // namespace quillet
