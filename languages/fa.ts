<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fa" sourcelanguage="en">
<context>
    <name>Korvan</name>
    <message>
        <source>Help</source>
        <translation>راهنما</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>کوچک کردن</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>بستن</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>ورود</translation>
    </message>
    <message>
        <source>Use the name and password of your subscription.</source>
        <translation>نام و گذرواژهٔ اشتراک خود را وارد کنید.</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>نام کاربری</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>گذرواژه</translation>
    </message>
    <message>
        <source>Remember login</source>
        <translation>به خاطر سپردن ورود</translation>
    </message>
    <message>
        <source>Log in</source>
        <translation>ورود</translation>
    </message>
    <message>
        <source>Use existing configuration</source>
        <translation>استفاده از پیکربندی موجود</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>صفحه‌ها</translation>
    </message>
    <message>
        <source>NOT CONNECTED</source>
        <translation>متصل نیست</translation>
    </message>
    <message>
        <source>Connection progress</source>
        <translation>پیشرفت اتصال</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>پروتکل</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>سرور</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>اتصال</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>قطع اتصال</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>اتصال دوباره</translation>
    </message>
    <message>
        <source>Change user</source>
        <translation>تغییر کاربر</translation>
    </message>
    <message>
        <source>Expires</source>
        <translation>تاریخ انقضا</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>نشانی سرور</translation>
    </message>
    <message>
        <source>Public IP address</source>
        <translation>نشانی IP عمومی</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>کشور</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>پیکربندی</translation>
    </message>
    <message>
        <source>Refresh now</source>
        <translation>اکنون بازخوانی شود</translation>
    </message>
    <message>
        <source>Need help?</source>
        <translation>کمک می‌خواهید؟</translation>
    </message>
    <message>
        <source>FAQ</source>
        <translation>پرسش‌های رایج</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>پشتیبانی</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>اکنون</translation>
    </message>
    <message>
        <source>Now, received</source>
        <translation>اکنون، دریافتی</translation>
    </message>
    <message>
        <source>Now, sent</source>
        <translation>اکنون، ارسالی</translation>
    </message>
    <message>
        <source>This connection</source>
        <translation>این اتصال</translation>
    </message>
    <message>
        <source>This connection, received</source>
        <translation>این اتصال، دریافتی</translation>
    </message>
    <message>
        <source>This connection, sent</source>
        <translation>این اتصال، ارسالی</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>این ماه</translation>
    </message>
    <message>
        <source>This month, received</source>
        <translation>این ماه، دریافتی</translation>
    </message>
    <message>
        <source>This month, sent</source>
        <translation>این ماه، ارسالی</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>در مجموع</translation>
    </message>
    <message>
        <source>All time, received</source>
        <translation>در مجموع، دریافتی</translation>
    </message>
    <message>
        <source>All time, sent</source>
        <translation>در مجموع، ارسالی</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>صفر کردن</translation>
    </message>
    <message>
        <source>Reset the figures shown</source>
        <translation>صفر کردن ارقام نمایش‌داده‌شده</translation>
    </message>
    <message>
        <source>Starts the figures on this page at zero. The stored totals come back at the next start.</source>
        <translation>ارقام این صفحه را از صفر آغاز می‌کند. مجموع‌های ذخیره‌شده در اجرای بعدی بازمی‌گردند.</translation>
    </message>
    <message>
        <source>VPN log</source>
        <translation>گزارش VPN</translation>
    </message>
    <message>
        <source>The log helps support to see what happened on your computer.</source>
        <translation>این گزارش به پشتیبانی نشان می‌دهد در رایانهٔ شما چه رخ داده است.</translation>
    </message>
    <message>
        <source>Copy log</source>
        <translation>رونوشت گزارش</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>اتصال</translation>
    </message>
    <message>
        <source>Connect automatically after start</source>
        <translation>اتصال خودکار پس از اجرا</translation>
    </message>
    <message>
        <source>Server to connect to after start</source>
        <translation>سرور اتصال پس از اجرا</translation>
    </message>
    <message>
        <source>Hide the window once connected</source>
        <translation>پنهان شدن پنجره پس از اتصال</translation>
    </message>
    <message>
        <source>Lock-down</source>
        <translation>قفل شبکه</translation>
    </message>
    <message>
        <source>Nothing leaves this computer outside the tunnel.</source>
        <translation>هیچ داده‌ای بیرون از تونل از این رایانه خارج نمی‌شود.</translation>
    </message>
    <message>
        <source>No sounds</source>
        <translation>بدون صدا</translation>
    </message>
    <message>
        <source>Run at system startup</source>
        <translation>اجرا هنگام روشن شدن سیستم</translation>
    </message>
    <message>
        <source>DNS leak protection</source>
        <translation>جلوگیری از نشت DNS</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>اتصال دوبارهٔ خودکار</translation>
    </message>
    <message>
        <source>Language, from the next start on</source>
        <translation>زبان، از اجرای بعدی</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>به‌روزرسانی‌ها</translation>
    </message>
    <message>
        <source>Refresh the configuration</source>
        <translation>بازخوانی پیکربندی</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>هرگز</translation>
    </message>
    <message>
        <source>Every Startup</source>
        <translation>در هر اجرا</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>هر روز</translation>
    </message>
    <message>
        <source>Every Week</source>
        <translation>هر هفته</translation>
    </message>
    <message>
        <source>Every Month</source>
        <translation>هر ماه</translation>
    </message>
    <message>
        <source>Update configuration</source>
        <translation>به‌روزرسانی پیکربندی</translation>
    </message>
    <message>
        <source>Application update</source>
        <translation>به‌روزرسانی برنامه</translation>
    </message>
    <message>
        <source>Progress of the application update</source>
        <translation>پیشرفت به‌روزرسانی برنامه</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>به‌روزرسانی</translation>
    </message>
    <message>
        <source>Update the application</source>
        <translation>به‌روزرسانی برنامه</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>آمار</translation>
    </message>
    <message>
        <source>Deletes the stored totals of this month and of all time.</source>
        <translation>مجموع‌های ذخیره‌شدهٔ این ماه و کل را پاک می‌کند.</translation>
    </message>
    <message>
        <source>Reset all statistics</source>
        <translation>پاک کردن همهٔ آمار</translation>
    </message>
    <message>
        <source>Signed in as</source>
        <translation>واردشده با نام</translation>
    </message>
    <message>
        <source>Save options</source>
        <translation>ذخیرهٔ گزینه‌ها</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>پراکسی</translation>
    </message>
    <message>
        <source>No proxy</source>
        <translation>بدون پراکسی</translation>
    </message>
    <message>
        <source>Korvan reaches the servers directly.</source>
        <translation>‏Korvan مستقیم به سرورها وصل می‌شود.</translation>
    </message>
    <message>
        <source>HTTP proxy</source>
        <translation>پراکسی HTTP</translation>
    </message>
    <message>
        <source>With or without a name and password.</source>
        <translation>با نام و گذرواژه یا بدون آن‌ها.</translation>
    </message>
    <message>
        <source>SOCKS proxy</source>
        <translation>پراکسی SOCKS</translation>
    </message>
    <message>
        <source>SOCKS 5, without a name and password.</source>
        <translation>‏SOCKS 5، بدون نام و گذرواژه.</translation>
    </message>
    <message>
        <source>Proxy server</source>
        <translation>سرور پراکسی</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>نشانی</translation>
    </message>
    <message>
        <source>Proxy address</source>
        <translation>نشانی پراکسی</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>درگاه</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>درگاه پراکسی</translation>
    </message>
    <message>
        <source>The proxy asks for a name and password</source>
        <translation>پراکسی نام و گذرواژه می‌خواهد</translation>
    </message>
    <message>
        <source>Proxy user name</source>
        <translation>نام کاربری پراکسی</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>گذرواژهٔ پراکسی</translation>
    </message>
    <message>
        <source>Save proxy settings</source>
        <translation>ذخیرهٔ تنظیمات پراکسی</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>سرورها</translation>
    </message>
    <message>
        <source>Server Name</source>
        <translation>نام سرور</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>پینگ</translation>
    </message>
    <message>
        <source>Loss %</source>
        <translation>اتلاف %</translation>
    </message>
    <message>
        <source>Speed Test</source>
        <translation>سرعت</translation>
    </message>
    <message>
        <source>Ping all servers</source>
        <translation>پینگ همهٔ سرورها</translation>
    </message>
    <message>
        <source>Detailed ping</source>
        <translation>پینگ کامل</translation>
    </message>
    <message>
        <source>Run speed test</source>
        <translation>سنجش سرعت</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>لغو</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>لغو آزمایش</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>پیشخوان</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>تنظیمات</translation>
    </message>
    <message>
        <source>Service status</source>
        <translation>وضعیت سرویس</translation>
    </message>
    <message>
        <source>New version %1 ready, please click &quot;Update&quot;.</source>
        <translation>نسخهٔ تازهٔ %1 آماده است. لطفاً روی «به‌روزرسانی» کلیک کنید.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>خطا</translation>
    </message>
    <message>
        <source>Korvan compose7 is missed.</source>
        <translation>برنامهٔ compose7 از Korvan یافت نشد.</translation>
    </message>
    <message>
        <source>Notify</source>
        <translation>اطلاع</translation>
    </message>
    <message>
        <source>Certificate might be expired.
