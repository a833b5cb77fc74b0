<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>AgentModel</name>
    <message>
        <source>Paste the complete one-time invitation from the target Mac.</source>
        <translation>الصق الدعوة الكاملة لمرة واحدة من جهاز Mac الوجهة.</translation>
    </message>
    <message>
        <source>Enrollment failed. </source>
        <translation>تعذّر التسجيل. </translation>
    </message>
    <message>
        <source>Enrollment completed. ZQB is contacting the authorized target.</source>
        <translation>اكتمل التسجيل. يتصل ZQB الآن بالوجهة المصرّح بها.</translation>
    </message>
    <message>
        <source>The verified ZQB Agent update was installed.</source>
        <translation>ثُبّت تحديث ZQB Agent الذي جرى التحقق منه.</translation>
    </message>
    <message>
        <source>ZQB Agent could not complete that operation.</source>
        <translation>تعذّر على ZQB Agent إكمال هذه العملية.</translation>
    </message>
    <message>
        <source>ZQB Agent returned an unreadable local status.</source>
        <translation>أعاد ZQB Agent حالة محلية غير قابلة للقراءة.</translation>
    </message>
    <message>
        <source>ZQB backup completed</source>
        <translation>اكتمل النسخ الاحتياطي في ZQB</translation>
    </message>
    <message>
        <source>ZQB backup Recovery Ready</source>
        <translation>النسخة الاحتياطية في ZQB جاهزة للاستعادة</translation>
    </message>
    <message>
        <source>The authorized target returned signed zero-error verification for non-empty data.</source>
        <translation>أعادت الوجهة المصرّح بها تحققًا موقّعًا بلا أخطاء لبيانات غير فارغة.</translation>
    </message>
    <message>
        <source>ZQB empty backup completed</source>
        <translation>اكتمل نسخ احتياطي فارغ في ZQB</translation>
    </message>
    <message>
        <source>The target verified this run with zero errors, but no files were present after exclusions.</source>
        <translation>تحققت الوجهة من هذا التشغيل بلا أخطاء، لكن لم تبقَ أي ملفات بعد الاستثناءات.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the folder settings.</source>
        <translation>تعذّر على ZQB Agent تجهيز إعدادات المجلدات.</translation>
    </message>
    <message>
        <source>ZQB Agent could not prepare the network policy.</source>
        <translation>تعذّر على ZQB Agent تجهيز سياسة الشبكة.</translation>
    </message>
    <message>
        <source>Folders, schedule, and network policy saved.</source>
        <translation>حُفظت المجلدات والجدول الزمني وسياسة الشبكة.</translation>
    </message>
    <message>
        <source>Choose and save at least one folder first.</source>
        <translation>اختر مجلدًا واحدًا على الأقل واحفظه أولًا.</translation>
    </message>
</context>
<context>
    <name>AgentRunner</name>
    <message>
        <source>The ZQB Agent background engine is not installed.</source>
        <translation>محرك ZQB Agent الذي يعمل في الخلفية غير مثبّت.</translation>
    </message>
    <message>
        <source>ZQB Agent could not start.</source>
        <translation>تعذّر تشغيل ZQB Agent.</translation>
    </message>
    <message>
        <source>The ZQB Agent background engine did not answer.</source>
        <translation>لم يستجب محرك ZQB Agent الذي يعمل في الخلفية.</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>Open ZQB Agent</source>
        <translation>فتح ZQB Agent</translation>
    </message>
    <message>
        <source>Check Connection</source>
        <translation>فحص الاتصال</translation>
    </message>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>إنهاء ZQB Agent</translation>
    </message>
