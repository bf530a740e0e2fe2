<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Korvan</name>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Connexion au compte</translation>
    </message>
    <message>
        <source>Use the name and password of your subscription.</source>
        <translation>Le nom et le mot de passe de votre abonnement.</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Nom d’utilisateur</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>Remember login</source>
        <translation>Mémoriser l’identification</translation>
    </message>
    <message>
        <source>Log in</source>
        <translation>Se connecter</translation>
    </message>
    <message>
        <source>Use existing configuration</source>
        <translation>Utiliser la configuration existante</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>NOT CONNECTED</source>
        <translation>NON CONNECTÉ</translation>
    </message>
    <message>
        <source>Connection progress</source>
        <translation>Progression de la connexion</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protocole</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Serveur</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Connecter</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Déconnecter</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>Reconnecter</translation>
    </message>
    <message>
        <source>Change user</source>
        <translation>Changer d’utilisateur</translation>
    </message>
    <message>
        <source>Expires</source>
        <translation>Expire le</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Adresse du serveur</translation>
    </message>
    <message>
        <source>Public IP address</source>
        <translation>Adresse IP publique</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>Pays</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>Refresh now</source>
        <translation>Actualiser maintenant</translation>
    </message>
    <message>
        <source>Need help?</source>
        <translation>Besoin d’aide ?</translation>
    </message>
    <message>
        <source>FAQ</source>
        <translation>FAQ</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Assistance</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>En ce moment</translation>
    </message>
    <message>
        <source>Now, received</source>
        <translation>En ce moment, reçu</translation>
    </message>
    <message>
        <source>Now, sent</source>
        <translation>En ce moment, envoyé</translation>
    </message>
    <message>
        <source>This connection</source>
        <translation>Cette connexion</translation>
    </message>
    <message>
        <source>This connection, received</source>
        <translation>Cette connexion, reçu</translation>
    </message>
    <message>
        <source>This connection, sent</source>
        <translation>Cette connexion, envoyé</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Ce mois-ci</translation>
    </message>
    <message>
        <source>This month, received</source>
        <translation>Ce mois-ci, reçu</translation>
    </message>
    <message>
        <source>This month, sent</source>
        <translation>Ce mois-ci, envoyé</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Au total</translation>
    </message>
    <message>
        <source>All time, received</source>
        <translation>Au total, reçu</translation>
    </message>
    <message>
        <source>All time, sent</source>
        <translation>Au total, envoyé</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Remettre à zéro</translation>
    </message>
    <message>
        <source>Reset the figures shown</source>
        <translation>Remettre à zéro les valeurs affichées</translation>
    </message>
    <message>
        <source>Starts the figures on this page at zero. The stored totals come back at the next start.</source>
        <translation>Remet à zéro les valeurs de cette page. Les totaux enregistrés reviennent au prochain démarrage.</translation>
    </message>
    <message>
        <source>VPN log</source>
        <translation>Journal VPN</translation>
    </message>
    <message>
        <source>The log helps support to see what happened on your computer.</source>
        <translation>Le journal montre à l’assistance ce qui s’est passé sur votre ordinateur.</translation>
    </message>
    <message>
        <source>Copy log</source>
        <translation>Copier le journal</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>Connect automatically after start</source>
        <translation>Se connecter automatiquement au démarrage</translation>
    </message>
    <message>
        <source>Server to connect to after start</source>
        <translation>Serveur à utiliser au démarrage</translation>
    </message>
    <message>
        <source>Hide the window once connected</source>
        <translation>Masquer la fenêtre une fois connecté</translation>
    </message>
    <message>
        <source>Lock-down</source>
        <translation>Verrouillage du réseau</translation>
    </message>
    <message>
        <source>Nothing leaves this computer outside the tunnel.</source>
        <translation>Rien ne quitte cet ordinateur hors du tunnel.</translation>
    </message>
    <message>
        <source>No sounds</source>
        <translation>Aucun son</translation>
    </message>
    <message>
        <source>Run at system startup</source>
        <translation>Lancer au démarrage du système</translation>
    </message>
    <message>
        <source>DNS leak protection</source>
        <translation>Protection contre les fuites DNS</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>Se reconnecter automatiquement</translation>
    </message>
    <message>
        <source>Language, from the next start on</source>
        <translation>Langue, dès le prochain démarrage</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Mises à jour</translation>
    </message>
    <message>
        <source>Refresh the configuration</source>
        <translation>Actualiser la configuration</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Jamais</translation>
    </message>
    <message>
        <source>Every Startup</source>
        <translation>À chaque démarrage</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>Chaque jour</translation>
    </message>
    <message>
        <source>Every Week</source>
        <translation>Chaque semaine</translation>
    </message>
    <message>
        <source>Every Month</source>
        <translation>Chaque mois</translation>
    </message>
    <message>
        <source>Update configuration</source>
        <translation>Actualiser la configuration maintenant</translation>
    </message>
    <message>
        <source>Application update</source>
        <translation>Mise à jour de l’application</translation>
    </message>
    <message>
        <source>Progress of the application update</source>
        <translation>Progression de la mise à jour de l’application</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Mise à jour</translation>
    </message>
    <message>
        <source>Update the application</source>
        <translation>Mise à jour de l’application</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistiques</translation>
    </message>
    <message>
        <source>Deletes the stored totals of this month and of all time.</source>
        <translation>Supprime les totaux enregistrés du mois et depuis le début.</translation>
    </message>
    <message>
        <source>Reset all statistics</source>
        <translation>Réinitialiser toutes les statistiques</translation>
    </message>
    <message>
        <source>Signed in as</source>
        <translation>Compte connecté :</translation>
    </message>
    <message>
        <source>Save options</source>
        <translation>Enregistrer les options</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source>No proxy</source>
        <translation>Aucun proxy</translation>
    </message>
    <message>
        <source>Korvan reaches the servers directly.</source>
        <translation>Korvan accède directement aux serveurs.</translation>
    </message>
    <message>
        <source>HTTP proxy</source>
        <translation>Proxy HTTP</translation>
    </message>
    <message>
        <source>With or without a name and password.</source>
        <translation>Avec ou sans nom et mot de passe.</translation>
    </message>
    <message>
        <source>SOCKS proxy</source>
        <translation>Proxy SOCKS</translation>
    </message>
    <message>
        <source>SOCKS 5, without a name and password.</source>
        <translation>SOCKS 5, sans nom ni mot de passe.</translation>
    </message>
    <message>
        <source>Proxy server</source>
        <translation>Serveur proxy</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Proxy address</source>
        <translation>Adresse du proxy</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>Port du proxy</translation>
    </message>
    <message>
        <source>The proxy asks for a name and password</source>
        <translation>Le proxy demande un nom et un mot de passe</translation>
    </message>
    <message>
        <source>Proxy user name</source>
        <translation>Nom d’utilisateur du proxy</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>Mot de passe du proxy</translation>
    </message>
    <message>
        <source>Save proxy settings</source>
        <translation>Enregistrer les réglages du proxy</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>Serveurs</translation>
    </message>
    <message>
        <source>Server Name</source>
        <translation>Nom du serveur</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>Ping</translation>
    </message>
    <message>
        <source>Loss %</source>
        <translation>Perte %</translation>
    </message>
    <message>
        <source>Speed Test</source>
        <translation>Débit</translation>
    </message>
    <message>
        <source>Ping all servers</source>
        <translation>Ping de tous les serveurs</translation>
    </message>
    <message>
        <source>Detailed ping</source>
        <translation>Ping détaillé</translation>
    </message>
    <message>
        <source>Run speed test</source>
        <translation>Mesurer le débit</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Annuler le test</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>Tableau de bord</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Service status</source>
        <translation>État du service</translation>
    </message>
    <message>
        <source>New version %1 ready, please click &quot;Update&quot;.</source>
        <translation>La nouvelle version %1 est prête. Cliquez sur « Mise à jour ».</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Korvan compose7 is missed.</source>
        <translation>Le programme compose7 de Korvan est introuvable.</translation>
    </message>
    <message>
        <source>Notify</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Certificate might be expired.
