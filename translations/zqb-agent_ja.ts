<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>バックアップ先の Mac で発行されたワンタイム招待を、すべて貼り付けてください。</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>登録に失敗しました。</translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>登録が完了しました。ZQB が承認済みのバックアップ先に接続しています。</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>検証済みの ZQB Agent アップデートをインストールしました。</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>ZQB Agent はその操作を完了できませんでした。</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>ZQB Agent から読み取れないローカル状態が返されました。</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>ZQB バックアップが完了しました</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>ZQB バックアップが復元可能になりました</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>承認済みのバックアップ先から、空でないデータについてエラーなしの署名付き検証結果が返されました。</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>ZQB の空のバックアップが完了しました</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>バックアップ先はこの実行をエラーなしで検証しましたが、除外後に残ったファイルはありませんでした。</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>ZQB Agent はフォルダ設定を準備できませんでした。</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>ZQB Agent はネットワークポリシーを準備できませんでした。</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>フォルダ、スケジュール、ネットワークポリシーを保存しました。</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>先にフォルダを 1 つ以上選択して保存してください。</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>ZQB Agent のバックグラウンドエンジンがインストールされていません。</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>ZQB Agent を起動できませんでした。</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>ZQB Agent のバックグラウンドエンジンが応答しませんでした。</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>ZQB Agent を開く</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>接続を確認</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>ZQB Agent を終了</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>セットアップが必要</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>接続済み</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>バックアップ中</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>バックアップ先を待機中</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>一時停止中</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>フォルダ %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>%n 個のファイルを確認中</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>準備済みの %n 個のオブジェクトを検証中</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 ファイル · %3 個のオブジェクトが準備完了</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>バックアップ先の保管内容を確認中</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>%1/%2 アップロード済み · %3 個を再利用</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>永続的な受領確認を待機中</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>復元ポイントを確定中</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>復元ポイントを検証中</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>バックアップ実行中</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>状態を確認中</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>ZQB Agent のローカル状態を読み込み中…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>最終進捗 %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>経過時間 %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>ベータ版: 検証済みの別のバックアップを保持してください。重要なデータを ZQB に任せる前に、復元をテストしてください。</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>処理中</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>ワンタイム招待</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>接続と互換性</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>互換性のある新しい ZQB Agent が利用可能です。</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>検証済みアップデートをインストール</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>署名付きサービスポリシーに対応</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>従来の v1 プロトコルに対応</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>未確認</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>まだありません</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>完了 (検証の種類は不明)</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>復元可能</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>空のバックアップに成功</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>エージェントのバージョン</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>確認中…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>サービスのバージョン</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>従来の v1 サービス</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>互換性</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>互換性のある最新エージェント</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>従来のサービスでは通知されません</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>オンラインの互換バックアップ先</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>最終接続</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>最後に成功したバックアップ</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>最新のバックアップ結果</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>接続を確認</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>サービスを確認</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>ZQB で保護するフォルダを選択</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>フォルダを保護</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>フォルダを削除</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>フォルダ %1 を削除</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>保護するフォルダ</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>フォルダがまだ選択されていません。</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>フォルダを追加…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>フルディスクアクセス…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>一部の保護対象フォルダでは、ZQB Agent エンジンに macOS のフルディスクアクセスが必要です。</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>所要時間は不明</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1日</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n日</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n hr</source>
        <translation>
            <numerusform>%n時間</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n min</source>
        <translation>
            <numerusform>%n分</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sec</source>
        <translation>
            <numerusform>%n秒</numerusform>
        </translation>
    </message>
    <message>
        <source>recently</source>
        <translation>少し前</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>まだありません</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n分</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1時間</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n時間</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 Mbps</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>無制限</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>ZQB Agent を終了</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>ネットワーク転送</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>暗号化転送を一時停止</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>現在のネットワークを従量制として扱う</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>従量制ネットワークでのバックアップを許可</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>中断された転送は、暗号化データの永続的な受領確認から再開されます。ZQB は安全な状態確認を再試行し、平文を送信することはありません。</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>帯域幅の上限</translation>
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
        <translation>接続を復元中</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>自動保護</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>選択したフォルダを自動的にバックアップ</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>設定を保存</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>今すぐバックアップ</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>実行間隔</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>処理中</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>除外パターン</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>パターンはファイル名またはフォルダ名に一致します。ZQB は設定済みのリストを常にすべて表示します。</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>カンマ区切りの名前 (例: node_modules, *.tmp)</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>バックアップの進捗</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>最新バージョン</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>最新バージョンを確認できません</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>前回のバックアップの所要時間</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>前回の試行の所要時間</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>キャンセルされた試行の所要時間</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>実行中のバックアップの経過時間</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>最新バージョンを確認中…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>アップデートあり: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>アップデートあり: 新しいリリース</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>このコンピュータをシンプルに暗号化して保護</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>このコンピュータを接続</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>このコンピュータを登録</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>このコンピュータの既存の ZQB 登録を読み込み中…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>バックアップ先の Mac で「設定」→「リモートバックアップ先」→「エージェントを登録」を選択し、表示されたワンタイム招待をここに貼り付けてください。</translation>
    </message>
</context>
</TS>