Do you want to renew subscription?</source>
        <translation>شاید گواهی منقضی شده باشد.
آیا می‌خواهید اشتراک را تمدید کنید؟</translation>
    </message>
    <message>
        <source>Public IP Address*</source>
        <translation>نشانی IP عمومی*</translation>
    </message>
    <message>
        <source>Public IP Address</source>
        <translation>نشانی IP عمومی</translation>
    </message>
    <message>
        <source>Proxied configurations require you to configure your program to use the VPN.
Check installation instructions for further details.</source>
        <translation>در پیکربندی‌های دارای پراکسی باید برنامهٔ خود را برای استفاده از VPN تنظیم کنید.
جزئیات در راهنمای نصب آمده است.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>هشدار</translation>
    </message>
    <message>
        <source>Please note that if auto reconnect is enabled, there will be a brief moment 
in which your programs may not be protected by the VPN during reconnection. 
Do you still wish to enable auto-reconnect?</source>
        <translation>توجه کنید که با اتصال دوبارهٔ خودکار، برای لحظه‌ای کوتاه
ممکن است برنامه‌های شما زیر حفاظت VPN نباشند.
آیا باز هم می‌خواهید آن را فعال کنید؟</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>اشکال‌زدایی</translation>
    </message>
    <message>
        <source>Getting files from server ...</source>
        <translation>دریافت پرونده‌ها از سرور ...</translation>
    </message>
    <message>
        <source>Invalid username or password.</source>
        <translation>نام کاربری یا گذرواژه نادرست است.</translation>
    </message>
    <message>
        <source>Updating Configuration ...</source>
        <translation>به‌روزرسانی پیکربندی ...</translation>
    </message>
    <message>
        <source>Update of new configuration failed.
