<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>Incolla l’invito monouso completo dal Mac di destinazione.</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>Registrazione non riuscita. </translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>Registrazione completata. ZQB sta contattando la destinazione autorizzata.</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>L’aggiornamento verificato di ZQB Agent è stato installato.</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>ZQB Agent non è riuscito a completare l’operazione.</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>ZQB Agent ha restituito uno stato locale illeggibile.</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>Backup ZQB completato</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>Backup ZQB pronto per il ripristino</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>La destinazione autorizzata ha restituito una verifica firmata senza errori per dati non vuoti.</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>Backup ZQB vuoto completato</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>La destinazione ha verificato questa esecuzione senza errori, ma dopo le esclusioni non restava alcun file.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>ZQB Agent non è riuscito a preparare le impostazioni delle cartelle.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>ZQB Agent non è riuscito a preparare i criteri di rete.</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>Cartelle, pianificazione e criteri di rete salvati.</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>Scegli e salva prima almeno una cartella.</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>Il motore in background di ZQB Agent non è installato.</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>Impossibile avviare ZQB Agent.</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>Il motore in background di ZQB Agent non ha risposto.</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>Apri ZQB Agent</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>Verifica connessione</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Esci da ZQB Agent</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>Configurazione necessaria</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Connesso</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>Backup in corso</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>In attesa della destinazione</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>In pausa</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>Cartella %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>Controllo di %n file</numerusform>
            <numerusform>Controllo di %n file</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>Convalida di %n oggetto preparato</numerusform>
            <numerusform>Convalida di %n oggetti preparati</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 file · %3 oggetto pronto</numerusform>
            <numerusform>%1/%2 file · %3 oggetti pronti</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>Controllo dell’inventario della destinazione</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>%1/%2 caricati · %3 riutilizzato</numerusform>
            <numerusform>%1/%2 caricati · %3 riutilizzati</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>In attesa delle ricevute durevoli</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>Registrazione del punto di ripristino</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>Verifica del punto di ripristino</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>Backup attivo</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>Controllo dello stato</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>Lettura dello stato locale di ZQB Agent…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>Ultimo avanzamento %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>Tempo trascorso %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>Beta: conserva un backup indipendente e verificato. Prova il ripristino prima di affidare dati importanti a ZQB.</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>In corso</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>Invito monouso</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>Connessione e compatibilità</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>È disponibile una versione compatibile più recente di ZQB Agent.</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>Installa aggiornamento verificato</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>Compatibile con i criteri firmati del servizio</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>Protocollo legacy v1 compatibile</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Non ancora verificato</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Non ancora</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>Completato; tipo di verifica non disponibile</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>Pronto per il ripristino</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>Backup vuoto riuscito</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>Versione dell’agente</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Verifica…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>Versione del servizio</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>Servizio legacy v1</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>Compatibilità</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>Agente compatibile più recente</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>Non indicato dal servizio legacy</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>Destinazioni compatibili online</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>Ultimo contatto</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>Ultimo backup riuscito</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>Esito dell’ultimo backup</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>Verifica connessione</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>Verifica servizio</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>Scegli le cartelle che ZQB deve proteggere</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>Proteggi cartelle</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>Rimuovi cartella</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>Rimuovi cartella %1</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>Cartelle da proteggere</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>Nessuna cartella selezionata.</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>Aggiungi cartelle…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>Accesso completo al disco…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>Alcune cartelle protette richiedono l’accesso completo al disco di macOS per il motore di ZQB Agent.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>Durata non disponibile</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 giorno</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n giorno</numerusform>
            <numerusform>%n giorni</numerusform>
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
        <translation>di recente</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Non ancora</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n minuto</numerusform>
            <numerusform>%n minuti</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 ora</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n ora</numerusform>
            <numerusform>%n ore</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 Mbps</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>Illimitata</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Esci da ZQB Agent</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>Chiudi</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>Trasferimento di rete</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>Sospendi i trasferimenti cifrati</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>Considera la rete attuale a consumo</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>Consenti il backup su reti a consumo</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>I trasferimenti interrotti riprendono dalle ricevute durevoli dei dati cifrati. ZQB ripete i controlli di stato sicuri e non invia mai dati in chiaro.</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>Limite di banda</translation>
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
        <translation>Ripristino della connessione</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>Protezione automatica</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>Esegui automaticamente il backup delle cartelle selezionate</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Salva impostazioni</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>Esegui backup ora</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>Esegui ogni</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Elaborazione in corso</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>Modelli di esclusione</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>I modelli si applicano ai nomi di file o cartelle. ZQB mostra sempre l’elenco configurato completo.</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>Nomi separati da virgole, ad esempio node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>Avanzamento del backup</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>Versione più recente</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>Impossibile verificare l’ultima versione</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>Durata dell’ultimo backup</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>Durata dell’ultimo tentativo</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>Durata del tentativo annullato</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>Durata del backup in corso</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>Ricerca dell’ultima versione…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>Aggiornamento disponibile: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>Aggiornamento disponibile: nuova versione</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>Protezione semplice e cifrata per questo computer</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>Connetti questo computer</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>Registra questo computer</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>Lettura della registrazione ZQB esistente di questo computer…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Sconosciuta</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>Sul Mac di destinazione, scegli Impostazioni → Destinazione di backup remota → Registra un agente. Incolla qui il suo invito monouso.</translation>
    </message>
</context>
</TS>
