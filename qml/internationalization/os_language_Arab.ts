<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>تثبيت سريع</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>أوافق على</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>اتفاقية ترخيص Vorn</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>مسار مخصص &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>اختيار المجلد</translation>
    </message>
    <message>
        <source>/opt/VornVPN</source>
        <translation>/opt/VornVPN</translation>
    </message>
    <message>
        <source>C:\Program Files\VornVPN</source>
        <translation>C:\Program Files\VornVPN</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>استعراض</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>تشغيل تلقائي</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>إنشاء اختصار</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>جارٍ التثبيت...</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>تسريع بنقرة واحدة</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>بسيط</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>سهل الاستخدام</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>مستقر</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>تسريع سحابي ذكي</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>زمن استجابة منخفض</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>بلا تقطّع</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>متعدد المنصات ومتوافق بالكامل</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>محرك تسريع من الجيل الجديد يتكيف مع شبكات المنصات المتعددة</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>اكتمل التثبيت</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>جرّبه الآن</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>يرجى الانتظار…</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>لا يزال نسخ الملفات جاريًا.</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>تعذر تثبيت VornVPN بالكامل</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>غير متاح الآن</translation>
    </message>
    <message>
        <source>en</source>
        <translation>ar</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>تعذّرت كتابة «%1» في «%2»: %3.</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>تعذّر إنشاء «%1»: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>تعذّرت قراءة «%1»: %2.</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>الملفات غير المنسوخة: %1 من %2.</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>لا توجد صلاحية</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>لا توجد مساحة على القرص</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>لا يوجد مجلد كهذا</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>هذا الاسم مستخدم لشيء آخر</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>القرص للقراءة فقط</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>هذا الاسم رابط لمستخدم آخر</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>ليس ملفًا عاديًا</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>يحتوي على اسم غير مقروء</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>السبب غير معروف</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>تعذّر إنشاء عنصر القائمة.</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>تعذّر إعداد التشغيل التلقائي.</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>يؤدي إلى «%1».</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>يتطلب صلاحيات المسؤول.</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>لا يمكن الكتابة هناك.</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>المساحة غير كافية: المطلوب %1 م.ب، المتاح %2 م.ب.</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>«%1» ليس مجلدًا.</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>«%1» غير موجود.</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>سيُحدَّث التثبيت الموجود هناك.</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; رجوع</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>تغيير المسار</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>المجلد:</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>أدخل نصًا...</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>زمن استجابة منخفض بلا تأخير</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>بسيط، سهل، مستقر</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>محرك تسريع من الجيل الجديد يتكيف مع شبكات المنصات المتعددة</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>تصغير</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>لغة الواجهة</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>مجلد التثبيت</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>تقدم التثبيت</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>إلغاء تثبيت VornVPN</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>سيُزال برنامج العميل ومدخله في القائمة ومدخل تشغيله التلقائي. أما ملفاتك الخاصة في مجلده فستبقى.</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>إلغاء التثبيت</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>جارٍ الإزالة...</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>تمت إزالة VornVPN</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>تعذّرت إزالة VornVPN بالكامل</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>هذه الملفات لا تخص VornVPN وقد أُبقيت:</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>تعذّرت إزالة ما يلي:</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>تقدم الإزالة</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>غير موجود</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>كبير جدًا</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>قيد الاستخدام</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>يشير إلى خارج الدليل</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>أعد تشغيل برنامج إزالة التثبيت بصلاحيات المسؤول.</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>تعذر تحميل نافذة برنامج إزالة التثبيت.</translation>
    </message>
</context>
</TS>
