<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>vfViewer</name>
    <message>
        <source>OpenSceneGraph, numbers</source>
        <translation>OpenSceneGraph, binär</translation>
    </message>
    <message>
        <source>OpenSceneGraph, text</source>
        <translation>OpenSceneGraph, Text</translation>
    </message>
    <message>
        <source>OpenSceneGraph, of older versions</source>
        <translation>OpenSceneGraph, ältere Versionen</translation>
    </message>
    <message>
        <source>Drawing exchange</source>
        <translation>Zeichnungsaustausch</translation>
    </message>
    <message>
        <source>Stereolithography</source>
        <translation>Stereolithographie</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Look from</source>
        <translation>&amp;Blick von</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Scene</source>
        <translation>&amp;Szene</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Ansichten</translation>
    </message>
    <message>
        <source>Scene</source>
        <translation>Szene</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>&amp;Einpassen</translation>
    </message>
    <message>
        <source>&amp;Front</source>
        <translation>&amp;Vorn</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Hinten</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>&amp;Links</translation>
    </message>
    <message>
        <source>&amp;Right</source>
        <translation>&amp;Rechts</translation>
    </message>
    <message>
        <source>&amp;Top</source>
        <translation>&amp;Oben</translation>
    </message>
    <message>
        <source>B&amp;ottom</source>
        <translation>&amp;Unten</translation>
    </message>
    <message>
        <source>Front left &amp;corner</source>
        <translation>&amp;Ecke vorn links</translation>
    </message>
    <message>
        <source>Front ri&amp;ght corner</source>
        <translation>Ecke vor&amp;n rechts</translation>
    </message>
    <message>
        <source>Back right corn&amp;er</source>
        <translation>Ecke hinten re&amp;chts</translation>
    </message>
    <message>
        <source>B&amp;ack left corner</source>
        <translation>Ecke hinten l&amp;inks</translation>
    </message>
    <message>
        <source>Select &amp;next part</source>
        <translation>&amp;Nächstes Teil wählen</translation>
    </message>
    <message>
        <source>Select &amp;previous part</source>
        <translation>&amp;Voriges Teil wählen</translation>
    </message>
    <message>
        <source>Select n&amp;othing</source>
        <translation>Nichts &amp;wählen</translation>
    </message>
    <message>
        <source>&amp;Hide</source>
        <translation>Verste&amp;cken</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Zeigen</translation>
    </message>
    <message>
        <source>Sho&amp;w all</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>&amp;Move…</source>
        <translation>Ver&amp;schieben …</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>Fa&amp;rbe …</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Fit &amp;selection</source>
        <translation>Auswa&amp;hl einpassen</translation>
    </message>
    <message>
        <source>&amp;Perspective</source>
        <translation>&amp;Perspektive</translation>
    </message>
    <message>
        <source>&amp;Orthographic</source>
        <translation>&amp;Orthografisch</translation>
    </message>
    <message>
        <source>S&amp;urfaces</source>
        <translation>&amp;Flächen</translation>
    </message>
    <message>
        <source>&amp;Wireframe</source>
        <translation>Drahtg&amp;itter</translation>
    </message>
    <message>
        <source>Po&amp;ints</source>
        <translation>P&amp;unkte</translation>
    </message>
    <message>
        <source>S&amp;hading</source>
        <translation>&amp;Schattierung</translation>
    </message>
    <message>
        <source>&amp;Flat</source>
        <translation>&amp;Flach</translation>
    </message>
    <message>
        <source>&amp;Only front faces</source>
        <translation>&amp;Nur Vorderseiten</translation>
    </message>
    <message>
        <source>&amp;Textures</source>
        <translation>&amp;Texturen</translation>
    </message>
    <message>
        <source>&amp;Colours of points</source>
        <translation>Farben der &amp;Punkte</translation>
    </message>
    <message>
        <source>&amp;Light follows the camera</source>
        <translation>&amp;Licht folgt der Kamera</translation>
    </message>
    <message>
        <source>Use the lamps of the f&amp;ile</source>
        <translation>Lampen der &amp;Datei benutzen</translation>
    </message>
    <message>
        <source>&amp;Smooth edges</source>
        <translation>&amp;Glatte Kanten</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <translation>&amp;Raster</translation>
    </message>
    <message>
        <source>&amp;Axes</source>
        <translation>A&amp;chsen</translation>
    </message>
    <message>
        <source>&amp;Bounding boxes</source>
        <translation>Be&amp;grenzungsquader</translation>
    </message>
    <message>
        <source>Background…</source>
        <translation>Hintergrund …</translation>
    </message>
    <message>
        <source>Se&amp;ctions</source>
        <translation>Sch&amp;nitte</translation>
    </message>
    <message>
        <source>Across &amp;x</source>
        <translation>Quer zu &amp;x</translation>
    </message>
    <message>
        <source>Across &amp;y</source>
        <translation>Quer zu &amp;y</translation>
    </message>
    <message>
        <source>Across &amp;z</source>
        <translation>Quer zu &amp;z</translation>
    </message>
    <message>
        <source>&amp;Isolate</source>
        <translation>&amp;Freistellen</translation>
    </message>
    <message>
        <source>R&amp;ename…</source>
        <translation>&amp;Umbenennen …</translation>
    </message>
    <message>
        <source>&amp;Turn…</source>
        <translation>&amp;Drehen …</translation>
    </message>
    <message>
        <source>Sca&amp;le…</source>
        <translation>Ska&amp;lieren …</translation>
    </message>
    <message>
        <source>&amp;Flip normals</source>
        <translation>Normalen um&amp;kehren</translation>
    </message>
    <message>
        <source>Recomp&amp;ute normals…</source>
        <translation>Normalen neu &amp;berechnen …</translation>
    </message>
    <message>
        <source>&amp;Add files…</source>
        <translation>Dateien &amp;hinzufügen …</translation>
    </message>
    <message>
        <source>Mer&amp;ge open models</source>
        <translation>&amp;Offene Modelle zusammenführen</translation>
    </message>
    <message>
        <source>&amp;Drag with the mouse</source>
        <translation>Mit der &amp;Maus ziehen</translation>
    </message>
    <message>
        <source>&amp;Camera only</source>
        <translation>Nur &amp;Kamera</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <translation>&amp;Verschieben</translation>
    </message>
    <message>
        <source>&amp;Turn</source>
        <translation>&amp;Drehen</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <translation>&amp;Skalieren</translation>
    </message>
    <message>
        <source>Measure &amp;distance</source>
        <translation>&amp;Abstand messen</translation>
    </message>
    <message>
        <source>Measure &amp;angle</source>
        <translation>&amp;Winkel messen</translation>
    </message>
    <message>
        <source>Measure &amp;radius</source>
        <translation>&amp;Radius messen</translation>
    </message>
    <message>
        <source>&amp;Clear measurements</source>
        <translation>&amp;Messungen löschen</translation>
    </message>
    <message>
        <source>&amp;Units…</source>
        <translation>&amp;Einheiten …</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>Sections</source>
        <translation>Schnitte</translation>
    </message>
    <message>
        <source>Measurements</source>
        <translation>Messungen</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Sichtbar</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>Stellen</translation>
    </message>
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
        <source>Middle</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Material</source>
        <translation>Material</translation>
    </message>
    <message>
        <source>Texture</source>
        <translation>Textur</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>names</source>
        <translation>Namen</translation>
    </message>
    <message>
        <source>the division into parts</source>
        <translation>die Aufteilung in Teile</translation>
    </message>
    <message>
        <source>colours of materials</source>
        <translation>Farben von Materialien</translation>
    </message>
    <message>
        <source>textures</source>
        <translation>Texturen</translation>
    </message>
    <message>
        <source>colours of points</source>
        <translation>Farben von Punkten</translation>
    </message>
    <message>
        <source>smooth shading</source>
        <translation>weiche Schattierung</translation>
    </message>
    <message>
        <source>lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>what is hidden</source>
        <translation>was verborgen ist</translation>
    </message>
    <message>
        <source>animations</source>
        <translation>Animationen</translation>
    </message>
    <message>
        <source>Animation</source>
        <translation>Animation</translation>
    </message>
    <message>
        <source>&amp;Play animation</source>
        <translation>Animation ab&amp;spielen</translation>
    </message>
    <message>
        <source>Animation &amp;time…</source>
        <translation>Zeit der Ani&amp;mation …</translation>
    </message>
    <message>
        <source>&amp;Choose animation…</source>
        <translation>A&amp;nimation wählen …</translation>
    </message>
    <message>
        <source>Camera plac&amp;es</source>
        <translation>&amp;Kamerapositionen</translation>
    </message>
    <message>
        <source>&amp;Keep this place…</source>
        <translation>Diese Position &amp;merken …</translation>
    </message>
    <message>
        <source>&amp;Go to a place…</source>
        <translation>Zu einer Position &amp;gehen …</translation>
    </message>
    <message>
        <source>&amp;Forget a place…</source>
        <translation>Eine Position &amp;vergessen …</translation>
    </message>
    <message>
        <source>Save &amp;picture…</source>
        <translation>Bild s&amp;peichern …</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>Mouse</source>
        <translation>Maus</translation>
    </message>
    <message>
        <source>Mesh</source>
        <translation>Netz</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Ani&amp;mation</source>
        <translation>Ani&amp;mationen</translation>
    </message>
