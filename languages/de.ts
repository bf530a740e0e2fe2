<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Korvan</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Use the name and password of your subscription.</source>
        <translation>Name und Passwort Ihres Abonnements.</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Remember login</source>
        <translation>Anmeldung merken</translation>
    </message>
    <message>
        <source>Log in</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Use existing configuration</source>
        <translation>Vorhandene Konfiguration nutzen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>NOT CONNECTED</source>
        <translation>NICHT VERBUNDEN</translation>
    </message>
    <message>
        <source>Connection progress</source>
        <translation>Fortschritt der Verbindung</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>Neu verbinden</translation>
    </message>
    <message>
        <source>Change user</source>
        <translation>Benutzer wechseln</translation>
    </message>
    <message>
        <source>Expires</source>
        <translation>Gültig bis</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Serveradresse</translation>
    </message>
    <message>
        <source>Public IP address</source>
        <translation>Öffentliche IP-Adresse</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>Land</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Refresh now</source>
        <translation>Jetzt aktualisieren</translation>
    </message>
    <message>
        <source>Need help?</source>
        <translation>Brauchen Sie Hilfe?</translation>
    </message>
    <message>
        <source>FAQ</source>
        <translation>FAQ</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Support</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>Now, received</source>
        <translation>Jetzt, empfangen</translation>
    </message>
    <message>
        <source>Now, sent</source>
        <translation>Jetzt, gesendet</translation>
    </message>
    <message>
        <source>This connection</source>
        <translation>Diese Verbindung</translation>
    </message>
    <message>
        <source>This connection, received</source>
        <translation>Diese Verbindung, empfangen</translation>
    </message>
    <message>
        <source>This connection, sent</source>
        <translation>Diese Verbindung, gesendet</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Dieser Monat</translation>
    </message>
    <message>
        <source>This month, received</source>
        <translation>Dieser Monat, empfangen</translation>
    </message>
    <message>
        <source>This month, sent</source>
        <translation>Dieser Monat, gesendet</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Insgesamt</translation>
    </message>
    <message>
        <source>All time, received</source>
        <translation>Insgesamt, empfangen</translation>
    </message>
    <message>
        <source>All time, sent</source>
        <translation>Insgesamt, gesendet</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Auf null</translation>
    </message>
    <message>
        <source>Reset the figures shown</source>
        <translation>Angezeigte Werte auf null setzen</translation>
    </message>
    <message>
        <source>Starts the figures on this page at zero. The stored totals come back at the next start.</source>
        <translation>Beginnt die Werte auf dieser Seite bei null. Die gespeicherten Summen sind beim nächsten Start wieder da.</translation>
    </message>
    <message>
        <source>VPN log</source>
        <translation>VPN-Log</translation>
    </message>
    <message>
        <source>The log helps support to see what happened on your computer.</source>
        <translation>Das Log zeigt dem Support, was auf Ihrem Computer geschehen ist.</translation>
    </message>
    <message>
        <source>Copy log</source>
        <translation>Log kopieren</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Connect automatically after start</source>
        <translation>Nach dem Start automatisch verbinden</translation>
    </message>
    <message>
        <source>Server to connect to after start</source>
        <translation>Server für die Verbindung nach dem Start</translation>
    </message>
    <message>
        <source>Hide the window once connected</source>
        <translation>Fenster nach dem Verbinden verbergen</translation>
    </message>
    <message>
        <source>Lock-down</source>
        <translation>Netzsperre</translation>
    </message>
    <message>
        <source>Nothing leaves this computer outside the tunnel.</source>
        <translation>Nichts verlässt diesen Computer außerhalb des Tunnels.</translation>
    </message>
    <message>
        <source>No sounds</source>
        <translation>Keine Töne</translation>
    </message>
    <message>
        <source>Run at system startup</source>
        <translation>Beim Systemstart ausführen</translation>
    </message>
    <message>
        <source>DNS leak protection</source>
        <translation>Schutz vor DNS-Lecks</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>Automatisch neu verbinden</translation>
    </message>
    <message>
        <source>Language, from the next start on</source>
        <translation>Sprache, ab dem nächsten Start</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Aktualisierungen</translation>
    </message>
    <message>
        <source>Refresh the configuration</source>
        <translation>Konfiguration aktualisieren</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>Every Startup</source>
        <translation>Bei jedem Start</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>Jeden Tag</translation>
    </message>
    <message>
        <source>Every Week</source>
        <translation>Jede Woche</translation>
    </message>
    <message>
        <source>Every Month</source>
        <translation>Jeden Monat</translation>
    </message>
    <message>
        <source>Update configuration</source>
        <translation>Konfiguration jetzt aktualisieren</translation>
    </message>
    <message>
        <source>Application update</source>
        <translation>Programm-Update</translation>
    </message>
    <message>
        <source>Progress of the application update</source>
        <translation>Fortschritt des Programm-Updates</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>Update the application</source>
        <translation>Update des Programms</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Deletes the stored totals of this month and of all time.</source>
        <translation>Löscht die gespeicherten Summen des Monats und insgesamt.</translation>
    </message>
    <message>
        <source>Reset all statistics</source>
        <translation>Gesamte Statistik löschen</translation>
    </message>
    <message>
        <source>Signed in as</source>
        <translation>Angemeldet als</translation>
    </message>
    <message>
        <source>Save options</source>
        <translation>Optionen speichern</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source>No proxy</source>
        <translation>Kein Proxy</translation>
    </message>
    <message>
        <source>Korvan reaches the servers directly.</source>
        <translation>Korvan erreicht die Server direkt.</translation>
    </message>
    <message>
        <source>HTTP proxy</source>
        <translation>HTTP-Proxy</translation>
    </message>
    <message>
        <source>With or without a name and password.</source>
        <translation>Mit oder ohne Name und Passwort.</translation>
    </message>
    <message>
        <source>SOCKS proxy</source>
        <translation>SOCKS-Proxy</translation>
    </message>
    <message>
        <source>SOCKS 5, without a name and password.</source>
        <translation>SOCKS 5, ohne Name und Passwort.</translation>
    </message>
    <message>
        <source>Proxy server</source>
        <translation>Proxyserver</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Proxy address</source>
        <translation>Proxy-Adresse</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>Proxy-Port</translation>
    </message>
    <message>
        <source>The proxy asks for a name and password</source>
        <translation>Der Proxy verlangt Name und Passwort</translation>
    </message>
    <message>
        <source>Proxy user name</source>
        <translation>Benutzername für den Proxy</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>Passwort für den Proxy</translation>
    </message>
    <message>
        <source>Save proxy settings</source>
        <translation>Proxy-Einstellungen speichern</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Server Name</source>
        <translation>Servername</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>Ping</translation>
    </message>
    <message>
        <source>Loss %</source>
        <translation>Verlust %</translation>
    </message>
    <message>
        <source>Speed Test</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>Ping all servers</source>
        <translation>Alle Server anpingen</translation>
    </message>
    <message>
        <source>Detailed ping</source>
        <translation>Ausführlicher Ping</translation>
    </message>
    <message>
        <source>Run speed test</source>
        <translation>Tempo messen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Test abbrechen</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Service status</source>
        <translation>Dienststatus</translation>
    </message>
    <message>
        <source>New version %1 ready, please click &quot;Update&quot;.</source>
        <translation>Version %1 ist bereit. Bitte klicken Sie auf „Update“.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Korvan compose7 is missed.</source>
        <translation>Korvans Programm compose7 fehlt.</translation>
    </message>
    <message>
        <source>Notify</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Certificate might be expired.
