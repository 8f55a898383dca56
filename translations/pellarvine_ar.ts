<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>AboutWindow</name>
    <message>
        <source>Copies name, version and system for a bug report</source>
        <translation>ينسخ الاسم والإصدار والنظام لإدراجها في بلاغ عن خلل</translation>
    </message>
    <message>
        <source>&amp;Copy Details</source>
        <translation>ن&amp;سخ التفاصيل</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>Application icon</source>
        <translation>أيقونة التطبيق</translation>
    </message>
</context>
<context>
    <name>NS::Application</name>
    <message>
        <source>About %1</source>
        <translation>حول %1</translation>
    </message>
</context>
<context>
    <name>NS::Binding</name>
    <message>
        <source>Enter a number.</source>
        <translation>أدخل عددًا.</translation>
    </message>
    <message>
        <source>Enter a whole number.</source>
        <translation>أدخل عددًا صحيحًا.</translation>
    </message>
    <message>
        <source>This value does not fit here.</source>
        <translation>هذه القيمة غير مناسبة هنا.</translation>
    </message>
    <message>
        <source>Enter a value.</source>
        <translation>أدخل قيمة.</translation>
    </message>
</context>
<context>
    <name>NS::ColorPanel</name>
    <message>
        <source>Colours</source>
        <translation>الألوان</translation>
    </message>
</context>
<context>
    <name>NS::ImageView</name>
    <message>
        <source>Image</source>
        <translation>صورة</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;قص</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;نسخ</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;لصق</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>This picture cannot be read. The file may be damaged.</source>
        <translation>تتعذر قراءة هذه الصورة. قد يكون الملف تالفًا.</translation>
    </message>
    <message>
        <source>This picture is too large to be shown.</source>
        <translation>هذه الصورة أكبر من أن تُعرض.</translation>
    </message>
    <message>
        <source>Drop or paste a picture here</source>
        <translation>أفلت صورة هنا أو ألصقها</translation>
    </message>
</context>
<context>
    <name>NS::Window</name>
    <message>
        <source>&amp;Restore</source>
        <translation>ا&amp;ستعادة</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <translation>&amp;نقل</translation>
    </message>
    <message>
        <source>&amp;Size</source>
        <translation>&amp;تغيير الحجم</translation>
    </message>
    <message>
        <source>Mi&amp;nimise</source>
        <translation>ت&amp;صغير</translation>
    </message>
    <message>
        <source>Ma&amp;ximise</source>
        <translation>ت&amp;كبير</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>إ&amp;غلاق</translation>
    </message>
</context>
<context>
    <name>Pellarvine::AboutWindowController</name>
    <message>
        <source>Version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>حول %1</translation>
    </message>
    <message>
        <source>By %1</source>
        <translation>من إعداد %1</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>الموقع</translation>
    </message>
    <message>
        <source>Report a Bug</source>
        <translation>الإبلاغ عن خلل</translation>
    </message>
    <message>
        <source>Source Code</source>
        <translation>الشفرة المصدرية</translation>
    </message>
    <message>
        <source>License: %1</source>
        <translation>الترخيص: %1</translation>
    </message>
    <message>
        <source>Credits</source>
        <translation>المساهمون</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>المكتبات</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>ملاحظات الإصدار</translation>
    </message>
    <message>
        <source>others</source>
        <translation>آخرون</translation>
    </message>
    <message>
        <source>Authors</source>
        <translation>المؤلفون</translation>
    </message>
</context>
<context>
    <name>Pellarvine::Application</name>
    <message>
        <source>&amp;About %1</source>
        <translation>&amp;حول %1</translation>
    </message>
</context>
<context>
    <name>Pellarvine::CodebaseTicket</name>
    <message>
        <source>The program does not know the address of its issue tracker.</source>
        <translation>لا يعرف البرنامج عنوان متتبّع البلاغات الخاص به.</translation>
    </message>
    <message>
        <source>The address of the issue tracker is not a valid HTTPS URL.</source>
        <translation>عنوان متتبّع البلاغات ليس عنوان HTTPS صالحًا.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ColorPickerButton</name>
    <message>
        <source>Colour</source>
        <translation>لون</translation>
    </message>
    <message>
        <source>&amp;Copy Colour</source>
        <translation>&amp;نسخ اللون</translation>
    </message>
    <message>
        <source>&amp;Paste Colour</source>
        <translation>&amp;لصق اللون</translation>
    </message>
    <message>
        <source>&amp;Default Colour</source>
        <translation>اللون الا&amp;فتراضي</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ColorPickerViewController</name>
    <message>
        <source>Colours</source>
        <translation>الألوان</translation>
    </message>
