<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AboutWindow</name>
    <message>
        <source>Copies name, version and system for a bug report</source>
        <translation>Kopiert Name, Version und System für einen Fehlerbericht</translation>
    </message>
    <message>
        <source>&amp;Copy Details</source>
        <translation>Angaben &amp;kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Application icon</source>
        <translation>Programmsymbol</translation>
    </message>
</context>
<context>
    <name>NS::Application</name>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
</context>
<context>
    <name>NS::Binding</name>
    <message>
        <source>Enter a number.</source>
        <translation>Geben Sie eine Zahl ein.</translation>
    </message>
    <message>
        <source>Enter a whole number.</source>
        <translation>Geben Sie eine ganze Zahl ein.</translation>
    </message>
    <message>
        <source>This value does not fit here.</source>
        <translation>Dieser Wert passt hier nicht.</translation>
    </message>
    <message>
        <source>Enter a value.</source>
        <translation>Geben Sie einen Wert ein.</translation>
    </message>
</context>
<context>
    <name>NS::ColorPanel</name>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
</context>
<context>
    <name>NS::ImageView</name>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>This picture cannot be read. The file may be damaged.</source>
        <translation>Dieses Bild kann nicht gelesen werden. Die Datei ist möglicherweise beschädigt.</translation>
    </message>
    <message>
        <source>This picture is too large to be shown.</source>
        <translation>Dieses Bild ist zu groß, um angezeigt zu werden.</translation>
    </message>
    <message>
        <source>Drop or paste a picture here</source>
        <translation>Bild hier ablegen oder einfügen</translation>
    </message>
</context>
<context>
    <name>NS::Window</name>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <translation>&amp;Verschieben</translation>
    </message>
    <message>
        <source>&amp;Size</source>
        <translation>&amp;Größe ändern</translation>
    </message>
    <message>
        <source>Mi&amp;nimise</source>
        <translation>Mi&amp;nimieren</translation>
    </message>
    <message>
        <source>Ma&amp;ximise</source>
        <translation>Ma&amp;ximieren</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>Pellarvine::AboutWindowController</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>By %1</source>
        <translation>Von %1</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>Website</translation>
    </message>
    <message>
        <source>Report a Bug</source>
        <translation>Fehler melden</translation>
    </message>
    <message>
        <source>Source Code</source>
        <translation>Quelltext</translation>
    </message>
    <message>
        <source>License: %1</source>
        <translation>Lizenz: %1</translation>
    </message>
    <message>
        <source>Credits</source>
        <translation>Mitwirkende</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Versionshinweise</translation>
    </message>
    <message>
        <source>others</source>
        <translation>weitere</translation>
    </message>
    <message>
        <source>Authors</source>
        <translation>Autoren</translation>
    </message>
</context>
<context>
    <name>Pellarvine::Application</name>
    <message>
        <source>&amp;About %1</source>
        <translation>Ü&amp;ber %1</translation>
    </message>
</context>
<context>
    <name>Pellarvine::CodebaseTicket</name>
    <message>
        <source>The program does not know the address of its issue tracker.</source>
        <translation>Das Programm kennt die Adresse seiner Fehlerverwaltung nicht.</translation>
    </message>
    <message>
        <source>The address of the issue tracker is not a valid HTTPS URL.</source>
        <translation>Die Adresse der Fehlerverwaltung ist keine gültige HTTPS-URL.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ColorPickerButton</name>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>&amp;Copy Colour</source>
        <translation>Farbe &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste Colour</source>
        <translation>Farbe &amp;einfügen</translation>
    </message>
    <message>
        <source>&amp;Default Colour</source>
        <translation>&amp;Standardfarbe</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ColorPickerViewController</name>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
</context>
<context>
    <name>Pellarvine::CryptorError</name>
    <message>
        <source>This is not an encrypted container.</source>
        <translation>Dies ist kein verschlüsselter Container.</translation>
    </message>
    <message>
        <source>The passphrase is wrong, or the container is damaged.</source>
        <translation>Die Passphrase ist falsch, oder der Container ist beschädigt.</translation>
    </message>
    <message>
        <source>This is not an encrypted container, or it is cut short.</source>
        <translation>Dies ist kein verschlüsselter Container, oder er ist abgeschnitten.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::NavigationController</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
</context>
<context>
    <name>Pellarvine::OpeningDevice</name>
    <message>
        <source>The device is not open.</source>
        <translation>Das Gerät ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>The device can be opened only once, and only for reading.</source>
        <translation>Das Gerät lässt sich einmal öffnen, und nur zum Lesen.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::PassphraseDialog</name>
    <message>
        <source>&amp;Show the passphrase</source>
        <translation>&amp;Passphrase anzeigen</translation>
    </message>
    <message>
        <source>The two passphrases differ.</source>
        <translation>Die beiden Passphrasen sind verschieden.</translation>
    </message>
    <message>
        <source>Weak</source>
        <translation>Schwach</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>Stark</translation>
    </message>
    <message>
        <source>New Passphrase</source>
        <translation>Neue Passphrase</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>Passphrase</translation>
    </message>
    <message>
        <source>&amp;Passphrase:</source>
        <translation>&amp;Passphrase:</translation>
    </message>
    <message>
        <source>Estimated strength</source>
        <translation>Geschätzte Stärke</translation>
    </message>
    <message>
        <source>Strength:</source>
        <translation>Stärke:</translation>
    </message>
    <message>
        <source>Once &amp;more:</source>
        <translation>Noch &amp;einmal:</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Die Feststelltaste ist aktiv.</translation>
    </message>
    <message>
        <source>Ma&amp;ke One Up</source>
        <translation>Aus&amp;denken</translation>
    </message>
    <message>
        <source>Six random words</source>
        <translation>Sechs zufällige Wörter</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ReplaceableImageView</name>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>C&amp;hoose Image…</source>
        <translation>Bild &amp;wählen …</translation>
    </message>
    <message>
        <source>Choose Image</source>
        <translation>Bild wählen</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Wählen</translation>
    </message>
