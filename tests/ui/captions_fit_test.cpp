// Every caption fits in every language: for each language of the shipped file, every
// window and dialog is laid out as the user would see it, and each visible label, button,
// option and field is at least the size its text needs, with no two of them overlapping.
#include <gtest/gtest.h>

#include <QMenuBar>

#include "log1/language.h"
#include "ui/dialogs.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

bool IsControl(const QWidget* w) {  // ours, not Qt's own parts
  return (w->inherits("QLabel") || w->inherits("QAbstractButton") || w->inherits("QLineEdit")) &&
         !w->objectName().startsWith("qt_");
}

// Reports the cut captions and overlapping controls of one window.
void ExpectLaidOut(QWidget* top, const std::string& name) {
  std::vector<QWidget*> shown;
  for (QWidget* w : top->findChildren<QWidget*>()) {
    if (!IsControl(w) || !w->isVisibleTo(top) || w->objectName().isEmpty()) continue;
    shown.push_back(w);
    const QString text = w->property("text").toString();  // of a label, a button or a field
    if (text.isEmpty()) continue;                         // an arrow or a picture: nothing to cut
    const bool wraps = w->property("wordWrap").toBool();  // of a label
    // A field needs room for what it holds; the others for their size hint.
    const QSize need = w->inherits("QLineEdit")
                           ? QSize(w->fontMetrics().horizontalAdvance(text) + 8, w->sizeHint().height())
                           : w->sizeHint();
    const int needHeight = wraps ? w->heightForWidth(w->width()) : need.height();
    EXPECT_FALSE((!wraps && w->width() < need.width()) || w->height() < needHeight)
        << name << ": " << w->objectName().toStdString() << " (\"" << text.toStdString() << "\") is "
        << w->width() << "x" << w->height() << ", needs " << need.width() << "x" << needHeight;
  }
  for (QWidget* a : shown) {
    for (QWidget* b : shown) {
      if (a >= b || a->isAncestorOf(b) || b->isAncestorOf(a)) continue;
      EXPECT_FALSE(
          QRect(a->mapTo(top, QPoint()), a->size()).intersects(QRect(b->mapTo(top, QPoint()), b->size())))
          << name << ": " << a->objectName().toStdString() << " overlaps " << b->objectName().toStdString();
    }
  }
}

TEST(CaptionsFit, EveryWindowAndDialogInEveryLanguage) {
  WindowProgram p(SettingsText());
  p.StartDismissing();  // the unavailable device brings a message and the port dialog
  App& app = *p.app;
  ASSERT_EQ(app.s.lang.LanguageCount, 8);
  for (int language = 1; language <= 8; ++language) {
    SCOPED_TRACE(app.s.lang.LanguageName[language]);
    Dispatch(app, [&app, language] {
      app.s.settings.LanguageIndex = language;
      ApplyLanguage(app);
      // The panel's lines as a logger and a record fill them.
      Log1View& w = app.v.log1;
      for (Control* c : {&w.Label5, &w.Label11, &w.Label2, &w.Label3, &w.Label4, &w.Label6, &w.Label15,
                         &w.Label16, &w.Frame2})
        c->visible = true;
      w.Label6.caption = LanguageText(app, 63);
      w.Label15.caption = LanguageText(app, 66);
      w.Label16.caption = LanguageText(app, 67);
    });
    p.window.resize(1100, 760);
    QApplication::processEvents();
    ExpectLaidOut(&p.window, "main window");
    EXPECT_LE(p.window.menuBar()->sizeHint().width(), p.window.width()) << "the menu bar is cut";
    for (int id = 0; id <= int(DialogId::inputbipo10mv); ++id) {
      ShellDialog* d = p.window.Dialog(DialogId(id));
      ASSERT_NE(d, nullptr);
      d->MirrorView();
      d->Opening();
      // Every option and line shows, as it would with the most the dialog can hold.
      for (QWidget* w : d->findChildren<QWidget*>())
        if (IsControl(w)) w->setVisible(true);
      p.window.FitDialog(d);
      d->show();
      QApplication::processEvents();
      ExpectLaidOut(d, d->objectName().toStdString());
      d->hide();
    }
  }
}

}  // namespace
}  // namespace quillet
