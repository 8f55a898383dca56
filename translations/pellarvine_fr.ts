<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AboutWindow</name>
    <message>
        <source>Copies name, version and system for a bug report</source>
        <translation>Copie le nom, la version et le système pour un rapport de bogue</translation>
    </message>
    <message>
        <source>&amp;Copy Details</source>
        <translation>&amp;Copier les détails</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Application icon</source>
        <translation>Icône de l’application</translation>
    </message>
</context>
<context>
    <name>NS::Application</name>
    <message>
        <source>About %1</source>
        <translation>À propos de %1</translation>
    </message>
</context>
<context>
    <name>NS::Binding</name>
    <message>
        <source>Enter a number.</source>
        <translation>Saisissez un nombre.</translation>
    </message>
    <message>
        <source>Enter a whole number.</source>
        <translation>Saisissez un nombre entier.</translation>
    </message>
    <message>
        <source>This value does not fit here.</source>
        <translation>Cette valeur ne convient pas ici.</translation>
    </message>
    <message>
        <source>Enter a value.</source>
        <translation>Saisissez une valeur.</translation>
    </message>
</context>
<context>
    <name>NS::ColorPanel</name>
    <message>
        <source>Colours</source>
        <translation>Couleurs</translation>
    </message>
</context>
<context>
    <name>NS::ImageView</name>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Co&amp;uper</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>C&amp;oller</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>This picture cannot be read. The file may be damaged.</source>
        <translation>Cette image ne peut pas être lue. Le fichier est peut-être endommagé.</translation>
    </message>
    <message>
        <source>This picture is too large to be shown.</source>
        <translation>Cette image est trop grande pour être affichée.</translation>
    </message>
    <message>
        <source>Drop or paste a picture here</source>
        <translation>Déposez ou collez une image ici</translation>
    </message>
</context>
<context>
    <name>NS::Window</name>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Restaurer</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <translation>&amp;Déplacer</translation>
    </message>
    <message>
        <source>&amp;Size</source>
        <translation>Re&amp;dimensionner</translation>
    </message>
    <message>
        <source>Mi&amp;nimise</source>
        <translation>Réd&amp;uire</translation>
    </message>
    <message>
        <source>Ma&amp;ximise</source>
        <translation>A&amp;grandir</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
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
        <translation>À propos de %1</translation>
    </message>
    <message>
        <source>By %1</source>
        <translation>Par %1</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>Site web</translation>
    </message>
    <message>
        <source>Report a Bug</source>
        <translation>Signaler un bogue</translation>
    </message>
    <message>
        <source>Source Code</source>
        <translation>Code source</translation>
    </message>
    <message>
        <source>License: %1</source>
        <translation>Licence : %1</translation>
    </message>
    <message>
        <source>Credits</source>
        <translation>Remerciements</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliothèques</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Notes de version</translation>
    </message>
    <message>
        <source>others</source>
        <translation>d’autres</translation>
    </message>
    <message>
        <source>Authors</source>
        <translation>Auteurs</translation>
    </message>
</context>
<context>
    <name>Pellarvine::Application</name>
    <message>
        <source>&amp;About %1</source>
        <translation>À &amp;propos de %1</translation>
    </message>
</context>
<context>
    <name>Pellarvine::CodebaseTicket</name>
    <message>
        <source>The program does not know the address of its issue tracker.</source>
        <translation>Le programme ne connaît pas l’adresse de son gestionnaire de tickets.</translation>
    </message>
    <message>
        <source>The address of the issue tracker is not a valid HTTPS URL.</source>
        <translation>L’adresse du suivi des bogues n’est pas une URL HTTPS valide.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ColorPickerButton</name>
    <message>
        <source>Colour</source>
        <translation>Couleur</translation>
    </message>
    <message>
        <source>&amp;Copy Colour</source>
        <translation>&amp;Copier la couleur</translation>
    </message>
    <message>
        <source>&amp;Paste Colour</source>
        <translation>C&amp;oller la couleur</translation>
    </message>
    <message>
        <source>&amp;Default Colour</source>
        <translation>Couleur par &amp;défaut</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ColorPickerViewController</name>
    <message>
        <source>Colours</source>
        <translation>Couleurs</translation>
    </message>
