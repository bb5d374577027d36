<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Commands</name>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>Make an empty document</source>
        <translation>Ein leeres Dokument anlegen</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Dateien öffnen</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Write the document to its file</source>
        <translation>Das Dokument in seine Datei schreiben</translation>
    </message>
    <message>
        <source>Save &amp;as…</source>
        <translation>Speichern &amp;unter …</translation>
    </message>
    <message>
        <source>Write the document to another file</source>
        <translation>Das Dokument in eine andere Datei schreiben</translation>
    </message>
    <message>
        <source>Re&amp;vert</source>
        <translation>Zu&amp;rücksetzen</translation>
    </message>
    <message>
        <source>Read the document again from its file</source>
        <translation>Das Dokument noch einmal aus seiner Datei lesen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Close the view</source>
        <translation>Die Ansicht schließen</translation>
    </message>
    <message>
        <source>Close a&amp;ll</source>
        <translation>&amp;Alle schließen</translation>
    </message>
    <message>
        <source>Close all documents</source>
        <translation>Alle Dokumente schließen</translation>
    </message>
    <message>
        <source>&amp;Undo: %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo: %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>New &amp;view</source>
        <translation>Neue Ansich&amp;t</translation>
    </message>
    <message>
        <source>Show the document once more</source>
        <translation>Das Dokument noch einmal zeigen</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Close all documents and the window</source>
        <translation>Alle Dokumente und das Fenster schließen</translation>
    </message>
    <message>
        <source>Full scree&amp;n</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>&amp;Reset layout</source>
        <translation>Anordnung &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Put dock windows and toolbars where they were at first</source>
        <translation>Andockfenster und Werkzeugleisten an ihren ersten Platz bringen</translation>
    </message>
    <message>
        <source>Doc&amp;k windows</source>
        <translation>&amp;Andockfenster</translation>
    </message>
    <message>
        <source>&amp;Toolbars</source>
        <translation>&amp;Werkzeugleisten</translation>
    </message>
    <message>
        <source>&amp;Documents</source>
        <translation>&amp;Dokumente</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>&amp;Options…</source>
        <translation>&amp;Einstellungen …</translation>
    </message>
    <message>
        <source>Change how the program works</source>
        <translation>Ändern, wie das Programm arbeitet</translation>
    </message>
    <message>
        <source>Find &amp;command…</source>
        <translation>&amp;Befehl suchen …</translation>
    </message>
    <message>
        <source>Search in all commands</source>
        <translation>In allen Befehlen suchen</translation>
    </message>
    <message>
        <source>&amp;Keyboard shortcuts…</source>
        <translation>&amp;Tastenkürzel …</translation>
    </message>
    <message>
        <source>Change the keys of commands</source>
        <translation>Die Tasten von Befehlen ändern</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Übe&amp;r</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über das Programm</translation>
    </message>
</context>
<context>
    <name>Display</name>
    <message>
        <source>there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set</source>
        <translation>es gibt keinen Bildschirm: weder DISPLAY noch WAYLAND_DISPLAY ist gesetzt</translation>
    </message>
    <message>
        <source>the display %1 does not answer</source>
        <translation>der Bildschirm %1 antwortet nicht</translation>
    </message>
</context>
<context>
    <name>Prompts</name>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Suitable files</source>
        <translation>Passende Dateien</translation>
    </message>
</context>
<context>
    <name>Reasons</name>
    <message>
        <source>There is not enough memory.</source>
        <translation>Der Speicher reicht nicht.</translation>
    </message>
    <message>
        <source>An unknown error occurred.</source>
        <translation>Ein unbekannter Fehler ist aufgetreten.</translation>
    </message>
    <message>
        <source>This is not a kind of file that can be opened.</source>
        <translation>Dateien dieser Art können nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>There is no file name.</source>
        <translation>Es fehlt ein Dateiname.</translation>
    </message>
</context>
<context>
    <name>vfApplication::ActionTable</name>
    <message>
        <source>This command is not available</source>
        <translation>Diesen Befehl gibt es hier nicht</translation>
    </message>
    <message>
        <source>There is no such command.</source>
        <translation>Einen solchen Befehl gibt es nicht.</translation>
    </message>
    <message>
        <source>The command could not be carried out.</source>
        <translation>Der Befehl konnte nicht ausgeführt werden.</translation>
    </message>
</context>
<context>
    <name>vfApplication::CommandPalette</name>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Type what you want to do</source>
        <translation>Was soll getan werden?</translation>
    </message>
    <message>
        <source>Dock window: %1</source>
        <translation>Andockfenster: %1</translation>
    </message>
</context>
<context>
    <name>vfApplication::DockPanel</name>
    <message>
        <source>Hide when not in use</source>
        <translation>Ausblenden, wenn nicht gebraucht</translation>
    </message>
    <message>
        <source>Tear off</source>
        <translation>Ablösen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>vfApplication::Docks</name>
    <message>
        <source>No windows</source>
        <translation>Keine Fenster</translation>
    </message>
