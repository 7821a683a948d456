<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>Schnellinstallation</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Ich akzeptiere</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>den Vorn-Lizenzvertrag</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>Pfad anpassen &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>Verzeichnis auswählen</translation>
    </message>
    <message>
        <source>/opt/VornVPN</source>
        <translation>/opt/VornVPN</translation>
    </message>
    <message>
        <source>C:\Program Files\VornVPN</source>
        <translation>C:\Program Files\VornVPN</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Durchsuchen</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>Automatisch starten</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>Verknüpfung erstellen</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>Wird installiert ...</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>Beschleunigung mit einem Klick</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>einfach</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>benutzerfreundlich</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>stabil</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>Intelligente Cloud-Beschleunigung</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>geringe Latenz</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>kein Ruckeln</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>Plattformübergreifend, voll kompatibel</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>Beschleunigungs-Engine neuer Generation für Netze aller Plattformen</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>Installation abgeschlossen</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>Jetzt ausprobieren</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>Bitte warten …</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>Die Dateien werden noch kopiert.</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>VornVPN konnte nicht vollständig installiert werden</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>Derzeit nicht verfügbar</translation>
    </message>
    <message>
        <source>en</source>
        <translation>de</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>„%1“ konnte nicht nach „%2“ geschrieben werden: %3.</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>„%1“ konnte nicht angelegt werden: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>„%1“ konnte nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>Nicht kopiert: %1 von %2 Dateien.</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>keine Rechte</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>kein Platz auf dem Datenträger</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>kein solches Verzeichnis</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>etwas anderes hat diesen Namen</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>der Datenträger ist schreibgeschützt</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>eine Verknüpfung eines anderen Benutzers hat diesen Namen</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>ein Name darin ist kein Text</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>Grund unbekannt</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>Der Menüeintrag konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>Der automatische Start konnte nicht eingerichtet werden.</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>Führt nach „%1“.</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>Benötigt Administratorrechte.</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>Dorthin kann nichts geschrieben werden.</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>Zu wenig Platz: %1 MB nötig, %2 MB frei.</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>„%1“ ist kein Verzeichnis.</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>„%1“ existiert nicht.</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>Die dort gefundene Installation wird aktualisiert.</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; Zurück</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>Pfad ändern</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Verzeichnis:</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>Text eingeben ...</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>Geringe Latenz, keine Verzögerung</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>Einfach, benutzerfreundlich, stabil</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>Beschleunigungs-Engine neuer Generation für Netze aller Plattformen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>Sprache der Benutzeroberfläche</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>Installationsverzeichnis</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Installationsfortschritt</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>VornVPN deinstallieren</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>Entfernt werden der Client, sein Menüeintrag und sein Autostart-Eintrag. Ihre eigenen Dateien im Verzeichnis bleiben erhalten.</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>Deinstallieren</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>Wird entfernt ...</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>VornVPN wurde entfernt</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>VornVPN konnte nicht vollständig entfernt werden</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>Diese Dateien gehören nicht zu VornVPN und wurden behalten:</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>Folgendes konnte nicht entfernt werden:</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>Fortschritt der Deinstallation</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>zu groß</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>in Benutzung</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>führt aus dem Verzeichnis hinaus</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>Starten Sie die Deinstallation noch einmal mit Administratorrechten.</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>Das Fenster der Deinstallation konnte nicht geladen werden.</translation>
    </message>
</context>
</TS>