Please try again later.
Korvan-GUI will use existing keys and configurations.</source>
        <translation>به‌روزرسانی پیکربندی ناموفق بود.
لطفاً بعداً دوباره تلاش کنید.
‏Korvan از کلیدها و پیکربندی‌های موجود استفاده می‌کند.</translation>
    </message>
    <message>
        <source>Retrieval of configuration and keys failed.
Please try again later or contact Support at </source>
        <translation>دریافت پیکربندی و کلیدها ناموفق بود.
لطفاً بعداً دوباره تلاش کنید یا با پشتیبانی تماس بگیرید: </translation>
    </message>
    <message>
        <source>Unknown error, please check log.</source>
        <translation>خطای ناشناخته. لطفاً گزارش را ببینید.</translation>
    </message>
    <message>
        <source>Username or password is not valid.</source>
        <translation>نام کاربری یا گذرواژه معتبر نیست.</translation>
    </message>
    <message>
        <source>Korvan Help</source>
        <translation>راهنمای Korvan</translation>
    </message>
    <message>
        <source>Update Failed.</source>
        <translation>به‌روزرسانی ناموفق بود.</translation>
    </message>
    <message>
        <source>Update Successful.</source>
        <translation>به‌روزرسانی انجام شد.</translation>
    </message>
    <message>
        <source>Update url is not valid.</source>
        <translation>نشانی به‌روزرسانی معتبر نیست.</translation>
    </message>
    <message>
        <source>Update done, please restart application.</source>
        <translation>به‌روزرسانی انجام شد. لطفاً برنامه را دوباره اجرا کنید.</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>خروج</translation>
    </message>
    <message>
        <source>Are you sure you wish to quit Korvan?</source>
        <translation>آیا مطمئن هستید که می‌خواهید از Korvan خارج شوید؟</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>لغو شد</translation>
    </message>
    <message>
        <source>Ping...</source>
        <translation>پینگ...</translation>
    </message>
    <message>
        <source>Test...</source>
        <translation>سنجش...</translation>
    </message>
    <message>
        <source>Please disconnect first.</source>
        <translation>لطفاً نخست اتصال را قطع کنید.</translation>
    </message>
    <message>
        <source>Please select one server.</source>
        <translation>لطفاً یک سرور برگزینید.</translation>
    </message>
    <message>
        <source> CONNECTED</source>
        <translation>متصل</translation>
    </message>
    <message>
        <source>Korvan: Disconnected</source>
        <translation>‏Korvan: قطع</translation>
    </message>
    <message>
        <source>Korvan: Connecting to server %1</source>
        <translation>‏Korvan: در حال اتصال به سرور %1</translation>
    </message>
    <message>
        <source>Korvan: Connected to server %1</source>
        <translation>‏Korvan: متصل به سرور %1</translation>
    </message>
    <message>
        <source>Connecting to server %1</source>
        <translation>در حال اتصال به سرور %1</translation>
    </message>
    <message>
        <source>Connected to server %1</source>
        <translation>به سرور %1 متصل شد</translation>
    </message>
    <message>
        <source>Disconnected from server %1</source>
        <translation>اتصال از سرور %1 قطع شد</translation>
    </message>
    <message>
        <source>Update Config...</source>
        <translation>به‌روزرسانی پیکربندی...</translation>
    </message>
    <message>
        <source>Proxy Settings...</source>
        <translation>تنظیمات پراکسی...</translation>
    </message>
    <message>
        <source>Open Korvan</source>
        <translation>باز کردن Korvan</translation>
    </message>
    <message>
        <source>Change User...</source>
        <translation>تغییر کاربر...</translation>
    </message>
    <message>
        <source>Internet connection has been terminated for your security.
