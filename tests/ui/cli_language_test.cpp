// quillet-cli speaks the language of the settings file given with --settings: its own
// refusals, endings and usage text, with the same exit codes and the same standard output;
// English without a settings file. And its word list is whole in every language.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <set>

#include "cli/cli_texts.h"
#include "core/fault.h"
#include "ui/window_program.h"

namespace quillet::testing {
namespace {

std::set<std::string> Placeholders(const std::string& text) {
  std::set<std::string> found;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] == '%' && text[i + 1] >= '1' && text[i + 1] <= '9') found.insert(text.substr(i, 2));
  }
  return found;
}

using CliLanguage = CliFolder;

TEST_F(CliLanguage, EveryTextIsThereInAllEightLanguagesWithTheEnglishPlaceholders) {
  for (int t = 0; t < kCliTextCount; ++t) {
    const CliText text = static_cast<CliText>(t);
    const std::string english = CliTextIn(1, text);
    SCOPED_TRACE(english);
    for (int language = 2; language <= 8; ++language) {
      const std::string words = CliTextIn(language, text);
      EXPECT_FALSE(words.empty()) << "language " << language;
      EXPECT_EQ(Placeholders(words), Placeholders(english)) << words;
      if (text == CliText::UsageText) {
        EXPECT_EQ(words.back(), '\n');
      }
    }
    // No language chosen, or one the file does not have: English.
    for (double language : {0.0, 9.0, -1.0}) EXPECT_EQ(CliTextIn(language, text), english);
  }
}

TEST_F(CliLanguage, FaultAndSystemWordsAreThePlatformsOwnInEnglishAndTranslatedOtherwise) {
  const int faults[] = {kFaultIllegalCall,   kFaultOverflow,          kFaultSubscript,  kFaultDivisionByZero,
                        kFaultTypeMismatch,  kFaultBadFileName,       kFaultFileNotFound, kFaultBadFileMode,
                        kFaultDiskFull,      kFaultInputPastEnd,      kFaultDeviceUnavailable,
                        kFaultPermissionDenied, kFaultPathAccess,     kFaultPathNotFound, kFaultCancel, 482};
  SetCliLanguage(0);
  for (int n : faults) EXPECT_EQ(FaultWords(n), FaultDescription(n)) << n;
  for (int e : {ENOENT, EACCES, EBUSY, EIO}) EXPECT_EQ(SystemWords(e), std::strerror(e));

  SetCliLanguage(2);
  std::set<std::string> german;
  for (int n : faults) german.insert(FaultWords(n));
  EXPECT_EQ(german.size(), std::size(faults)) << "each fault its own words, 482 those of a fault without any";
  EXPECT_EQ(FaultWords(kFaultOverflow), "Überlauf");
  EXPECT_EQ(SystemWords(ENOENT), "Datei oder Verzeichnis nicht gefunden");
  EXPECT_EQ(SystemWords(EIO), std::strerror(EIO));
  // What the program was doing when a fault ended it, in the words the program uses.
  EXPECT_EQ(DoingWords("the logger's header could not be decoded"),
            "die Kopfdaten des Loggers konnten nicht dekodiert werden");
  EXPECT_EQ(DoingWords("the record could not be written to /tmp/a b.txt"),
            "die Aufzeichnung konnte nicht in /tmp/a b.txt geschrieben werden");
  EXPECT_EQ(DoingWords("COM 3 is not available"), "COM 3 ist nicht verfügbar");
  EXPECT_EQ(DoingWords("something else went wrong"), "something else went wrong");
  SetCliLanguage(0);

  // What is filled in is never read again; a percent sign after a placeholder stays.
  EXPECT_EQ(FillIn("%1 of %2 (%3%)", {"a%2", "b", "50"}), "a%2 of b (50%)");
}

TEST_F(CliLanguage, RefusalsSpeakTheSettingsLanguageWithTheSameExitCodes) {
  for (int language : {1, 2, 8}) WriteFile(QString("%1.ini").arg(language), SettingsText(language));
  WriteFile("h.bin", QByteArray(5, '\0'));
  WriteFile("b.bin", QByteArray(12, '\x50'));
  const struct {
    const char* name;
    QStringList args;
    int exitCode;
    QString english, german, polish;  // in standard error
  } cases[] = {
      {"an unknown option",
       {"decode", "--bogus", "x"},
       2,
       "quillet-cli: decode: unknown option --bogus\n",
       "quillet-cli: decode: unbekannte Option --bogus\n",
       "quillet-cli: decode: nieznana opcja --bogus\n"},
      {"a header cut short",
       {"decode", "--header", "h.bin", "--block", "b.bin", "--now", "2026-11-21 12:00:00", "--out",
        "rec.txt"},
       1,
       "h.bin holds 5 bytes; a header has 22\n",
       "Kopfdaten haben 22 Byte, h.bin enthält nur 5\n",
       "h.bin zawiera 5 B, a nagłówek ma 22 B\n"},
      {"a record file that is not there",
       {"render", "missing.txt", "--out", "g.png"},
       1,
       "quillet-cli: cannot read missing.txt: ",
       "quillet-cli: missing.txt kann nicht gelesen werden: ",
       "quillet-cli: nie można odczytać missing.txt: "},
      {"print without a target",
       {"print", "graph", "missing.txt"},
       2,
       "print: give either --out or --printer\n",
       "print: geben Sie entweder --out oder --printer an\n",
       "print: podaj albo --out, albo --printer\n"},
      {"a device that is not there",
       {"live", "--port", "no-tty"},
       1,
       "cannot open no-tty: No such file or directory\n",
       "no-tty kann nicht geöffnet werden: Datei oder Verzeichnis nicht gefunden\n",
       "nie można otworzyć no-tty: Nie ma takiego pliku ani katalogu\n"},
      {"an unknown command",
       {"bogus"},
       2,
       "quillet-cli: unknown command \"bogus\"\nusage: quillet-cli COMMAND [options]\n\ncommands:\n",
       "quillet-cli: unbekannter Befehl „bogus“\nAufruf: quillet-cli BEFEHL [Optionen]\n\nBefehle:\n",
       "quillet-cli: nieznane polecenie „bogus”\nużycie: quillet-cli POLECENIE [opcje]\n\npolecenia:\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    for (const auto& [settings, expected] :
         {std::pair{QString(), c.english}, {"1.ini", c.english}, {"2.ini", c.german}, {"8.ini", c.polish}}) {
      SCOPED_TRACE(settings.toStdString());
      const CliRun r = RunCli(settings.isEmpty() ? c.args : c.args + QStringList{"--settings", settings});
      EXPECT_TRUE(r.exitCode == c.exitCode && r.err.contains(expected)) << r.exitCode << r.err.toStdString();
      EXPECT_TRUE(r.out.isEmpty() && !QFile::exists("rec.txt")) << r.out.toStdString();
    }
  }
}

}  // namespace
}  // namespace quillet::testing
