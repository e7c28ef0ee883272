#pragma once
// The six scale profile dialogs as one Qt shell over their logic: entry fields, the unit,
// the preview drawn from the view's twips, the buttons and the File menu.
#include <QLineEdit>

#include "profiles/profile_state.h"
#include "ui/dialogs.h"
#include "ui/mirror.h"

class QPrinter;

namespace quillet {
struct ProfileDialogView;

class ProfileDialog : public ShellDialog {
  Q_OBJECT
 public:
  ProfileDialog(App& app, ProfileFamily family, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;
  ProfileFamily family() const { return family_; }

 protected:
  void CloseBox() override;

 private:
  ProfileDialogView& View() const;
  void FieldLeft(int field);
  void FieldKey(int field, bool up);
  void FocusField(int field);
  ProfileFamily family_;
  Mirror mirror_;
  QWidget* preview_ = nullptr;
  QLineEdit* fields_[18] = {};
  bool moving_ = false;  // the shell itself is moving the focus
};

// Prints an image of a dialog as it stands, scaled to the page's width, on one page.
// Returns false when the printer could not be started.
bool PrintDialogImage(QWidget* dialog, QPrinter& printer);

}  // namespace quillet
