// quillet-cli speaks the language of the settings file given with --settings: its own
// refusals, endings, progress lines and usage text, with the same exit codes and the same
// standard output; English without a settings file. And its word list is whole in every
// language.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <cstring>
#include <set>

#include "cli/cli_texts.h"
#include "core/fault.h"
#include "ui/window_program.h"

namespace {

using quillet::CliText;
using quillet::testing::CliRun;
using quillet::testing::RunCli;

std::set<std::string> Placeholders(const std::string& text) {
  std::set<std::string> found;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] == '%' && text[i + 1] >= '1' && text[i + 1] <= '9') found.insert(text.substr(i, 2));
  }
  return found;
}

TEST(CliLanguage, EveryTextIsThereInAllEightLanguagesWithTheEnglishPlaceholders) {
  for (int t = 0; t < quillet::kCliTextCount; ++t) {
    const CliText text = static_cast<CliText>(t);
    const std::string english = quillet::CliTextIn(1, text);
    SCOPED_TRACE(english);
    for (int language = 2; language <= 8; ++language) {
      const std::string words = quillet::CliTextIn(language, text);
      EXPECT_FALSE(words.empty()) << "language " << language;
      EXPECT_EQ(Placeholders(words), Placeholders(english)) << words;
      if (text == CliText::UsageText) {
        EXPECT_EQ(words.back(), '\n');
      }
    }
    // No language chosen, or one the file does not have: English.
    for (double language : {0.0, 9.0, -1.0}) EXPECT_EQ(quillet::CliTextIn(language, text), english);
  }
}

TEST(CliLanguage, FaultAndSystemWordsAreThePlatformsOwnInEnglishAndTranslatedOtherwise) {
  const int faults[] = {quillet::kFaultIllegalCall,     quillet::kFaultOverflow,        quillet::kFaultSubscript,
                        quillet::kFaultDivisionByZero,  quillet::kFaultTypeMismatch,    quillet::kFaultBadFileName,
                        quillet::kFaultFileNotFound,    quillet::kFaultBadFileMode,     quillet::kFaultDiskFull,
                        quillet::kFaultInputPastEnd,    quillet::kFaultDeviceUnavailable,
                        quillet::kFaultPermissionDenied, quillet::kFaultPathAccess,     quillet::kFaultPathNotFound,
                        quillet::kFaultCancel,          482};
  quillet::SetCliLanguage(0);
  for (int n : faults) EXPECT_EQ(quillet::FaultWords(n), quillet::FaultDescription(n)) << n;
  for (int e : {ENOENT, EACCES, EBUSY, EIO}) EXPECT_EQ(quillet::SystemWords(e), std::strerror(e));

  quillet::SetCliLanguage(2);
  std::set<std::string> german;
  for (int n : faults) german.insert(quillet::FaultWords(n));
  EXPECT_EQ(german.size(), std::size(faults)) << "each fault its own words, 482 those of a fault without any";
  EXPECT_EQ(quillet::FaultWords(quillet::kFaultOverflow), "Überlauf");
  EXPECT_EQ(quillet::SystemWords(ENOENT), "Datei oder Verzeichnis nicht gefunden");
  EXPECT_EQ(quillet::SystemWords(EIO), std::strerror(EIO));
  // What the program was doing when a fault ended it, in the words the program uses.
  EXPECT_EQ(quillet::DoingWords("the logger's header could not be decoded"),
            "die Kopfdaten des Loggers konnten nicht dekodiert werden");
  EXPECT_EQ(quillet::DoingWords("the record could not be written to /tmp/a b.txt"),
            "die Aufzeichnung konnte nicht in /tmp/a b.txt geschrieben werden");
  EXPECT_EQ(quillet::DoingWords("COM 3 is not available"), "COM 3 ist nicht verfügbar");
  EXPECT_EQ(quillet::DoingWords("something else went wrong"), "something else went wrong");
  quillet::SetCliLanguage(0);

  // What is filled in is never read again; a percent sign after a placeholder stays.
  EXPECT_EQ(quillet::FillIn("%1 of %2 (%3%)", {"a%2", "b", "50"}), "a%2 of b (50%)");
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}