Please press OK to resume your regular internet connection and reconnect to the VPN if needed.</source>
        <translation>اتصال اینترنت برای امنیت شما قطع شده است.
برای بازگشت به اتصال معمولی اینترنت «تأیید» را بزنید و در صورت نیاز دوباره به VPN وصل شوید.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>ظاهر</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>مانند میزکار</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>روشن</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>تیره</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>داده‌ای دریافت نشد</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>به‌روزرسانی ناموفق بود: %1.</translation>
    </message>
    <message>
        <source>it can not be checked</source>
        <translation>بررسی آن ممکن نیست</translation>
    </message>
    <message>
        <source>the archive can not be stored</source>
        <translation>بایگانی ذخیره نمی‌شود</translation>
    </message>
    <message>
        <source>the answer has the status %1</source>
        <translation>وضعیت پاسخ %1 است</translation>
    </message>
    <message>
        <source>the answer is no archive</source>
        <translation>پاسخ یک بایگانی نیست</translation>
    </message>
    <message>
        <source>Refresh now: the configuration</source>
        <translation>اکنون بازخوانی شود: پیکربندی</translation>
    </message>
    <message>
        <source>FAQ: frequently asked questions</source>
        <translation>پرسش‌های رایج و پاسخ آن‌ها</translation>
    </message>
    <message>
        <source>Return sorts by the column of the current cell.</source>
        <translation>کلید Enter بر پایهٔ ستون خانهٔ کنونی مرتب می‌کند.</translation>
    </message>
    <message>
        <source>Needs &quot;%1&quot; on the sign-in page.</source>
        <translation>به «%1» در صفحهٔ ورود نیاز دارد.</translation>
    </message>
    <message>
        <source>The configuration could not be refreshed: the service can not be reached.</source>
        <translation>پیکربندی بازخوانی نشد: سرویس در دسترس نیست.</translation>
    </message>
    <message>
        <source>The configuration is in use now.</source>
        <translation>پیکربندی هم‌اکنون در حال استفاده است.</translation>
    </message>
    <message>
        <source>The changes of the options are not saved.</source>
        <translation>تغییر گزینه‌ها ذخیره نشده است.</translation>
    </message>
    <message>
        <source>Korvan: Disconnecting...</source>
        <translation>‏Korvan: در حال قطع اتصال...</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>در حال اتصال...</translation>
    </message>
    <message>
        <source>Disconnecting...</source>
        <translation>در حال قطع اتصال...</translation>
    </message>
    <message>
        <source>Reconnecting...</source>
        <translation>در حال اتصال دوباره...</translation>
    </message>
    <message>
        <source>The connection has failed.</source>
        <translation>اتصال ناموفق بود.</translation>
    </message>
    <message>
        <source>The address of %1 is not encrypted, so that nothing was sent.</source>
        <translation>نشانی %1 رمزگذاری نشده است؛ بنابراین چیزی فرستاده نشد.</translation>
    </message>
    <message>
        <source>%1 does not show the key that it is known by, so that nothing was sent. Somebody may be answering in its place.</source>
        <translation>‏%1 کلیدی را که با آن شناخته می‌شود نشان نداد؛ بنابراین چیزی فرستاده نشد. شاید کس دیگری به جای آن پاسخ می‌دهد.</translation>
    </message>
    <message>
        <source>There is no configuration any more.</source>
        <translation>دیگر هیچ پیکربندی‌ای وجود ندارد.</translation>
    </message>
    <message>
        <source>A web page came in place of your configuration. Hotels, trains and cafés do that until you have signed in to their network. Sign in there, then try again.</source>
        <translation>به‌جای پیکربندی شما یک صفحهٔ وب رسید. هتل‌ها، قطارها و کافه‌ها تا وقتی وارد شبکهٔ آن‌ها نشده‌اید چنین می‌کنند. آنجا وارد شوید و دوباره تلاش کنید.</translation>
    </message>
    <message>
        <source>The service is out of order at the moment. Please try again later.</source>
        <translation>سرویس در حال حاضر از کار افتاده است. لطفاً بعداً دوباره تلاش کنید.</translation>
    </message>
    <message>
        <source>The service did not accept your user name or password. Change the user and sign in again.</source>
        <translation>سرویس نام کاربری یا گذرواژهٔ شما را نپذیرفت. کاربر را عوض کنید و دوباره وارد شوید.</translation>
    </message>
    <message>
        <source>The configuration that came is damaged. Please try again later or contact Support at </source>
        <translation>پیکربندی رسیده آسیب دیده است. لطفاً بعداً دوباره تلاش کنید یا با پشتیبانی تماس بگیرید: </translation>
    </message>
    <message>
        <source>The configuration that came could not be stored. Look whether the disk is full, then try again.</source>
        <translation>پیکربندی رسید اما ذخیره نشد. ببینید دیسک پر است یا نه و سپس دوباره تلاش کنید.</translation>
    </message>
    <message>
        <source>The last configuration can not be put back.</source>
        <translation>پیکربندی قبلی را نمی‌توان بازگرداند.</translation>
    </message>
    <message>
        <source>it is not signed</source>
        <translation>امضا نشده است</translation>
    </message>
    <message>
        <source>its signature is damaged</source>
        <translation>امضای آن آسیب دیده است</translation>
    </message>
    <message>
        <source>its signature is not right</source>
        <translation>امضای آن درست نیست</translation>
    </message>
    <message>
        <source>it is signed with a key that this program does not know</source>
        <translation>با کلیدی امضا شده است که این برنامه آن را نمی‌شناسد</translation>
    </message>
    <message>
        <source>it is signed for another program</source>
        <translation>برای برنامهٔ دیگری امضا شده است</translation>
    </message>
    <message>
        <source>it is signed as version %1 and holds version %2</source>
        <translation>به‌عنوان نسخهٔ %1 امضا شده و نسخهٔ %2 را در بر دارد</translation>
    </message>
    <message>
        <source>its version %1 is older than the installed %2</source>
        <translation>نسخهٔ %1 آن قدیمی‌تر از نسخهٔ نصب‌شدهٔ %2 است</translation>
    </message>
    <message>
        <source>another update is being installed</source>
        <translation>به‌روزرسانی دیگری در حال نصب است</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>برنامه هنوز در حال اجراست</translation>
    </message>
    <message>
        <source>the new version does not run, it ended at once with status %1</source>
        <translation>نسخهٔ جدید اجرا نمی‌شود و بی‌درنگ با وضعیت %1 پایان یافت</translation>
    </message>
    <message>
        <source>No traffic goes through the tunnel.</source>
        <translation>هیچ داده‌ای از تونل نمی‌گذرد.</translation>
    </message>
    <message>
        <source>Only in the tunnel: %1</source>
        <translation>فقط از درون تونل: %1</translation>
    </message>
    <message>
        <source>Not in the tunnel: %1</source>
        <translation>بیرون از تونل: %1</translation>
    </message>
    <message>
        <source>Please sign in first.</source>
        <translation>لطفاً نخست وارد شوید.</translation>
    </message>