</context>
<context>
    <name>Pellarvine::CryptorError</name>
    <message>
        <source>This is not an encrypted container.</source>
        <translation>هذه ليست حاوية معمّاة.</translation>
    </message>
    <message>
        <source>The passphrase is wrong, or the container is damaged.</source>
        <translation>عبارة المرور خاطئة أو أن الحاوية تالفة.</translation>
    </message>
    <message>
        <source>This is not an encrypted container, or it is cut short.</source>
        <translation>هذه ليست حاوية مشفّرة، أو إنها مبتورة.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::NavigationController</name>
    <message>
        <source>Back</source>
        <translation>رجوع</translation>
    </message>
</context>
<context>
    <name>Pellarvine::OpeningDevice</name>
    <message>
        <source>The device is not open.</source>
        <translation>الجهاز غير مفتوح.</translation>
    </message>
    <message>
        <source>The device can be opened only once, and only for reading.</source>
        <translation>يُفتح الجهاز مرة واحدة، وللقراءة فقط.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::PassphraseDialog</name>
    <message>
        <source>&amp;Show the passphrase</source>
        <translation>إ&amp;ظهار عبارة المرور</translation>
    </message>
    <message>
        <source>The two passphrases differ.</source>
        <translation>عبارتا المرور مختلفتان.</translation>
    </message>
    <message>
        <source>Weak</source>
        <translation>ضعيفة</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>متوسطة</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>قوية</translation>
    </message>
    <message>
        <source>New Passphrase</source>
        <translation>عبارة مرور جديدة</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>عبارة المرور</translation>
    </message>
    <message>
        <source>&amp;Passphrase:</source>
        <translation>&amp;عبارة المرور:</translation>
    </message>
    <message>
        <source>Estimated strength</source>
        <translation>القوة المقدّرة</translation>
    </message>
    <message>
        <source>Strength:</source>
        <translation>القوة:</translation>
    </message>
    <message>
        <source>Once &amp;more:</source>
        <translation>مرة &amp;أخرى:</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>مفتاح الحروف الكبيرة مفعّل.</translation>
    </message>
    <message>
        <source>Ma&amp;ke One Up</source>
        <translation>ت&amp;وليد عبارة</translation>
    </message>
    <message>
        <source>Six random words</source>
        <translation>ست كلمات عشوائية</translation>
    </message>
</context>
<context>
    <name>Pellarvine::ReplaceableImageView</name>
    <message>
        <source>Images</source>
        <translation>الصور</translation>
    </message>
    <message>
        <source>C&amp;hoose Image…</source>
        <translation>ا&amp;ختيار صورة…</translation>
    </message>
    <message>
        <source>Choose Image</source>
        <translation>اختيار صورة</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>اختيار</translation>
    </message>