Do you want to renew subscription?</source>
        <translation>Le certificat a peut-être expiré.
Souhaitez-vous renouveler votre abonnement ?</translation>
    </message>
    <message>
        <source>Public IP Address*</source>
        <translation>Adresse IP publique*</translation>
    </message>
    <message>
        <source>Public IP Address</source>
        <translation>Adresse IP publique</translation>
    </message>
    <message>
        <source>Proxied configurations require you to configure your program to use the VPN.
Check installation instructions for further details.</source>
        <translation>Les configurations avec proxy exigent que vous régliez votre programme pour qu’il utilise le VPN.
Consultez les instructions d’installation pour en savoir plus.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avertissement</translation>
    </message>
    <message>
        <source>Please note that if auto reconnect is enabled, there will be a brief moment 
in which your programs may not be protected by the VPN during reconnection. 
Do you still wish to enable auto-reconnect?</source>
        <translation>Notez qu’avec la reconnexion automatique, il y aura un bref moment
pendant lequel vos programmes pourraient ne pas être protégés par le VPN.
Souhaitez-vous l’activer malgré tout ?</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Débogage</translation>
    </message>
    <message>
        <source>Getting files from server ...</source>
        <translation>Récupération des fichiers ...</translation>
    </message>
    <message>
        <source>Invalid username or password.</source>
        <translation>Nom d’utilisateur ou mot de passe incorrect.</translation>
    </message>
    <message>
        <source>Updating Configuration ...</source>
        <translation>Mise à jour en cours ...</translation>
    </message>
    <message>
        <source>Update of new configuration failed.
