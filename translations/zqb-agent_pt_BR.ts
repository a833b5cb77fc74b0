<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>Cole o convite de uso único completo do Mac de destino.</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>Falha no registro. </translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>Registro concluído. O ZQB está contatando o destino autorizado.</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>A atualização verificada do ZQB Agent foi instalada.</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>O ZQB Agent não conseguiu concluir a operação.</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>O ZQB Agent retornou um status local ilegível.</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>Backup do ZQB concluído</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>Backup do ZQB pronto para recuperação</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>O destino autorizado retornou uma verificação assinada sem erros para dados não vazios.</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>Backup vazio do ZQB concluído</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>O destino verificou esta execução sem erros, mas nenhum arquivo restou após as exclusões.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>O ZQB Agent não conseguiu preparar as configurações das pastas.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>O ZQB Agent não conseguiu preparar a política de rede.</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>Pastas, agendamento e política de rede salvos.</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>Primeiro escolha e salve pelo menos uma pasta.</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>O mecanismo em segundo plano do ZQB Agent não está instalado.</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>Não foi possível iniciar o ZQB Agent.</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>O mecanismo em segundo plano do ZQB Agent não respondeu.</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>Abrir o ZQB Agent</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>Verificar conexão</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Sair do ZQB Agent</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>Configuração necessária</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Conectado</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>Fazendo backup</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>Aguardando o destino</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Pausado</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>Pasta %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>Verificando %n arquivo</numerusform>
            <numerusform>Verificando %n arquivos</numerusform>
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
            <numerusform>%1/%2 arquivos · %3 objeto pronto</numerusform>
            <numerusform>%1/%2 arquivos · %3 objetos prontos</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>Verificando o inventário do destino</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>%1/%2 enviados · %3 reutilizado</numerusform>
            <numerusform>%1/%2 enviados · %3 reutilizados</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>Aguardando confirmações de recebimento duráveis</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>Gravando o ponto de recuperação</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>Verificando o ponto de recuperação</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>Backup ativo</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>Verificando o status</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>Lendo o estado local do ZQB Agent…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>Último progresso %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>Tempo decorrido %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>Beta: mantenha um backup independente e verificado. Teste a restauração antes de confiar dados importantes ao ZQB.</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>Em andamento</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>Convite de uso único</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>Conexão e compatibilidade</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>Uma versão compatível mais recente do ZQB Agent está disponível.</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>Instalar atualização verificada</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>Compatível com a política de serviço assinada</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>Protocolo legado v1 compatível</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Ainda não verificado</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Ainda não</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>Concluído; tipo de verificação indisponível</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>Pronto para recuperação</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>Backup vazio bem-sucedido</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>Versão do agente</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Verificando…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>Versão do serviço</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>Serviço legado v1</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>Compatibilidade</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>Agente compatível mais recente</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>Não informado pelo serviço legado</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>Destinos compatíveis on-line</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>Último contato</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>Último backup bem-sucedido</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>Resultado do último backup</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>Verificar conexão</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>Verificar serviço</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>Escolha as pastas que o ZQB deve proteger</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>Proteger pastas</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>Remover pasta</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>Remover pasta %1</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>Pastas a proteger</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>Nenhuma pasta selecionada ainda.</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>Adicionar pastas…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>Acesso Total ao Disco…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>Algumas pastas protegidas exigem o Acesso Total ao Disco do macOS para o mecanismo do ZQB Agent.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>Duração indisponível</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 dia</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n dia</numerusform>
            <numerusform>%n dias</numerusform>
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
        <translation>recentemente</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>Ainda não</translation>
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
        <translation>Ilimitado</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>Sair do ZQB Agent</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>Fechar</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>Transferência de rede</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>Pausar transferências criptografadas</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>Tratar a rede atual como limitada</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>Permitir backup em redes limitadas</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>Transferências interrompidas são retomadas a partir de confirmações de recebimento duráveis dos dados criptografados. O ZQB repete verificações de status seguras e nunca envia texto sem criptografia.</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>Limite de largura de banda</translation>
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
        <translation>Restabelecendo a conexão</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>Proteção automática</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>Fazer backup das pastas selecionadas automaticamente</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Salvar configurações</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>Fazer backup agora</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>Executar a cada</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Processando</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>Padrões de exclusão</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>Os padrões se aplicam a nomes de arquivos ou pastas. O ZQB sempre mostra a lista configurada completa.</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>Nomes separados por vírgula, como node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>Progresso do backup</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>Versão mais recente</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>Não foi possível verificar a versão mais recente</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>Duração do último backup</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>Duração da última tentativa</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>Duração da tentativa cancelada</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>Duração do backup atual</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>Procurando a versão mais recente…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>Atualização disponível: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>Atualização disponível: nova versão</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>Proteção simples e criptografada para este computador</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>Conectar este computador</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>Registrar este computador</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>Lendo o registro do ZQB existente neste computador…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconhecida</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>No Mac de destino, escolha Ajustes → Destino de backup remoto → Registrar um agente. Cole aqui o convite de uso único.</translation>
    </message>
</context>
</TS>
