<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>TavroPRO</name>
    <message>
        <source>Presentation mode</source>
        <translation>وضع العرض التقديمي</translation>
    </message>
    <message>
        <source>Presentation mode is on</source>
        <translation>وضع العرض التقديمي قيد التشغيل</translation>
    </message>
    <message>
        <source>Presentation mode is off</source>
        <translation>وضع العرض التقديمي متوقف</translation>
    </message>
    <message>
        <source>Click here and press the keys</source>
        <translation>انقر هنا واضغط على المفاتيح</translation>
    </message>
    <message>
        <source>Click: options; middle click: presentation mode</source>
        <translation>نقرة: الخيارات؛ نقرة وسطى: وضع العرض التقديمي</translation>
    </message>
    <message>
        <source>Hide desktop icons</source>
        <translation>إخفاء أيقونات سطح المكتب</translation>
    </message>
    <message>
        <source>Disable notification</source>
        <translation>تعطيل الإشعارات</translation>
    </message>
    <message>
        <source>Hide active apps</source>
        <translation>إخفاء التطبيقات النشطة</translation>
    </message>
    <message>
        <source>Turn off speaker</source>
        <translation>كتم مكبر الصوت</translation>
    </message>
    <message>
        <source>Change wallpaper</source>
        <translation>تغيير خلفية الشاشة</translation>
    </message>
    <message>
        <source>🎉 New version is available. Click to update</source>
        <translation>🎉 يتوفر إصدار جديد. انقر للتحديث</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>الميكروفونات</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>التفضيلات</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>بدء التشغيل</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>التشغيل عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>Toggle TavroPRO</source>
        <translation>تبديل TavroPRO</translation>
    </message>
    <message>
        <source>Mute Mic:</source>
        <translation>كتم الميكروفون:</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>خلفية الشاشة</translation>
    </message>
    <message>
        <source>Select...</source>
        <translation>اختيار…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>إزالة</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>تسجيل اختصار</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>اضغط على المفاتيح</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>مسح</translation>
    </message>
    <message>
        <source>This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.</source>
        <translation>لا يمكن استخدام اختصار لوحة المفاتيح هذا لأن النظام يستخدمه بالفعل.</translation>
    </message>
    <message>
        <source>Most system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.</source>
        <translation>يمكن تغيير معظم اختصارات لوحة مفاتيح النظام من «تفضيلات النظام › لوحة المفاتيح › الاختصارات».</translation>
    </message>
    <message>
        <source>Choose a Image</source>
        <translation>اختيار صورة</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>الصور</translation>
    </message>
    <message>
        <source>Mic Muted</source>
        <translation>الميكروفون مكتوم</translation>
    </message>
    <message>
        <source>Mic Unmuted</source>
        <translation>الميكروفون مفتوح</translation>
    </message>
    <message>
        <source>Error loading image</source>
        <translation>تعذّر تحميل الصورة</translation>
    </message>
</context>
</TS>
