#pragma once
// PrintOpt: the whole record or the displayed graph only, for the data printout.
#include "ui/dialogs.h"

namespace quillet {

class PrintOptDialog : public ShellDialog {
  Q_OBJECT
 public:
  PrintOptDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;
};

}  // namespace quillet
