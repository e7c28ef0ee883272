#include "cli/cli_texts.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "core/fault.h"

namespace quillet {

namespace {

struct Row {
  CliText id;
  // English, Deutsch, Français, Español, Italiano, Português, Nederlands, Polski.
  std::array<const char*, 8> text;
};

// One row per text, in the order of CliText. French sets a space before the colon and
// the semicolon; each language quotes what the user typed in its own marks, but keeps
// the straight quotes of a pattern to be typed as shown.
constexpr Row kRows[] = {
    {CliText::UnexpectedArgument,
     {"%1: unexpected argument %2", "%1: unerwartetes Argument %2", "%1 : argument inattendu %2",
      "%1: argumento inesperado %2", "%1: argomento inatteso %2", "%1: argumento inesperado %2",
      "%1: onverwacht argument %2", "%1: nieoczekiwany argument %2"}},
    {CliText::UnknownOption,
     {"%1: unknown option %2", "%1: unbekannte Option %2", "%1 : option inconnue %2", "%1: opción desconocida %2",
      "%1: opzione sconosciuta %2", "%1: opção desconhecida %2", "%1: onbekende optie %2", "%1: nieznana opcja %2"}},
    {CliText::NeedsValue,
     {"%1: %2 needs a value", "%1: %2 braucht einen Wert", "%1 : %2 attend une valeur", "%1: %2 necesita un valor",
      "%1: %2 richiede un valore", "%1: %2 precisa de um valor", "%1: %2 heeft een waarde nodig",
      "%1: %2 wymaga wartości"}},
    {CliText::IsRequired,
     {"%1: %2 is required", "%1: %2 ist erforderlich", "%1 : %2 est obligatoire", "%1: %2 es obligatorio",
      "%1: %2 è obbligatorio", "%1: %2 é obrigatório", "%1: %2 is verplicht", "%1: opcja %2 jest wymagana"}},
    {CliText::CannotReadWhy,
     {"cannot read %1: %2", "%1 kann nicht gelesen werden: %2", "impossible de lire %1 : %2",
      "no se puede leer %1: %2", "impossibile leggere %1: %2", "não é possível ler %1: %2", "kan %1 niet lezen: %2",
      "nie można odczytać %1: %2"}},
    {CliText::CannotRead,
     {"cannot read %1", "%1 kann nicht gelesen werden", "impossible de lire %1", "no se puede leer %1",
      "impossibile leggere %1", "não é possível ler %1", "kan %1 niet lezen", "nie można odczytać %1"}},
    {CliText::CannotWriteWhy,
     {"cannot write %1: %2", "%1 kann nicht geschrieben werden: %2", "impossible d'écrire %1 : %2",
      "no se puede escribir %1: %2", "impossibile scrivere %1: %2", "não é possível escrever %1: %2",
      "kan %1 niet schrijven: %2", "nie można zapisać %1: %2"}},
    {CliText::CannotWrite,
     {"cannot write %1", "%1 kann nicht geschrieben werden", "impossible d'écrire %1", "no se puede escribir %1",
      "impossibile scrivere %1", "não é possível escrever %1", "kan %1 niet schrijven", "nie można zapisać %1"}},
    {CliText::CannotOpenWhy,
     {"cannot open %1: %2", "%1 kann nicht geöffnet werden: %2", "impossible d'ouvrir %1 : %2",
      "no se puede abrir %1: %2", "impossibile aprire %1: %2", "não é possível abrir %1: %2",
      "kan %1 niet openen: %2", "nie można otworzyć %1: %2"}},
    {CliText::CannotOpen,
     {"cannot open %1", "%1 kann nicht geöffnet werden", "impossible d'ouvrir %1", "no se puede abrir %1",
      "impossibile aprire %1", "não é possível abrir %1", "kan %1 niet openen", "nie można otworzyć %1"}},
    {CliText::TimeoutNotSeconds,
     {"--timeout must be a number of seconds", "--timeout muss eine Anzahl Sekunden sein",
      "--timeout doit être un nombre de secondes", "--timeout debe ser un número de segundos",
      "--timeout deve essere un numero di secondi", "--timeout tem de ser um número de segundos",
      "--timeout moet een aantal seconden zijn", "--timeout musi być liczbą sekund"}},
    {CliText::BaudNotSpeed,
     {"--baud must be 1200 or 4800", "--baud muss 1200 oder 4800 sein", "--baud doit valoir 1200 ou 4800",
      "--baud debe ser 1200 o 4800", "--baud deve essere 1200 o 4800", "--baud tem de ser 1200 ou 4800",
      "--baud moet 1200 of 4800 zijn", "--baud musi wynosić 1200 lub 4800"}},
    {CliText::StartupFailed,
     {"the start-up failed", "der Programmstart ist fehlgeschlagen", "le démarrage a échoué",
      "el arranque ha fallado", "l'avvio non è riuscito", "o arranque falhou", "het opstarten is mislukt",
      "uruchomienie nie powiodło się"}},
    {CliText::UnknownCommand,
     {"unknown command \"%1\"", "unbekannter Befehl „%1“", "commande inconnue « %1 »", "orden desconocida «%1»",
      "comando sconosciuto «%1»", "comando desconhecido «%1»", "onbekende opdracht “%1”",
      "nieznane polecenie „%1”"}},
    {CliText::FaultUnhandledIn,
     {"%1: the command ended on a fault it could not handle: %2",
      "%1: der Befehl wurde durch einen Fehler beendet, den er nicht behandeln konnte: %2",
      "%1 : la commande s'est arrêtée sur une erreur qu'elle n'a pas pu traiter : %2",
      "%1: la orden terminó por un error que no pudo tratar: %2",
      "%1: il comando si è interrotto per un errore che non ha potuto gestire: %2",
      "%1: o comando terminou com um erro que não conseguiu tratar: %2",
      "%1: de opdracht is gestopt door een fout die ze niet kon afhandelen: %2",
      "%1: polecenie zakończyło się błędem, którego nie mogło obsłużyć: %2"}},
    {CliText::InternalErrorIn,
     {"%1: the command ended on an internal error: %2", "%1: der Befehl wurde durch einen internen Fehler beendet: %2",
      "%1 : la commande s'est arrêtée sur une erreur interne : %2", "%1: la orden terminó por un error interno: %2",
      "%1: il comando si è interrotto per un errore interno: %2", "%1: o comando terminou com um erro interno: %2",
      "%1: de opdracht is gestopt door een interne fout: %2",
      "%1: polecenie zakończyło się błędem wewnętrznym: %2"}},
    {CliText::NoClipboard,
     {"no clipboard without a window", "ohne Fenster gibt es keine Zwischenablage",
      "pas de presse-papiers sans fenêtre", "sin ventana no hay portapapeles", "senza finestra non ci sono appunti",
      "sem janela não há área de transferência", "zonder venster is er geen klembord", "bez okna nie ma schowka"}},
    {CliText::FaultUnhandled,
     {"the command ended on a fault it could not handle: %1",
      "der Befehl wurde durch einen Fehler beendet, den er nicht behandeln konnte: %1",
      "la commande s'est arrêtée sur une erreur qu'elle n'a pas pu traiter : %1",
      "la orden terminó por un error que no pudo tratar: %1",
      "il comando si è interrotto per un errore che non ha potuto gestire: %1",
      "o comando terminou com um erro que não conseguiu tratar: %1",
      "de opdracht is gestopt door een fout die ze niet kon afhandelen: %1",
      "polecenie zakończyło się błędem, którego nie mogło obsłużyć: %1"}},
    {CliText::FaultOn,
     {"%1 (on %2)", "%1 (bei %2)", "%1 (sur %2)", "%1 (en %2)", "%1 (su %2)", "%1 (em %2)", "%1 (op %2)",
      "%1 (dotyczy: %2)"}},
    {CliText::Explained, {"%1: %2", "%1: %2", "%1 : %2", "%1: %2", "%1: %2", "%1: %2", "%1: %2", "%1: %2"}},
    {CliText::DoingHeader,
     {"the logger's header could not be decoded", "die Kopfdaten des Loggers konnten nicht dekodiert werden",
      "l'en-tête de l'enregistreur n'a pas pu être décodé", "no se pudo decodificar la cabecera del registrador",
      "impossibile decodificare l'intestazione del logger",
      "não foi possível descodificar o cabeçalho do registador",
      "de header van de logger kon niet worden gedecodeerd", "nie można zdekodować nagłówka rejestratora"}},
    {CliText::DoingMemory,
     {"the logger's memory could not be decoded", "der Speicher des Loggers konnte nicht dekodiert werden",
      "la mémoire de l'enregistreur n'a pas pu être décodée", "no se pudo decodificar la memoria del registrador",
      "impossibile decodificare la memoria del logger", "não foi possível descodificar a memória do registador",
      "het geheugen van de logger kon niet worden gedecodeerd", "nie można zdekodować pamięci rejestratora"}},
    {CliText::DoingLive,
     {"the logger's live reading could not be converted",
      "der aktuelle Messwert des Loggers konnte nicht umgerechnet werden",
      "la valeur instantanée de l'enregistreur n'a pas pu être convertie",
      "no se pudo convertir la lectura actual del registrador", "impossibile convertire la lettura attuale del logger",
      "não foi possível converter a leitura atual do registador",
      "de actuele meting van de logger kon niet worden omgerekend",
      "nie można przeliczyć bieżącego odczytu rejestratora"}},
    {CliText::DoingRecordWrite,
     {"the record could not be written to %1", "die Aufzeichnung konnte nicht in %1 geschrieben werden",
      "le relevé n'a pas pu être écrit dans %1", "no se pudo escribir el registro en %1",
      "impossibile scrivere la registrazione in %1", "não foi possível escrever o registo em %1",
      "de registratie kon niet naar %1 worden geschreven", "nie można zapisać rejestracji do %1"}},
    {CliText::DoingComPort,
     {"COM %1 is not available", "COM %1 ist nicht verfügbar", "COM %1 n'est pas disponible",
      "COM %1 no está disponible", "COM %1 non è disponibile", "COM %1 não está disponível",
      "COM %1 is niet beschikbaar", "COM %1 jest niedostępny"}},
    {CliText::NowNotDate,
     {"decode: --now must be a date and time as \"YYYY-MM-DD hh:mm:ss\", not \"%1\"",
      "decode: --now muss Datum und Uhrzeit als \"YYYY-MM-DD hh:mm:ss\" angeben, nicht „%1“",
      "decode : --now doit être une date et une heure au format \"AAAA-MM-JJ hh:mm:ss\", et non « %1 »",
      "decode: --now debe ser una fecha y una hora con el formato \"AAAA-MM-DD hh:mm:ss\", no «%1»",
      "decode: --now deve essere una data e un'ora nel formato \"YYYY-MM-DD hh:mm:ss\", non «%1»",
      "decode: --now tem de ser uma data e uma hora no formato \"AAAA-MM-DD hh:mm:ss\", não «%1»",
      "decode: --now moet een datum en tijd zijn als \"YYYY-MM-DD hh:mm:ss\", niet “%1”",
      "decode: --now musi być datą i godziną w postaci \"YYYY-MM-DD hh:mm:ss\", a nie „%1”"}},
    {CliText::FahrenheitNotFlag,
     {"--fahrenheit must be 0 or 1", "--fahrenheit muss 0 oder 1 sein", "--fahrenheit doit valoir 0 ou 1",
      "--fahrenheit debe ser 0 o 1", "--fahrenheit deve essere 0 o 1", "--fahrenheit tem de ser 0 ou 1",
      "--fahrenheit moet 0 of 1 zijn", "--fahrenheit musi wynosić 0 lub 1"}},
    {CliText::HeaderTooShort,
     {"%1 holds %2 bytes; a header has %3", "Kopfdaten haben %3 Byte, %1 enthält nur %2",
      "un en-tête compte %3 octets, %1 n'en contient que %2", "una cabecera tiene %3 bytes y %1 solo contiene %2",
      "un'intestazione ha %3 byte e %1 ne contiene solo %2", "um cabeçalho tem %3 bytes e %1 só contém %2",
      "een header heeft %3 bytes en %1 bevat er maar %2", "%1 zawiera %2 B, a nagłówek ma %3 B"}},
    {CliText::HeaderNotDecoded,
     {"the logger's header in %1 could not be decoded: %2",
      "die Kopfdaten des Loggers in %1 konnten nicht dekodiert werden: %2",
      "l'en-tête de l'enregistreur dans %1 n'a pas pu être décodé : %2",
      "no se pudo decodificar la cabecera del registrador en %1: %2",
      "impossibile decodificare l'intestazione del logger in %1: %2",
      "não foi possível descodificar o cabeçalho do registador em %1: %2",
      "de header van de logger in %1 kon niet worden gedecodeerd: %2",
      "nie można zdekodować nagłówka rejestratora w %1: %2"}},
    {CliText::ProbeFactorNotNumber,
     {"warning: %1 has a probe factor that is not a number; the record has no unit and no remembered probe",
      "Warnung: %1 enthält einen Messfühlerfaktor, der keine Zahl ist; die Aufzeichnung hat keine Einheit und "
      "keinen gemerkten Messfühler",
      "avertissement : %1 contient un facteur de sonde qui n'est pas un nombre ; le relevé n'a ni unité ni sonde "
      "mémorisée",
      "aviso: %1 tiene un factor de sonda que no es un número; el registro no tiene unidad ni sonda recordada",
      "avviso: %1 contiene un fattore di sonda che non è un numero; la registrazione non ha né unità né sonda "
      "ricordata",
      "aviso: %1 tem um fator de sonda que não é um número; o registo não tem unidade nem sonda memorizada",
      "waarschuwing: %1 bevat een sensorfactor die geen getal is; de registratie heeft geen eenheid en geen "
      "onthouden sensor",
      "ostrzeżenie: %1 zawiera współczynnik sondy, który nie jest liczbą; rejestracja nie ma jednostki ani "
      "zapamiętanej sondy"}},
    {CliText::BlockNotDecoded,
     {"cannot decode %1 (%2 bytes): %3", "%1 (%2 Byte) kann nicht dekodiert werden: %3",
      "impossible de décoder %1 (%2 octets) : %3", "no se puede decodificar %1 (%2 bytes): %3",
      "impossibile decodificare %1 (%2 byte): %3", "não é possível descodificar %1 (%2 bytes): %3",
      "kan %1 (%2 bytes) niet decoderen: %3", "nie można zdekodować %1 (%2 B): %3"}},
    {CliText::TooManySamples,
     {"the logger holds %1 samples; a record takes at most %2",
      "der Logger enthält %1 Messwerte; eine Aufzeichnung fasst höchstens %2",
      "l'enregistreur contient %1 mesures ; un relevé en compte au plus %2",
      "el registrador contiene %1 muestras; un registro admite como máximo %2",
      "il logger contiene %1 campioni; una registrazione ne contiene al massimo %2",
      "o registador contém %1 amostras; um registo comporta no máximo %2",
      "de logger bevat %1 metingen; een registratie bevat er hoogstens %2",
      "liczba pomiarów w rejestratorze: %1; rejestracja mieści najwyżej %2"}},
    {CliText::BlockTimes,
     {"block of %1 bytes in %2 s, on the wire %3 s; whole download %4 s",
      "Datenblock mit %1 Byte in %2 s, auf der Leitung %3 s; gesamtes Auslesen %4 s",
      "bloc de %1 octets en %2 s, sur la ligne %3 s ; téléchargement complet %4 s",
      "bloque de %1 bytes en %2 s, en la línea %3 s; descarga completa %4 s",
      "blocco di %1 byte in %2 s, sulla linea %3 s; scaricamento completo %4 s",
      "bloco de %1 bytes em %2 s, na linha %3 s; descarga completa %4 s",
      "blok van %1 bytes in %2 s, op de lijn %3 s; hele download %4 s",
      "blok %1 B w %2 s, na łączu %3 s; całe pobieranie %4 s"}},
    {CliText::Wrote,
     {"wrote %1: %2 samples", "%1 geschrieben: %2 Messwerte", "%1 écrit : %2 mesures", "escrito %1: %2 muestras",
      "scritto %1: %2 campioni", "escrito %1: %2 amostras", "%1 geschreven: %2 metingen",
      "zapisano %1, liczba pomiarów: %2"}},
    {CliText::NoProbeChosen,
     {"the logger on %1 has no probe chosen; choose its probe in the window first",
      "für den Logger an %1 ist kein Messfühler gewählt; wählen Sie ihn zuerst im Fenster",
      "aucune sonde n'est choisie pour l'enregistreur sur %1 ; choisissez d'abord sa sonde dans la fenêtre",
      "el registrador en %1 no tiene ninguna sonda elegida; elija primero su sonda en la ventana",
      "per il logger su %1 non è stata scelta alcuna sonda; scegli prima la sonda nella finestra",
      "o registador em %1 não tem nenhuma sonda escolhida; escolha primeiro a sonda na janela",
      "voor de logger op %1 is geen sensor gekozen; kies eerst de sensor in het venster",
      "dla rejestratora na %1 nie wybrano sondy; najpierw wybierz ją w oknie programu"}},
    {CliText::LoggerFound,
     {"logger #%1 (%2) at %3 bit/s, %4 samples, %5 bytes", "Logger Nr. %1 (%2) mit %3 bit/s, %4 Messwerte, %5 Byte",
      "enregistreur n° %1 (%2) à %3 bit/s, %4 mesures, %5 octets",
      "registrador n.º %1 (%2) a %3 bit/s, %4 muestras, %5 bytes", "logger n. %1 (%2) a %3 bit/s, %4 campioni, %5 byte",
      "registador n.º %1 (%2) a %3 bit/s, %4 amostras, %5 bytes", "logger nr. %1 (%2) op %3 bit/s, %4 metingen, %5 bytes",
      "rejestrator nr %1 (%2), %3 bit/s, liczba pomiarów: %4, %5 B"}},
    {CliText::DownloadNotStarted,
     {"the download did not start", "das Auslesen hat nicht begonnen", "le téléchargement n'a pas démarré",
      "la descarga no se inició", "lo scaricamento non è partito", "a descarga não começou",
      "de download is niet begonnen", "pobieranie nie rozpoczęło się"}},
    {CliText::NoLoggerAnswered,
     {"no logger answered on %1 within %2 s", "an %1 hat innerhalb von %2 s kein Logger geantwortet",
      "aucun enregistreur n'a répondu sur %1 en %2 s", "ningún registrador respondió en %1 en un plazo de %2 s",
      "nessun logger ha risposto su %1 entro %2 s", "nenhum registador respondeu em %1 no prazo de %2 s",
      "geen logger antwoordde op %1 binnen %2 s", "żaden rejestrator nie odpowiedział na %1 w ciągu %2 s"}},
    {CliText::Downloading,
     {"downloading %1%", "Auslesen: %1 %", "téléchargement : %1 %", "descargando: %1 %", "scaricamento: %1%",
      "a descarregar: %1%", "downloaden: %1%", "pobieranie: %1%"}},
    {CliText::DownloadIncomplete,
     {"the download from %1 did not complete within %2 s (at %3%)",
      "das Auslesen von %1 wurde nicht innerhalb von %2 s fertig (bei %3 %)",
      "le téléchargement depuis %1 ne s'est pas terminé en %2 s (arrêté à %3 %)",
      "la descarga desde %1 no terminó en %2 s (iba por el %3 %)",
      "lo scaricamento da %1 non si è concluso entro %2 s (arrivato al %3%)",
      "a descarga de %1 não terminou no prazo de %2 s (ia em %3%)",
      "de download van %1 was niet binnen %2 s voltooid (bij %3%)",
      "pobieranie z %1 nie zakończyło się w ciągu %2 s (postęp: %3%)"}},
    {CliText::NoReading,
     {"live: no reading came from %1 within %2 s", "live: von %1 kam innerhalb von %2 s kein Messwert",
      "live : aucune mesure reçue de %1 en %2 s", "live: no llegó ninguna lectura de %1 en %2 s",
      "live: nessuna lettura da %1 entro %2 s", "live: não chegou nenhuma leitura de %1 no prazo de %2 s",
      "live: geen meting van %1 binnen %2 s", "live: brak odczytu z %1 w ciągu %2 s"}},
    {CliText::TooFewReadings,
     {"live: only %1 of %2 readings came from %3 within %4 s",
      "live: von %3 kamen innerhalb von %4 s nur %1 von %2 Messwerten",
      "live : mesures reçues de %3 en %4 s : seulement %1 sur %2",
      "live: lecturas recibidas de %3 en %4 s: solo %1 de %2",
      "live: letture ricevute da %3 entro %4 s: solo %1 su %2",
      "live: leituras recebidas de %3 no prazo de %4 s: só %1 de %2",
      "live: slechts %1 van %2 metingen van %3 ontvangen binnen %4 s",
      "live: z %3 w ciągu %4 s nadeszło tylko %1 z %2 odczytów"}},
    {CliText::LiveStopped,
     {"live: stopped after %1 s, %2 readings shown", "live: nach %1 s beendet, angezeigte Messwerte: %2",
      "live : arrêté après %1 s, mesures affichées : %2", "live: detenido tras %1 s, lecturas mostradas: %2",
      "live: fermato dopo %1 s, letture mostrate: %2", "live: parado após %1 s, leituras mostradas: %2",
      "live: gestopt na %1 s, getoonde metingen: %2", "live: zatrzymano po %1 s, pokazane odczyty: %2"}},
    {CliText::RenderOneRecord,
     {"render: name one record file", "render: nennen Sie genau eine Aufzeichnungsdatei",
      "render : indiquez un seul fichier de relevé", "render: indique un único archivo de registro",
      "render: indica un solo file di registrazione", "render: indique um único ficheiro de registo",
      "render: geef één registratiebestand op", "render: podaj jeden plik rejestracji"}},
    {CliText::RenderOutKind,
     {"render: --out must end in .png or .pdf", "render: --out muss auf .png oder .pdf enden",
      "render : --out doit se terminer par .png ou .pdf", "render: --out debe terminar en .png o .pdf",
      "render: --out deve terminare con .png o .pdf", "render: --out tem de terminar em .png ou .pdf",
      "render: --out moet eindigen op .png of .pdf", "render: --out musi kończyć się na .png lub .pdf"}},
    {CliText::RenderSize,
     {"render: --size must be WIDTHxHEIGHT in pixels, 16 to 20000 each, not \"%1\"",
      "render: --size muss BREITExHÖHE in Pixeln sein, jeweils 16 bis 20000, nicht „%1“",
      "render : --size doit être LARGEURxHAUTEUR en pixels, de 16 à 20000 chacune, et non « %1 »",
      "render: --size debe ser ANCHOxALTO en píxeles, de 16 a 20000 cada uno, no «%1»",
      "render: --size deve essere LARGHEZZAxALTEZZA in pixel, da 16 a 20000 ciascuna, non «%1»",
      "render: --size tem de ser LARGURAxALTURA em píxeis, de 16 a 20000 cada uma, não «%1»",
      "render: --size moet BREEDTExHOOGTE in pixels zijn, elk 16 tot 20000, niet “%1”",
      "render: --size musi mieć postać SZEROKOŚĆxWYSOKOŚĆ w pikselach, każda od 16 do 20000, a nie „%1”"}},
    {CliText::NotARecordFile,
     {"not a record file", "keine gültige Aufzeichnungsdatei", "ce n'est pas un fichier de relevé",
      "no es un archivo de registro", "non è un file di registrazione", "não é um ficheiro de registo",
      "geen geldig registratiebestand", "to nie jest plik rejestracji"}},
    {CliText::CannotDraw,
     {"cannot draw %1: %2", "%1 kann nicht gezeichnet werden: %2", "impossible de dessiner %1 : %2",
      "no se puede dibujar %1: %2", "impossibile disegnare %1: %2", "não é possível desenhar %1: %2",
      "kan %1 niet tekenen: %2", "nie można narysować %1: %2"}},
    {CliText::NothingToDraw,
     {"nothing to draw: %1 holds %2 samples; a graph needs three",
      "nichts zu zeichnen: eine Grafik braucht drei Messwerte, %1 enthält %2",
      "rien à dessiner : un graphique demande trois mesures, %1 en contient %2",
      "nada que dibujar: un gráfico necesita tres muestras y %1 contiene %2",
      "niente da disegnare: un grafico richiede tre campioni e %1 ne contiene %2",
      "nada para desenhar: um gráfico precisa de três amostras e %1 contém %2",
      "niets te tekenen: een grafiek heeft drie metingen nodig en %1 bevat er %2",
      "nie ma czego rysować: wykres wymaga trzech pomiarów, a %1 zawiera %2"}},
    {CliText::PrintKindAndRecord,
     {"print: say graph or data and name one record file",
      "print: geben Sie graph oder data und genau eine Aufzeichnungsdatei an",
      "print : indiquez graph ou data et un seul fichier de relevé",
      "print: indique graph o data y un único archivo de registro",
      "print: indica graph o data e un solo file di registrazione",
      "print: indique graph ou data e um único ficheiro de registo",
      "print: geef graph of data en één registratiebestand op", "print: podaj graph lub data oraz jeden plik rejestracji"}},
    {CliText::PrintAnnotateGraphOnly,
     {"print: --annotate belongs to print graph", "print: --annotate gehört zu print graph",
      "print : --annotate ne s'emploie qu'avec print graph", "print: --annotate solo vale para print graph",
      "print: --annotate vale solo per print graph", "print: --annotate só se usa com print graph",
      "print: --annotate hoort bij print graph", "print: --annotate dotyczy tylko print graph"}},
    {CliText::PrintOutOrPrinter,
     {"print: give either --out or --printer", "print: geben Sie entweder --out oder --printer an",
      "print : donnez soit --out, soit --printer", "print: indique o bien --out o bien --printer",
      "print: indica o --out o --printer", "print: indique ou --out ou --printer",
      "print: geef óf --out óf --printer op", "print: podaj albo --out, albo --printer"}},
    {CliText::PrintOutPdf,
     {"print: --out must end in .pdf", "print: --out muss auf .pdf enden", "print : --out doit se terminer par .pdf",
      "print: --out debe terminar en .pdf", "print: --out deve terminare con .pdf",
      "print: --out tem de terminar em .pdf", "print: --out moet eindigen op .pdf",
      "print: --out musi kończyć się na .pdf"}},
    {CliText::PrintPaper,
     {"print: --paper must be A4 or Letter, not \"%1\"", "print: --paper muss A4 oder Letter sein, nicht „%1“",
      "print : --paper doit valoir A4 ou Letter, et non « %1 »", "print: --paper debe ser A4 o Letter, no «%1»",
      "print: --paper deve essere A4 o Letter, non «%1»", "print: --paper tem de ser A4 ou Letter, não «%1»",
      "print: --paper moet A4 of Letter zijn, niet “%1”", "print: --paper musi mieć wartość A4 lub Letter, a nie „%1”"}},
    {CliText::NoSuchPrinter,
     {"print: there is no printer called \"%1\"", "print: es gibt keinen Drucker namens „%1“",
      "print : il n'y a pas d'imprimante nommée « %1 »", "print: no hay ninguna impresora llamada «%1»",
      "print: non esiste una stampante chiamata «%1»", "print: não existe nenhuma impressora chamada «%1»",
      "print: er is geen printer met de naam “%1”", "print: nie ma drukarki o nazwie „%1”"}},
    {CliText::CannotPrintGraph,
     {"cannot print the graph of %1: %2", "die Grafik von %1 kann nicht gedruckt werden: %2",
      "impossible d'imprimer le graphique de %1 : %2", "no se puede imprimir el gráfico de %1: %2",
      "impossibile stampare il grafico di %1: %2", "não é possível imprimir o gráfico de %1: %2",
      "kan de grafiek van %1 niet afdrukken: %2", "nie można wydrukować wykresu z %1: %2"}},
    {CliText::CannotPrintData,
     {"cannot print the data of %1: %2", "die Daten von %1 können nicht gedruckt werden: %2",
      "impossible d'imprimer les données de %1 : %2", "no se pueden imprimir los datos de %1: %2",
      "impossibile stampare i dati di %1: %2", "não é possível imprimir os dados de %1: %2",
      "kan de gegevens van %1 niet afdrukken: %2", "nie można wydrukować danych z %1: %2"}},
    {CliText::PrinterFailedGraph,
     {"the printer failed while printing the graph of %1",
      "der Drucker ist beim Drucken der Grafik von %1 ausgefallen",
      "l'imprimante a échoué pendant l'impression du graphique de %1",
      "la impresora falló al imprimir el gráfico de %1",
      "la stampante ha avuto un errore durante la stampa del grafico di %1",
      "a impressora falhou ao imprimir o gráfico de %1",
      "de printer faalde bij het afdrukken van de grafiek van %1", "błąd drukarki podczas drukowania wykresu z %1"}},
    {CliText::PrinterFailedData,
     {"the printer failed while printing the data of %1", "der Drucker ist beim Drucken der Daten von %1 ausgefallen",
      "l'imprimante a échoué pendant l'impression des données de %1",
      "la impresora falló al imprimir los datos de %1",
      "la stampante ha avuto un errore durante la stampa dei dati di %1",
      "a impressora falhou ao imprimir os dados de %1",
      "de printer faalde bij het afdrukken van de gegevens van %1", "błąd drukarki podczas drukowania danych z %1"}},
    {CliText::DescriptionTooLongGraph,
     {"cannot print the description of the graph of %1: it holds a stretch of 49 or more characters without a blank",
      "die Beschreibung der Grafik von %1 kann nicht gedruckt werden: sie enthält 49 oder mehr Zeichen am Stück "
      "ohne Leerzeichen",
      "impossible d'imprimer la description du graphique de %1 : elle contient une suite de 49 caractères ou plus "
      "sans espace",
      "no se puede imprimir la descripción del gráfico de %1: contiene un tramo de 49 o más caracteres sin espacios",
      "impossibile stampare la descrizione del grafico di %1: contiene una sequenza di 49 o più caratteri senza "
      "spazi",
      "não é possível imprimir a descrição do gráfico de %1: contém uma sequência de 49 ou mais caracteres sem "
      "espaços",
      "kan de beschrijving van de grafiek van %1 niet afdrukken: die bevat een reeks van 49 of meer tekens zonder "
      "spatie",
      "nie można wydrukować opisu wykresu z %1: zawiera ciąg co najmniej 49 znaków bez spacji"}},
    {CliText::DescriptionTooLongData,
     {"cannot print the description of the data of %1: it holds a stretch of 49 or more characters without a blank",
      "die Beschreibung der Daten von %1 kann nicht gedruckt werden: sie enthält 49 oder mehr Zeichen am Stück "
      "ohne Leerzeichen",
      "impossible d'imprimer la description des données de %1 : elle contient une suite de 49 caractères ou plus "
      "sans espace",
      "no se puede imprimir la descripción de los datos de %1: contiene un tramo de 49 o más caracteres sin "
      "espacios",
      "impossibile stampare la descrizione dei dati di %1: contiene una sequenza di 49 o più caratteri senza "
      "spazi",
      "não é possível imprimir a descrição dos dados de %1: contém uma sequência de 49 ou mais caracteres sem "
      "espaços",
      "kan de beschrijving van de gegevens van %1 niet afdrukken: die bevat een reeks van 49 of meer tekens zonder "
      "spatie",
      "nie można wydrukować opisu danych z %1: zawiera ciąg co najmniej 49 znaków bez spacji"}},
    {CliText::UnknownFamily,
     {"profile: unknown family \"%1\" (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile: unbekannte Profilart „%1“ (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile : type de profil inconnu « %1 » (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile: tipo de perfil desconocido «%1» (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile: tipo di profilo sconosciuto «%1» (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile: tipo de perfil desconhecido «%1» (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile: onbekend soort profiel “%1” (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)",
      "profile: nieznany rodzaj profilu „%1” (custom, 100mv, 10v, 420, bipo100mv, bipo10mv)"}},
    {CliText::FamilyByExtension,
     {"cannot tell the profile family of %1 by its extension: give --family",
      "die Profilart von %1 ist an der Endung nicht zu erkennen: geben Sie --family an",
      "impossible de déduire le type de profil de %1 de son extension : donnez --family",
      "no se puede saber el tipo de perfil de %1 por su extensión: indique --family",
      "impossibile capire il tipo di profilo di %1 dall'estensione: indica --family",
      "não é possível saber o tipo de perfil de %1 pela extensão: indique --family",
      "het soort profiel van %1 is niet aan de extensie te zien: geef --family op",
      "nie można rozpoznać rodzaju profilu %1 po rozszerzeniu: podaj --family"}},
    {CliText::NotAProfile,
     {"not a profile", "kein Profil", "ce n'est pas un profil", "no es un perfil", "non è un profilo",
      "não é um perfil", "geen profiel", "to nie jest profil"}},
    {CliText::NoSuchFile,
     {"no such file", "Datei nicht vorhanden", "fichier introuvable", "el archivo no existe", "il file non esiste",
      "o ficheiro não existe", "bestand bestaat niet", "plik nie istnieje"}},
    {CliText::ProfileEndsEarly,
     {"%1 ends early: a %2 profile has %3 records", "%1 endet zu früh: ein Profil der Art %2 hat %3 Datensätze",
      "%1 se termine trop tôt : un profil %2 compte %3 enregistrements",
      "%1 termina antes de tiempo: un perfil %2 tiene %3 entradas",
      "%1 finisce troppo presto: un profilo %2 ha %3 record",
      "%1 termina antes do tempo: um perfil %2 tem %3 entradas",
      "%1 houdt te vroeg op: een %2-profiel heeft %3 records",
      "%1 kończy się przedwcześnie: liczba rekordów profilu %2 to %3"}},
    {CliText::CannotUse,
     {"cannot use %1: %2", "%1 kann nicht verwendet werden: %2", "impossible d'utiliser %1 : %2",
      "no se puede usar %1: %2", "impossibile usare %1: %2", "não é possível usar %1: %2",
      "kan %1 niet gebruiken: %2", "nie można użyć %1: %2"}},
    {CliText::ProfileFlat,
     {"%1: the profile has fewer than two points or is flat, so nothing converts through it",
      "%1: das Profil hat weniger als zwei Punkte oder ist flach, daher lässt sich nichts darüber umrechnen",
      "%1 : le profil a moins de deux points ou il est plat ; rien ne peut être converti par lui",
      "%1: el perfil tiene menos de dos puntos o es plano, así que no convierte nada",
      "%1: il profilo ha meno di due punti o è piatto, quindi non converte nulla",
      "%1: o perfil tem menos de dois pontos ou é plano, por isso não converte nada",
      "%1: het profiel heeft minder dan twee punten of is vlak, dus er wordt niets mee omgerekend",
      "%1: profil ma mniej niż dwa punkty albo jest płaski, więc nic nie da się nim przeliczyć"}},
    {CliText::EntryForm,
     {"profile write: --entry takes KNOT=TEXT, not \"%1\"", "profile write: --entry erwartet PUNKT=TEXT, nicht „%1“",
      "profile write : --entry attend POINT=TEXTE, et non « %1 »", "profile write: --entry espera PUNTO=TEXTO, no «%1»",
      "profile write: --entry vuole PUNTO=TESTO, non «%1»", "profile write: --entry espera PONTO=TEXTO, não «%1»",
      "profile write: --entry verwacht PUNT=TEKST, niet “%1”",
      "profile write: --entry oczekuje PUNKT=TEKST, a nie „%1”"}},
    {CliText::KnotNotField,
     {"profile write: knot \"%1\" is not a field of the %2 dialog (%3 to %4)",
      "profile write: Punkt „%1“ ist kein Feld des %2-Dialogs (%3 bis %4)",
      "profile write : le point « %1 » n'est pas un champ de la boîte %2 (%3 à %4)",
      "profile write: el punto «%1» no es un campo del diálogo %2 (de %3 a %4)",
      "profile write: il punto «%1» non è un campo della finestra %2 (da %3 a %4)",
      "profile write: o ponto «%1» não é um campo da caixa de diálogo %2 (de %3 a %4)",
      "profile write: punt “%1” is geen veld van het %2-venster (%3 tot %4)",
      "profile write: punkt „%1” nie jest polem okna %2 (od %3 do %4)"}},
    {CliText::KnotNotNumber,
     {"profile write: knot %1: \"%2\" is not a number", "profile write: Punkt %1: „%2“ ist keine Zahl",
      "profile write : point %1 : « %2 » n'est pas un nombre", "profile write: punto %1: «%2» no es un número",
      "profile write: punto %1: «%2» non è un numero", "profile write: ponto %1: «%2» não é um número",
      "profile write: punt %1: “%2” is geen getal", "profile write: punkt %1: „%2” nie jest liczbą"}},
    {CliText::NoDataToSave,
     {"No data to save.  Enter some values.", "Keine Daten zum Speichern.  Geben Sie einige Werte ein.",
      "Aucune donnée à enregistrer.  Saisissez des valeurs.", "No hay datos que guardar.  Introduzca algunos valores.",
      "Nessun dato da salvare.  Inserisci alcuni valori.", "Não há dados para guardar.  Introduza alguns valores.",
      "Geen gegevens om op te slaan.  Voer enkele waarden in.", "Brak danych do zapisania.  Wprowadź jakieś wartości."}},
    {CliText::ProfileExists,
     {"%1 exists: give --replace to replace it", "%1 existiert bereits: mit --replace wird die Datei ersetzt",
      "%1 existe déjà : donnez --replace pour le remplacer", "%1 ya existe: indique --replace para reemplazarlo",
      "%1 esiste già: indica --replace per sostituirlo", "%1 já existe: indique --replace para o substituir",
      "%1 bestaat al: geef --replace op om het te vervangen", "%1 już istnieje: podaj --replace, aby go zastąpić"}},
    {CliText::ProfileWriteFault,
     {"profile write: %1", "profile write: %1", "profile write : %1", "profile write: %1", "profile write: %1",
      "profile write: %1", "profile write: %1", "profile write: %1"}},
    {CliText::ShowOneFile,
     {"profile show: one FILE is required", "profile show: genau eine Datei ist erforderlich",
      "profile show : indiquez un seul fichier", "profile show: hace falta un único archivo",
      "profile show: serve un solo file", "profile show: é necessário um único ficheiro",
      "profile show: er is precies één bestand nodig", "profile show: wymagany jest dokładnie jeden plik"}},
    {CliText::ProfileShowOrWrite,
     {"profile: say show or write", "profile: geben Sie show oder write an", "profile : indiquez show ou write",
      "profile: indique show o write", "profile: indica show o write", "profile: indique show ou write",
      "profile: geef show of write op", "profile: podaj show lub write"}},
    {CliText::UsageLine,
     {"usage: quillet-cli COMMAND [options]", "Aufruf: quillet-cli BEFEHL [Optionen]",
      "usage : quillet-cli COMMANDE [options]", "uso: quillet-cli ORDEN [opciones]",
      "uso: quillet-cli COMANDO [opzioni]", "utilização: quillet-cli COMANDO [opções]",
      "gebruik: quillet-cli OPDRACHT [opties]", "użycie: quillet-cli POLECENIE [opcje]"}},
    {CliText::UsageCommands,
     {"commands:", "Befehle:", "commandes :", "órdenes:", "comandi:", "comandos:", "opdrachten:", "polecenia:"}},
    {CliText::UsageText,
     {"decode turns a saved header (the 22 bytes after the acknowledge) and block into a record\n"
      "file, timed as if the header had been read at --now. download finds the logger on the\n"
      "device at either speed, reads its memory and writes the record; with --raw also\n"
      "PREFIX.header.bin and PREFIX.block.bin. live prints one line per reading: the present\n"
      "time, the value as the window shows it (\"OL\" for an overload), a tab, the unit;\n"
      "--timeout ends it after that many seconds (an error when fewer than --count readings came).\n"
      "download's --timeout is the limit of the whole command (without it: 30 s to find the logger).\n"
      "render draws a record file's graph as the window does (PNG raster, PDF vector; default\n"
      "size 1200x600); --axes also prints the scale results and the labels as drawn.\n"
      "profile show prints a scale profile file as its dialog builds it (family, unit, points,\n"
      "invalid, one knot line each, the preview's labels), tab-separated; profile write types\n"
      "the entries into the family's dialog and saves them. decode --profile converts through\n"
      "the profile file as if it had been opened and accepted in the model's dialog.\n"
      "print prints a record file's graph page (with the annotation on --annotate) or its data\n"
      "table as the window prints them, to a PDF file (A4 unless --paper says otherwise) or a\n"
      "system printer (on its own paper unless --paper is given).\n"
      "Without --settings a command starts as on a first start.\n",

      "decode macht aus gespeicherten Kopfdaten (den 22 Bytes nach der Bestätigung) und einem\n"
      "Datenblock eine Aufzeichnungsdatei, mit Zeiten, als wären die Kopfdaten zum Zeitpunkt --now\n"
      "gelesen worden. download sucht den Logger am Gerät mit beiden Übertragungsraten, liest seinen\n"
      "Speicher und schreibt die Aufzeichnung; mit --raw zusätzlich PREFIX.header.bin und\n"
      "PREFIX.block.bin. live gibt eine Zeile je Messwert aus: die aktuelle Uhrzeit, den Wert, wie\n"
      "ihn das Fenster zeigt (\"OL\" bei Überlast), ein Tabulatorzeichen und die Einheit; --timeout\n"
      "beendet den Befehl nach so vielen Sekunden (ein Fehler, wenn weniger als --count Messwerte\n"
      "kamen). Bei download begrenzt --timeout den ganzen Befehl (ohne Angabe: 30 s, um den Logger\n"
      "zu finden). render zeichnet die Grafik einer Aufzeichnungsdatei wie das Fenster (PNG als\n"
      "Rasterbild, PDF als Vektorgrafik; Standardgröße 1200x600); --axes gibt zusätzlich die\n"
      "Skalenergebnisse und die Beschriftungen wie gezeichnet aus. profile show gibt eine\n"
      "Skalierungsprofildatei so aus, wie ihr Dialog sie aufbaut (Art, Einheit, Punkte, ungültig,\n"
      "je eine Zeile pro Stützpunkt, die Beschriftungen der Vorschau), durch Tabulatoren getrennt;\n"
      "profile write tippt die Einträge in den Dialog der Profilart und speichert sie. decode\n"
      "--profile rechnet über die Profildatei um, als wäre sie im Dialog des Modells geöffnet und\n"
      "mit OK übernommen worden. print druckt die Grafikseite einer Aufzeichnungsdatei (mit\n"
      "--annotate samt Anmerkung) oder ihre Datentabelle so, wie das Fenster sie druckt, in eine\n"
      "PDF-Datei (A4, sofern --paper nichts anderes sagt) oder auf einen Systemdrucker (auf dessen\n"
      "eigenem Papier, sofern --paper nicht angegeben ist).\n"
      "Ohne --settings beginnt ein Befehl wie beim ersten Start.\n",

      "decode transforme un en-tête enregistré (les 22 octets qui suivent l'acquittement) et un bloc\n"
      "en fichier de relevé, daté comme si l'en-tête avait été lu à l'instant --now. download cherche\n"
      "l'enregistreur sur le périphérique aux deux vitesses, lit sa mémoire et écrit le relevé ; avec\n"
      "--raw, aussi PREFIX.header.bin et PREFIX.block.bin. live affiche une ligne par mesure : l'heure\n"
      "actuelle, la valeur telle que la fenêtre l'affiche (\"OL\" en cas de surcharge), une tabulation,\n"
      "l'unité ; --timeout l'arrête après ce nombre de secondes (c'est une erreur si moins de --count\n"
      "mesures sont arrivées). Pour download, --timeout limite la commande entière (sans lui : 30 s\n"
      "pour trouver l'enregistreur). render dessine le graphique d'un fichier de relevé comme la\n"
      "fenêtre (PNG matriciel, PDF vectoriel ; taille par défaut 1200x600) ; --axes affiche en plus\n"
      "les échelles retenues et les libellés tels que tracés. profile show affiche un fichier de\n"
      "profil de mise à l'échelle tel que sa boîte de dialogue le construit (type, unité, points,\n"
      "invalide, une ligne par point d'appui, les libellés de l'aperçu), séparé par des tabulations ;\n"
      "profile write saisit les valeurs dans la boîte du type de profil et les enregistre. decode\n"
      "--profile convertit par le fichier de profil comme s'il avait été ouvert et validé dans la\n"
      "boîte du modèle. print imprime la page graphique d'un fichier de relevé (avec l'annotation si\n"
      "--annotate est donné) ou son tableau de données comme la fenêtre les imprime, dans un fichier\n"
      "PDF (A4 sauf indication contraire de --paper) ou sur une imprimante du système (sur son propre\n"
      "papier sauf si --paper est donné).\n"
      "Sans --settings, une commande part comme lors d'un premier démarrage.\n",

      "decode convierte una cabecera guardada (los 22 bytes tras el acuse de recibo) y un bloque en\n"
      "un archivo de registro, con las horas como si la cabecera se hubiera leído en el momento\n"
      "--now. download busca el registrador en el dispositivo a las dos velocidades, lee su memoria\n"
      "y escribe el registro; con --raw, también PREFIX.header.bin y PREFIX.block.bin. live escribe\n"
      "una línea por lectura: la hora actual, el valor tal como lo muestra la ventana (\"OL\" en caso\n"
      "de sobrecarga), un tabulador y la unidad; --timeout la termina tras ese número de segundos\n"
      "(es un error si llegaron menos lecturas que --count). En download, --timeout limita la orden\n"
      "entera (sin él: 30 s para encontrar el registrador). render dibuja el gráfico de un archivo\n"
      "de registro igual que la ventana (PNG de mapa de bits, PDF vectorial; tamaño por defecto\n"
      "1200x600); --axes muestra además los resultados de escala y las etiquetas tal como se\n"
      "dibujaron. profile show muestra un archivo de perfil de escalado tal como lo construye su\n"
      "diálogo (tipo, unidad, puntos, no válido, una línea por punto de apoyo, las etiquetas de la\n"
      "vista previa), separado por tabuladores; profile write escribe las entradas en el diálogo del\n"
      "tipo y las guarda. decode --profile convierte a través del archivo de perfil como si se\n"
      "hubiera abierto y aceptado en el diálogo del modelo. print imprime la página del gráfico de un\n"
      "archivo de registro (con la anotación si se da --annotate) o su tabla de datos igual que la\n"
      "ventana, en un archivo PDF (A4 salvo que --paper diga otra cosa) o en una impresora del\n"
      "sistema (en su propio papel salvo que se dé --paper).\n"
      "Sin --settings, una orden empieza como en un primer inicio.\n",

      "decode trasforma un'intestazione salvata (i 22 byte dopo la conferma) e un blocco in un file\n"
      "di registrazione, con i tempi calcolati come se l'intestazione fosse stata letta nel momento\n"
      "--now. download cerca il logger sul dispositivo a entrambe le velocità, ne legge la memoria e\n"
      "scrive la registrazione; con --raw anche PREFIX.header.bin e PREFIX.block.bin. live scrive una\n"
      "riga per lettura: l'ora attuale, il valore come lo mostra la finestra (\"OL\" per un\n"
      "sovraccarico), una tabulazione e l'unità; --timeout lo termina dopo quel numero di secondi (è\n"
      "un errore se sono arrivate meno letture di --count). Per download, --timeout limita l'intero\n"
      "comando (senza: 30 s per trovare il logger). render disegna il grafico di un file di\n"
      "registrazione come la finestra (PNG raster, PDF vettoriale; dimensione predefinita 1200x600);\n"
      "--axes scrive anche i risultati delle scale e le etichette così come disegnate. profile show\n"
      "mostra un file di profilo di scalatura come lo costruisce la sua finestra (tipo, unità, punti,\n"
      "non valido, una riga per nodo, le etichette dell'anteprima), separato da tabulazioni; profile\n"
      "write digita i valori nella finestra del tipo di profilo e li salva. decode --profile converte\n"
      "tramite il file di profilo come se fosse stato aperto e confermato nella finestra del modello.\n"
      "print stampa la pagina del grafico di un file di registrazione (con l'annotazione se c'è\n"
      "--annotate) o la sua tabella dei dati come li stampa la finestra, in un file PDF (A4 se --paper\n"
      "non dice altro) o su una stampante di sistema (sulla sua carta se --paper non è indicato).\n"
      "Senza --settings un comando parte come al primo avvio.\n",

      "decode transforma um cabeçalho guardado (os 22 bytes após a confirmação) e um bloco num\n"
      "ficheiro de registo, com os tempos calculados como se o cabeçalho tivesse sido lido no\n"
      "momento --now. download procura o registador no dispositivo às duas velocidades, lê a sua\n"
      "memória e escreve o registo; com --raw, também PREFIX.header.bin e PREFIX.block.bin. live\n"
      "escreve uma linha por leitura: a hora atual, o valor tal como a janela o mostra (\"OL\" numa\n"
      "sobrecarga), uma tabulação e a unidade; --timeout termina-o ao fim desse número de segundos\n"
      "(é um erro se chegarem menos leituras do que --count). No download, --timeout limita o comando\n"
      "inteiro (sem ele: 30 s para encontrar o registador). render desenha o gráfico de um ficheiro\n"
      "de registo como a janela (PNG em mapa de bits, PDF vetorial; tamanho predefinido 1200x600);\n"
      "--axes escreve também os resultados das escalas e as etiquetas tal como desenhadas. profile\n"
      "show mostra um ficheiro de perfil de escalonamento tal como a sua caixa de diálogo o constrói\n"
      "(tipo, unidade, pontos, inválido, uma linha por ponto de apoio, as etiquetas da\n"
      "pré-visualização), separado por tabulações; profile write escreve os valores na caixa de\n"
      "diálogo do tipo e guarda-os. decode --profile converte através do ficheiro de perfil como se\n"
      "tivesse sido aberto e aceite na caixa de diálogo do modelo. print imprime a página do gráfico\n"
      "de um ficheiro de registo (com a anotação se houver --annotate) ou a sua tabela de dados tal\n"
      "como a janela os imprime, num ficheiro PDF (A4, salvo indicação em contrário de --paper) ou\n"
      "numa impressora do sistema (no papel dela, salvo se --paper for indicado).\n"
      "Sem --settings, um comando começa como num primeiro arranque.\n",

      "decode maakt van een bewaarde header (de 22 bytes na de bevestiging) en een blok een\n"
      "registratiebestand, met tijden alsof de header op het moment --now was gelezen. download\n"
      "zoekt de logger op het apparaat bij beide snelheden, leest zijn geheugen en schrijft de\n"
      "registratie; met --raw ook PREFIX.header.bin en PREFIX.block.bin. live schrijft één regel per\n"
      "meting: de huidige tijd, de waarde zoals het venster die toont (\"OL\" bij overbelasting), een\n"
      "tab en de eenheid; --timeout stopt na zoveel seconden (een fout als er minder dan --count\n"
      "metingen kwamen). Bij download begrenst --timeout de hele opdracht (zonder: 30 s om de logger\n"
      "te vinden). render tekent de grafiek van een registratiebestand zoals het venster dat doet\n"
      "(PNG als raster, PDF als vector; standaardgrootte 1200x600); --axes schrijft ook de asschalen\n"
      "en de labels zoals getekend. profile show toont een profielbestand zoals het dialoogvenster\n"
      "het opbouwt (soort, eenheid, punten, ongeldig, één regel per steunpunt, de labels van het\n"
      "voorbeeld), gescheiden door tabs; profile write typt de waarden in het venster van dat soort\n"
      "profiel en slaat ze op. decode --profile rekent om via het profielbestand alsof het in het\n"
      "venster van het model was geopend en met OK bevestigd. print drukt de grafiekpagina van een\n"
      "registratiebestand af (met de annotatie bij --annotate) of de gegevenstabel, zoals het venster\n"
      "ze afdrukt, naar een PDF-bestand (A4 tenzij --paper iets anders zegt) of op een systeemprinter\n"
      "(op diens eigen papier tenzij --paper is opgegeven).\n"
      "Zonder --settings begint een opdracht zoals bij een eerste start.\n",

      "decode tworzy plik rejestracji z zapisanego nagłówka (22 bajtów po potwierdzeniu) i bloku,\n"
      "z czasami wyliczonymi tak, jakby nagłówek odczytano w chwili --now. download szuka\n"
      "rejestratora na urządzeniu przy obu prędkościach, odczytuje jego pamięć i zapisuje\n"
      "rejestrację; z --raw także PREFIX.header.bin i PREFIX.block.bin. live wypisuje po jednym\n"
      "wierszu na odczyt: bieżący czas, wartość tak, jak pokazuje ją okno (\"OL\" przy przeciążeniu),\n"
      "znak tabulacji i jednostkę; --timeout kończy pracę po tylu sekundach (to błąd, jeśli nadeszło\n"
      "mniej odczytów niż --count). W poleceniu download --timeout ogranicza całe polecenie (bez\n"
      "niego: 30 s na znalezienie rejestratora). render rysuje wykres z pliku rejestracji tak jak\n"
      "okno (PNG rastrowo, PDF wektorowo; domyślny rozmiar 1200x600); --axes wypisuje dodatkowo\n"
      "wyniki skalowania i opisy tak, jak zostały narysowane. profile show wypisuje plik profilu\n"
      "skalowania tak, jak buduje go jego okno dialogowe (rodzaj, jednostka, punkty, nieważny, po\n"
      "jednym wierszu na węzeł, opisy podglądu), rozdzielając pola tabulatorami; profile write\n"
      "wpisuje wartości do okna danego rodzaju profilu i zapisuje je. decode --profile przelicza\n"
      "przez plik profilu tak, jakby został otwarty i zatwierdzony w oknie modelu. print drukuje\n"
      "stronę wykresu z pliku rejestracji (z adnotacją przy --annotate) albo jego tabelę danych tak\n"
      "jak okno, do pliku PDF (A4, chyba że --paper mówi inaczej) lub na drukarkę systemową (na jej\n"
      "własnym papierze, chyba że podano --paper).\n"
      "Bez --settings polecenie zaczyna tak jak przy pierwszym uruchomieniu.\n"}},
    {CliText::FaultIllegalCall,
     {"Invalid procedure call or argument", "Ungültiger Prozeduraufruf oder ungültiges Argument",
      "Appel de procédure ou argument incorrect", "Llamada a procedimiento o argumento no válido",
      "Chiamata di routine o argomento non validi", "Chamada de procedimento ou argumento inválido",
      "Ongeldige procedureaanroep of ongeldig argument", "Nieprawidłowe wywołanie procedury lub argument"}},
    {CliText::FaultOverflow,
     {"Overflow", "Überlauf", "Dépassement de capacité", "Desbordamiento", "Overflow", "Capacidade excedida",
      "Overloop", "Przepełnienie"}},
    {CliText::FaultSubscript,
     {"Subscript out of range", "Index außerhalb des gültigen Bereichs", "Indice hors limites",
      "Subíndice fuera del intervalo", "Indice non compreso nell'intervallo", "Índice fora do intervalo",
      "Index valt buiten het bereik", "Indeks poza zakresem"}},
    {CliText::FaultDivisionByZero,
     {"Division by zero", "Division durch Null", "Division par zéro", "División por cero", "Divisione per zero",
      "Divisão por zero", "Deling door nul", "Dzielenie przez zero"}},
    {CliText::FaultTypeMismatch,
     {"Type mismatch", "Typen unverträglich", "Incompatibilité de type", "No coinciden los tipos",
      "Tipo non corrispondente", "Tipos incompatíveis", "Typen komen niet overeen", "Niezgodność typów"}},
    {CliText::FaultBadFileName,
     {"Bad file name or number", "Dateiname oder -nummer falsch", "Nom ou numéro de fichier incorrect",
      "Nombre o número de archivo incorrecto", "Nome o numero di file non valido",
      "Nome ou número de ficheiro incorreto", "Onjuiste bestandsnaam of -nummer",
      "Nieprawidłowa nazwa lub numer pliku"}},
    {CliText::FaultFileNotFound,
     {"File not found", "Datei nicht gefunden", "Fichier introuvable", "No se encontró el archivo",
      "File non trovato", "Ficheiro não encontrado", "Bestand niet gevonden", "Nie znaleziono pliku"}},
    {CliText::FaultBadFileMode,
     {"Bad file mode", "Falscher Dateimodus", "Mode d'accès au fichier incorrect", "Modo de archivo incorrecto",
      "Modalità file non valida", "Modo de ficheiro incorreto", "Onjuiste bestandsmodus",
      "Nieprawidłowy tryb pliku"}},
    {CliText::FaultDiskFull,
     {"Disk full", "Datenträger voll", "Disque plein", "Disco lleno", "Disco pieno", "Disco cheio", "Schijf vol",
      "Dysk pełny"}},
    {CliText::FaultInputPastEnd,
     {"Input past end of file", "Einlesen hinter Dateiende", "Lecture au-delà de la fin du fichier",
      "Lectura más allá del final del archivo", "Lettura oltre la fine del file",
      "Leitura para além do fim do ficheiro", "Invoer voorbij het einde van het bestand", "Odczyt poza końcem pliku"}},
    {CliText::FaultDeviceUnavailable,
     {"Device unavailable", "Gerät nicht verfügbar", "Périphérique non disponible", "Dispositivo no disponible",
      "Dispositivo non disponibile", "Dispositivo indisponível", "Apparaat niet beschikbaar",
      "Urządzenie niedostępne"}},
    {CliText::FaultPermissionDenied,
     {"Permission denied", "Zugriff verweigert", "Permission refusée", "Permiso denegado", "Autorizzazione negata",
      "Permissão negada", "Toegang geweigerd", "Odmowa dostępu"}},
    {CliText::FaultPathAccess,
     {"Path/File access error", "Fehler beim Zugriff auf Pfad/Datei", "Erreur d'accès au chemin ou au fichier",
      "Error de acceso a la ruta o al archivo", "Errore di accesso al percorso o al file",
      "Erro de acesso ao caminho ou ao ficheiro", "Fout bij toegang tot pad of bestand",
      "Błąd dostępu do ścieżki lub pliku"}},
    {CliText::FaultPathNotFound,
     {"Path not found", "Pfad nicht gefunden", "Chemin introuvable", "No se encontró la ruta",
      "Percorso non trovato", "Caminho não encontrado", "Pad niet gevonden", "Nie znaleziono ścieżki"}},
    {CliText::FaultCancel,
     {"Cancel was selected.", "Abbrechen wurde gewählt.", "Annuler a été choisi.", "Se eligió Cancelar.",
      "È stato scelto Annulla.", "Foi escolhido Cancelar.", "Er is voor Annuleren gekozen.", "Wybrano Anuluj."}},
    {CliText::FaultOther,
     {"Application-defined or object-defined error", "Anwendungs- oder objektdefinierter Fehler",
      "Erreur définie par l'application ou par l'objet", "Error definido por la aplicación o por el objeto",
      "Errore definito dall'applicazione o dall'oggetto", "Erro definido pela aplicação ou pelo objeto",
      "Door de toepassing of het object gedefinieerde fout", "Błąd zdefiniowany przez aplikację lub obiekt"}},
    {CliText::ErrNoEntry,
     {"No such file or directory", "Datei oder Verzeichnis nicht gefunden", "Aucun fichier ou dossier de ce nom",
      "No existe el archivo o el directorio", "File o directory non esistente", "Ficheiro ou diretório inexistente",
      "Bestand of map bestaat niet", "Nie ma takiego pliku ani katalogu"}},
    {CliText::ErrAccess,
     {"Permission denied", "Keine Berechtigung", "Permission non accordée", "Permiso denegado", "Permesso negato",
      "Permissão negada", "Toegang geweigerd", "Brak dostępu"}},
    {CliText::ErrIsDirectory,
     {"Is a directory", "Ist ein Verzeichnis", "Est un dossier", "Es un directorio", "È una directory",
      "É um diretório", "Is een map", "Jest katalogiem"}},
    {CliText::ErrNotDirectory,
     {"Not a directory", "Ist kein Verzeichnis", "N'est pas un dossier", "No es un directorio",
      "Non è una directory", "Não é um diretório", "Is geen map", "Nie jest katalogiem"}},
    {CliText::ErrBusy,
     {"Device or resource busy", "Gerät oder Ressource belegt", "Périphérique ou ressource occupé",
      "Dispositivo o recurso ocupado", "Dispositivo o risorsa occupata", "Dispositivo ou recurso ocupado",
      "Apparaat of bron is bezet", "Urządzenie lub zasoby zajęte"}},
};

constexpr bool InOrder() {
  int i = 0;
  for (const Row& r : kRows) {
    if (static_cast<int>(r.id) != i++) return false;
  }
  return i == kCliTextCount;
}
static_assert(InOrder(), "one row per CliText, in its order");

// The fault numbers in the order of the fault texts, FaultIllegalCall first.
constexpr int kFaultNumbers[] = {kFaultIllegalCall,   kFaultOverflow,           kFaultSubscript,
                                 kFaultDivisionByZero, kFaultTypeMismatch,      kFaultBadFileName,
                                 kFaultFileNotFound,  kFaultBadFileMode,        kFaultDiskFull,
                                 kFaultInputPastEnd,  kFaultDeviceUnavailable,  kFaultPermissionDenied,
                                 kFaultPathAccess,    kFaultPathNotFound,       kFaultCancel};

double gLanguage = 0;

}  // namespace

namespace {
int LanguageOf(double languageIndex) {
  return languageIndex >= 1 && languageIndex <= 8 ? static_cast<int>(languageIndex) : 1;
}
}  // namespace

std::string CliTextIn(double languageIndex, CliText text) {
  const int language = LanguageOf(languageIndex);
  return kRows[static_cast<std::size_t>(text)].text[static_cast<std::size_t>(language - 1)];
}

std::string FillIn(const std::string& pattern, std::initializer_list<std::string> args) {
  std::string out;
  out.reserve(pattern.size());
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char c = pattern[i];
    if (c == '%' && i + 1 < pattern.size() && pattern[i + 1] >= '1' && pattern[i + 1] <= '9') {
      const std::size_t n = static_cast<std::size_t>(pattern[i + 1] - '1');
      if (n < args.size()) {
        out += *(args.begin() + n);
        ++i;
        continue;
      }
    }
    out += c;
  }
  return out;
}

