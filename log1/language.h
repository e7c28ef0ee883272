#pragma once
// The language table: all words of the user interface, read from loglang.txt, applied
// to every window at once without a restart.
namespace quillet {
struct App;

void LoadLanguageTable(App& app);  // faults are the caller's (the start-up fall-back)
void ApplyLanguage(App& app);

// langfrm
void OpenLangfrm(App& app);
void LangfrmOk(App& app);
void LangfrmCancel(App& app);
void LangfrmChoose(App& app, int option);  // marks one option, as a click does

// about2 and the edition texts of the main window
void OpenAbout2(App& app);
void About2Close(App& app);
void FillEditionTexts(App& app);

// Menu actions
void MnuLang(App& app);
void MnuHelpCont(App& app);
void MnuHelpIndex(App& app);
void MnuHelpAbout(App& app);

}  // namespace quillet