</context>
<context>
    <name>Command</name>
    <message>
        <source>Print statistics</source>
        <translation>Statistik ausgeben</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Verstecken</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>Alles zeigen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Set colour</source>
        <translation>Färben</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Revert</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Select next</source>
        <translation>Nächstes wählen</translation>
    </message>
    <message>
        <source>Select previous</source>
        <translation>Voriges wählen</translation>
    </message>
    <message>
        <source>Select nothing</source>
        <translation>Nichts wählen</translation>
    </message>
    <message>
        <source>Add file</source>
        <translation>Datei hinzufügen</translation>
    </message>
    <message>
        <source>Isolate</source>
        <translation>Freistellen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Skalieren</translation>
    </message>
    <message>
        <source>Flip normals</source>
        <translation>Normalen umkehren</translation>
    </message>
    <message>
        <source>Recompute normals</source>
        <translation>Normalen neu berechnen</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenführen</translation>
    </message>
    <message>
        <source>By how much along x, y and z:</source>
        <translation>Um wie viel entlang x, y und z:</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>About which axis (x, y and z), and by how many degrees:</source>
        <translation>Um welche Achse (x, y und z), und um wie viel Grad:</translation>
    </message>
    <message>
        <source>By which factor, or which factors along x, y and z:</source>
        <translation>Um welchen Faktor, oder um welche Faktoren längs x, y und z:</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Edges where surfaces meet at more than how many degrees:</source>
        <translation>Kanten, wo Flächen sich unter mehr als wie viel Grad treffen:</translation>
    </message>
    <message>
        <source>Add files</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>Unit of the model, and unit that is shown (mm, cm, m, in, ft, none):</source>
        <translation>Einheit des Modells, und Einheit der Anzeige (mm, cm, m, in, ft, none):</translation>
    </message>
    <message>
        <source>Time in seconds:</source>
        <translation>Zeit in Sekunden:</translation>
    </message>
    <message>
        <source>Animation:</source>
        <translation>Animation:</translation>
    </message>
    <message>
        <source>Camera place:</source>
        <translation>Kameraposition:</translation>
    </message>
    <message>
        <source>Name of the camera place:</source>
        <translation>Name der Kameraposition:</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Select a part first: click on it</source>
        <translation>Erst ein Teil wählen: darauf klicken</translation>
    </message>
</context>
</TS>
