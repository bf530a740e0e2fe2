<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>Korvan</name>
    <message>
        <source>Help</source>
        <translation>Справка</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Свернуть</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Вход</translation>
    </message>
    <message>
        <source>Use the name and password of your subscription.</source>
        <translation>Имя и пароль вашей подписки.</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Имя пользователя</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Пароль</translation>
    </message>
    <message>
        <source>Remember login</source>
        <translation>Запомнить данные для входа</translation>
    </message>
    <message>
        <source>Log in</source>
        <translation>Войти</translation>
    </message>
    <message>
        <source>Use existing configuration</source>
        <translation>Войти с текущей конфигурацией</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Страницы</translation>
    </message>
    <message>
        <source>NOT CONNECTED</source>
        <translation>НЕ ПОДКЛЮЧЕНО</translation>
    </message>
    <message>
        <source>Connection progress</source>
        <translation>Ход подключения</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Протокол</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Сервер</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Подключить</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Отключить</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>Переподключить</translation>
    </message>
    <message>
        <source>Change user</source>
        <translation>Сменить пользователя</translation>
    </message>
    <message>
        <source>Expires</source>
        <translation>Действует до</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Адрес сервера</translation>
    </message>
    <message>
        <source>Public IP address</source>
        <translation>Внешний IP-адрес</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>Страна</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Конфигурация</translation>
    </message>
    <message>
        <source>Refresh now</source>
        <translation>Обновить сейчас</translation>
    </message>
    <message>
        <source>Need help?</source>
        <translation>Нужна помощь?</translation>
    </message>
    <message>
        <source>FAQ</source>
        <translation>FAQ</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Поддержка</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Сейчас</translation>
    </message>
    <message>
        <source>Now, received</source>
        <translation>Сейчас, получено</translation>
    </message>
    <message>
        <source>Now, sent</source>
        <translation>Сейчас, отправлено</translation>
    </message>
    <message>
        <source>This connection</source>
        <translation>Это подключение</translation>
    </message>
    <message>
        <source>This connection, received</source>
        <translation>Это подключение, получено</translation>
    </message>
    <message>
        <source>This connection, sent</source>
        <translation>Это подключение, отправлено</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Этот месяц</translation>
    </message>
    <message>
        <source>This month, received</source>
        <translation>Этот месяц, получено</translation>
    </message>
    <message>
        <source>This month, sent</source>
        <translation>Этот месяц, отправлено</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Всего</translation>
    </message>
    <message>
        <source>All time, received</source>
        <translation>Всего, получено</translation>
    </message>
    <message>
        <source>All time, sent</source>
        <translation>Всего, отправлено</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Сбросить</translation>
    </message>
    <message>
        <source>Reset the figures shown</source>
        <translation>Сбросить показанные значения</translation>
    </message>
    <message>
        <source>Starts the figures on this page at zero. The stored totals come back at the next start.</source>
        <translation>Начинает отсчёт на этой странице с нуля. Сохранённые итоги вернутся при следующем запуске.</translation>
    </message>
    <message>
        <source>VPN log</source>
        <translation>Журнал VPN</translation>
    </message>
    <message>
        <source>The log helps support to see what happened on your computer.</source>
        <translation>Журнал показывает службе поддержки, что произошло на вашем компьютере.</translation>
    </message>
    <message>
        <source>Copy log</source>
        <translation>Скопировать журнал</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Подключение</translation>
    </message>
    <message>
        <source>Connect automatically after start</source>
        <translation>Подключаться автоматически при запуске</translation>
    </message>
    <message>
        <source>Server to connect to after start</source>
        <translation>Сервер для подключения при запуске</translation>
    </message>
    <message>
        <source>Hide the window once connected</source>
        <translation>Скрывать окно после подключения</translation>
    </message>
    <message>
        <source>Lock-down</source>
        <translation>Блокировка сети</translation>
    </message>
    <message>
        <source>Nothing leaves this computer outside the tunnel.</source>
        <translation>Ничто не покидает компьютер в обход туннеля.</translation>
    </message>
    <message>
        <source>No sounds</source>
        <translation>Без звуков</translation>
    </message>
    <message>
        <source>Run at system startup</source>
        <translation>Запускать при старте системы</translation>
    </message>
    <message>
        <source>DNS leak protection</source>
        <translation>Защита от утечек DNS</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>Переподключаться автоматически</translation>
    </message>
    <message>
        <source>Language, from the next start on</source>
        <translation>Язык, со следующего запуска</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Обновления</translation>
    </message>
    <message>
        <source>Refresh the configuration</source>
        <translation>Обновлять конфигурацию</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Никогда</translation>
    </message>
    <message>
        <source>Every Startup</source>
        <translation>При каждом запуске</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>Каждый день</translation>
    </message>
    <message>
        <source>Every Week</source>
        <translation>Каждую неделю</translation>
    </message>
    <message>
        <source>Every Month</source>
        <translation>Каждый месяц</translation>
    </message>
    <message>
        <source>Update configuration</source>
        <translation>Обновить конфигурацию сейчас</translation>
    </message>
    <message>
        <source>Application update</source>
        <translation>Обновление приложения</translation>
    </message>
    <message>
        <source>Progress of the application update</source>
        <translation>Ход обновления приложения</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Обновление</translation>
    </message>
    <message>
        <source>Update the application</source>
        <translation>Обновление приложения</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Статистика</translation>
    </message>
    <message>
        <source>Deletes the stored totals of this month and of all time.</source>
        <translation>Удаляет сохранённые итоги за месяц и за всё время.</translation>
    </message>
    <message>
        <source>Reset all statistics</source>
        <translation>Сбросить всю статистику</translation>
    </message>
    <message>
        <source>Signed in as</source>
        <translation>Вы вошли как</translation>
    </message>
    <message>
        <source>Save options</source>
        <translation>Сохранить параметры</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Прокси</translation>
    </message>
    <message>
        <source>No proxy</source>
        <translation>Без прокси</translation>
    </message>
    <message>
        <source>Korvan reaches the servers directly.</source>
        <translation>Korvan обращается к серверам напрямую.</translation>
    </message>
    <message>
        <source>HTTP proxy</source>
        <translation>HTTP-прокси</translation>
    </message>
    <message>
        <source>With or without a name and password.</source>
        <translation>С именем и паролем или без них.</translation>
    </message>
    <message>
        <source>SOCKS proxy</source>
        <translation>SOCKS-прокси</translation>
    </message>
    <message>
        <source>SOCKS 5, without a name and password.</source>
        <translation>SOCKS 5, без имени и пароля.</translation>
    </message>
    <message>
        <source>Proxy server</source>
        <translation>Прокси-сервер</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Адрес</translation>
    </message>
    <message>
        <source>Proxy address</source>
        <translation>Адрес прокси</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Порт</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>Порт прокси</translation>
    </message>
    <message>
        <source>The proxy asks for a name and password</source>
        <translation>Прокси запрашивает имя и пароль</translation>
    </message>
    <message>
        <source>Proxy user name</source>
        <translation>Имя пользователя прокси</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>Пароль прокси</translation>
    </message>
    <message>
        <source>Save proxy settings</source>
        <translation>Сохранить настройки прокси</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>Серверы</translation>
    </message>
    <message>
        <source>Server Name</source>
        <translation>Имя сервера</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>Пинг</translation>
    </message>
    <message>
        <source>Loss %</source>
        <translation>Потери %</translation>
    </message>
    <message>
        <source>Speed Test</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source>Ping all servers</source>
        <translation>Пинг всех серверов</translation>
    </message>
    <message>
        <source>Detailed ping</source>
        <translation>Подробный пинг</translation>
    </message>
    <message>
        <source>Run speed test</source>
        <translation>Измерить скорость</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Отмена проверки</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>Обзор</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Service status</source>
        <translation>Состояние службы</translation>
    </message>
    <message>
        <source>New version %1 ready, please click &quot;Update&quot;.</source>
        <translation>Доступна новая версия %1. Нажмите «Обновление».</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>Korvan compose7 is missed.</source>
        <translation>Отсутствует программа Korvan compose7.</translation>
    </message>
    <message>
        <source>Notify</source>
        <translation>Уведомление</translation>
    </message>
    <message>
        <source>Certificate might be expired.
