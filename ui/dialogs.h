#pragma once
// The dialogs of the main window as Qt shells over their logic: they forward clicks
// and mirror their view records.
#include <QBoxLayout>
#include <QDialog>
#include <functional>
#include <QGroupBox>
#include <QLabel>
#include <QTextBrowser>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSplitter>

namespace quillet {
struct App;

class ShellDialog : public QDialog {
  Q_OBJECT
 public:
  ShellDialog(App& app, QWidget* parent);
  // The dialog's logic hides it; the shell follows.
  virtual bool LogicVisible() const = 0;
  virtual void MirrorView() = 0;
  // Called each time the dialog is shown.
  virtual void Opening() {}

 protected:
  void Run(const std::function<void()>& action);  // one event through the dispatcher
  struct ButtonSpec {
    const char* name;
    std::function<void()> action;
  };
  // A row of buttons at the right edge, each running its action as one event.
  void AddButtonRow(QBoxLayout* layout, std::initializer_list<ButtonSpec> buttons);
  void reject() override;                         // Escape and the close box
  virtual void CloseBox() = 0;
  App& app_;
};

class PortDialog : public ShellDialog {
  Q_OBJECT
 public:
  PortDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;
  void Opening() override;

 protected:
  void CloseBox() override;

 private:
  QLabel* devices_[4] = {};
};

class LanguageDialog : public ShellDialog {
  Q_OBJECT
 public:
  LanguageDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;
};

class AboutDialog : public ShellDialog {
  Q_OBJECT
 public:
  AboutDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;
};

// frmTimeset: six parts, each a text field with an up-down control beside it; the
// logic does every step and wrap, the shell only forwards the clicks.
class TimesetDialog : public ShellDialog {
  Q_OBJECT
 public:
  TimesetDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* fields_[6] = {};
};

// Func1, FUNC2 and FUNC3: the probes of one group, in three boxes of ten choices.
class ProbeGroupDialog : public ShellDialog {
  Q_OBJECT
 public:
  ProbeGroupDialog(App& app, int group, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;

 private:
  int group_;
  QGroupBox* sections_[3] = {};
};

// Describe: the record's title, ident, location and description. What the user types
// goes straight into the dialog's view; OK and Cancel are the logic's.
class DescribeDialog : public ShellDialog {
  Q_OBJECT
 public:
  DescribeDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;

 private:
  QPlainTextEdit* description_;
};

// SaveOpt: the whole record or the displayed graph only.
class SaveOptDialog : public ShellDialog {
  Q_OBJECT
 public:
  SaveOptDialog(App& app, QWidget* parent);
  bool LogicVisible() const override;
  void MirrorView() override;

 protected:
  void CloseBox() override;
};

// The help viewer: the selected language's help file, opened at its contents or with
// the keyword search (every heading of the file is a keyword).
class HelpWindow : public QWidget {
  Q_OBJECT
 public:
  explicit HelpWindow(QWidget* parent = nullptr);
  bool Load(const QString& path);
  void ShowContents();
  void ShowSearch();
  QString CurrentFile() const { return file_; }
  QString CurrentAnchor() const { return anchor_; }  // the section last gone to
  // The viewer's own words follow the selected language.
  void SetLanguage(double languageIndex);
  // Sizes the window to fit the screen the main window is on, centred on it.
  void PlaceOnScreen();

 private:
  void FilterKeywords(const QString& text);
  void GoTo(QListWidgetItem* item);
  QTextBrowser* browser_;
  QLineEdit* search_;
  QListWidget* keywords_;
  QSplitter* split_ = nullptr;
  QString file_;
  QString anchor_;
  double language_ = 1;
};

}  // namespace quillet
