#include "ui/print_opt_dialog.h"

#include <QVBoxLayout>

#include "hub/app.h"
#include "printing/print_data.h"
#include "ui/mirror.h"

namespace quillet {

PrintOptDialog::PrintOptDialog(App& app, QWidget* parent) : ShellDialog(app, parent) {
  setObjectName("PrintOpt");
  auto* layout = new QVBoxLayout(this);
  AddButtonRow(layout, {{"Command1", [this] { PrintOptEntireRecord(app_); }},
                        {"Command2", [this] { PrintOptDisplayedOnly(app_); }},
                        {"Command3", [this] { PrintOptCancel(app_); }}});
  setMinimumWidth(360);
}

bool PrintOptDialog::LogicVisible() const { return app_.v.PrintOpt.visible; }

void PrintOptDialog::MirrorView() {
  static Mirror mirror;
  setWindowTitle(QString::fromStdString(app_.v.PrintOpt.caption));
  mirror.ApplyAll(this, app_.v.PrintOpt);
}

// The close box cancels, as the Cancel button does.
void PrintOptDialog::CloseBox() { Run([this] { PrintOptCancel(app_); }); }

}  // namespace quillet