Do you want to renew subscription?</source>
        <translation>Возможно, срок действия сертификата истёк.
Продлить подписку?</translation>
    </message>
    <message>
        <source>Public IP Address*</source>
        <translation>Внешний IP-адрес*</translation>
    </message>
    <message>
        <source>Public IP Address</source>
        <translation>Внешний IP-адрес</translation>
    </message>
    <message>
        <source>Proxied configurations require you to configure your program to use the VPN.
Check installation instructions for further details.</source>
        <translation>Для конфигураций с прокси нужно настроить программу на использование VPN.
Подробности — в инструкции по установке.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>Please note that if auto reconnect is enabled, there will be a brief moment 
in which your programs may not be protected by the VPN during reconnection. 
Do you still wish to enable auto-reconnect?</source>
        <translation>Обратите внимание: при автоматическом переподключении будет краткий момент,
когда ваши программы могут остаться без защиты VPN.
Всё равно включить его?</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Отладка</translation>
    </message>
    <message>
        <source>Getting files from server ...</source>
        <translation>Получение файлов ...</translation>
    </message>
    <message>
        <source>Invalid username or password.</source>
        <translation>Неверное имя пользователя или пароль.</translation>
    </message>
    <message>
        <source>Updating Configuration ...</source>
        <translation>Обновление конфигурации ...</translation>
    </message>
    <message>
        <source>Update of new configuration failed.