Please try again later.
Korvan-GUI will use existing keys and configurations.</source>
        <translation>La mise à jour de la configuration a échoué.
Veuillez réessayer plus tard.
Korvan utilisera les clés et configurations existantes.</translation>
    </message>
    <message>
        <source>Retrieval of configuration and keys failed.
Please try again later or contact Support at </source>
        <translation>La récupération de la configuration et des clés a échoué.
Veuillez réessayer plus tard ou contacter l’assistance : </translation>
    </message>
    <message>
        <source>Unknown error, please check log.</source>
        <translation>Erreur inconnue. Veuillez consulter le journal.</translation>
    </message>
    <message>
        <source>Username or password is not valid.</source>
        <translation>Le nom d’utilisateur ou le mot de passe n’est pas valide.</translation>
    </message>
    <message>
        <source>Korvan Help</source>
        <translation>Aide de Korvan</translation>
    </message>
    <message>
        <source>Update Failed.</source>
        <translation>La mise à jour a échoué.</translation>
    </message>
    <message>
        <source>Update Successful.</source>
        <translation>La mise à jour est terminée.</translation>
    </message>
    <message>
        <source>Update url is not valid.</source>
        <translation>L’adresse de la mise à jour n’est pas valide.</translation>
    </message>
    <message>
        <source>Update done, please restart application.</source>
        <translation>Mise à jour téléchargée. Veuillez redémarrer l’application.</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Are you sure you wish to quit Korvan?</source>
        <translation>Voulez-vous vraiment quitter Korvan ?</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Annulé</translation>
    </message>
    <message>
        <source>Ping...</source>
        <translation>Ping...</translation>
    </message>
    <message>
        <source>Test...</source>
        <translation>Mesure...</translation>
    </message>
    <message>
        <source>Please disconnect first.</source>
        <translation>Veuillez d’abord vous déconnecter.</translation>
    </message>
    <message>
        <source>Please select one server.</source>
        <translation>Veuillez sélectionner un serveur.</translation>
    </message>
    <message>
        <source> CONNECTED</source>
        <translation>CONNECTÉ</translation>
    </message>
    <message>
        <source>Korvan: Disconnected</source>
        <translation>Korvan : déconnecté</translation>
    </message>
    <message>
        <source>Korvan: Connecting to server %1</source>
        <translation>Korvan : connexion au serveur %1</translation>
    </message>
    <message>
        <source>Korvan: Connected to server %1</source>
        <translation>Korvan : connecté au serveur %1</translation>
    </message>
    <message>
        <source>Connecting to server %1</source>
        <translation>Connexion au serveur %1</translation>
    </message>
    <message>
        <source>Connected to server %1</source>
        <translation>Connecté au serveur %1</translation>
    </message>
    <message>
        <source>Disconnected from server %1</source>
        <translation>Déconnecté du serveur %1</translation>
    </message>
    <message>
        <source>Update Config...</source>
        <translation>Mettre à jour la configuration...</translation>
    </message>
    <message>
        <source>Proxy Settings...</source>
        <translation>Réglages du proxy...</translation>
    </message>
    <message>
        <source>Open Korvan</source>
        <translation>Ouvrir Korvan</translation>
    </message>
    <message>
        <source>Change User...</source>
        <translation>Changer d’utilisateur...</translation>
    </message>
    <message>
        <source>Internet connection has been terminated for your security.
Please press OK to resume your regular internet connection and reconnect to the VPN if needed.</source>
        <translation>La connexion à Internet a été coupée pour votre sécurité.
