<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Greeting</name>
    <message>
        <source>Greeting</source>
        <translation>Begrüßung</translation>
    </message>
    <message>
        <source>Your &amp;name:</source>
        <translation>Ihr &amp;Name:</translation>
    </message>
</context>
<context>
    <name>GreetingController</name>
    <message>
        <source>Hello!</source>
        <translation>Hallo!</translation>
    </message>
    <message>
        <source>Hello, %1!</source>
        <translation>Hallo, %1!</translation>
    </message>
</context>
<context>
    <name>Window</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
</context>
</TS>
