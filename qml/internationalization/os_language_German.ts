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
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
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
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>Fortschritt der Deinstallation</translation>
    </message>
</context>
</TS>