</context>
<context>
    <name>KvL2TPBox</name>
    <message>
        <source>L2TP Password</source>
        <translation>گذرواژهٔ L2TP</translation>
    </message>
    <message>
        <source>L2TP Password:</source>
        <translation>گذرواژهٔ L2TP:</translation>
    </message>
    <message>
        <source>Remember Password</source>
        <translation>به خاطر سپردن گذرواژه</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>تأیید</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>لغو</translation>
    </message>
</context>
<context>
    <name>KvLanguageBox</name>
    <message>
        <source>As the desktop</source>
        <translation>مانند میزکار</translation>
    </message>
</context>
<context>
    <name>KvNotice</name>
    <message>
        <source>Sign in to this network</source>
        <translation>ورود به این شبکه</translation>
    </message>
    <message>
        <source>Use the last working configuration</source>
        <translation>استفاده از آخرین پیکربندی سالم</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>بستن</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Updating...Please wait a moment.</source>
        <translation>در حال به‌روزرسانی... لطفاً کمی صبر کنید.</translation>
    </message>
    <message>
        <source>compose9 is missed, update failed.</source>
        <translation>‏compose9 یافت نشد؛ به‌روزرسانی ناموفق بود.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>خطا</translation>
    </message>
    <message>
        <source>Can not start update compose.</source>
        <translation>برنامهٔ به‌روزرسانی اجرا نشد.</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>نسخه</translation>
    </message>
    <message>
        <source>Made by the Korvan team