</context>
<context>
    <name>Pellarvine::CryptorError</name>
    <message>
        <source>This is not an encrypted container.</source>
        <translation>Ce n’est pas un conteneur chiffré.</translation>
    </message>
    <message>
        <source>The passphrase is wrong, or the container is damaged.</source>
        <translation>La phrase secrète est fausse, ou le conteneur est endommagé.</translation>
    </message>
    <message>
        <source>This is not an encrypted container, or it is cut short.</source>
        <translation>Ce n’est pas un conteneur chiffré, ou il est tronqué.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::NavigationController</name>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
</context>
<context>
    <name>Pellarvine::OpeningDevice</name>
    <message>
        <source>The device is not open.</source>
        <translation>Le périphérique n’est pas ouvert.</translation>
    </message>
    <message>
        <source>The device can be opened only once, and only for reading.</source>
        <translation>Le périphérique ne s’ouvre qu’une fois, et en lecture seule.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::PassphraseDialog</name>
    <message>
        <source>&amp;Show the passphrase</source>
        <translation>&amp;Afficher la phrase secrète</translation>
    </message>
    <message>
        <source>The two passphrases differ.</source>
        <translation>Les deux phrases secrètes diffèrent.</translation>
    </message>
    <message>
        <source>Weak</source>
        <translation>Faible</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Moyenne</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>Forte</translation>
    </message>
    <message>
        <source>New Passphrase</source>
        <translation>Nouvelle phrase secrète</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>Phrase secrète</translation>
    </message>
    <message>
        <source>&amp;Passphrase:</source>
        <translation>&amp;Phrase secrète :</translation>
    </message>
    <message>
        <source>Estimated strength</source>
        <translation>Robustesse estimée</translation>
    </message>
    <message>
        <source>Strength:</source>
        <translation>Robustesse :</translation>
    </message>
    <message>
        <source>Once &amp;more:</source>
        <translation>Encore &amp;une fois :</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Le verrouillage des majuscules est actif.</translation>
    </message>
    <message>
        <source>Ma&amp;ke One Up</source>
        <translation>&amp;Inventer</translation>
    </message>
    <message>
        <source>Six random words</source>
        <translation>Six mots au hasard</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ReplaceableImageView</name>
    <message>
        <source>Images</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>C&amp;hoose Image…</source>
        <translation>C&amp;hoisir une image…</translation>
    </message>
    <message>
        <source>Choose Image</source>
        <translation>Choisir une image</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Choisir</translation>
    </message>
