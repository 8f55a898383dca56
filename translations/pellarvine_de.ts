<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>NS::URLSession</name>
    <message>
        <source>The server closed the connection before its answer was complete.</source>
        <translation>Der Server hat die Verbindung geschlossen, bevor seine Antwort vollständig war.</translation>
    </message>
    <message>
        <source>The server did not answer in time.</source>
        <translation>Der Server hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>The program is ending.</source>
        <translation>Das Programm wird gerade beendet.</translation>
    </message>
    <message>
        <source>There is no application object.</source>
        <translation>Es gibt kein Anwendungsobjekt.</translation>
    </message>
    <message>
        <source>The server redirects to another server.</source>
        <translation>Der Server leitet an einen anderen Server weiter.</translation>
    </message>
    <message>
        <source>The server redirects too many times.</source>
        <translation>Der Server leitet zu oft weiter.</translation>
    </message>
</context>
</TS>