Do you want to renew subscription?</source>
        <translation>Das Zertifikat ist möglicherweise abgelaufen.
Möchten Sie Ihr Abonnement verlängern?</translation>
    </message>
    <message>
        <source>Public IP Address*</source>
        <translation>Öffentliche IP-Adresse*</translation>
    </message>
    <message>
        <source>Public IP Address</source>
        <translation>Öffentliche IP-Adresse</translation>
    </message>
    <message>
        <source>Proxied configurations require you to configure your program to use the VPN.
Check installation instructions for further details.</source>
        <translation>Bei Konfigurationen über einen Proxy müssen Sie Ihr Programm so einstellen, dass es das VPN benutzt.
Näheres steht in der Installationsanleitung.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Please note that if auto reconnect is enabled, there will be a brief moment 
in which your programs may not be protected by the VPN during reconnection. 
Do you still wish to enable auto-reconnect?</source>
        <translation>Bitte beachten Sie: Bei der automatischen Neuverbindung gibt es einen kurzen Moment,
in dem Ihre Programme möglicherweise nicht durch das VPN geschützt sind.
Möchten Sie sie trotzdem einschalten?</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Fehlersuche</translation>
    </message>
    <message>
        <source>Getting files from server ...</source>
        <translation>Dateien werden geladen...</translation>
    </message>
    <message>
        <source>Invalid username or password.</source>
        <translation>Benutzername oder Passwort ist falsch.</translation>
    </message>
    <message>
        <source>Updating Configuration ...</source>
        <translation>Konfiguration wird geladen...</translation>
    </message>
    <message>
        <source>Update of new configuration failed.