Please try again later.
Korvan-GUI will use existing keys and configurations.</source>
        <translation>Не удалось обновить конфигурацию.
Повторите попытку позже.
Korvan будет использовать имеющиеся ключи и конфигурации.</translation>
    </message>
    <message>
        <source>Retrieval of configuration and keys failed.
Please try again later or contact Support at </source>
        <translation>Не удалось получить конфигурацию и ключи.
Повторите попытку позже или обратитесь в поддержку: </translation>
    </message>
    <message>
        <source>Unknown error, please check log.</source>
        <translation>Неизвестная ошибка. Посмотрите журнал.</translation>
    </message>
    <message>
        <source>Username or password is not valid.</source>
        <translation>Имя пользователя или пароль недействительны.</translation>
    </message>
    <message>
        <source>Korvan Help</source>
        <translation>Справка Korvan</translation>
    </message>
    <message>
        <source>Update Failed.</source>
        <translation>Не удалось выполнить обновление.</translation>
    </message>
    <message>
        <source>Update Successful.</source>
        <translation>Обновление выполнено.</translation>
    </message>
    <message>
        <source>Update url is not valid.</source>
        <translation>Недопустимый адрес обновления.</translation>
    </message>
    <message>
        <source>Update done, please restart application.</source>
        <translation>Обновление загружено. Перезапустите приложение.</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Выход</translation>
    </message>
    <message>
        <source>Are you sure you wish to quit Korvan?</source>
        <translation>Вы действительно хотите выйти из Korvan?</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Отменено</translation>
    </message>
    <message>
        <source>Ping...</source>
        <translation>Пинг...</translation>
    </message>
    <message>
        <source>Test...</source>
        <translation>Измерение...</translation>
    </message>
    <message>
        <source>Please disconnect first.</source>
        <translation>Сначала отключитесь.</translation>
    </message>
    <message>
        <source>Please select one server.</source>
        <translation>Выберите сервер.</translation>
    </message>
    <message>
        <source> CONNECTED</source>
        <translation>ПОДКЛЮЧЕНО</translation>
    </message>
    <message>
        <source>Korvan: Disconnected</source>
        <translation>Korvan: не подключено</translation>
    </message>
    <message>
        <source>Korvan: Connecting to server %1</source>
        <translation>Korvan: подключение к серверу %1</translation>
    </message>
    <message>
        <source>Korvan: Connected to server %1</source>
        <translation>Korvan: подключено к серверу %1</translation>
    </message>
    <message>
        <source>Connecting to server %1</source>
        <translation>Подключение к серверу %1</translation>
    </message>
    <message>
        <source>Connected to server %1</source>
        <translation>Подключено к серверу %1</translation>
    </message>
    <message>
        <source>Disconnected from server %1</source>
        <translation>Отключено от сервера %1</translation>
    </message>
    <message>
        <source>Update Config...</source>
        <translation>Обновить конфигурацию...</translation>
    </message>
    <message>
        <source>Proxy Settings...</source>
        <translation>Настройки прокси...</translation>
    </message>
    <message>
        <source>Open Korvan</source>
        <translation>Открыть Korvan</translation>
    </message>
    <message>
        <source>Change User...</source>
        <translation>Сменить пользователя...</translation>
    </message>
    <message>
        <source>Internet connection has been terminated for your security.
