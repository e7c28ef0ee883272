#pragma once
// Log1: the main window, a shell over the logic. It forwards menu commands, clicks and
// resizes into the dispatcher and mirrors the view model back after every event. It
// is also the platform's user interface: message boxes, modal dialogs, help, beep.
#include <QDialog>
#include <QEventLoop>
#include <QMainWindow>
#include <QMap>
#include <functional>
#include <memory>

#include "core/platform.h"
#include "ui/mirror.h"

class QLabel;
class QMenu;
class QAction;

namespace quillet {
struct App;
class ShellDialog;
class HelpWindow;
class GraphView;
class QtPrinterSurface;

class MainWindow : public QMainWindow, public UserInterface {
  Q_OBJECT
 public:
  // The smallest window in which the graph, the panel and the buttons stay readable.
  static constexpr int kMinimumWidth = 860, kMinimumHeight = 600;
  static constexpr int kStatusWidth = 340;  // the work line under the graph
  static constexpr int kFileDialogWidth = 900, kFileDialogHeight = 560;
  static constexpr int kTitleAllowance = 110;  // a title bar's buttons and margins, in pixels
  explicit MainWindow(QWidget* parent = nullptr);
  ~MainWindow() override;
  // Connects the window to the application; the dialogs are created here, hidden.
  void Attach(App& app);

  MsgAnswer Message(const MessageRequest& request) override;
  void ShowModal(DialogId dialog) override;
  void Refresh() override;
  void Beep() override;
  std::string OpenFileDialog(const std::string& filter) override;
  std::string SaveFileDialog(const std::string& filter) override;
  void PutGraphOnClipboard() override;
  void ShowHelp(const std::string& helpFile, HelpCommand command) override;
  void FatalErrorReport(int faultNumber, const std::string& text) override;
  void EndProgramNow(int exitCode) override;
  void PaintGraph(const std::function<void(DrawSurface&)>& draw) override;
  void ShowModeless(DialogId dialog) override;
  void PrintDialogImage(DialogId dialog) override;

  ShellDialog* Dialog(DialogId id) const { return dialogs_.value(id, nullptr); }
  HelpWindow* Help() const { return help_; }
  // Sizes a dialog to what its controls need now and centres it on the window.
  void FitDialog(QDialog* dlg) const;
  GraphView* Graph() const { return graph_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildMenus();
  void BuildCentral();
  void CentreOnWindow(QWidget* w) const;
  std::string RunFileDialog(const std::string& filter, bool save);
  QAction* AddAction(QMenu* menu, const char* name, std::function<void(App&)> handler, bool checkable = false);
  QMenu* AddMenu(QMenu* parent, const char* name);
  QAction* AddBarCommand(const char* name, std::function<void(App&)> handler);
  QLabel* AddLabel(QWidget* parent, const char* name);
  void Run(std::function<void(App&)> handler);

  App* app_ = nullptr;
  Mirror mirror_;
  QMap<DialogId, ShellDialog*> dialogs_;
  QMap<DialogId, QEventLoop*> modalLoops_;
  HelpWindow* help_ = nullptr;
  GraphView* graph_ = nullptr;
  std::unique_ptr<QtPrinterSurface> printer_;  // a job left open is sent when the window goes
};

}  // namespace quillet
