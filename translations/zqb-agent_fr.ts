<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>Collez l’invitation à usage unique complète provenant du Mac cible.</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>Échec de l’inscription. </translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>Inscription terminée. ZQB contacte la cible autorisée.</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>La mise à jour vérifiée de ZQB Agent a été installée.</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>ZQB Agent n’a pas pu terminer cette opération.</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>ZQB Agent a renvoyé un état local illisible.</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>Sauvegarde ZQB terminée</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>Sauvegarde ZQB prête pour la restauration</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>La cible autorisée a renvoyé une vérification signée sans erreur pour des données non vides.</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>Sauvegarde ZQB vide terminée</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>La cible a vérifié cette exécution sans erreur, mais aucun fichier ne restait après les exclusions.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>ZQB Agent n’a pas pu préparer les réglages des dossiers.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>ZQB Agent n’a pas pu préparer la politique réseau.</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>Dossiers, planification et politique réseau enregistrés.</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>Choisissez et enregistrez d’abord au moins un dossier.</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>Le moteur d’arrière-plan de ZQB Agent n’est pas installé.</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>ZQB Agent n’a pas pu démarrer.</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>Le moteur d’arrière-plan de ZQB Agent n’a pas répondu.</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>Ouvrir ZQB Agent</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>Vérifier la connexion</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Quitter ZQB Agent</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>Configuration requise</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Connecté</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>Sauvegarde en cours</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>En attente de la cible</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>En pause</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>Dossier %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>Vérification de %n fichier</numerusform>
            <numerusform>Vérification de %n fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>Validation de %n objet préparé</numerusform>
            <numerusform>Validation de %n objets préparés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 fichiers · %3 objet prêt</numerusform>
            <numerusform>%1/%2 fichiers · %3 objets prêts</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>Vérification de l’inventaire de la cible</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>%1/%2 envoyés · %3 réutilisé</numerusform>
            <numerusform>%1/%2 envoyés · %3 réutilisés</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>En attente des accusés de réception durables</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>Validation du point de restauration</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>Vérification du point de restauration</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>Sauvegarde active</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>Vérification de l’état</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>Lecture de l’état local de ZQB Agent…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>Dernière progression %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>Temps écoulé %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>Bêta&#xa0;: conservez une sauvegarde indépendante vérifiée. Testez la restauration avant de confier des données importantes à ZQB.</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>En cours</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>Invitation à usage unique</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>Connexion et compatibilité</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>Une version compatible plus récente de ZQB Agent est disponible.</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>Installer la mise à jour vérifiée</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>Compatible avec la politique de service signée</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>Protocole hérité v1 compatible</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Pas encore vérifié</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Pas encore</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>Terminée&#xa0;; type de vérification indisponible</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>Prête pour la restauration</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>Sauvegarde vide réussie</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>Version de l’agent</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Vérification…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>Version du service</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>Service hérité v1</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>Compatibilité</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>Dernier agent compatible</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>Non annoncé par le service hérité</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>Cibles compatibles en ligne</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>Dernier contact</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>Dernière sauvegarde réussie</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>Résultat de la dernière sauvegarde</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>Vérifier la connexion</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>Vérifier le service</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>Choisissez les dossiers que ZQB doit protéger</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>Protéger les dossiers</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>Retirer le dossier</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>Retirer le dossier %1</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>Dossiers à protéger</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>Aucun dossier sélectionné pour l’instant.</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>Ajouter des dossiers…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>Accès complet au disque…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>Certains dossiers protégés exigent l’accès complet au disque de macOS pour le moteur de ZQB Agent.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>Durée indisponible</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 jour</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n jour</numerusform>
            <numerusform>%n jours</numerusform>
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
        <translation>récemment</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Pas encore</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n minute</numerusform>
            <numerusform>%n minutes</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 heure</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n heure</numerusform>
            <numerusform>%n heures</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 Mbit/s</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>Illimité</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Quitter ZQB Agent</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>Transfert réseau</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>Suspendre les transferts chiffrés</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>Considérer le réseau actuel comme limité</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>Autoriser la sauvegarde sur les réseaux limités</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>Les transferts interrompus reprennent à partir des accusés de réception durables des données chiffrées. ZQB relance les vérifications d’état sûres et n’envoie jamais de données en clair.</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>Limite de bande passante</translation>
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
        <translation>Rétablissement de la connexion</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>Protection automatique</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>Sauvegarder automatiquement les dossiers sélectionnés</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Enregistrer les réglages</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>Sauvegarder maintenant</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>Exécuter toutes les</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Traitement en cours</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>Motifs d’exclusion</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>Les motifs s’appliquent aux noms de fichiers ou de dossiers. ZQB affiche toujours la liste configurée complète.</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>Noms séparés par des virgules, par exemple node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>Progression de la sauvegarde</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>Dernière version</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>Impossible de vérifier la dernière version</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>Durée de la dernière sauvegarde</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>Durée de la dernière tentative</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>Durée de la tentative annulée</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>Durée de la sauvegarde en cours</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>Recherche de la dernière version…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>Mise à jour disponible&#xa0;: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>Mise à jour disponible&#xa0;: nouvelle version</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>Une protection simple et chiffrée pour cet ordinateur</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>Connecter cet ordinateur</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>Inscrire cet ordinateur</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>Lecture de l’inscription ZQB existante de cet ordinateur…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Inconnue</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>Sur le Mac cible, choisissez Réglages → Cible de sauvegarde distante → Inscrire un agent. Collez ici son invitation à usage unique.</translation>
    </message>
</context>
</TS>