Please press OK to resume your regular internet connection and reconnect to the VPN if needed.</source>
        <translation>Подключение к Интернету прервано в целях вашей безопасности.
Нажмите «ОК», чтобы восстановить обычное подключение к Интернету, и при необходимости снова подключитесь к VPN.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Оформление</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Как в системе</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Светлое</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Тёмное</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>нет данных</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>Ошибка обновления: %1.</translation>
    </message>
    <message>
        <source>it can not be checked</source>
        <translation>его невозможно проверить</translation>
    </message>
    <message>
        <source>the archive can not be stored</source>
        <translation>не удаётся сохранить архив</translation>
    </message>
    <message>
        <source>the answer has the status %1</source>
        <translation>ответ имеет состояние %1</translation>
    </message>
    <message>
        <source>the answer is no archive</source>
        <translation>ответ не является архивом</translation>
    </message>
    <message>
        <source>Refresh now: the configuration</source>
        <translation>Обновить сейчас: конфигурация</translation>
    </message>
    <message>
        <source>FAQ: frequently asked questions</source>
        <translation>FAQ: частые вопросы</translation>
    </message>
    <message>
        <source>Return sorts by the column of the current cell.</source>
        <translation>Клавиша Enter сортирует по столбцу текущей ячейки.</translation>
    </message>
    <message>
        <source>Needs &quot;%1&quot; on the sign-in page.</source>
        <translation>Требуется «%1» при входе.</translation>
    </message>
    <message>
        <source>The configuration could not be refreshed: the service can not be reached.</source>
        <translation>Не удалось обновить конфигурацию: служба недоступна.</translation>
    </message>
    <message>
        <source>The configuration is in use now.</source>
        <translation>Конфигурация сейчас используется.</translation>
    </message>
    <message>
        <source>The changes of the options are not saved.</source>
        <translation>Изменения параметров не сохранены.</translation>
    </message>
    <message>
        <source>Korvan: Disconnecting...</source>
        <translation>Korvan: отключение...</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Подключение...</translation>
    </message>
    <message>
        <source>Disconnecting...</source>
        <translation>Отключение...</translation>
    </message>
    <message>
        <source>Reconnecting...</source>
        <translation>Переподключение...</translation>
    </message>
    <message>
        <source>The connection has failed.</source>
        <translation>Подключение прервано.</translation>
    </message>
    <message>
        <source>The address of %1 is not encrypted, so that nothing was sent.</source>
        <translation>Адрес %1 не защищён шифрованием, поэтому ничего не отправлено.</translation>
    </message>
    <message>
        <source>%1 does not show the key that it is known by, so that nothing was sent. Somebody may be answering in its place.</source>
        <translation>%1 предъявляет не тот ключ, по которому его узнают, поэтому ничего не отправлено. Возможно, вместо него отвечает кто-то другой.</translation>
    </message>
    <message>
        <source>There is no configuration any more.</source>
        <translation>Конфигурации больше нет.</translation>
    </message>
    <message>
        <source>A web page came in place of your configuration. Hotels, trains and cafés do that until you have signed in to their network. Sign in there, then try again.</source>
        <translation>Вместо вашей конфигурации пришла веб-страница. Так делают гостиницы, поезда и кафе, пока вы не войдёте в их сеть. Войдите в неё и повторите попытку.</translation>
    </message>
    <message>
        <source>The service is out of order at the moment. Please try again later.</source>
        <translation>Сервис сейчас не работает. Повторите попытку позже.</translation>
    </message>
    <message>
        <source>The service did not accept your user name or password. Change the user and sign in again.</source>
        <translation>Служба не приняла имя пользователя или пароль. Смените пользователя и войдите снова.</translation>
    </message>
    <message>
        <source>The configuration that came is damaged. Please try again later or contact Support at </source>
        <translation>Полученная конфигурация повреждена. Повторите попытку позже или напишите в поддержку: </translation>
    </message>
    <message>
        <source>The configuration that came could not be stored. Look whether the disk is full, then try again.</source>
        <translation>Конфигурация получена, но её не удалось сохранить. Проверьте, не заполнен ли диск, и повторите попытку.</translation>
    </message>
    <message>
        <source>The last configuration can not be put back.</source>
        <translation>Не удаётся вернуть последнюю конфигурацию.</translation>
    </message>
    <message>
        <source>it is not signed</source>
        <translation>оно не подписано</translation>
    </message>
    <message>
        <source>its signature is damaged</source>
        <translation>его подпись повреждена</translation>
    </message>
    <message>
        <source>its signature is not right</source>
        <translation>его подпись неверна</translation>
    </message>
    <message>
        <source>it is signed with a key that this program does not know</source>
        <translation>оно подписано ключом, который этой программе неизвестен</translation>
    </message>
    <message>
        <source>it is signed for another program</source>
        <translation>оно подписано для другой программы</translation>
    </message>
    <message>
        <source>it is signed as version %1 and holds version %2</source>
        <translation>оно подписано как версия %1, а содержит версию %2</translation>
    </message>
    <message>
        <source>its version %1 is older than the installed %2</source>
        <translation>его версия %1 старше установленной %2</translation>
    </message>
    <message>
        <source>another update is being installed</source>
        <translation>устанавливается другое обновление</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>программа ещё работает</translation>
    </message>
    <message>
        <source>the new version does not run, it ended at once with status %1</source>
        <translation>новая версия не работает, она сразу завершилась с состоянием %1</translation>
    </message>
    <message>
        <source>No traffic goes through the tunnel.</source>
        <translation>Трафик не проходит через туннель.</translation>
    </message>
    <message>
        <source>Only in the tunnel: %1</source>
        <translation>Через туннель только: %1</translation>
    </message>
    <message>
        <source>Not in the tunnel: %1</source>
        <translation>Не через туннель: %1</translation>
    </message>
    <message>
        <source>Please sign in first.</source>
        <translation>Сначала войдите в систему.</translation>
    </message>
