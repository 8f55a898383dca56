<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>NS::URLSession</name>
    <message>
        <source>The server closed the connection before its answer was complete.</source>
        <translation>Le serveur a fermé la connexion avant d’avoir répondu entièrement.</translation>
    </message>
    <message>
        <source>The server did not answer in time.</source>
        <translation>Le serveur n’a pas répondu à temps.</translation>
    </message>
    <message>
        <source>The program is ending.</source>
        <translation>Le programme est en train de se terminer.</translation>
    </message>
    <message>
        <source>There is no application object.</source>
        <translation>Il n’y a pas d’objet d’application.</translation>
    </message>
    <message>
        <source>The server redirects to another server.</source>
        <translation>Le serveur redirige vers un autre serveur.</translation>
    </message>
    <message>
        <source>The server redirects too many times.</source>
        <translation>Le serveur redirige trop de fois.</translation>
    </message>
</context>
</TS>