</context>
<context>
    <name>BadgeState</name>
    <message>
        <source>Setup Required</source>
        <translation>الإعداد مطلوب</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>متصل</translation>
    </message>
    <message>
        <source>Backing Up</source>
        <translation>جارٍ النسخ الاحتياطي</translation>
    </message>
    <message>
        <source>Waiting For Target</source>
        <translation>بانتظار الوجهة</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>متوقف مؤقتًا</translation>
    </message>
    <message>
        <source>Folder %1/%2 · </source>
        <translation>المجلد %1/%2 · </translation>
    </message>
    <message numerus="yes">
        <source>Checking %n files</source>
        <translation>
            <numerusform>جارٍ فحص %n ملف</numerusform>
            <numerusform>جارٍ فحص ملف واحد</numerusform>
            <numerusform>جارٍ فحص ملفين</numerusform>
            <numerusform>جارٍ فحص %n ملفات</numerusform>
            <numerusform>جارٍ فحص %n ملفًا</numerusform>
            <numerusform>جارٍ فحص %n ملف</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Validating %n prepared objects</source>
        <translation>
            <numerusform>جارٍ التحقق من %n كائن مُجهّز</numerusform>
            <numerusform>جارٍ التحقق من كائن مُجهّز واحد</numerusform>
            <numerusform>جارٍ التحقق من كائنين مُجهّزين</numerusform>
            <numerusform>جارٍ التحقق من %n كائنات مُجهّزة</numerusform>
            <numerusform>جارٍ التحقق من %n كائنًا مُجهّزًا</numerusform>
            <numerusform>جارٍ التحقق من %n كائن مُجهّز</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 files · %3 objects ready</source>
        <translation>
            <numerusform>%1/%2 ملف · %3 كائن جاهز</numerusform>
            <numerusform>%1/%2 ملف · %3 كائن جاهز</numerusform>
            <numerusform>%1/%2 ملف · %3 كائن جاهز</numerusform>
            <numerusform>%1/%2 ملف · %3 كائنات جاهزة</numerusform>
            <numerusform>%1/%2 ملف · %3 كائنًا جاهزًا</numerusform>
            <numerusform>%1/%2 ملف · %3 كائن جاهز</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking target inventory</source>
        <translation>جارٍ فحص محتويات الوجهة</translation>
    </message>
    <message numerus="yes">
        <source>%1/%2 uploaded · %3 reused</source>
        <translation>
            <numerusform>رُفع %1/%2 · أُعيد استخدام %3</numerusform>
            <numerusform>رُفع %1/%2 · أُعيد استخدام %3</numerusform>
            <numerusform>رُفع %1/%2 · أُعيد استخدام %3</numerusform>
            <numerusform>رُفع %1/%2 · أُعيد استخدام %3</numerusform>
            <numerusform>رُفع %1/%2 · أُعيد استخدام %3</numerusform>
            <numerusform>رُفع %1/%2 · أُعيد استخدام %3</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting for durable receipts</source>
        <translation>بانتظار إيصالات الاستلام الدائمة</translation>
    </message>
    <message>
        <source>Committing recovery point</source>
        <translation>جارٍ اعتماد نقطة الاستعادة</translation>
    </message>
    <message>
        <source>Verifying recovery point</source>
        <translation>جارٍ التحقق من نقطة الاستعادة</translation>
    </message>
    <message>
        <source>Backup active</source>
        <translation>النسخ الاحتياطي نشط</translation>
    </message>
    <message>
        <source>Checking status</source>
        <translation>جارٍ فحص الحالة</translation>
    </message>
    <message>
        <source>Reading the local ZQB Agent state…</source>
        <translation>جارٍ قراءة الحالة المحلية لـ ZQB Agent…</translation>
    </message>
    <message>
        <source>Last progress %1</source>
        <translation>آخر تقدّم %1</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>الوقت المنقضي %1</translation>
    </message>
</context>
<context>
    <name>BetaWarning</name>
    <message>
        <source>Beta: keep an independent verified backup. Test restoring before relying on ZQB for important data.</source>
        <translation>إصدار تجريبي: احتفظ بنسخة احتياطية مستقلة جرى التحقق منها. اختبر الاستعادة قبل الاعتماد على ZQB في بياناتك المهمة.</translation>
    </message>
</context>
<context>
    <name>BusySpinner</name>
    <message>
        <source>In progress</source>
        <translation>قيد التنفيذ</translation>
    </message>
