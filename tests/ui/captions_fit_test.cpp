// Every caption fits in every language: for each language of the shipped file, every
// window and dialog is laid out as the user would see it, and each visible label,
// button, option and field is at least the size its text needs, with no two of them
// overlapping.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <vector>

#include "log1/language.h"
#include "ui/dialogs.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

bool IsControl(const QWidget* w) {
  return qobject_cast<const QLabel*>(w) || qobject_cast<const QAbstractButton*>(w) ||
         qobject_cast<const QLineEdit*>(w);
}

// The problems of one window: cut captions and overlapping controls.
std::vector<std::string> LayoutProblems(QWidget* top) {
  std::vector<std::string> problems;
  std::vector<QWidget*> shown;
  for (QWidget* w : top->findChildren<QWidget*>()) {
    if (!IsControl(w) || !w->isVisibleTo(top) || w->objectName().isEmpty()) continue;
    if (w->objectName().startsWith("qt_")) continue;  // Qt's own parts
    shown.push_back(w);
    const auto* label = qobject_cast<const QLabel*>(w);
    const auto* button = qobject_cast<const QAbstractButton*>(w);
    const auto* edit = qobject_cast<const QLineEdit*>(w);
    const QString text = label ? label->text() : button ? button->text() : edit->text();
    if (text.isEmpty()) continue;  // an arrow or a picture: nothing to cut
    const bool wraps = label && label->wordWrap();
    // A field needs room for what it holds; the others for their size hint.
    const QSize need = edit ? QSize(w->fontMetrics().horizontalAdvance(text) + 8, w->sizeHint().height())
                            : w->sizeHint();
    const int needHeight = wraps ? w->heightForWidth(w->width()) : need.height();
    if ((!wraps && w->width() < need.width()) || w->height() < needHeight) {
      problems.push_back(w->objectName().toStdString() + " (\"" + text.toStdString() + "\") is " +
                         std::to_string(w->width()) + "x" + std::to_string(w->height()) + ", needs " +
                         std::to_string(need.width()) + "x" + std::to_string(needHeight));
    }
  }
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const QRect a(shown[i]->mapTo(top, QPoint(0, 0)), shown[i]->size());
    for (std::size_t j = i + 1; j < shown.size(); ++j) {
      if (shown[i]->isAncestorOf(shown[j]) || shown[j]->isAncestorOf(shown[i])) continue;
      const QRect b(shown[j]->mapTo(top, QPoint(0, 0)), shown[j]->size());
      if (a.intersects(b)) {
        problems.push_back(shown[i]->objectName().toStdString() + " overlaps " + shown[j]->objectName().toStdString());
      }
    }
  }
  return problems;
}

TEST(CaptionsFit, EveryWindowAndDialogInEveryLanguage) {
  WindowProgram p(SettingsText(1, 1, 1200));
  {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    p.Start();
  }
  App& app = *p.app;
  const std::vector<DialogId> dialogs = {DialogId::frmPort, DialogId::langfrm, DialogId::about2,
                                         DialogId::frmTimeset, DialogId::Func1, DialogId::FUNC2,
                                         DialogId::FUNC3, DialogId::Describe, DialogId::SaveOpt,
                                         DialogId::PrintOpt, DialogId::custom, DialogId::input100mv,
                                         DialogId::input10v, DialogId::input420, DialogId::inputbipo100mv,
                                         DialogId::inputbipo10mv};
  ASSERT_EQ(app.s.lang.LanguageCount, 8);
  for (int language = 1; language <= 8; ++language) {
    SCOPED_TRACE(app.s.lang.LanguageName[language]);
    Dispatch(app, [&app, language] {
      app.s.settings.LanguageIndex = language;
      ApplyLanguage(app);
      // The panel's lines as a logger and a record fill them.
      Log1View& w = app.v.log1;
      for (Control* c : {&w.Label5, &w.Label11, &w.Label2, &w.Label3, &w.Label4, &w.Label6, &w.Label15, &w.Label16,
                         &w.Frame2}) {
        c->visible = true;
      }
      w.Label6.caption = LanguageText(app, 63);
      w.Label15.caption = LanguageText(app, 66);
      w.Label16.caption = LanguageText(app, 67);
    });
    p.window.resize(1100, 760);
    QApplication::processEvents();
    for (const std::string& problem : LayoutProblems(&p.window)) ADD_FAILURE() << "main window: " << problem;
    EXPECT_LE(p.window.menuBar()->sizeHint().width(), p.window.width()) << "the menu bar is cut";

    for (DialogId id : dialogs) {
      ShellDialog* d = p.window.Dialog(id);
      ASSERT_NE(d, nullptr);
      d->MirrorView();
      d->Opening();
      // Every option and line shows, as it would with the most the dialog can hold.
      for (QWidget* w : d->findChildren<QWidget*>()) {
        if (IsControl(w) && !w->objectName().startsWith("qt_")) w->setVisible(true);
      }
      p.window.FitDialog(d);
      d->show();
      QApplication::processEvents();
      for (const std::string& problem : LayoutProblems(d)) {
        ADD_FAILURE() << d->objectName().toStdString() << ": " << problem;
      }
      d->hide();
    }
  }
}

}  // namespace
}  // namespace quillet