TEST(CliLanguage, RefusalsSpeakTheSettingsLanguageWithTheSameExitCodes) {
  QTemporaryDir dir;
  const QString de = dir.path() + "/de.ini", pl = dir.path() + "/pl.ini", en = dir.path() + "/en.ini";
  WriteFile(de, quillet::SettingsText(1, 2, 1200).toUtf8());
  WriteFile(pl, quillet::SettingsText(1, 8, 1200).toUtf8());
  WriteFile(en, quillet::SettingsText(1, 1, 1200).toUtf8());
  const QString header = dir.path() + "/h.bin", block = dir.path() + "/b.bin", rec = dir.path() + "/rec.txt",
                missing = dir.path() + "/missing.txt", device = dir.path() + "/no-tty";
  WriteFile(header, QByteArray(5, '\0'));
  WriteFile(block, QByteArray(12, '\x50'));

  struct Case {
    const char* name;
    QStringList args;
    int exitCode;
    QString english, german, polish;  // in standard error
  };
  const Case cases[] = {
      {"an unknown option", {"decode", "--bogus", "x"}, 2, "quillet-cli: decode: unknown option --bogus\n",
       "quillet-cli: decode: unbekannte Option --bogus\n", "quillet-cli: decode: nieznana opcja --bogus\n"},
      {"a header cut short",
       {"decode", "--header", header, "--block", block, "--now", "2026-11-21 12:00:00", "--out", rec},
       1,
       header + " holds 5 bytes; a header has 22\n",
       "Kopfdaten haben 22 Byte, " + header + " enthält nur 5\n",
       header + " zawiera 5 B, a nagłówek ma 22 B\n"},
      {"a record file that is not there",
       {"render", missing, "--out", dir.path() + "/g.png"},
       1,
       "quillet-cli: cannot read " + missing + ": ",
       "quillet-cli: " + missing + " kann nicht gelesen werden: ",
       "quillet-cli: nie można odczytać " + missing + ": "},
      {"print without a target", {"print", "graph", missing}, 2, "print: give either --out or --printer\n",
       "print: geben Sie entweder --out oder --printer an\n", "print: podaj albo --out, albo --printer\n"},
      {"a device that is not there",
       {"live", "--port", device},
       1,
       "cannot open " + device + ": No such file or directory\n",
       device + " kann nicht geöffnet werden: Datei oder Verzeichnis nicht gefunden\n",
       "nie można otworzyć " + device + ": Nie ma takiego pliku ani katalogu\n"},
      {"an unknown command", {"bogus"}, 2,
       "quillet-cli: unknown command \"bogus\"\nusage: quillet-cli COMMAND [options]\n\ncommands:\n",
       "quillet-cli: unbekannter Befehl „bogus“\nAufruf: quillet-cli BEFEHL [Optionen]\n\nBefehle:\n",
       "quillet-cli: nieznane polecenie „bogus”\nużycie: quillet-cli POLECENIE [opcje]\n\npolecenia:\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const struct {
      QString settings, expected;
    } runs[] = {{"", c.english}, {en, c.english}, {de, c.german}, {pl, c.polish}};
    for (const auto& run : runs) {
      SCOPED_TRACE(run.settings.toStdString());
      const CliRun r = RunCli(run.settings.isEmpty() ? c.args : c.args + QStringList{"--settings", run.settings});
      EXPECT_EQ(r.exitCode, c.exitCode) << r.err.toStdString();
      EXPECT_TRUE(r.err.contains(run.expected)) << r.err.toStdString();
      EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
      EXPECT_FALSE(QFile::exists(rec));
    }
  }
}

// The emulator on a pseudo-terminal in the test's folder.
struct Sim : quillet::testing::EmulatorProcess {
  Sim(const QTemporaryDir& dir, const QStringList& args)
      : EmulatorProcess(dir.path() + "/tty", args), link(dir.path() + "/tty") {}
  QString link;
};

TEST(CliLanguage, DownloadAndLiveReportInTheSettingsLanguageAndWriteTheSameData) {
  QTemporaryDir dir;
  const QString de = dir.path() + "/de.ini", pl = dir.path() + "/pl.ini", rec = dir.path() + "/rec.txt";
  WriteFile(de, quillet::SettingsText(1, 2, 1200).toUtf8());
  WriteFile(pl, quillet::SettingsText(1, 8, 1200).toUtf8());
  Sim logger(dir, {"--model", "17", "--baud", "4800", "--elapsed", "3h", "--signal", "steady", "--level", "20"});

  const CliRun d = RunCli({"download", "--port", logger.link, "--baud", "4800", "--out", rec, "--settings", de});
  ASSERT_EQ(d.exitCode, 0) << d.err.toStdString();
  for (const QString& line : {QString("quillet-cli: Logger Nr. 1234 ("), QString(") mit 4800 bit/s, 1537 Messwerte, 2048 Byte\n"),
                              QString("quillet-cli: Auslesen: "), QString("quillet-cli: Datenblock mit 2048 Byte in "),
                              "quillet-cli: " + rec + " geschrieben: 1537 Messwerte\n"}) {
    EXPECT_TRUE(d.err.contains(line)) << line.toStdString() << "\n" << d.err.toStdString();
  }
  QFile record(rec);
  ASSERT_TRUE(record.open(QIODevice::ReadOnly));
  EXPECT_TRUE(record.readAll().startsWith("\"loggerfile\"\r\n\"rev02\"\r\n1537\r\n"));

  const CliRun live = RunCli({"live", "--port", logger.link, "--baud", "4800", "--timeout", "6", "--settings", pl});
  EXPECT_EQ(live.exitCode, 0) << live.err.toStdString();
  EXPECT_TRUE(live.err.contains("quillet-cli: live: zatrzymano po 6 s, pokazane odczyty: ")) << live.err.toStdString();
  EXPECT_TRUE(live.out.contains(" 19.98\tdegC\n")) << live.out.toStdString();
}

}  // namespace