</context>
<context>
    <name>ConnectBox</name>
    <message>
        <source>One-time invitation</source>
        <translation>دعوة لمرة واحدة</translation>
    </message>
</context>
<context>
    <name>ConnectionSection</name>
    <message>
        <source>Connection and compatibility</source>
        <translation>الاتصال والتوافق</translation>
    </message>
    <message>
        <source>A newer compatible ZQB Agent is available.</source>
        <translation>يتوفر إصدار أحدث متوافق من ZQB Agent.</translation>
    </message>
    <message>
        <source>Install verified update</source>
        <translation>تثبيت التحديث الذي جرى التحقق منه</translation>
    </message>
</context>
<context>
    <name>ConnectionState</name>
    <message>
        <source>Compatible with signed service policy</source>
        <translation>متوافق مع سياسة الخدمة الموقّعة</translation>
    </message>
    <message>
        <source>Compatible legacy v1 protocol</source>
        <translation>متوافق مع البروتوكول القديم v1</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>لم يُفحص بعد</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>ليس بعد</translation>
    </message>
    <message>
        <source>Completed; verification type unavailable</source>
        <translation>اكتمل؛ نوع التحقق غير متاح</translation>
    </message>
    <message>
        <source>Recovery Ready</source>
        <translation>جاهز للاستعادة</translation>
    </message>
    <message>
        <source>Successful empty backup</source>
        <translation>نسخ احتياطي فارغ ناجح</translation>
    </message>
    <message>
        <source>Agent version</source>
        <translation>إصدار الوكيل</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>جارٍ الفحص…</translation>
    </message>
    <message>
        <source>Service version</source>
        <translation>إصدار الخدمة</translation>
    </message>
    <message>
        <source>Legacy v1 service</source>
        <translation>خدمة قديمة v1</translation>
    </message>
    <message>
        <source>Compatibility</source>
        <translation>التوافق</translation>
    </message>
    <message>
        <source>Latest compatible agent</source>
        <translation>أحدث وكيل متوافق</translation>
    </message>
    <message>
        <source>Not advertised by legacy service</source>
        <translation>لا تُعلن عنه الخدمة القديمة</translation>
    </message>
    <message>
        <source>Online compatible targets</source>
        <translation>الوجهات المتوافقة المتصلة</translation>
    </message>
    <message>
        <source>Last contact</source>
        <translation>آخر اتصال</translation>
    </message>
    <message>
        <source>Last successful backup</source>
        <translation>آخر نسخ احتياطي ناجح</translation>
    </message>
    <message>
        <source>Latest backup result</source>
        <translation>نتيجة آخر نسخ احتياطي</translation>
    </message>
    <message>
        <source>Check connection</source>
        <translation>فحص الاتصال</translation>
    </message>
    <message>
        <source>Check service</source>
        <translation>فحص الخدمة</translation>
    </message>
</context>
<context>
    <name>FolderChooser</name>
    <message>
        <source>Choose folders ZQB should protect</source>
        <translation>اختر المجلدات التي يحميها ZQB</translation>
    </message>
    <message>
        <source>Protect folders</source>
        <translation>حماية المجلدات</translation>
    </message>
</context>
<context>
    <name>FolderRow</name>
    <message>
        <source>Remove folder</source>
        <translation>إزالة المجلد</translation>
    </message>
    <message>
        <source>Remove folder %1</source>
        <translation>إزالة المجلد %1</translation>
    </message>
