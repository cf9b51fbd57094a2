<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>TavroPRO</name>
    <message>
        <source>Presentation mode</source>
        <translation>Präsentationsmodus</translation>
    </message>
    <message>
        <source>Presentation mode is on</source>
        <translation>Präsentationsmodus ist an</translation>
    </message>
    <message>
        <source>Presentation mode is off</source>
        <translation>Präsentationsmodus ist aus</translation>
    </message>
    <message>
        <source>Click here and press the keys</source>
        <translation>Hier klicken und die Tasten drücken</translation>
    </message>
    <message>
        <source>Click: options; middle click: presentation mode</source>
        <translation>Klick: Optionen; Mittelklick: Präsentationsmodus</translation>
    </message>
    <message>
        <source>Hide desktop icons</source>
        <translation>Schreibtischsymbole ausblenden</translation>
    </message>
    <message>
        <source>Disable notification</source>
        <translation>Benachrichtigungen ausschalten</translation>
    </message>
    <message>
        <source>Hide active apps</source>
        <translation>Aktive Programme ausblenden</translation>
    </message>
    <message>
        <source>Turn off speaker</source>
        <translation>Lautsprecher ausschalten</translation>
    </message>
    <message>
        <source>Change wallpaper</source>
        <translation>Hintergrundbild ändern</translation>
    </message>
    <message>
        <source>🎉 New version is available. Click to update</source>
        <translation>🎉 Neue Version verfügbar. Zum Aktualisieren klicken</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>Mikrofone</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Systemstart</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Toggle TavroPRO</source>
        <translation>TavroPRO umschalten</translation>
    </message>
    <message>
        <source>Mute Mic:</source>
        <translation>Mikrofon stumm:</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>Hintergrundbild</translation>
    </message>
    <message>
        <source>Select...</source>
        <translation>Auswählen …</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>Tasten aufnehmen</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>Tasten drücken</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.</source>
        <translation>Dieser Tastaturkurzbefehl kann nicht verwendet werden, da er bereits systemweit vergeben ist.</translation>
    </message>
    <message>
        <source>Most system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.</source>
        <translation>Die meisten systemweiten Tastaturkurzbefehle lassen sich unter „Systemeinstellungen › Tastatur › Kurzbefehle“ ändern.</translation>
    </message>
    <message>
        <source>Choose a Image</source>
        <translation>Bild auswählen</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Mic Muted</source>
        <translation>Mikrofon aus</translation>
    </message>
    <message>
        <source>Mic Unmuted</source>
        <translation>Mikrofon an</translation>
    </message>
    <message>
        <source>Error loading image</source>
        <translation>Das Bild lässt sich nicht laden</translation>
    </message>
</context>
</TS>
