#include "app/string_sections.h"

namespace brindle {
namespace {

constexpr auto sheets = std::to_array<StringEntry>({
    {"ABOUTLICENCE",
     "Freie Software unter der GNU General Public License, Version 3 oder neuer (GPL-3.0-or-later). Jede "
     "Gewährleistung ist ausgeschlossen."},
    {"ABOUTTEXT",
     "Benennt viele Dateien und Ordner auf einmal um, zeigt jeden neuen Namen vorab und macht jede Umbenennung "
     "rückgängig."},
    {"ABOUTTITLE", "Über Brindle"},
    {"ABOUTVERSION", "Version %@"},
    {"ADDEXTENSION", "Hinzufügen …"},
    {"ADDEXTENSIONTIP", "Wählen Sie eine Datei; ihre Endung wird hinzugefügt"},
    {"CHOOSEITEMSADD", "Zur Liste hinzufügen"},
    {"CHOOSEITEMSCOUNT", "%d Objekte wurden abgelegt:", "%d Objekt wurde abgelegt:"},
    {"CHOOSEITEMSFILES", "Dateien umbenennen"},
    {"CHOOSEITEMSFOLDERS", "Ordner umbenennen"},
    {"CHOOSEITEMSMORE", "und %d weitere", "und %d weiteres"},
    {"CHOOSEITEMSSUBFOLDERS", "Inhalt von Unterordnern einbeziehen"},
    {"CHOOSEITEMSTITLE", "Abgelegte Objekte hinzufügen"},
    {"DELETELOG", "Löschen …"},
    {"DELETEPROFILE", "Löschen …"},
    {"EXPORTBUTTON", "Exportieren …"},
    {"EXPORTCOLUMNS", "Spalten"},
    {"EXPORTFULLPATHS", "Vollständige Pfade in den Spalten der Namen"},
    {"EXPORTFULLPATHSTIP", "Der Ort hat dann keine eigene Spalte"},
    {"EXPORTHEADER", "Mit einer Zeile der Spaltentitel beginnen"},
    {"EXPORTHINT",
     "Schreibt die Liste als Text, dessen Spalten Tabulatoren trennen. Bearbeiten Sie ihn in einer "
     "Tabellenkalkulation, und lesen Sie ihn mit der Methode „Nach Liste“ wieder ein."},
    {"EXPORTLOCATION", "Ort"},
    {"EXPORTNAME", "Aktueller Name"},
    {"EXPORTNEWNAME", "Neuer Name"},
    {"EXTENSIONSAUDIOTITLE", "Endungen von Musikstücken"},
    {"EXTENSIONSHINT", "Nur Dateien mit diesen Endungen nehmen teil; Groß- und Kleinschreibung spielt keine Rolle."},
    {"EXTENSIONSLIST", "Endungen"},
    {"EXTENSIONSPHOTOTITLE", "Endungen von Fotos"},
    {"HELPBACK", "Zurück"},
    {"HELPCONTENTS", "Inhalt"},
    {"HELPFORWARD", "Vor"},
    {"HELPTEXT", "Hilfetext"},
    {"HELPTITLE", "Brindle-Hilfe"},
    {"LIVEPREVIEWALLITEMS", "Für alle Objekte der Liste, wie viele es auch sind"},
    {"LIVEPREVIEWENABLED", "Neue Namen schon beim Tippen zeigen"},
    {"LIVEPREVIEWHINT",
     "Die Live-Vorschau bildet nur Namen. Ob sie auf dem Datenträger frei sind, prüfen die Vorschau und das "
     "Umbenennen."},
    {"LIVEPREVIEWLIMIT", "Objekte, vom Anfang der Liste an"},
    {"LIVEPREVIEWTITLE", "Live-Vorschau"},
    {"LOGCOLUMNCOUNT", "Objekte"},
    {"LOGCOLUMNDATE", "Umbenannt am"},
    {"LOGCOLUMNNAME", "Protokoll"},
    {"LOGLIST", "Protokolle der Umbenennungen"},
    {"LOGPATH", "Protokoll"},
    {"NEWPROFILENAME", "Neues Profil"},
    {"OPENLOG", "Anderes öffnen …"},
    {"OPENPROFILE", "Öffnen"},
    {"PREFERENCESAUTOSAVE", "Das geöffnete Profil beim Wechseln und beim Beenden sichern"},
    {"PREFERENCESBROWSE", "Durchsuchen …"},
    {"PREFERENCESDEFAULT", "Standard"},
    {"PREFERENCESDEFAULTTIP", "Zurück zu dem Ordner, den Brindle angelegt hat"},
    {"PREFERENCESFOLDERS", "Ordner"},
    {"PREFERENCESHIDDEN", "Versteckte Objekte auflisten, deren Name mit einem Punkt beginnt"},
    {"PREFERENCESHIDDENTIP", "Gilt für alles, was von jetzt an hinzugefügt wird"},
    {"PREFERENCESHUB", "Ablagefeld zeigen"},
    {"PREFERENCESHUBTIP", "Ein kleines Fenster, immer im Vordergrund, das Dateien und Ordner annimmt"},
    {"PREFERENCESLOGS", "Protokolle"},
    {"PREFERENCESPROFILES", "Profile"},
    {"PREFERENCESRULES", "Regeln"},
    {"PREFERENCESTITLE", "Einstellungen"},
    {"PROFILECOLUMNDATE", "Erstellt"},
    {"PROFILECOLUMNNAME", "Profil"},
    {"PROFILEHINT", "Ein Profil enthält alle Optionen aller Methoden. Wird es geöffnet, gelten sie alle wieder."},
    {"PROFILELIST", "Gesicherte Profile"},
    {"REMOVEEXTENSIONBUTTON", "Entfernen"},
    {"RULECOLUMNOPTION", "Regel"},
    {"RULECOLUMNVALUE", "Wert"},
    {"RULEFILEPATH", "Datei"},
    {"RULEOUTLINE", "Regeln in der Reihenfolge ihrer Ausführung"},
    {"RULESHEETCLEAR", "Entfernen"},
    {"RULESHEETDOWN", "Nach unten"},
    {"RULESHEETHINT",
     "Hier können Sie eine Regelkette lesen, ordnen und sichern. Die Regeln des Fensters bleiben, wie sie sind, bis "
     "Sie „Vorschau“ wählen."},
    {"RULESHEETOPEN", "Öffnen …"},
    {"RULESHEETPREVIEW", "Vorschau"},
    {"RULESHEETPREVIEWTIP", "Macht dies zu den Regeln des Fensters und zeigt die neuen Namen"},
    {"RULESHEETSAVE", "Sichern …"},
    {"RULESHEETUP", "Nach oben"},
    {"RULESOFWINDOW", "die Regeln des Fensters"},
    {"SAVEPROFILE", "Sichern"},
    {"SAVEPROFILETIP", "Sichert die Optionen des Fensters unter diesem Namen"},
    {"SHEETCANCEL", "Abbrechen"},
    {"SHEETCLOSE", "Schließen"},
    {"SHEETHELP", "Hilfe"},
    {"UNDOBUTTON", "Rückgängig machen"},
    {"UNDOHINT",
     "Jede Umbenennung hinterlässt ein Protokoll. Wird sie rückgängig gemacht, erhält jedes Objekt seinen alten Namen "
     "zurück, und das Protokoll wird entfernt."},
    {"VIEWLOG", "Ansehen"},
});
static_assert(is_sorted_by_key(sheets));

}  // namespace

StringSection german_sheet_strings() {
  return sheets;
}

}  // namespace brindle