</context>
<context>
    <name>FoldersSection</name>
    <message>
        <source>Folders to protect</source>
        <translation>المجلدات المحمية</translation>
    </message>
    <message>
        <source>No folders selected yet.</source>
        <translation>لم يُحدَّد أي مجلد بعد.</translation>
    </message>
    <message>
        <source>Add folders…</source>
        <translation>إضافة مجلدات…</translation>
    </message>
    <message>
        <source>Full Disk Access…</source>
        <translation>الوصول الكامل إلى القرص…</translation>
    </message>
    <message>
        <source>Some protected folders require macOS Full Disk Access for the ZQB Agent engine.</source>
        <translation>تتطلب بعض المجلدات المحمية منح محرك ZQB Agent إذن الوصول الكامل إلى القرص في macOS.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Duration not available</source>
        <translation>المدة غير متاحة</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>يوم واحد</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n يوم</numerusform>
            <numerusform>يوم واحد</numerusform>
            <numerusform>يومان</numerusform>
            <numerusform>%n أيام</numerusform>
            <numerusform>%n يومًا</numerusform>
            <numerusform>%n يوم</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n hr</source>
        <translation>
            <numerusform>%n ساعة</numerusform>
            <numerusform>ساعة واحدة</numerusform>
            <numerusform>ساعتان</numerusform>
            <numerusform>%n ساعات</numerusform>
            <numerusform>%n ساعة</numerusform>
            <numerusform>%n ساعة</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n min</source>
        <translation>
            <numerusform>%n دقيقة</numerusform>
            <numerusform>دقيقة واحدة</numerusform>
            <numerusform>دقيقتان</numerusform>
            <numerusform>%n دقائق</numerusform>
            <numerusform>%n دقيقة</numerusform>
            <numerusform>%n دقيقة</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sec</source>
        <translation>
            <numerusform>%n ثانية</numerusform>
            <numerusform>ثانية واحدة</numerusform>
            <numerusform>ثانيتان</numerusform>
            <numerusform>%n ثوانٍ</numerusform>
            <numerusform>%n ثانية</numerusform>
            <numerusform>%n ثانية</numerusform>
        </translation>
    </message>
    <message>
        <source>recently</source>
        <translation>مؤخرًا</translation>
    </message>
    <message>
        <source>Not yet</source>
        <translation>ليس بعد</translation>
    </message>
    <message numerus="yes">
        <source>%n minutes</source>
        <translation>
            <numerusform>%n دقيقة</numerusform>
            <numerusform>دقيقة واحدة</numerusform>
            <numerusform>دقيقتان</numerusform>
            <numerusform>%n دقائق</numerusform>
            <numerusform>%n دقيقة</numerusform>
            <numerusform>%n دقيقة</numerusform>
        </translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>ساعة واحدة</translation>
    </message>
    <message numerus="yes">
        <source>%n hours</source>
        <translation>
            <numerusform>%n ساعة</numerusform>
            <numerusform>ساعة واحدة</numerusform>
            <numerusform>ساعتان</numerusform>
            <numerusform>%n ساعات</numerusform>
            <numerusform>%n ساعة</numerusform>
            <numerusform>%n ساعة</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 Mbps</source>
        <translation>%1 ميغابت/ث</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>بلا حدود</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quit ZQB Agent</source>
        <translation>إنهاء ZQB Agent</translation>
    </message>
</context>
<context>
    <name>MessageCard</name>
    <message>
        <source>Dismiss</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>NetworkSection</name>
    <message>
        <source>Network transfer</source>
        <translation>النقل عبر الشبكة</translation>
    </message>
    <message>
        <source>Pause encrypted transfers</source>
        <translation>إيقاف عمليات النقل المشفّرة مؤقتًا</translation>
    </message>
    <message>
        <source>Treat the current network as metered</source>
        <translation>التعامل مع الشبكة الحالية كشبكة محدودة</translation>
    </message>
    <message>
        <source>Allow backup on metered networks</source>
        <translation>السماح بالنسخ الاحتياطي على الشبكات المحدودة</translation>
    </message>
    <message>
        <source>Interrupted transfers resume from durable ciphertext receipts. ZQB retries safe status checks and never sends plaintext.</source>
        <translation>تُستأنف عمليات النقل المتقطعة انطلاقًا من إيصالات الاستلام الدائمة للبيانات المشفّرة. يعيد ZQB محاولة عمليات فحص الحالة الآمنة ولا يرسل أبدًا نصًا غير مشفّر.</translation>
    </message>
    <message>
        <source>Bandwidth limit</source>
        <translation>حد عرض النطاق</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <comment>Translate this string to the string &apos;LTR&apos; in left-to-right languages or to &apos;RTL&apos; in right-to-left languages (such as Hebrew and Arabic) to get proper widget layout.</comment>
        <translation>RTL</translation>
    </message>
