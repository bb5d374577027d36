<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>vfViewer::AnimationPanel</name>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Animation</source>
        <translation>Animation</translation>
    </message>
    <message>
        <source>%1 of %2 s</source>
        <translation>%1 von %2 s</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
</context>
<context>
    <name>vfViewer::LoadDialog</name>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
    <message>
        <source>Reading “%1”…</source>
        <translation>„%1“ wird gelesen…</translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation>%1 wird gespeichert</translation>
    </message>
    <message>
        <source>Writing “%1”…</source>
        <translation>„%1“ wird geschrieben…</translation>
    </message>
</context>
<context>
    <name>vfViewer::MeasurementsPanel</name>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>Radius</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>vfViewer::MessagesPanel</name>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>vfViewer::ModelHand</name>
    <message>
        <source>Click on two points to measure their distance.</source>
        <translation>Zwei Punkte anklicken, um ihren Abstand zu messen.</translation>
    </message>
    <message>
        <source>Click on three points to measure the angle at the second.</source>
        <translation>Drei Punkte anklicken, um den Winkel am zweiten zu messen.</translation>
    </message>
    <message>
        <source>Click on three points to measure the circle through them.</source>
        <translation>Drei Punkte anklicken, um den Kreis durch sie zu messen.</translation>
    </message>
    <message>
        <source>Select a part and drag it.</source>
        <translation>Ein Teil wählen und ziehen.</translation>
    </message>
    <message>
        <source>There is no such thing between these points.</source>
        <translation>Zwischen diesen Punkten gibt es das nicht.</translation>
    </message>
</context>
<context>
    <name>vfViewer::PictureDialog</name>
    <message>
        <source>Save picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>As wide for its height as the view</source>
        <translation>Seitenverhältnis der Ansicht</translation>
    </message>
    <message>
        <source>Nothing behind the model</source>
        <translation>Nichts hinter dem Modell</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source> pixels</source>
        <translation> Pixel</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
</context>
<context>
    <name>vfViewer::QtModelPage</name>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Unit of models:</source>
        <translation>Einheit der Modelle:</translation>
    </message>
    <message>
        <source>Unit that is shown:</source>
        <translation>Angezeigte Einheit:</translation>
    </message>
    <message>
        <source>What can be undone holds at most:</source>
        <translation>Speicher für rückgängig zu Machendes höchstens:</translation>
    </message>
</context>
<context>
    <name>vfViewer::QtMousePage</name>
    <message>
        <source>Mouse</source>
        <translation>Maus</translation>
    </message>
    <message>
        <source>Turntable: the up axis stays upright</source>
        <translation>Drehteller: die Hochachse bleibt aufrecht</translation>
    </message>
    <message>
        <source>Trackball: in all directions</source>
        <translation>Rollkugel: in alle Richtungen</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>Orbiting:</source>
        <translation>Drehen:</translation>
    </message>
    <message>
        <source>Speed of orbiting:</source>
        <translation>Geschwindigkeit beim Drehen:</translation>
    </message>
</context>
<context>
    <name>vfViewer::QtPicturePage</name>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Hinten</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Unten</translation>
    </message>
    <message>
        <source>Front left corner</source>
        <translation>Ecke vorn links</translation>
    </message>
    <message>
        <source>Front right corner</source>
        <translation>Ecke vorn rechts</translation>
    </message>
    <message>
        <source>Back right corner</source>
        <translation>Ecke hinten rechts</translation>
    </message>
    <message>
        <source>Back left corner</source>
        <translation>Ecke hinten links</translation>
    </message>
    <message>
        <source>Look at models first from:</source>
        <translation>Modelle zuerst zeigen von:</translation>
    </message>
    <message>
        <source>Background at the top:</source>
        <translation>Hintergrund oben:</translation>
    </message>
    <message>
        <source>Background at the bottom:</source>
        <translation>Hintergrund unten:</translation>
    </message>
    <message>
        <source>Perspective</source>
        <translation>Perspektive</translation>
    </message>
    <message>
        <source>Orthographic</source>
        <translation>Orthografisch</translation>
    </message>
    <message>
        <source>New views:</source>
        <translation>Neue Ansichten:</translation>
    </message>
    <message>
        <source>Show the grid</source>
        <translation>Gitter zeigen</translation>
    </message>
    <message>
        <source>Show the axes</source>
        <translation>Achsen zeigen</translation>
    </message>
    <message>
        <source>Smooth edges</source>
        <translation>Kanten glätten</translation>
    </message>
    <message>
        <source>Use the lamps of files</source>
        <translation>Lampen der Dateien benutzen</translation>
    </message>