Please try again later.
Korvan-GUI will use existing keys and configurations.</source>
        <translation>Die Konfiguration konnte nicht aktualisiert werden.
Bitte versuchen Sie es später noch einmal.
Korvan nutzt vorhandene Schlüssel und Konfigurationen.</translation>
    </message>
    <message>
        <source>Retrieval of configuration and keys failed.
Please try again later or contact Support at </source>
        <translation>Konfiguration und Schlüssel konnten nicht abgerufen werden.
Bitte versuchen Sie es später noch einmal, oder wenden Sie sich an den Support: </translation>
    </message>
    <message>
        <source>Unknown error, please check log.</source>
        <translation>Unbekannter Fehler. Bitte sehen Sie im Log nach.</translation>
    </message>
    <message>
        <source>Username or password is not valid.</source>
        <translation>Benutzername oder Passwort ist nicht gültig.</translation>
    </message>
    <message>
        <source>Korvan Help</source>
        <translation>Korvan-Hilfe</translation>
    </message>
    <message>
        <source>Update Failed.</source>
        <translation>Die Aktualisierung ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Update Successful.</source>
        <translation>Die Aktualisierung war erfolgreich.</translation>
    </message>
    <message>
        <source>Update url is not valid.</source>
        <translation>Die Adresse des Updates ist nicht gültig.</translation>
    </message>
    <message>
        <source>Update done, please restart application.</source>
        <translation>Das Update ist geladen. Bitte starten Sie das Programm neu.</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Are you sure you wish to quit Korvan?</source>
        <translation>Möchten Sie Korvan wirklich beenden?</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Ping...</source>
        <translation>Ping...</translation>
    </message>
    <message>
        <source>Test...</source>
        <translation>Messung...</translation>
    </message>
    <message>
        <source>Please disconnect first.</source>
        <translation>Bitte trennen Sie zuerst die Verbindung.</translation>
    </message>
    <message>
        <source>Please select one server.</source>
        <translation>Bitte wählen Sie einen Server.</translation>
    </message>
    <message>
        <source> CONNECTED</source>
        <translation>VERBUNDEN</translation>
    </message>
    <message>
        <source>Korvan: Disconnected</source>
        <translation>Korvan: Nicht verbunden</translation>
    </message>
    <message>
        <source>Korvan: Connecting to server %1</source>
        <translation>Korvan: Verbindung mit Server %1 wird aufgebaut</translation>
    </message>
    <message>
        <source>Korvan: Connected to server %1</source>
        <translation>Korvan: Mit Server %1 verbunden</translation>
    </message>
    <message>
        <source>Connecting to server %1</source>
        <translation>Verbindung mit Server %1 wird aufgebaut</translation>
    </message>
    <message>
        <source>Connected to server %1</source>
        <translation>Mit Server %1 verbunden</translation>
    </message>
    <message>
        <source>Disconnected from server %1</source>
        <translation>Von Server %1 getrennt</translation>
    </message>
    <message>
        <source>Update Config...</source>
        <translation>Konfiguration aktualisieren...</translation>
    </message>
    <message>
        <source>Proxy Settings...</source>
        <translation>Proxy-Einstellungen...</translation>
    </message>
    <message>
        <source>Open Korvan</source>
        <translation>Korvan öffnen</translation>
    </message>
    <message>
        <source>Change User...</source>
        <translation>Benutzer wechseln...</translation>
    </message>
    <message>
        <source>Internet connection has been terminated for your security.
Please press OK to resume your regular internet connection and reconnect to the VPN if needed.</source>
        <translation>Die Internetverbindung ist zu Ihrer Sicherheit getrennt.