</context>
<context>
    <name>RestoringBox</name>
    <message>
        <source>Restoring connection</source>
        <translation>جارٍ استعادة الاتصال</translation>
    </message>
</context>
<context>
    <name>ScheduleSection</name>
    <message>
        <source>Automatic protection</source>
        <translation>الحماية التلقائية</translation>
    </message>
    <message>
        <source>Back up selected folders automatically</source>
        <translation>نسخ المجلدات المحددة احتياطيًا تلقائيًا</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>حفظ الإعدادات</translation>
    </message>
    <message>
        <source>Back up now</source>
        <translation>النسخ الاحتياطي الآن</translation>
    </message>
    <message>
        <source>Run every</source>
        <translation>التشغيل كل</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>جارٍ العمل</translation>
    </message>
</context>
<context>
    <name>SkipPatternsSection</name>
    <message>
        <source>Skip patterns</source>
        <translation>أنماط الاستثناء</translation>
    </message>
    <message>
        <source>Patterns match file or folder names. ZQB always shows the complete configured list.</source>
        <translation>تُطابق الأنماط أسماء الملفات أو المجلدات. يعرض ZQB دائمًا القائمة المضبوطة كاملة.</translation>
    </message>
    <message>
        <source>Comma-separated names, such as node_modules, *.tmp</source>
        <translation>أسماء مفصولة بفواصل، مثل node_modules, *.tmp</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>Backup progress</source>
        <translation>تقدّم النسخ الاحتياطي</translation>
    </message>
</context>
<context>
    <name>VersionStatus</name>
    <message>
        <source>Latest version</source>
        <translation>أحدث إصدار</translation>
    </message>
    <message>
        <source>Could not verify latest</source>
        <translation>تعذّر التحقق من أحدث إصدار</translation>
    </message>
    <message>
        <source>Last backup duration</source>
        <translation>مدة آخر نسخ احتياطي</translation>
    </message>
    <message>
        <source>Last attempt duration</source>
        <translation>مدة آخر محاولة</translation>
    </message>
    <message>
        <source>Cancelled attempt duration</source>
        <translation>مدة المحاولة الملغاة</translation>
    </message>
    <message>
        <source>Current backup elapsed</source>
        <translation>الوقت المنقضي للنسخ الحالي</translation>
    </message>
    <message>
        <source>Checking latest…</source>
        <translation>جارٍ البحث عن أحدث إصدار…</translation>
    </message>
    <message>
        <source>Update available: %1</source>
        <translation>يتوفر تحديث: %1</translation>
    </message>
    <message>
        <source>Update available: new release</source>
        <translation>يتوفر تحديث: إصدار جديد</translation>
    </message>
</context>
<context>
    <name>WindowState</name>
    <message>
        <source>Simple, encrypted protection for this computer</source>
        <translation>حماية بسيطة ومشفّرة لهذا الكمبيوتر</translation>
    </message>
    <message>
        <source>Connect this computer</source>
        <translation>توصيل هذا الكمبيوتر</translation>
    </message>
    <message>
        <source>Enroll this computer</source>
        <translation>تسجيل هذا الكمبيوتر</translation>
    </message>
    <message>
        <source>Reading this computer&apos;s existing ZQB enrollment…</source>
        <translation>جارٍ قراءة تسجيل ZQB الحالي لهذا الكمبيوتر…</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>غير معروف</translation>
    </message>
    <message>
        <source>On the target Mac, choose Settings → Remote backup target → Enroll an agent. Paste its one-time invitation here.</source>
        <translation>على جهاز Mac الوجهة، اختر الإعدادات ← وجهة النسخ الاحتياطي البعيدة ← تسجيل وكيل. ثم الصق هنا الدعوة لمرة واحدة.</translation>
    </message>
</context>
</TS>