</context>
<context>
    <name>vfViewer::QtRecentFilesPage</name>
    <message>
        <source>Recent files</source>
        <translation>Letzte Dateien</translation>
    </message>
    <message>
        <source>Recent files to keep:</source>
        <translation>So viele Dateien merken:</translation>
    </message>
    <message>
        <source>Open at the start what was open at the end</source>
        <translation>Beim Start öffnen, was am Ende offen war</translation>
    </message>
</context>
<context>
    <name>vfViewer::QtViewerDocManager</name>
    <message>
        <source>Not all is kept</source>
        <translation>Nicht alles bleibt erhalten</translation>
    </message>
    <message>
        <source>Files of the format “.%1” do not keep: %2.</source>
        <translation>Dateien des Formats „.%1“ halten nicht fest: %2.</translation>
    </message>
    <message>
        <source>The open model keeps it until it is closed.</source>
        <translation>Das geöffnete Modell behält es, bis es geschlossen wird.</translation>
    </message>
    <message>
        <source>&amp;Save all the same</source>
        <translation>&amp;Trotzdem speichern</translation>
    </message>
    <message>
        <source>%1, changed on %2</source>
        <translation>%1, geändert am %2</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>The program ended before these models were saved:</source>
        <translation>Das Programm endete, bevor diese Modelle gespeichert waren:</translation>
    </message>
    <message>
        <source>&amp;Recover</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>%1, changed on %2; another program has changed its file since</source>
        <translation>%1, geändert am %2; ein anderes Programm hat die Datei seither geändert</translation>
    </message>
</context>
<context>
    <name>vfViewer::ScenePanel</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Look at it</source>
        <translation>Ansehen</translation>
    </message>
    <message>
        <source>Isolate</source>
        <translation>Freistellen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Verbergen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>No part is called “%1”</source>
        <translation>Kein Teil heißt „%1“</translation>
    </message>
</context>
<context>
    <name>vfViewer::SectionsPanel</name>
    <message>
        <source>Across %1</source>
        <translation>Quer zu %1</translation>
    </message>
    <message>
        <source>Other side</source>
        <translation>Andere Seite</translation>
    </message>
</context>
<context>
    <name>vfViewer::StatisticsPanel</name>
    <message>
        <source>Triangles</source>
        <translation>Dreiecke</translation>
    </message>
    <message>
        <source>Vertices</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Width (x)</source>
        <translation>Breite (x)</translation>
    </message>
    <message>
        <source>Depth (y)</source>
        <translation>Tiefe (y)</translation>
    </message>
    <message>
        <source>Height (z)</source>
        <translation>Höhe (z)</translation>
    </message>
    <message>
        <source>Materials</source>
        <translation>Materialien</translation>
    </message>
    <message>
        <source>Textures</source>
        <translation>Texturen</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Counted</source>
        <translation>Gezählt</translation>
    </message>
    <message>
        <source>selected part</source>
        <translation>gewähltes Teil</translation>
    </message>
    <message>
        <source>whole model</source>
        <translation>ganzes Modell</translation>
    </message>
    <message>
        <source>Parts</source>
        <translation>Teile</translation>
    </message>
    <message>
        <source>Undo steps</source>
        <translation>Rückgängig-Schritte</translation>
    </message>
    <message>
        <source>Undo memory</source>
        <translation>Rückgängig-Speicher</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>vfViewer::StatusSummary</name>
    <message>
        <source>1 triangle</source>
        <translation>1 Dreieck</translation>
    </message>
    <message>
        <source>%1 triangles</source>
        <translation>%1 Dreiecke</translation>
    </message>
    <message>
        <source>1 point</source>
        <translation>1 Punkt</translation>
    </message>
    <message>
        <source>%1 points</source>
        <translation>%1 Punkte</translation>
    </message>
    <message>
        <source>animated: Space plays it</source>
        <translation>animiert: Leertaste spielt ab</translation>
    </message>
</context>
</TS>
