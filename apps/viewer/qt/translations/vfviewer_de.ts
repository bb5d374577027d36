<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
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
</context>
<context>
    <name>vfViewer::StatisticsPanel</name>
    <message>
        <source>Of</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>the selected part</source>
        <translation>dem gewählten Teil</translation>
    </message>
    <message>
        <source>the whole model</source>
        <translation>dem ganzen Modell</translation>
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
        <source>Drawables</source>
        <translation>Zeichenobjekte</translation>
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
</context>
</TS>