Drücken Sie OK, um Ihre normale Internetverbindung wiederherzustellen, und verbinden Sie sich bei Bedarf neu mit dem VPN.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aussehen</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>keine Daten</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>Das Update ist fehlgeschlagen: %1.</translation>
    </message>
    <message>
        <source>it can not be checked</source>
        <translation>es kann nicht geprüft werden</translation>
    </message>
    <message>
        <source>the archive can not be stored</source>
        <translation>das Archiv kann nicht gespeichert werden</translation>
    </message>
    <message>
        <source>the answer has the status %1</source>
        <translation>die Antwort hat den Status %1</translation>
    </message>
    <message>
        <source>the answer is no archive</source>
        <translation>die Antwort ist kein Archiv</translation>
    </message>
    <message>
        <source>Refresh now: the configuration</source>
        <translation>Jetzt aktualisieren: die Konfiguration</translation>
    </message>
    <message>
        <source>FAQ: frequently asked questions</source>
        <translation>FAQ: häufige Fragen</translation>
    </message>
    <message>
        <source>Return sorts by the column of the current cell.</source>
        <translation>Die Eingabetaste sortiert nach der Spalte der aktuellen Zelle.</translation>
    </message>
    <message>
        <source>Needs &quot;%1&quot; on the sign-in page.</source>
        <translation>Setzt „%1“ auf der Anmeldeseite voraus.</translation>
    </message>
    <message>
        <source>The configuration could not be refreshed: the service can not be reached.</source>
        <translation>Die Konfiguration konnte nicht aktualisiert werden: Der Dienst ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>The configuration is in use now.</source>
        <translation>Die Konfiguration wird gerade benutzt.</translation>
    </message>
    <message>
        <source>The changes of the options are not saved.</source>
        <translation>Die Änderungen der Optionen sind nicht gespeichert.</translation>
    </message>
    <message>
        <source>Korvan: Disconnecting...</source>
        <translation>Korvan: Verbindung wird getrennt...</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Verbindung wird aufgebaut...</translation>
    </message>
    <message>
        <source>Disconnecting...</source>
        <translation>Verbindung wird getrennt...</translation>
    </message>
    <message>
        <source>Reconnecting...</source>
        <translation>Verbindung wird wiederhergestellt...</translation>
    </message>
    <message>
        <source>The connection has failed.</source>
        <translation>Die Verbindung ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The address of %1 is not encrypted, so that nothing was sent.</source>
        <translation>Die Adresse von %1 ist nicht verschlüsselt, deshalb wurde nichts gesendet.</translation>
    </message>
    <message>
        <source>%1 does not show the key that it is known by, so that nothing was sent. Somebody may be answering in its place.</source>
        <translation>%1 weist sich nicht mit dem bekannten Schlüssel aus, deshalb wurde nichts gesendet. Möglicherweise antwortet jemand anderes an seiner Stelle.</translation>
    </message>
    <message>
        <source>There is no configuration any more.</source>
        <translation>Es ist keine Konfiguration mehr vorhanden.</translation>
    </message>
    <message>
        <source>A web page came in place of your configuration. Hotels, trains and cafés do that until you have signed in to their network. Sign in there, then try again.</source>
        <translation>Statt Ihrer Konfiguration kam eine Webseite. Hotels, Züge und Cafés tun das, bis Sie sich in ihrem Netz angemeldet haben. Melden Sie sich dort an und versuchen Sie es dann noch einmal.</translation>
    </message>
    <message>
        <source>The service is out of order at the moment. Please try again later.</source>
        <translation>Der Dienst ist zurzeit gestört. Bitte versuchen Sie es später noch einmal.</translation>
    </message>
    <message>
        <source>The service did not accept your user name or password. Change the user and sign in again.</source>
        <translation>Der Dienst hat Benutzernamen oder Passwort nicht angenommen. Wechseln Sie den Benutzer und melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>The configuration that came is damaged. Please try again later or contact Support at </source>
        <translation>Die Konfiguration ist beschädigt angekommen. Bitte versuchen Sie es später noch einmal oder wenden Sie sich an den Support: </translation>
    </message>
    <message>
        <source>The configuration that came could not be stored. Look whether the disk is full, then try again.</source>
        <translation>Die Konfiguration ist angekommen, ließ sich aber nicht speichern. Prüfen Sie, ob der Datenträger voll ist, und versuchen Sie es dann noch einmal.</translation>
    </message>
    <message>
        <source>The last configuration can not be put back.</source>
        <translation>Die letzte Konfiguration lässt sich nicht zurückholen.</translation>
    </message>
    <message>
        <source>it is not signed</source>
        <translation>es ist nicht signiert</translation>
    </message>
    <message>
        <source>its signature is damaged</source>
        <translation>seine Signatur ist beschädigt</translation>
    </message>
    <message>
        <source>its signature is not right</source>
        <translation>seine Signatur stimmt nicht</translation>
    </message>
    <message>
        <source>it is signed with a key that this program does not know</source>
        <translation>es ist mit einem Schlüssel signiert, den dieses Programm nicht kennt</translation>
    </message>
    <message>
        <source>it is signed for another program</source>
        <translation>es ist für ein anderes Programm signiert</translation>
    </message>
    <message>
        <source>it is signed as version %1 and holds version %2</source>
        <translation>es ist als Version %1 signiert und enthält Version %2</translation>
    </message>
    <message>
        <source>its version %1 is older than the installed %2</source>
        <translation>seine Version %1 ist älter als die installierte %2</translation>
    </message>
    <message>
        <source>another update is being installed</source>
        <translation>ein anderes Update wird gerade installiert</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>das Programm läuft noch</translation>
    </message>
    <message>
        <source>the new version does not run, it ended at once with status %1</source>
        <translation>die neue Version läuft nicht, sie endete sofort mit dem Status %1</translation>
    </message>
    <message>
        <source>No traffic goes through the tunnel.</source>
        <translation>Kein Datenverkehr geht durch den Tunnel.</translation>
    </message>
    <message>
        <source>Only in the tunnel: %1</source>
        <translation>Nur im Tunnel: %1</translation>
    </message>
    <message>
        <source>Not in the tunnel: %1</source>
        <translation>Nicht im Tunnel: %1</translation>
    </message>
    <message>
        <source>Please sign in first.</source>
        <translation>Bitte melden Sie sich zuerst an.</translation>
    </message>
