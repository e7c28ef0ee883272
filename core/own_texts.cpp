#include "core/own_texts.h"

#include <array>

namespace quillet {

namespace {

constexpr int kOwnTexts = 7;
using Column = std::array<std::string, kOwnTexts>;

// English, Deutsch, Français, Español, Italiano, Português, Nederlands, Polski.
const std::array<Column, 8>& Texts() {
  static const std::array<Column, 8> texts{{
      {"Type a keyword", "Help", "The help file %1 could not be opened.", "(no device)", "&Yes", "&No",
       "The settings could not be saved to %1."},
      {"Suchbegriff eingeben", "Hilfe", "Die Hilfedatei %1 konnte nicht geöffnet werden.", "(kein Gerät)", "&Ja",
       "&Nein", "Die Einstellungen konnten nicht in %1 gespeichert werden."},
      {"Tapez un mot-clé", "Aide", "Le fichier d'aide %1 n'a pas pu être ouvert.", "(aucun périphérique)", "&Oui",
       "&Non", "Les réglages n'ont pas pu être enregistrés dans %1."},
      {"Escriba una palabra clave", "Ayuda", "No se pudo abrir el archivo de ayuda %1.", "(ningún dispositivo)",
       "&Sí", "&No", "No se pudo guardar la configuración en %1."},
      {"Digitare una parola chiave", "Guida", "Impossibile aprire il file della guida %1.", "(nessun dispositivo)",
       "&Sì", "&No", "Impossibile salvare le impostazioni in %1."},
      {"Escreva uma palavra-chave", "Ajuda", "Não foi possível abrir o ficheiro de ajuda %1.",
       "(nenhum dispositivo)", "&Sim", "&Não", "Não foi possível guardar as definições em %1."},
      {"Typ een trefwoord", "Help", "Het helpbestand %1 kon niet worden geopend.", "(geen apparaat)", "&Ja",
       "&Nee", "De instellingen konden niet worden opgeslagen in %1."},
      {"Wpisz słowo kluczowe", "Pomoc", "Nie można otworzyć pliku pomocy %1.", "(brak urządzenia)", "&Tak",
       "&Nie", "Nie można zapisać ustawień w %1."},
  }};
  return texts;
}

const StartupRow kStartupRows[] = {
    {54, "Sorry"},
    {59,
     "The communications port could not be opened.  It may not exist or may be in use by another program.  "
     "Please select a port."},
    {91, "Select a communications port to connect with the logger"},
    {92, "PORT SELECTION"},
    {119, "Cancel"},
    {120, "OK"},
    {141, "Language"},
    {142, "No Logger"},
};

}  // namespace

const std::string& OwnTextIn(double languageIndex, OwnText text) {
  const int language = languageIndex >= 1 && languageIndex <= 8 ? static_cast<int>(languageIndex) : 1;
  return Texts()[static_cast<std::size_t>(language - 1)][static_cast<std::size_t>(text)];
}

const StartupRow* StartupRows(int& count) {
  count = static_cast<int>(sizeof kStartupRows / sizeof kStartupRows[0]);
  return kStartupRows;
}

}  // namespace quillet