</context>
<context>
    <name>Pellarvine::SealingDevice</name>
    <message>
        <source>The device is not open.</source>
        <translation>Das Gerät ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>The device can be opened only once, and only for writing.</source>
        <translation>Das Gerät lässt sich einmal öffnen, und nur zum Schreiben.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::TicketDialog</name>
    <message>
        <source>&amp;Include facts about the program and this computer</source>
        <translation>&amp;Angaben zu Programm und Rechner beifügen</translation>
    </message>
    <message>
        <source>S&amp;ummary:</source>
        <translation>&amp;Zusammenfassung:</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>&amp;Beschreibung:</translation>
    </message>
    <message>
        <source>&amp;What is sent:</source>
        <translation>&amp;Was gesendet wird:</translation>
    </message>
    <message>
        <source>&amp;Send</source>
        <translation>&amp;Senden</translation>
    </message>
    <message>
        <source>Report a Problem</source>
        <translation>Problem melden</translation>
    </message>
    <message>
        <source>What went wrong, in one line</source>
        <translation>Was schiefging, in einer Zeile</translation>
    </message>
    <message>
        <source>What you did, what you expected and what you saw</source>
        <translation>Was Sie getan, erwartet und gesehen haben</translation>
    </message>
    <message>
        <source>The program’s name and version are always sent.</source>
        <translation>Name und Version des Programms werden in jedem Fall gesendet.</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>Wird gesendet</translation>
    </message>
    <message>
        <source>&amp;Report a Problem…</source>
        <translation>Problem &amp;melden…</translation>
    </message>
    <message>
        <source>Sending…</source>
        <translation>Wird gesendet…</translation>
    </message>
    <message>
        <source>The report may not have arrived. %1 If you send it again, the report may arrive twice.</source>
        <translation>Der Bericht ist vielleicht nicht angekommen. %1 Wenn Sie ihn erneut senden, kommt er vielleicht doppelt an.</translation>
    </message>
    <message>
        <source>The report was not sent. %1</source>
        <translation>Der Bericht wurde nicht gesendet. %1</translation>
    </message>
    <message>
        <source>&amp;Send Again</source>
        <translation>Erneut &amp;senden</translation>
    </message>
    <message>
        <source>The report was sent. Thank you.</source>
        <translation>Der Bericht wurde gesendet. Danke.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::TransferError</name>
    <message>
        <source>The transfer was cancelled.</source>
        <translation>Die Übertragung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The device is not open for reading.</source>
        <translation>Das Gerät ist nicht zum Lesen geöffnet.</translation>
    </message>
    <message>
        <source>The device is not open for writing.</source>
        <translation>Das Gerät ist nicht zum Schreiben geöffnet.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorListView</name>
    <message>
        <source>Colours of %1</source>
        <translation>Farben von %1</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorPanelContent</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Farbkreis</translation>
    </message>
    <message>
        <source>Sliders</source>
        <translation>Regler</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RGB</translation>
    </message>
    <message>
        <source>HSB</source>
        <translation>HSB</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Pick a colour from the screen</source>
        <translation>Eine Farbe vom Bildschirm aufnehmen</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Recent colours</source>
        <translation>Zuletzt verwendete Farben</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorSwatch</name>
    <message>
        <source>Chosen colour</source>
        <translation>Gewählte Farbe</translation>
    </message>
    <message>
        <source>Drag this colour to another place, or drop a colour here</source>
        <translation>Die Farbe dorthin ziehen, wo sie gebraucht wird, oder eine hier ablegen</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorWheel</name>
    <message>
        <source>Hue and saturation</source>
        <translation>Farbton und Sättigung</translation>
    </message>
    <message>
        <source>Hue %1°, saturation %2 %</source>
        <translation>Farbton %1°, Sättigung %2 %</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::HexField</name>
    <message>
        <source>Hexadecimal colour</source>
        <translation>Farbe, hexadezimal</translation>
    </message>
    <message>
        <source>Enter 3, 4, 6 or 8 digits from 0 to 9 and A to F, such as #1ABC9C.</source>
        <translation>Geben Sie 3, 4, 6 oder 8 Ziffern von 0 bis 9 und A bis F ein, zum Beispiel #1ABC9C.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ScreenColorPicker</name>
    <message>
        <source>Pick a colour from the screen</source>
        <translation>Eine Farbe vom Bildschirm aufnehmen</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::StandardWindowButton</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Minimise</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Maximise</source>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Folders of the document</source>
        <translation>Ordner des Dokuments</translation>
    </message>
    <message>
        <source>Versions of the document</source>
        <translation>Versionen des Dokuments</translation>
    </message>
    <message>
        <source>Leave full screen</source>
        <translation>Vollbild verlassen</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::TitleBarView</name>
    <message>
        <source>Title bar</source>
        <translation>Titelleiste</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::URLSession</name>
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
    <message>
        <source>The server rejected it with status %1.</source>
        <translation>Der Server hat es mit dem Status %1 abgelehnt.</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>LTR</translation>
    </message>
</context>
</TS>