void SetCliLanguage(double languageIndex) { gLanguage = languageIndex; }
double CliLanguage() { return gLanguage; }

std::string Say(CliText text, std::initializer_list<std::string> args) {
  return FillIn(CliTextIn(gLanguage, text), args);
}

std::string FaultWords(int faultNumber) {
  const int first = static_cast<int>(CliText::FaultIllegalCall);
  for (std::size_t i = 0; i < sizeof kFaultNumbers / sizeof kFaultNumbers[0]; ++i) {
    if (kFaultNumbers[i] == faultNumber) return Say(static_cast<CliText>(first + static_cast<int>(i)));
  }
  return Say(CliText::FaultOther);
}

std::string SystemWords(int errorNumber) {
  if (LanguageOf(gLanguage) != 1) {
    switch (errorNumber) {
      case ENOENT: return Say(CliText::ErrNoEntry);
      case EACCES: return Say(CliText::ErrAccess);
      case EISDIR: return Say(CliText::ErrIsDirectory);
      case ENOTDIR: return Say(CliText::ErrNotDirectory);
      case EBUSY: return Say(CliText::ErrBusy);
      default: break;
    }
  }
  return std::strerror(errorNumber);
}

std::string DoingWords(const std::string& doing) {
  for (CliText t : {CliText::DoingHeader, CliText::DoingMemory, CliText::DoingLive, CliText::DoingRecordWrite,
                    CliText::DoingComPort}) {
    const std::string english = CliTextIn(1, t);
    const std::size_t hole = english.find("%1");
    if (hole == std::string::npos) {
      if (doing == english) return Say(t);
      continue;
    }
    const std::string before = english.substr(0, hole), after = english.substr(hole + 2);
    if (doing.size() > before.size() + after.size() && doing.compare(0, before.size(), before) == 0 &&
        doing.compare(doing.size() - after.size(), after.size(), after) == 0) {
      return Say(t, {doing.substr(before.size(), doing.size() - before.size() - after.size())});
    }
  }
  return doing;
}

}  // namespace quillet