</context>
<context>
    <name>vfApplication::DocumentReloader</name>
    <message>
        <source>File changed</source>
        <translation>Datei geändert</translation>
    </message>
    <message>
        <source>“%1” was changed by another program.</source>
        <translation>„%1“ wurde von einem anderen Programm geändert.</translation>
    </message>
    <message>
        <source>Read it again? Your own changes, which are not saved, are lost then.</source>
        <translation>Noch einmal lesen? Die eigenen, nicht gespeicherten Änderungen gehen dann verloren.</translation>
    </message>
    <message>
        <source>Read it again?</source>
        <translation>Noch einmal lesen?</translation>
    </message>
    <message>
        <source>&amp;Read again</source>
        <translation>&amp;Noch einmal lesen</translation>
    </message>
    <message>
        <source>&amp;Keep as it is</source>
        <translation>&amp;So lassen</translation>
    </message>
    <message>
        <source>The file of “%1” is gone; it can be saved again.</source>
        <translation>Die Datei von „%1“ ist verschwunden; sie kann wieder gespeichert werden.</translation>
    </message>
    <message>
        <source>A file that “%1” is made of was changed by another program.</source>
        <translation>Eine Datei, aus der „%1“ besteht, wurde von einem anderen Programm geändert.</translation>
    </message>
</context>
<context>
    <name>vfApplication::DocumentTabs</name>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Close &amp;others</source>
        <translation>&amp;Andere schließen</translation>
    </message>
    <message>
        <source>Copy &amp;path</source>
        <translation>&amp;Pfad kopieren</translation>
    </message>
    <message>
        <source>Show in &amp;folder</source>
        <translation>Im &amp;Ordner zeigen</translation>
    </message>
</context>
<context>
    <name>vfApplication::MainWindow</name>
    <message>
        <source>Drop a file here, or open one with %1</source>
        <translation>Eine Datei hierher ziehen, oder mit %1 öffnen</translation>
    </message>
    <message>
        <source>&amp;Tile</source>
        <translation>&amp;Nebeneinander</translation>
    </message>
    <message>
        <source>&amp;Cascade</source>
        <translation>Ü&amp;berlappend</translation>
    </message>
    <message>
        <source>No documents</source>
        <translation>Keine Dokumente</translation>
    </message>
    <message>
        <source>Only files on this machine can be opened.</source>
        <translation>Nur Dateien auf diesem Rechner können geöffnet werden.</translation>
    </message>
</context>
<context>
    <name>vfApplication::OptionsDialog</name>
    <message>
        <source>Options</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>There is nothing to choose.</source>
        <translation>Es gibt nichts einzustellen.</translation>
    </message>
</context>
<context>
    <name>vfApplication::ProblemsDialog</name>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>This could not be done:</source>
        <translation>Das ging nicht:</translation>
    </message>
</context>
<context>
    <name>vfApplication::QtDocManager</name>
    <message>
        <source>Opening %1…</source>
        <translation>%1 wird geöffnet …</translation>
    </message>
    <message>
        <source>The file could not be opened.</source>
        <translation>Die Datei konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>All that can be opened</source>
        <translation>Alles, was geöffnet werden kann</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>New document</source>
        <translation>Neues Dokument</translation>
    </message>
    <message>
        <source>Kind of document:</source>
        <translation>Art des Dokuments:</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Nicht gespeicherte Änderungen</translation>
    </message>
    <message>
        <source>“%1” has changes that are not saved.</source>
        <translation>„%1“ hat Änderungen, die nicht gespeichert sind.</translation>
    </message>
    <message>
        <source>What is not saved is lost when the document is closed.</source>
        <translation>Was nicht gespeichert ist, geht beim Schließen verloren.</translation>
    </message>
    <message>
        <source>Revert</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Read “%1” again from its file?</source>
        <translation>„%1“ noch einmal aus der Datei lesen?</translation>
    </message>
    <message>
        <source>All changes since it was saved are lost.</source>
        <translation>Alle Änderungen seit dem Speichern gehen verloren.</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>The file could not be read again. The document is as it was.</source>
        <translation>Die Datei konnte nicht noch einmal gelesen werden. Das Dokument ist, wie es war.</translation>
    </message>
    <message>
        <source>The document could not be saved.</source>
        <translation>Das Dokument konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>%1 file</source>
        <translation>%1-Datei</translation>
    </message>
</context>
<context>
    <name>vfApplication::RecentFilesMenu</name>
    <message>
        <source>No recent files</source>
        <translation>Keine zuletzt geöffneten Dateien</translation>
    </message>
    <message>
        <source>Remove &amp;missing files</source>
        <translation>&amp;Fehlende Dateien entfernen</translation>
    </message>
    <message>
        <source>&amp;Clear the list</source>
        <translation>&amp;Liste leeren</translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation>%1 ist nicht da</translation>
    </message>
</context>
<context>
    <name>vfApplication::ShortcutEditor</name>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>No keys</source>
        <translation>Keine Tasten</translation>
    </message>
    <message>
        <source>Keys:</source>
        <translation>Tasten:</translation>
    </message>
    <message>
        <source>These clash: %1</source>
        <translation>Diese stoßen zusammen: %1</translation>
    </message>
</context>
<context>
    <name>vfApplication::UnsavedDialog</name>
    <message>
        <source>Unsaved changes</source>
        <translation>Nicht gespeicherte Änderungen</translation>
    </message>
    <message>
        <source>These documents have changes that are not saved. Which of them are to be saved?</source>
        <translation>Diese Dokumente haben nicht gespeicherte Änderungen. Welche davon sollen gespeichert werden?</translation>
    </message>
    <message>
        <source>&amp;Discard all</source>
        <translation>Alle &amp;verwerfen</translation>
    </message>
    <message>
        <source>&amp;Save all</source>
        <translation>Alle &amp;speichern</translation>
    </message>
    <message>
        <source>&amp;Save these, discard the others</source>
        <translation>Diese &amp;speichern, die anderen verwerfen</translation>
    </message>
</context>
<context>
    <name>vfApplication::ViewFrame</name>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
</context>
</TS>
