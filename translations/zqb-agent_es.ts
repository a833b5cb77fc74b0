<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>Pega la invitación de un solo uso completa del Mac de destino.</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>Error en la inscripción. </translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>Inscripción completada. ZQB se está comunicando con el destino autorizado.</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>Se instaló la actualización verificada de ZQB Agent.</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>ZQB Agent no pudo completar la operación.</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>ZQB Agent devolvió un estado local ilegible.</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>Copia de seguridad de ZQB completada</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>Copia de seguridad de ZQB lista para recuperación</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>El destino autorizado devolvió una verificación firmada sin errores para datos no vacíos.</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>Copia de seguridad vacía de ZQB completada</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>El destino verificó esta ejecución sin errores, pero no quedaba ningún archivo después de las exclusiones.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>ZQB Agent no pudo preparar la configuración de las carpetas.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>ZQB Agent no pudo preparar la política de red.</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>Se guardaron las carpetas, la programación y la política de red.</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>Primero elige y guarda al menos una carpeta.</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>El motor en segundo plano de ZQB Agent no está instalado.</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>ZQB Agent no pudo iniciarse.</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>El motor en segundo plano de ZQB Agent no respondió.</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>Abrir ZQB Agent</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>Comprobar conexión</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Salir de ZQB Agent</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>Configuración necesaria</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Conectado</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>Copia en curso</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>Esperando al destino</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>En pausa</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>Carpeta %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>Comprobando %n archivo</numerusform>
            <numerusform>Comprobando %n archivos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>Validando %n objeto preparado</numerusform>
            <numerusform>Validando %n objetos preparados</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 archivos · %3 objeto listo</numerusform>
            <numerusform>%1/%2 archivos · %3 objetos listos</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>Comprobando el inventario del destino</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>%1/%2 subidos · %3 reutilizado</numerusform>
            <numerusform>%1/%2 subidos · %3 reutilizados</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>Esperando acuses de recibo duraderos</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>Confirmando el punto de recuperación</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>Verificando el punto de recuperación</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>Copia de seguridad activa</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>Comprobando el estado</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>Leyendo el estado local de ZQB Agent…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>Último avance %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>Tiempo transcurrido %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>Beta: conserva una copia de seguridad independiente y verificada. Prueba a restaurar antes de confiar a ZQB datos importantes.</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>En curso</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>Invitación de un solo uso</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>Conexión y compatibilidad</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>Hay disponible una versión compatible más reciente de ZQB Agent.</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>Instalar actualización verificada</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>Compatible con la política de servicio firmada</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>Protocolo heredado v1 compatible</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Aún sin comprobar</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Todavía no</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>Completada; tipo de verificación no disponible</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>Lista para recuperación</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>Copia de seguridad vacía correcta</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>Versión del agente</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Comprobando…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>Versión del servicio</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>Servicio heredado v1</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>Compatibilidad</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>Último agente compatible</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>No lo indica el servicio heredado</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>Destinos compatibles en línea</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>Último contacto</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>Última copia de seguridad correcta</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>Resultado de la última copia</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>Comprobar conexión</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>Comprobar servicio</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>Elige las carpetas que ZQB debe proteger</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>Proteger carpetas</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>Quitar carpeta</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>Quitar carpeta %1</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>Carpetas que proteger</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>Aún no hay carpetas seleccionadas.</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>Añadir carpetas…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>Acceso total al disco…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>Algunas carpetas protegidas requieren el acceso total al disco de macOS para el motor de ZQB Agent.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>Duración no disponible</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 día</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n día</numerusform>
            <numerusform>%n días</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n hr</source>
        <translation>
            <numerusform>%n h</numerusform>
            <numerusform>%n h</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n min</source>
        <translation>
            <numerusform>%n min</numerusform>
            <numerusform>%n min</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sec</source>
        <translation>
            <numerusform>%n s</numerusform>
            <numerusform>%n s</numerusform>
        </translation>
    </message>
    <message>
        <source>recently</source>
        <translation>hace poco</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Todavía no</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n minuto</numerusform>
            <numerusform>%n minutos</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 hora</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n hora</numerusform>
            <numerusform>%n horas</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 Mbps</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>Sin límite</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Salir de ZQB Agent</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>Transferencia de red</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>Pausar transferencias cifradas</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>Tratar la red actual como de uso medido</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>Permitir copias en redes de uso medido</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>Las transferencias interrumpidas se reanudan a partir de acuses de recibo duraderos de los datos cifrados. ZQB reintenta las comprobaciones de estado seguras y nunca envía texto sin cifrar.</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>Límite de ancho de banda</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <comment>Translate this string to the string &apos;LTR&apos; in left-to-right languages or to &apos;RTL&apos; in right-to-left languages (such as Hebrew and Arabic) to get proper widget layout.</comment>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>RestoringBox</name>
    <message>
        <source>Restoring connection</source>
        <translation>Restableciendo la conexión</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>Protección automática</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>Hacer copia de las carpetas seleccionadas automáticamente</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Guardar configuración</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>Hacer copia ahora</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>Ejecutar cada</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Procesando</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>Patrones de exclusión</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>Los patrones se aplican a nombres de archivos o carpetas. ZQB siempre muestra la lista configurada completa.</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>Nombres separados por comas, como node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>Progreso de la copia de seguridad</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>Versión más reciente</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>No se pudo verificar la última versión</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>Duración de la última copia</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>Duración del último intento</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>Duración del intento cancelado</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>Duración de la copia en curso</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>Buscando la última versión…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>Actualización disponible: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>Actualización disponible: nueva versión</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>Protección sencilla y cifrada para este ordenador</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>Conectar este ordenador</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>Inscribir este ordenador</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>Leyendo la inscripción de ZQB existente de este ordenador…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconocida</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>En el Mac de destino, elige Ajustes → Destino de copia remoto → Inscribir un agente. Pega aquí su invitación de un solo uso.</translation>
    </message>
</context>
</TS>
