#include "hub/app.h"

#include "hub/default_captions.h"
#include "core/fault.h"

namespace quillet {

App::App(Platform& platform, const AppHooks& appHooks) : p(platform), hooks(appHooks), poster(*this), port(platform.transport, poster) {
  InstallDefaultCaptions(v);
}

void DispatchingPoster::Post(std::function<void()> work) {
  App& app = app_;
  app.p.poster.Post([&app, work = std::move(work)] { Dispatch(app, work); });
}

void Dispatch(App& app, const std::function<void()>& action) {
  if (app.ended) return;
  ++app.dispatchDepth;
  struct DepthGuard {
    App& a;
    ~DepthGuard() { --a.dispatchDepth; }
  } guard{app};
  auto endProgram = [&app](int code) {
    app.ended = true;
    app.exitCode = code;
    // The platform ends the process here; it never returns into the event loop.
    app.p.ui.EndProgramNow(code);
  };
  try {
    action();
  } catch (const ProgramEnd& e) {
    endProgram(e.exitCode);
    return;
  } catch (const Fault& f) {
    if (f.fatal()) {
      app.p.ui.FatalFault(f, "Run-time error '" + std::to_string(f.number()) + "':\n\n" +
                                 FaultDescription(f.number()));
      endProgram(1);
      return;
    }
    // Any other fault ends the present action only.
  } catch (const std::exception& e) {
    app.p.ui.FatalErrorReport(51, std::string("Run-time error '51':\n\nInternal error: ") + e.what());
    endProgram(1);
    return;
  }
  if (!app.ended) app.p.ui.Refresh();
}

void EndProgramAtOnce(int exitCode) { throw ProgramEnd{exitCode}; }

DateTime Now(const App& app) { return app.p.clock.Now(); }

const std::string& LanguageText(const App& app, int n) {
  const double index = app.s.settings.LanguageIndex.Value();
  return app.s.lang.LanguageTable.at(index)[n];
}

MsgAnswer MessageBox(App& app, const std::string& text, const std::string& title, MsgButtons buttons,
                     MsgIcon icon, int defaultButton) {
  app.p.ui.Refresh();
  return app.p.ui.Message(MessageRequest{text, title, buttons, icon, defaultButton});
}

void RedrawRecordGraph(App& app) {
  if (app.hooks.redrawGraph) app.hooks.redrawGraph(app);
}

void ShowModal(App& app, DialogId dialog) {
  if (app.hooks.openDialog) app.hooks.openDialog(app, dialog);
  app.p.ui.Refresh();
  app.p.ui.ShowModal(dialog);
}

}  // namespace quillet
