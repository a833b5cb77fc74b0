<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>请粘贴来自目标 Mac 的完整一次性邀请。</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>注册失败。</translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>注册已完成。ZQB 正在联系已授权的目标。</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>已安装经过验证的 ZQB Agent 更新。</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>ZQB Agent 无法完成该操作。</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>ZQB Agent 返回了无法读取的本地状态。</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>ZQB 备份已完成</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>ZQB 备份已可恢复</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>已授权的目标针对非空数据返回了零错误的签名验证结果。</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>ZQB 空备份已完成</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>目标已验证本次运行且没有错误，但排除后没有剩余文件。</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>ZQB Agent 无法准备文件夹设置。</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>ZQB Agent 无法准备网络策略。</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>文件夹、计划和网络策略已保存。</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>请先选择并保存至少一个文件夹。</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>未安装 ZQB Agent 后台引擎。</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>ZQB Agent 无法启动。</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>ZQB Agent 后台引擎没有响应。</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>打开 ZQB Agent</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>检查连接</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>退出 ZQB Agent</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>需要设置</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>正在备份</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>正在等待目标</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>文件夹 %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>正在检查 %n 个文件</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>正在验证 %n 个已准备的对象</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 个文件 · %3 个对象已就绪</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>正在检查目标清单</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>已上传 %1/%2 · 已复用 %3</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>正在等待持久回执</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>正在提交恢复点</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>正在验证恢复点</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>备份进行中</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>正在检查状态</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>正在读取 ZQB Agent 的本地状态…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>最近进度 %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>已用时间 %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>测试版：请另外保留一份经过验证的独立备份。在用 ZQB 保护重要数据之前，请先测试恢复。</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>进行中</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>一次性邀请</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>连接与兼容性</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>有更新的兼容版 ZQB Agent 可用。</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>安装经过验证的更新</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>兼容已签名的服务策略</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>兼容旧版 v1 协议</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>尚未检查</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>尚无</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>已完成；验证类型不可用</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>可恢复</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>空备份成功</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>代理版本</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>正在检查…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>服务版本</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>旧版 v1 服务</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>兼容性</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>最新兼容代理</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>旧版服务未提供</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>在线的兼容目标</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>最近联系</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>最近一次成功备份</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>最近一次备份结果</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>检查连接</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>检查服务</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>选择 ZQB 要保护的文件夹</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>保护文件夹</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>移除文件夹</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>移除文件夹 %1</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>要保护的文件夹</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>尚未选择文件夹。</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>添加文件夹…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>完全磁盘访问权限…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>部分受保护的文件夹需要为 ZQB Agent 引擎授予 macOS 完全磁盘访问权限。</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>时长不可用</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 天</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n 天</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n hr</source>
        <translation>
            <numerusform>%n 小时</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n min</source>
        <translation>
            <numerusform>%n 分钟</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sec</source>
        <translation>
            <numerusform>%n 秒</numerusform>
        </translation>
    </message>
    <message>
        <source>recently</source>
        <translation>刚刚</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>尚无</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n 分钟</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 小时</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n 小时</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 Mbps</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>不限</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>退出 ZQB Agent</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>网络传输</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>暂停加密传输</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>将当前网络视为按流量计费</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>允许在按流量计费的网络上备份</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>中断的传输会根据密文的持久回执继续。ZQB 会重试安全的状态检查，绝不发送明文。</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>带宽限制</translation>
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
        <translation>正在恢复连接</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>自动保护</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>自动备份所选文件夹</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>保存设置</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>立即备份</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>运行间隔</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>正在处理</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>排除规则</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>规则匹配文件名或文件夹名。ZQB 始终显示已配置的完整列表。</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>以逗号分隔的名称，例如 node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>备份进度</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>最新版本</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>无法验证最新版本</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>上次备份时长</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>上次尝试时长</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>已取消尝试的时长</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>当前备份已用时间</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>正在检查最新版本…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>有可用更新：%1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>有可用更新：新版本</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>为这台电脑提供简单的加密保护</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>连接这台电脑</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>注册这台电脑</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>正在读取这台电脑现有的 ZQB 注册信息…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>在目标 Mac 上，选择“设置”→“远程备份目标”→“注册代理”，然后将其一次性邀请粘贴到此处。</translation>
    </message>
</context>
</TS>