</source>
        <translation>ساختهٔ گروه Korvan
</translation>
    </message>
    <message>
        <source>Compiled in %1
</source>
        <translation>ساخته‌شده در %1
</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>نسخهٔ کنونی: </translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>نرم‌افزار آزاد تحت پروانهٔ عمومی همگانی گنو، نسخهٔ 3 یا بالاتر.</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>به‌روزرسانی ناموفق بود: %1.</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>به‌روزرسانی</translation>
    </message>
</context>
<context>
    <name>RootPart</name>
    <message>
        <source>Secure failed, you must run me as root at least one time</source>
        <translation>ایمن‌سازی ناموفق بود؛ Korvan باید دست‌کم یک بار با دسترسی root اجرا شود</translation>
    </message>
    <message>
        <source>This update can not be installed from here, because nothing proves that it comes from the service.
Please install the new package of Korvan instead.</source>
        <translation>این به‌روزرسانی را نمی‌توان از اینجا نصب کرد، زیرا چیزی ثابت نمی‌کند که از سرویس آمده است.
لطفاً به‌جای آن بستهٔ تازهٔ Korvan را نصب کنید.</translation>
    </message>
    <message>
        <source>%1 is using Korvan on this computer, and alone can end that.</source>
        <translation>‏%1 در این رایانه از Korvan استفاده می‌کند و تنها خودش می‌تواند به آن پایان دهد.</translation>
    </message>
    <message>
        <source>Somebody else is using Korvan on this computer, and alone can end that.</source>
        <translation>شخص دیگری در این رایانه از Korvan استفاده می‌کند و تنها خودش می‌تواند به آن پایان دهد.</translation>
    </message>
</context>
</TS>