</context>
<context>
    <name>KvL2TPBox</name>
    <message>
        <source>L2TP Password</source>
        <translation>Пароль L2TP</translation>
    </message>
    <message>
        <source>L2TP Password:</source>
        <translation>Пароль L2TP:</translation>
    </message>
    <message>
        <source>Remember Password</source>
        <translation>Запомнить пароль</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>KvLanguageBox</name>
    <message>
        <source>As the desktop</source>
        <translation>Как в системе</translation>
    </message>
</context>
<context>
    <name>KvNotice</name>
    <message>
        <source>Sign in to this network</source>
        <translation>Войти в эту сеть</translation>
    </message>
    <message>
        <source>Use the last working configuration</source>
        <translation>Использовать последнюю рабочую конфигурацию</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Updating...Please wait a moment.</source>
        <translation>Идёт обновление. Подождите немного.</translation>
    </message>
    <message>
        <source>compose9 is missed, update failed.</source>
        <translation>Отсутствует compose9, обновление не выполнено.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>Can not start update compose.</source>
        <translation>Не удаётся запустить программу обновления.</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Версия</translation>
    </message>
    <message>
        <source>Made by the Korvan team
</source>
        <translation>Разработано командой Korvan
</translation>
    </message>
    <message>
        <source>Compiled in %1
</source>
        <translation>Собрано %1
</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Текущая версия: </translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Свободное ПО под Стандартной общественной лицензией GNU версии 3 или новее.</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>Ошибка обновления: %1.</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Обновление</translation>
    </message>
</context>
<context>
    <name>RootPart</name>
    <message>
        <source>Secure failed, you must run me as root at least one time</source>
        <translation>Не удалось получить права: запустите Korvan от имени root хотя бы один раз</translation>
    </message>
    <message>
        <source>This update can not be installed from here, because nothing proves that it comes from the service.
Please install the new package of Korvan instead.</source>
        <translation>Это обновление нельзя установить отсюда: ничто не доказывает, что оно получено от службы.
Установите вместо этого новый пакет Korvan.</translation>
    </message>
    <message>
        <source>%1 is using Korvan on this computer, and alone can end that.</source>
        <translation>%1 использует Korvan на этом компьютере, и только этот пользователь может завершить его работу.</translation>
    </message>
    <message>
        <source>Somebody else is using Korvan on this computer, and alone can end that.</source>
        <translation>Другой пользователь использует Korvan на этом компьютере, и только он может завершить его работу.</translation>
    </message>
</context>
</TS>
