<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>TavroPRO</name>
    <message>
        <source>Presentation mode</source>
        <translation>Mode présentation</translation>
    </message>
    <message>
        <source>Presentation mode is on</source>
        <translation>Le mode présentation est activé</translation>
    </message>
    <message>
        <source>Presentation mode is off</source>
        <translation>Le mode présentation est désactivé</translation>
    </message>
    <message>
        <source>Click here and press the keys</source>
        <translation>Cliquez ici et appuyez sur les touches</translation>
    </message>
    <message>
        <source>Click: options; middle click: presentation mode</source>
        <translation>Clic : options ; clic du milieu : mode présentation</translation>
    </message>
    <message>
        <source>Hide desktop icons</source>
        <translation>Masquer les icônes du bureau</translation>
    </message>
    <message>
        <source>Disable notification</source>
        <translation>Désactiver les notifications</translation>
    </message>
    <message>
        <source>Hide active apps</source>
        <translation>Masquer les applications actives</translation>
    </message>
    <message>
        <source>Turn off speaker</source>
        <translation>Couper le haut-parleur</translation>
    </message>
    <message>
        <source>Change wallpaper</source>
        <translation>Changer le fond d’écran</translation>
    </message>
    <message>
        <source>🎉 New version is available. Click to update</source>
        <translation>🎉 Nouvelle version. Cliquez pour mettre à jour</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>Microphones</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Démarrage</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Lancer à l’ouverture de session</translation>
    </message>
    <message>
        <source>Toggle TavroPRO</source>
        <translation>Basculer TavroPRO</translation>
    </message>
    <message>
        <source>Mute Mic:</source>
        <translation>Couper le micro :</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>Fond d’écran</translation>
    </message>
    <message>
        <source>Select...</source>
        <translation>Choisir…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>Définir un raccourci</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>Appuyez sur les touches</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.</source>
        <translation>Ce raccourci clavier ne peut pas être utilisé, car le système l’utilise déjà.</translation>
    </message>
    <message>
        <source>Most system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.</source>
        <translation>La plupart des raccourcis clavier du système peuvent être modifiés dans « Préférences système › Clavier › Raccourcis ».</translation>
    </message>
    <message>
        <source>Choose a Image</source>
        <translation>Choisir une image</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>Mic Muted</source>
        <translation>Micro coupé</translation>
    </message>
    <message>
        <source>Mic Unmuted</source>
        <translation>Micro activé</translation>
    </message>
    <message>
        <source>Error loading image</source>
        <translation>Impossible de charger l’image</translation>
    </message>
</context>
</TS>