</context>
<context>
    <name>Pellarvine::SealingDevice</name>
    <message>
        <source>The device is not open.</source>
        <translation>Le périphérique n’est pas ouvert.</translation>
    </message>
    <message>
        <source>The device can be opened only once, and only for writing.</source>
        <translation>Le périphérique ne s’ouvre qu’une fois, et en écriture seule.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::TicketDialog</name>
    <message>
        <source>&amp;Include facts about the program and this computer</source>
        <translation>&amp;Joindre des informations sur le programme et cet ordinateur</translation>
    </message>
    <message>
        <source>S&amp;ummary:</source>
        <translation>&amp;Résumé :</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>&amp;Description :</translation>
    </message>
    <message>
        <source>&amp;What is sent:</source>
        <translation>Ce &amp;qui est envoyé :</translation>
    </message>
    <message>
        <source>&amp;Send</source>
        <translation>&amp;Envoyer</translation>
    </message>
    <message>
        <source>Report a Problem</source>
        <translation>Signaler un problème</translation>
    </message>
    <message>
        <source>What went wrong, in one line</source>
        <translation>Ce qui s’est mal passé, en une ligne</translation>
    </message>
    <message>
        <source>What you did, what you expected and what you saw</source>
        <translation>Ce que vous avez fait, attendu et vu</translation>
    </message>
    <message>
        <source>The program’s name and version are always sent.</source>
        <translation>Le nom et la version du programme sont envoyés dans tous les cas.</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>Envoi</translation>
    </message>
    <message>
        <source>&amp;Report a Problem…</source>
        <translation>Signaler un p&amp;roblème…</translation>
    </message>
    <message>
        <source>Sending…</source>
        <translation>Envoi…</translation>
    </message>
    <message>
        <source>The report may not have arrived. %1 If you send it again, the report may arrive twice.</source>
        <translation>Le rapport n’est peut-être pas arrivé. %1 Si vous le renvoyez, il peut arriver deux fois.</translation>
    </message>
    <message>
        <source>The report was not sent. %1</source>
        <translation>Le rapport n’a pas été envoyé. %1</translation>
    </message>
    <message>
        <source>&amp;Send Again</source>
        <translation>&amp;Renvoyer</translation>
    </message>
    <message>
        <source>The report was sent. Thank you.</source>
        <translation>Le rapport a été envoyé. Merci.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::TransferError</name>
    <message>
        <source>The transfer was cancelled.</source>
        <translation>Le transfert a été annulé.</translation>
    </message>
    <message>
        <source>The device is not open for reading.</source>
        <translation>Le périphérique n’est pas ouvert en lecture.</translation>
    </message>
    <message>
        <source>The device is not open for writing.</source>
        <translation>Le périphérique n’est pas ouvert en écriture.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorListView</name>
    <message>
        <source>Colours of %1</source>
        <translation>Couleurs de %1</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorPanelContent</name>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Roue</translation>
    </message>
    <message>
        <source>Sliders</source>
        <translation>Curseurs</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Opacité</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Luminosité</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rouge</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Vert</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Bleu</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Teinte</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RVB</translation>
    </message>
    <message>
        <source>HSB</source>
        <translation>TSV</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Pick a colour from the screen</source>
        <translation>Prélever une couleur à l’écran</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Par défaut</translation>
    </message>
    <message>
        <source>Recent colours</source>
        <translation>Couleurs récentes</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorSwatch</name>
    <message>
        <source>Chosen colour</source>
        <translation>Couleur choisie</translation>
    </message>
    <message>
        <source>Drag this colour to another place, or drop a colour here</source>
        <translation>Faites glisser la couleur où vous la voulez, ou déposez-en une ici</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorWheel</name>
    <message>
        <source>Hue and saturation</source>
        <translation>Teinte et saturation</translation>
    </message>
    <message>
        <source>Hue %1°, saturation %2 %</source>
        <translation>Teinte %1°, saturation %2 %</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::HexField</name>
    <message>
        <source>Hexadecimal colour</source>
        <translation>Couleur hexadécimale</translation>
    </message>
    <message>
        <source>Enter 3, 4, 6 or 8 digits from 0 to 9 and A to F, such as #1ABC9C.</source>
        <translation>Saisissez 3, 4, 6 ou 8 chiffres de 0 à 9 et de A à F, par exemple #1ABC9C.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ScreenColorPicker</name>
    <message>
        <source>Pick a colour from the screen</source>
        <translation>Prélever une couleur à l’écran</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::StandardWindowButton</name>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Minimise</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Restaurer</translation>
    </message>
    <message>
        <source>Maximise</source>
        <translation>Agrandir</translation>
    </message>
    <message>
        <source>Folders of the document</source>
        <translation>Dossiers du document</translation>
    </message>
    <message>
        <source>Versions of the document</source>
        <translation>Versions du document</translation>
    </message>
    <message>
        <source>Leave full screen</source>
        <translation>Quitter le plein écran</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::TitleBarView</name>
    <message>
        <source>Title bar</source>
        <translation>Barre de titre</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::URLSession</name>
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
    <message>
        <source>The server rejected it with status %1.</source>
        <translation>Le serveur l’a refusé avec l’état %1.</translation>
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
