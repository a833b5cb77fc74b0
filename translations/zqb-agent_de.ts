<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>Fügen Sie die vollständige Einmal-Einladung vom Ziel-Mac ein.</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>Registrierung fehlgeschlagen. </translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>Registrierung abgeschlossen. ZQB nimmt Kontakt mit dem autorisierten Ziel auf.</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>Das verifizierte Update von ZQB Agent wurde installiert.</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>ZQB Agent konnte den Vorgang nicht abschließen.</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>ZQB Agent hat einen unlesbaren lokalen Status geliefert.</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>ZQB-Sicherung abgeschlossen</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>ZQB-Sicherung wiederherstellungsbereit</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>Das autorisierte Ziel hat eine signierte, fehlerfreie Prüfung für nicht leere Daten bestätigt.</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>Leere ZQB-Sicherung abgeschlossen</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>Das Ziel hat diesen Lauf fehlerfrei geprüft, nach den Ausschlüssen waren jedoch keine Dateien vorhanden.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>ZQB Agent konnte die Ordnereinstellungen nicht vorbereiten.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>ZQB Agent konnte die Netzwerkrichtlinie nicht vorbereiten.</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>Ordner, Zeitplan und Netzwerkrichtlinie gespeichert.</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>Wählen und speichern Sie zuerst mindestens einen Ordner.</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>Die Hintergrund-Engine von ZQB Agent ist nicht installiert.</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>ZQB Agent konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>Die Hintergrund-Engine von ZQB Agent hat nicht geantwortet.</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>ZQB Agent öffnen</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>Verbindung prüfen</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>ZQB Agent beenden</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>Einrichtung erforderlich</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>Sicherung läuft</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>Warten auf Ziel</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>Ordner %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>%n Datei wird geprüft</numerusform>
            <numerusform>%n Dateien werden geprüft</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>%n vorbereitetes Objekt wird validiert</numerusform>
            <numerusform>%n vorbereitete Objekte werden validiert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 Dateien · %3 Objekt bereit</numerusform>
            <numerusform>%1/%2 Dateien · %3 Objekte bereit</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>Bestand des Ziels wird geprüft</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>%1/%2 hochgeladen · %3 wiederverwendet</numerusform>
            <numerusform>%1/%2 hochgeladen · %3 wiederverwendet</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>Warten auf dauerhafte Empfangsbestätigungen</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>Wiederherstellungspunkt wird festgeschrieben</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>Wiederherstellungspunkt wird geprüft</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>Sicherung aktiv</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>Status wird geprüft</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>Lokaler Zustand von ZQB Agent wird gelesen …</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>Letzter Fortschritt %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>Verstrichene Zeit %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>Beta: Bewahren Sie eine unabhängige, geprüfte Sicherung auf. Testen Sie die Wiederherstellung, bevor Sie sich bei wichtigen Daten auf ZQB verlassen.</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>In Bearbeitung</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>Einmal-Einladung</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>Verbindung und Kompatibilität</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>Eine neuere kompatible Version von ZQB Agent ist verfügbar.</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>Verifiziertes Update installieren</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>Kompatibel mit signierter Dienstrichtlinie</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>Kompatibles Legacy-Protokoll v1</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Noch nicht geprüft</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Noch nicht</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>Abgeschlossen; Art der Prüfung nicht verfügbar</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>Wiederherstellungsbereit</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>Erfolgreiche leere Sicherung</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>Agent-Version</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Wird geprüft …</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>Dienstversion</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>Legacy-Dienst v1</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>Kompatibilität</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>Neuester kompatibler Agent</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>Vom Legacy-Dienst nicht angegeben</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>Kompatible Ziele online</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>Letzter Kontakt</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>Letzte erfolgreiche Sicherung</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>Ergebnis der letzten Sicherung</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>Verbindung prüfen</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>Dienst prüfen</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>Ordner auswählen, die ZQB schützen soll</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>Ordner schützen</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>Ordner entfernen</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>Ordner %1 entfernen</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>Zu schützende Ordner</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>Noch keine Ordner ausgewählt.</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>Ordner hinzufügen …</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>Festplattenvollzugriff …</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>Einige geschützte Ordner erfordern für die Engine von ZQB Agent den Festplattenvollzugriff von macOS.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>Dauer nicht verfügbar</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 Tag</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n Tag</numerusform>
            <numerusform>%n Tage</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n hr</source>
        <translation>
            <numerusform>%n Std.</numerusform>
            <numerusform>%n Std.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n min</source>
        <translation>
            <numerusform>%n Min.</numerusform>
            <numerusform>%n Min.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sec</source>
        <translation>
            <numerusform>%n Sek.</numerusform>
            <numerusform>%n Sek.</numerusform>
        </translation>
    </message>
    <message>
        <source>recently</source>
        <translation>vor Kurzem</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Noch nicht</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n Minute</numerusform>
            <numerusform>%n Minuten</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 Stunde</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n Stunde</numerusform>
            <numerusform>%n Stunden</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>Unbegrenzt</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>ZQB Agent beenden</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>Netzwerkübertragung</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>Verschlüsselte Übertragungen anhalten</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>Aktuelles Netzwerk als getaktete Verbindung behandeln</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>Sicherung über getaktete Verbindungen erlauben</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>Unterbrochene Übertragungen werden anhand dauerhafter Empfangsbestätigungen für verschlüsselte Daten fortgesetzt. ZQB wiederholt sichere Statusabfragen und sendet niemals Klartext.</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>Bandbreitenbegrenzung</translation>
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
        <translation>Verbindung wird wiederhergestellt</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>Automatischer Schutz</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>Ausgewählte Ordner automatisch sichern</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Einstellungen speichern</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>Jetzt sichern</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>Ausführen alle</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Wird ausgeführt</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>Ausschlussmuster</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>Muster gelten für Datei- oder Ordnernamen. ZQB zeigt immer die vollständige eingestellte Liste.</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>Durch Kommas getrennte Namen, z. B. node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>Sicherungsfortschritt</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>Neueste Version</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>Neueste Version nicht prüfbar</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>Dauer der letzten Sicherung</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>Dauer des letzten Versuchs</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>Dauer des abgebrochenen Versuchs</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>Laufzeit der aktuellen Sicherung</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>Neueste Version wird geprüft …</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>Update verfügbar: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>Update verfügbar: neue Version</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>Einfacher, verschlüsselter Schutz für diesen Computer</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>Diesen Computer verbinden</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>Diesen Computer registrieren</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>Vorhandene ZQB-Registrierung dieses Computers wird gelesen …</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>Wählen Sie auf dem Ziel-Mac Einstellungen → Entferntes Sicherungsziel → Agent registrieren. Fügen Sie die Einmal-Einladung hier ein.</translation>
    </message>
</context>
</TS>