</context>
<context>
    <name>Pellarvine::SealingDevice</name>
    <message>
        <source>The device is not open.</source>
        <translation>الجهاز غير مفتوح.</translation>
    </message>
    <message>
        <source>The device can be opened only once, and only for writing.</source>
        <translation>يُفتح الجهاز مرة واحدة، وللكتابة فقط.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::TicketDialog</name>
    <message>
        <source>&amp;Include facts about the program and this computer</source>
        <translation>إ&amp;رفاق معلومات عن البرنامج وهذا الحاسوب</translation>
    </message>
    <message>
        <source>S&amp;ummary:</source>
        <translation>ال&amp;ملخص:</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>الو&amp;صف:</translation>
    </message>
    <message>
        <source>&amp;What is sent:</source>
        <translation>ما سيُر&amp;سل:</translation>
    </message>
    <message>
        <source>&amp;Send</source>
        <translation>إر&amp;سال</translation>
    </message>
    <message>
        <source>Report a Problem</source>
        <translation>الإبلاغ عن مشكلة</translation>
    </message>
    <message>
        <source>What went wrong, in one line</source>
        <translation>ما الذي حدث، في سطر واحد</translation>
    </message>
    <message>
        <source>What you did, what you expected and what you saw</source>
        <translation>ما فعلته وما توقعته وما رأيته</translation>
    </message>
    <message>
        <source>The program’s name and version are always sent.</source>
        <translation>يُرسل اسم البرنامج وإصداره في كل الأحوال.</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>إرسال</translation>
    </message>
    <message>
        <source>&amp;Report a Problem…</source>
        <translation>الإ&amp;بلاغ عن مشكلة…</translation>
    </message>
    <message>
        <source>Sending…</source>
        <translation>يجري الإرسال…</translation>
    </message>
    <message>
        <source>The report may not have arrived. %1 If you send it again, the report may arrive twice.</source>
        <translation>ربما لم يصل البلاغ. %1 إذا أرسلته مجددًا فقد يصل مرتين.</translation>
    </message>
    <message>
        <source>The report was not sent. %1</source>
        <translation>لم يُرسل البلاغ. %1</translation>
    </message>
    <message>
        <source>&amp;Send Again</source>
        <translation>إعادة الإ&amp;رسال</translation>
    </message>
    <message>
        <source>The report was sent. Thank you.</source>
        <translation>أُرسل البلاغ. شكرًا لك.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::TransferError</name>
    <message>
        <source>The transfer was cancelled.</source>
        <translation>أُلغي النقل.</translation>
    </message>
    <message>
        <source>The device is not open for reading.</source>
        <translation>الجهاز غير مفتوح للقراءة.</translation>
    </message>
    <message>
        <source>The device is not open for writing.</source>
        <translation>الجهاز غير مفتوح للكتابة.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorListView</name>
    <message>
        <source>Colours of %1</source>
        <translation>ألوان %1</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorPanelContent</name>
    <message>
        <source>Pages</source>
        <translation>الصفحات</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>العجلة</translation>
    </message>
    <message>
        <source>Sliders</source>
        <translation>المنزلقات</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>لوحة الألوان</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>العتامة</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>السطوع</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>أحمر</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>أخضر</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>أزرق</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>الصبغة</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>التشبع</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RGB</translation>
    </message>
    <message>
        <source>HSB</source>
        <translation>HSB</translation>
    </message>
    <message>
        <source>List</source>
        <translation>قائمة</translation>
    </message>
    <message>
        <source>Pick a colour from the screen</source>
        <translation>التقاط لون من الشاشة</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>افتراضي</translation>
    </message>
    <message>
        <source>Recent colours</source>
        <translation>ألوان استُخدمت حديثًا</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorSwatch</name>
    <message>
        <source>Chosen colour</source>
        <translation>اللون المختار</translation>
    </message>
    <message>
        <source>Drag this colour to another place, or drop a colour here</source>
        <translation>اسحب اللون إلى حيث تريده، أو أفلت لونًا هنا</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ColorWheel</name>
    <message>
        <source>Hue and saturation</source>
        <translation>الصبغة والتشبع</translation>
    </message>
    <message>
        <source>Hue %1°, saturation %2 %</source>
        <translation>الصبغة %1°، التشبع %2 %</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::HexField</name>
    <message>
        <source>Hexadecimal colour</source>
        <translation>لون ست عشري</translation>
    </message>
    <message>
        <source>Enter 3, 4, 6 or 8 digits from 0 to 9 and A to F, such as #1ABC9C.</source>
        <translation>أدخل 3 أو 4 أو 6 أو 8 خانات من 0 إلى 9 ومن A إلى F، مثل ‎#1ABC9C.</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::ScreenColorPicker</name>
    <message>
        <source>Pick a colour from the screen</source>
        <translation>التقاط لون من الشاشة</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::StandardWindowButton</name>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>Minimise</source>
        <translation>تصغير</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>استعادة</translation>
    </message>
    <message>
        <source>Maximise</source>
        <translation>تكبير</translation>
    </message>
    <message>
        <source>Folders of the document</source>
        <translation>مجلدات المستند</translation>
    </message>
    <message>
        <source>Versions of the document</source>
        <translation>إصدارات المستند</translation>
    </message>
    <message>
        <source>Leave full screen</source>
        <translation>مغادرة ملء الشاشة</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::TitleBarView</name>
    <message>
        <source>Title bar</source>
        <translation>شريط العنوان</translation>
    </message>
</context>
<context>
    <name>Pellarvine::detail::URLSession</name>
    <message>
        <source>The server closed the connection before its answer was complete.</source>
        <translation>أغلق الخادوم الاتصال قبل اكتمال جوابه.</translation>
    </message>
    <message>
        <source>The server did not answer in time.</source>
        <translation>لم يجب الخادوم في الوقت المتاح.</translation>
    </message>
    <message>
        <source>The program is ending.</source>
        <translation>البرنامج في طور الإنهاء.</translation>
    </message>
    <message>
        <source>There is no application object.</source>
        <translation>لا يوجد كائن للتطبيق.</translation>
    </message>
    <message>
        <source>The server redirects to another server.</source>
        <translation>يحيل الخادوم إلى خادوم آخر.</translation>
    </message>
    <message>
        <source>The server redirects too many times.</source>
        <translation>يحيل الخادوم مرات كثيرة.</translation>
    </message>
    <message>
        <source>The server rejected it with status %1.</source>
        <translation>رفضه الخادوم بالحالة %1.</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>RTL</translation>
    </message>
</context>
</TS>