Appuyez sur OK pour rétablir votre connexion à Internet habituelle, puis reconnectez-vous au VPN si nécessaire.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Comme le bureau</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>aucune donnée reçue</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>La mise à jour a échoué : %1.</translation>
    </message>
    <message>
        <source>it can not be checked</source>
        <translation>elle ne peut pas être vérifiée</translation>
    </message>
    <message>
        <source>the archive can not be stored</source>
        <translation>l’archive ne peut pas être enregistrée</translation>
    </message>
    <message>
        <source>the answer has the status %1</source>
        <translation>la réponse a le statut %1</translation>
    </message>
    <message>
        <source>the answer is no archive</source>
        <translation>la réponse n’est pas une archive</translation>
    </message>
    <message>
        <source>Refresh now: the configuration</source>
        <translation>Actualiser maintenant : la configuration</translation>
    </message>
    <message>
        <source>FAQ: frequently asked questions</source>
        <translation>FAQ : questions fréquentes</translation>
    </message>
    <message>
        <source>Return sorts by the column of the current cell.</source>
        <translation>Entrée trie selon la colonne de la cellule active.</translation>
    </message>
    <message>
        <source>Needs &quot;%1&quot; on the sign-in page.</source>
        <translation>Nécessite « %1 » à la connexion.</translation>
    </message>
    <message>
        <source>The configuration could not be refreshed: the service can not be reached.</source>
        <translation>La configuration n’a pas pu être actualisée : le service est injoignable.</translation>
    </message>
    <message>
        <source>The configuration is in use now.</source>
        <translation>La configuration est en cours d’utilisation.</translation>
    </message>
    <message>
        <source>The changes of the options are not saved.</source>
        <translation>Les modifications des options ne sont pas enregistrées.</translation>
    </message>
    <message>
        <source>Korvan: Disconnecting...</source>
        <translation>Korvan : déconnexion...</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Connexion en cours...</translation>
    </message>
    <message>
        <source>Disconnecting...</source>
        <translation>Déconnexion...</translation>
    </message>
    <message>
        <source>Reconnecting...</source>
        <translation>Reconnexion en cours...</translation>
    </message>
    <message>
        <source>The connection has failed.</source>
        <translation>La connexion a échoué.</translation>
    </message>
    <message>
        <source>The address of %1 is not encrypted, so that nothing was sent.</source>
        <translation>L’adresse de %1 n’est pas chiffrée : rien n’a été envoyé.</translation>
    </message>
    <message>
        <source>%1 does not show the key that it is known by, so that nothing was sent. Somebody may be answering in its place.</source>
        <translation>%1 ne présente pas la clé sous laquelle il est connu : rien n’a été envoyé. Quelqu’un répond peut-être à sa place.</translation>
    </message>
    <message>
        <source>There is no configuration any more.</source>
        <translation>Il n&apos;y a plus de configuration.</translation>
    </message>
    <message>
        <source>A web page came in place of your configuration. Hotels, trains and cafés do that until you have signed in to their network. Sign in there, then try again.</source>
        <translation>Une page web est arrivée à la place de votre configuration. Les hôtels, les trains et les cafés font cela tant que vous ne vous êtes pas connecté à leur réseau. Connectez-vous-y, puis réessayez.</translation>
    </message>
    <message>
        <source>The service is out of order at the moment. Please try again later.</source>
        <translation>Le service est en panne en ce moment. Veuillez réessayer plus tard.</translation>
    </message>
    <message>
        <source>The service did not accept your user name or password. Change the user and sign in again.</source>
        <translation>Le service n&apos;a pas accepté votre nom d&apos;utilisateur ou votre mot de passe. Changez d&apos;utilisateur et connectez-vous de nouveau.</translation>
    </message>
    <message>
        <source>The configuration that came is damaged. Please try again later or contact Support at </source>
        <translation>La configuration reçue est endommagée. Réessayez plus tard ou écrivez à l&apos;assistance : </translation>
    </message>
    <message>
        <source>The configuration that came could not be stored. Look whether the disk is full, then try again.</source>
        <translation>La configuration est arrivée, mais n’a pas pu être enregistrée. Vérifiez si le disque est plein, puis réessayez.</translation>
    </message>
    <message>
        <source>The last configuration can not be put back.</source>
        <translation>La dernière configuration ne peut pas être rétablie.</translation>
    </message>
    <message>
        <source>it is not signed</source>
        <translation>elle n&apos;est pas signée</translation>
    </message>
    <message>
        <source>its signature is damaged</source>
        <translation>sa signature est endommagée</translation>
    </message>
    <message>
        <source>its signature is not right</source>
        <translation>sa signature n&apos;est pas correcte</translation>
    </message>
    <message>
        <source>it is signed with a key that this program does not know</source>
        <translation>elle est signée avec une clé que ce programme ne connaît pas</translation>
    </message>
    <message>
        <source>it is signed for another program</source>
        <translation>elle est signée pour un autre programme</translation>
    </message>
    <message>
        <source>it is signed as version %1 and holds version %2</source>
        <translation>elle est signée comme version %1 et contient la version %2</translation>
    </message>
    <message>
        <source>its version %1 is older than the installed %2</source>
        <translation>sa version %1 est plus ancienne que celle installée, %2</translation>
    </message>
    <message>
        <source>another update is being installed</source>
        <translation>une autre mise à jour est en cours d&apos;installation</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>le programme est encore en cours d&apos;exécution</translation>
    </message>
    <message>
        <source>the new version does not run, it ended at once with status %1</source>
        <translation>la nouvelle version ne fonctionne pas, elle s&apos;est terminée aussitôt avec l&apos;état %1</translation>
    </message>
    <message>
        <source>No traffic goes through the tunnel.</source>
        <translation>Aucun trafic ne passe par le tunnel.</translation>
    </message>
    <message>
        <source>Only in the tunnel: %1</source>
        <translation>Seulement dans le tunnel : %1</translation>
    </message>
    <message>
        <source>Not in the tunnel: %1</source>
        <translation>Hors du tunnel : %1</translation>
    </message>
    <message>
        <source>Please sign in first.</source>
        <translation>Connectez-vous d’abord à votre compte.</translation>
    </message>