</context>
<context>
    <name>KvL2TPBox</name>
    <message>
        <source>L2TP Password</source>
        <translation>L2TP-Passwort</translation>
    </message>
    <message>
        <source>L2TP Password:</source>
        <translation>L2TP-Passwort:</translation>
    </message>
    <message>
        <source>Remember Password</source>
        <translation>Passwort merken</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>KvLanguageBox</name>
    <message>
        <source>As the desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
</context>
<context>
    <name>KvNotice</name>
    <message>
        <source>Sign in to this network</source>
        <translation>In diesem Netz anmelden</translation>
    </message>
    <message>
        <source>Use the last working configuration</source>
        <translation>Letzte funktionierende Konfiguration verwenden</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Updating...Please wait a moment.</source>
        <translation>Das Update wird installiert. Bitte warten Sie einen Moment.</translation>
    </message>
    <message>
        <source>compose9 is missed, update failed.</source>
        <translation>compose9 fehlt, das Update ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Can not start update compose.</source>
        <translation>Das Programm zum Installieren des Updates lässt sich nicht starten.</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Made by the Korvan team
</source>
        <translation>Vom Korvan-Team
</translation>
    </message>
    <message>
        <source>Compiled in %1
</source>
        <translation>Übersetzt am %1
</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Aktuelle Version: </translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Freie Software unter der GNU GPL, Version 3 oder später.</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>Das Update ist fehlgeschlagen: %1.</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Update</translation>
    </message>
</context>
<context>
    <name>RootPart</name>
    <message>
        <source>Secure failed, you must run me as root at least one time</source>
        <translation>Absicherung fehlgeschlagen, Korvan muss mindestens einmal als root gestartet werden</translation>
    </message>
    <message>
        <source>This update can not be installed from here, because nothing proves that it comes from the service.
Please install the new package of Korvan instead.</source>
        <translation>Dieses Update lässt sich von hier aus nicht installieren, denn nichts beweist, dass es vom Dienst stammt.
Bitte installieren Sie stattdessen das neue Paket von Korvan.</translation>
    </message>
    <message>
        <source>%1 is using Korvan on this computer, and alone can end that.</source>
        <translation>%1 benutzt Korvan auf diesem Computer und kann das nur selbst beenden.</translation>
    </message>
    <message>
        <source>Somebody else is using Korvan on this computer, and alone can end that.</source>
        <translation>Jemand anderes benutzt Korvan auf diesem Computer und kann das nur selbst beenden.</translation>
    </message>
</context>
</TS>
