<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>TavroPRO</name>
    <message>
        <source>Presentation mode</source>
        <translation>Modo de presentación</translation>
    </message>
    <message>
        <source>Presentation mode is on</source>
        <translation>El modo de presentación está activado</translation>
    </message>
    <message>
        <source>Presentation mode is off</source>
        <translation>El modo de presentación está desactivado</translation>
    </message>
    <message>
        <source>Click here and press the keys</source>
        <translation>Haga clic aquí y pulse las teclas</translation>
    </message>
    <message>
        <source>Click: options; middle click: presentation mode</source>
        <translation>Clic: opciones; clic central: modo de presentación</translation>
    </message>
    <message>
        <source>Hide desktop icons</source>
        <translation>Ocultar los iconos del escritorio</translation>
    </message>
    <message>
        <source>Disable notification</source>
        <translation>Desactivar las notificaciones</translation>
    </message>
    <message>
        <source>Hide active apps</source>
        <translation>Ocultar las aplicaciones activas</translation>
    </message>
    <message>
        <source>Turn off speaker</source>
        <translation>Silenciar el altavoz</translation>
    </message>
    <message>
        <source>Change wallpaper</source>
        <translation>Cambiar el fondo de pantalla</translation>
    </message>
    <message>
        <source>🎉 New version is available. Click to update</source>
        <translation>🎉 Nueva versión. Haga clic para actualizar</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>Micrófonos</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Preferencias</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Abrir al iniciar sesión</translation>
    </message>
    <message>
        <source>Toggle TavroPRO</source>
        <translation>Alternar TavroPRO</translation>
    </message>
    <message>
        <source>Mute Mic:</source>
        <translation>Silenciar micro:</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>Fondo de pantalla</translation>
    </message>
    <message>
        <source>Select...</source>
        <translation>Seleccionar…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>Definir un atajo</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>Pulse las teclas</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Borrar</translation>
    </message>
    <message>
        <source>This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.</source>
        <translation>Este atajo de teclado no se puede usar porque el sistema ya lo utiliza.</translation>
    </message>
    <message>
        <source>Most system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.</source>
        <translation>La mayoría de los atajos de teclado del sistema se pueden cambiar en «Preferencias del sistema › Teclado › Atajos».</translation>
    </message>
    <message>
        <source>Choose a Image</source>
        <translation>Elegir una imagen</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Imágenes</translation>
    </message>
    <message>
        <source>Mic Muted</source>
        <translation>Micrófono silenciado</translation>
    </message>
    <message>
        <source>Mic Unmuted</source>
        <translation>Micrófono activado</translation>
    </message>
    <message>
        <source>Error loading image</source>
        <translation>No se puede cargar la imagen</translation>
    </message>
</context>
</TS>