</context>
<context>
    <name>KvL2TPBox</name>
    <message>
        <source>L2TP Password</source>
        <translation>Mot de passe L2TP</translation>
    </message>
    <message>
        <source>L2TP Password:</source>
        <translation>Mot de passe L2TP :</translation>
    </message>
    <message>
        <source>Remember Password</source>
        <translation>Mémoriser le mot de passe</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>KvLanguageBox</name>
    <message>
        <source>As the desktop</source>
        <translation>Comme le bureau</translation>
    </message>
</context>
<context>
    <name>KvNotice</name>
    <message>
        <source>Sign in to this network</source>
        <translation>Se connecter à ce réseau</translation>
    </message>
    <message>
        <source>Use the last working configuration</source>
        <translation>Utiliser la dernière configuration qui fonctionnait</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Updating...Please wait a moment.</source>
        <translation>Mise à jour en cours. Veuillez patienter un instant.</translation>
    </message>
    <message>
        <source>compose9 is missed, update failed.</source>
        <translation>compose9 est introuvable, la mise à jour a échoué.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Can not start update compose.</source>
        <translation>Impossible de lancer le programme de mise à jour.</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Made by the Korvan team
</source>
        <translation>Réalisé par l’équipe Korvan
</translation>
    </message>
    <message>
        <source>Compiled in %1
</source>
        <translation>Compilé le %1
</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Version actuelle : </translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Logiciel libre sous licence publique générale GNU, version 3 ou ultérieure.</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>La mise à jour a échoué : %1.</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Mise à jour</translation>
    </message>
</context>
<context>
    <name>RootPart</name>
    <message>
        <source>Secure failed, you must run me as root at least one time</source>
        <translation>Échec de la sécurisation : Korvan doit être lancé en tant que root au moins une fois</translation>
    </message>
    <message>
        <source>This update can not be installed from here, because nothing proves that it comes from the service.
Please install the new package of Korvan instead.</source>
        <translation>Cette mise à jour ne peut pas être installée d&apos;ici, car rien ne prouve qu&apos;elle provient du service.
Veuillez plutôt installer le nouveau paquet de Korvan.</translation>
    </message>
    <message>
        <source>%1 is using Korvan on this computer, and alone can end that.</source>
        <translation>%1 utilise Korvan sur cet ordinateur et peut seul y mettre fin.</translation>
    </message>
    <message>
        <source>Somebody else is using Korvan on this computer, and alone can end that.</source>
        <translation>Quelqu&apos;un d&apos;autre utilise Korvan sur cet ordinateur et peut seul y mettre fin.</translation>
    </message>
</context>
</TS>
