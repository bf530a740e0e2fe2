<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Korvan</name>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Iniciar sesión</translation>
    </message>
    <message>
        <source>Use the name and password of your subscription.</source>
        <translation>El nombre y la contraseña de su suscripción.</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Nombre de usuario</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Contraseña</translation>
    </message>
    <message>
        <source>Remember login</source>
        <translation>Recordar los datos de acceso</translation>
    </message>
    <message>
        <source>Log in</source>
        <translation>Iniciar sesión</translation>
    </message>
    <message>
        <source>Use existing configuration</source>
        <translation>Usar la configuración existente</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Páginas</translation>
    </message>
    <message>
        <source>NOT CONNECTED</source>
        <translation>SIN CONEXIÓN</translation>
    </message>
    <message>
        <source>Connection progress</source>
        <translation>Progreso de la conexión</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protocolo</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Servidor</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Conectar</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Desconectar</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>Reconectar</translation>
    </message>
    <message>
        <source>Change user</source>
        <translation>Cambiar de usuario</translation>
    </message>
    <message>
        <source>Expires</source>
        <translation>Caduca</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Dirección del servidor</translation>
    </message>
    <message>
        <source>Public IP address</source>
        <translation>Dirección IP pública</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>País</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Configuración</translation>
    </message>
    <message>
        <source>Refresh now</source>
        <translation>Actualizar ahora</translation>
    </message>
    <message>
        <source>Need help?</source>
        <translation>¿Necesita ayuda?</translation>
    </message>
    <message>
        <source>FAQ</source>
        <translation>FAQ</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Soporte</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Ahora</translation>
    </message>
    <message>
        <source>Now, received</source>
        <translation>Ahora, recibido</translation>
    </message>
    <message>
        <source>Now, sent</source>
        <translation>Ahora, enviado</translation>
    </message>
    <message>
        <source>This connection</source>
        <translation>Esta conexión</translation>
    </message>
    <message>
        <source>This connection, received</source>
        <translation>Esta conexión, recibido</translation>
    </message>
    <message>
        <source>This connection, sent</source>
        <translation>Esta conexión, enviado</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Este mes</translation>
    </message>
    <message>
        <source>This month, received</source>
        <translation>Este mes, recibido</translation>
    </message>
    <message>
        <source>This month, sent</source>
        <translation>Este mes, enviado</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Total</translation>
    </message>
    <message>
        <source>All time, received</source>
        <translation>Total, recibido</translation>
    </message>
    <message>
        <source>All time, sent</source>
        <translation>Total, enviado</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>Reset the figures shown</source>
        <translation>Restablecer las cifras mostradas</translation>
    </message>
    <message>
        <source>Starts the figures on this page at zero. The stored totals come back at the next start.</source>
        <translation>Pone a cero las cifras de esta página. Los totales guardados vuelven en el próximo inicio.</translation>
    </message>
    <message>
        <source>VPN log</source>
        <translation>Registro VPN</translation>
    </message>
    <message>
        <source>The log helps support to see what happened on your computer.</source>
        <translation>El registro muestra al soporte qué ha ocurrido en su equipo.</translation>
    </message>
    <message>
        <source>Copy log</source>
        <translation>Copiar registro</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Conexión</translation>
    </message>
    <message>
        <source>Connect automatically after start</source>
        <translation>Conectar automáticamente al iniciar</translation>
    </message>
    <message>
        <source>Server to connect to after start</source>
        <translation>Servidor al que conectar al iniciar</translation>
    </message>
    <message>
        <source>Hide the window once connected</source>
        <translation>Ocultar la ventana al conectar</translation>
    </message>
    <message>
        <source>Lock-down</source>
        <translation>Bloqueo de red</translation>
    </message>
    <message>
        <source>Nothing leaves this computer outside the tunnel.</source>
        <translation>Nada sale de este equipo fuera del túnel.</translation>
    </message>
    <message>
        <source>No sounds</source>
        <translation>Sin sonidos</translation>
    </message>
    <message>
        <source>Run at system startup</source>
        <translation>Ejecutar al iniciar el sistema</translation>
    </message>
    <message>
        <source>DNS leak protection</source>
        <translation>Protección contra fugas de DNS</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>Reconectar automáticamente</translation>
    </message>
    <message>
        <source>Language, from the next start on</source>
        <translation>Idioma, desde el próximo inicio</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Actualizaciones</translation>
    </message>
    <message>
        <source>Refresh the configuration</source>
        <translation>Actualizar la configuración</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message>
        <source>Every Startup</source>
        <translation>En cada inicio</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>Cada día</translation>
    </message>
    <message>
        <source>Every Week</source>
        <translation>Cada semana</translation>
    </message>
    <message>
        <source>Every Month</source>
        <translation>Cada mes</translation>
    </message>
    <message>
        <source>Update configuration</source>
        <translation>Actualizar la configuración ahora</translation>
    </message>
    <message>
        <source>Application update</source>
        <translation>Actualización de la aplicación</translation>
    </message>
    <message>
        <source>Progress of the application update</source>
        <translation>Progreso de la actualización de la aplicación</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Actualización</translation>
    </message>
    <message>
        <source>Update the application</source>
        <translation>Actualización de la aplicación</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Estadísticas</translation>
    </message>
    <message>
        <source>Deletes the stored totals of this month and of all time.</source>
        <translation>Borra los totales guardados de este mes y los generales.</translation>
    </message>
    <message>
        <source>Reset all statistics</source>
        <translation>Restablecer todas las estadísticas</translation>
    </message>
    <message>
        <source>Signed in as</source>
        <translation>Sesión iniciada como</translation>
    </message>
    <message>
        <source>Save options</source>
        <translation>Guardar opciones</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source>No proxy</source>
        <translation>Sin proxy</translation>
    </message>
    <message>
        <source>Korvan reaches the servers directly.</source>
        <translation>Korvan accede a los servidores directamente.</translation>
    </message>
    <message>
        <source>HTTP proxy</source>
        <translation>Proxy HTTP</translation>
    </message>
    <message>
        <source>With or without a name and password.</source>
        <translation>Con o sin nombre y contraseña.</translation>
    </message>
    <message>
        <source>SOCKS proxy</source>
        <translation>Proxy SOCKS</translation>
    </message>
    <message>
        <source>SOCKS 5, without a name and password.</source>
        <translation>SOCKS 5, sin nombre ni contraseña.</translation>
    </message>
    <message>
        <source>Proxy server</source>
        <translation>Servidor proxy</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Dirección</translation>
    </message>
    <message>
        <source>Proxy address</source>
        <translation>Dirección del proxy</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Puerto</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>Puerto del proxy</translation>
    </message>
    <message>
        <source>The proxy asks for a name and password</source>
        <translation>El proxy pide nombre y contraseña</translation>
    </message>
    <message>
        <source>Proxy user name</source>
        <translation>Nombre de usuario del proxy</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>Contraseña del proxy</translation>
    </message>
    <message>
        <source>Save proxy settings</source>
        <translation>Guardar la configuración del proxy</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>Servidores</translation>
    </message>
    <message>
        <source>Server Name</source>
        <translation>Nombre del servidor</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>Ping</translation>
    </message>
    <message>
        <source>Loss %</source>
        <translation>Pérdida %</translation>
    </message>
    <message>
        <source>Speed Test</source>
        <translation>Velocidad</translation>
    </message>
    <message>
        <source>Ping all servers</source>
        <translation>Hacer ping a todos</translation>
    </message>
    <message>
        <source>Detailed ping</source>
        <translation>Ping detallado</translation>
    </message>
    <message>
        <source>Run speed test</source>
        <translation>Medir velocidad</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Cancelar la prueba</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>Panel</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Service status</source>
        <translation>Estado del servicio</translation>
    </message>
    <message>
        <source>New version %1 ready, please click &quot;Update&quot;.</source>
        <translation>La nueva versión %1 está lista. Pulse «Actualización».</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Korvan compose7 is missed.</source>
        <translation>Falta el programa compose7 de Korvan.</translation>
    </message>
    <message>
        <source>Notify</source>
        <translation>Aviso</translation>
    </message>
    <message>
        <source>Certificate might be expired.
Do you want to renew subscription?</source>
        <translation>Es posible que el certificado haya caducado.
¿Desea renovar la suscripción?</translation>
    </message>
    <message>
        <source>Public IP Address*</source>
        <translation>Dirección IP pública*</translation>
    </message>
    <message>
        <source>Public IP Address</source>
        <translation>Dirección IP pública</translation>
    </message>
    <message>
        <source>Proxied configurations require you to configure your program to use the VPN.
Check installation instructions for further details.</source>
        <translation>Las configuraciones con proxy requieren que ajuste su programa para usar la VPN.
Consulte las instrucciones de instalación.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Advertencia</translation>
    </message>
    <message>
        <source>Please note that if auto reconnect is enabled, there will be a brief moment 
in which your programs may not be protected by the VPN during reconnection. 
Do you still wish to enable auto-reconnect?</source>
        <translation>Tenga en cuenta que, con la reconexión automática, habrá un breve momento
en el que sus programas podrían no estar protegidos por la VPN.
¿Desea activarla de todos modos?</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Depuración</translation>
    </message>
    <message>
        <source>Getting files from server ...</source>
        <translation>Obteniendo archivos ...</translation>
    </message>
    <message>
        <source>Invalid username or password.</source>
        <translation>El nombre de usuario o la contraseña no son correctos.</translation>
    </message>
    <message>
        <source>Updating Configuration ...</source>
        <translation>Actualizando configuración ...</translation>
    </message>
    <message>
        <source>Update of new configuration failed.
Please try again later.
Korvan-GUI will use existing keys and configurations.</source>
        <translation>No se ha podido actualizar la configuración.
Inténtelo de nuevo más tarde.
Korvan usará las claves y configuraciones existentes.</translation>
    </message>
    <message>
        <source>Retrieval of configuration and keys failed.
Please try again later or contact Support at </source>
        <translation>No se han podido obtener la configuración y las claves.
Inténtelo de nuevo más tarde o contacte con el soporte: </translation>
    </message>
    <message>
        <source>Unknown error, please check log.</source>
        <translation>Error desconocido. Consulte el registro.</translation>
    </message>
    <message>
        <source>Username or password is not valid.</source>
        <translation>El nombre de usuario o la contraseña no son válidos.</translation>
    </message>
    <message>
        <source>Korvan Help</source>
        <translation>Ayuda de Korvan</translation>
    </message>
    <message>
        <source>Update Failed.</source>
        <translation>La actualización ha fallado.</translation>
    </message>
    <message>
        <source>Update Successful.</source>
        <translation>La actualización se ha completado.</translation>
    </message>
    <message>
        <source>Update url is not valid.</source>
        <translation>La dirección de la actualización no es válida.</translation>
    </message>
    <message>
        <source>Update done, please restart application.</source>
        <translation>Actualización descargada. Reinicie la aplicación.</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Are you sure you wish to quit Korvan?</source>
        <translation>¿Seguro que desea salir de Korvan?</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Cancelado</translation>
    </message>
    <message>
        <source>Ping...</source>
        <translation>Ping...</translation>
    </message>
    <message>
        <source>Test...</source>
        <translation>Midiendo...</translation>
    </message>
    <message>
        <source>Please disconnect first.</source>
        <translation>Desconecte primero.</translation>
    </message>
    <message>
        <source>Please select one server.</source>
        <translation>Seleccione un servidor.</translation>
    </message>
    <message>
        <source> CONNECTED</source>
        <translation>CONECTADO</translation>
    </message>
    <message>
        <source>Korvan: Disconnected</source>
        <translation>Korvan: Sin conexión</translation>
    </message>
    <message>
        <source>Korvan: Connecting to server %1</source>
        <translation>Korvan: Conectando con el servidor %1</translation>
    </message>
    <message>
        <source>Korvan: Connected to server %1</source>
        <translation>Korvan: Conectado al servidor %1</translation>
    </message>
    <message>
        <source>Connecting to server %1</source>
        <translation>Conectando con el servidor %1</translation>
    </message>
    <message>
        <source>Connected to server %1</source>
        <translation>Conectado al servidor %1</translation>
    </message>
    <message>
        <source>Disconnected from server %1</source>
        <translation>Desconectado del servidor %1</translation>
    </message>
    <message>
        <source>Update Config...</source>
        <translation>Actualizar configuración...</translation>
    </message>
    <message>
        <source>Proxy Settings...</source>
        <translation>Configuración del proxy...</translation>
    </message>
    <message>
        <source>Open Korvan</source>
        <translation>Abrir Korvan</translation>
    </message>
    <message>
        <source>Change User...</source>
        <translation>Cambiar de usuario...</translation>
    </message>
    <message>
        <source>Internet connection has been terminated for your security.
Please press OK to resume your regular internet connection and reconnect to the VPN if needed.</source>
        <translation>La conexión a Internet se ha interrumpido por su seguridad.
Pulse Aceptar para restablecer su conexión a Internet habitual y vuelva a conectarse a la VPN si lo necesita.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apariencia</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Como el sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>no hay datos</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>La actualización ha fallado: %1.</translation>
    </message>
    <message>
        <source>it can not be checked</source>
        <translation>no se puede comprobar</translation>
    </message>
    <message>
        <source>the archive can not be stored</source>
        <translation>no se puede guardar el archivo</translation>
    </message>
    <message>
        <source>the answer has the status %1</source>
        <translation>la respuesta tiene el estado %1</translation>
    </message>
    <message>
        <source>the answer is no archive</source>
        <translation>la respuesta no es un archivo de actualización</translation>
    </message>
    <message>
        <source>Refresh now: the configuration</source>
        <translation>Actualizar ahora: la configuración</translation>
    </message>
    <message>
        <source>FAQ: frequently asked questions</source>
        <translation>FAQ: preguntas frecuentes</translation>
    </message>
    <message>
        <source>Return sorts by the column of the current cell.</source>
        <translation>Intro ordena por la columna de la celda actual.</translation>
    </message>
    <message>
        <source>Needs &quot;%1&quot; on the sign-in page.</source>
        <translation>Requiere «%1» al iniciar sesión.</translation>
    </message>
    <message>
        <source>The configuration could not be refreshed: the service can not be reached.</source>
        <translation>No se ha podido actualizar la configuración: no se puede acceder al servicio.</translation>
    </message>
    <message>
        <source>The configuration is in use now.</source>
        <translation>La configuración está en uso.</translation>
    </message>
    <message>
        <source>The changes of the options are not saved.</source>
        <translation>Los cambios de las opciones no se han guardado.</translation>
    </message>
    <message>
        <source>Korvan: Disconnecting...</source>
        <translation>Korvan: Desconectando...</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Conectando...</translation>
    </message>
    <message>
        <source>Disconnecting...</source>
        <translation>Desconectando...</translation>
    </message>
    <message>
        <source>Reconnecting...</source>
        <translation>Reconectando...</translation>
    </message>
    <message>
        <source>The connection has failed.</source>
        <translation>La conexión ha fallado.</translation>
    </message>
    <message>
        <source>The address of %1 is not encrypted, so that nothing was sent.</source>
        <translation>La dirección de %1 no está cifrada, por lo que no se ha enviado nada.</translation>
    </message>
    <message>
        <source>%1 does not show the key that it is known by, so that nothing was sent. Somebody may be answering in its place.</source>
        <translation>%1 no presenta la clave por la que se le conoce, por lo que no se ha enviado nada. Es posible que alguien responda en su lugar.</translation>
    </message>
    <message>
        <source>There is no configuration any more.</source>
        <translation>Ya no hay ninguna configuración.</translation>
    </message>
    <message>
        <source>A web page came in place of your configuration. Hotels, trains and cafés do that until you have signed in to their network. Sign in there, then try again.</source>
        <translation>En lugar de su configuración llegó una página web. Hoteles, trenes y cafés hacen eso hasta que usted inicia sesión en su red. Inicie sesión allí y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The service is out of order at the moment. Please try again later.</source>
        <translation>El servicio no funciona en este momento. Inténtelo de nuevo más tarde.</translation>
    </message>
    <message>
        <source>The service did not accept your user name or password. Change the user and sign in again.</source>
        <translation>El servicio no aceptó su nombre de usuario o su contraseña. Cambie de usuario e inicie sesión de nuevo.</translation>
    </message>
    <message>
        <source>The configuration that came is damaged. Please try again later or contact Support at </source>
        <translation>La configuración que llegó está dañada. Vuelva a intentarlo más tarde o escriba a la asistencia: </translation>
    </message>
    <message>
        <source>The configuration that came could not be stored. Look whether the disk is full, then try again.</source>
        <translation>La configuración ha llegado, pero no se ha podido guardar. Compruebe si el disco está lleno y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The last configuration can not be put back.</source>
        <translation>No se puede recuperar la última configuración.</translation>
    </message>
    <message>
        <source>it is not signed</source>
        <translation>no está firmada</translation>
    </message>
    <message>
        <source>its signature is damaged</source>
        <translation>su firma está dañada</translation>
    </message>
    <message>
        <source>its signature is not right</source>
        <translation>su firma no es correcta</translation>
    </message>
    <message>
        <source>it is signed with a key that this program does not know</source>
        <translation>está firmada con una clave que este programa no conoce</translation>
    </message>
    <message>
        <source>it is signed for another program</source>
        <translation>está firmada para otro programa</translation>
    </message>
    <message>
        <source>it is signed as version %1 and holds version %2</source>
        <translation>está firmada como versión %1 y contiene la versión %2</translation>
    </message>
    <message>
        <source>its version %1 is older than the installed %2</source>
        <translation>su versión %1 es anterior a la instalada %2</translation>
    </message>
    <message>
        <source>another update is being installed</source>
        <translation>se está instalando otra actualización</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>el programa sigue en ejecución</translation>
    </message>
    <message>
        <source>the new version does not run, it ended at once with status %1</source>
        <translation>la nueva versión no funciona, terminó enseguida con el estado %1</translation>
    </message>
    <message>
        <source>No traffic goes through the tunnel.</source>
        <translation>Ningún tráfico pasa por el túnel.</translation>
    </message>
    <message>
        <source>Only in the tunnel: %1</source>
        <translation>Solo por el túnel: %1</translation>
    </message>
    <message>
        <source>Not in the tunnel: %1</source>
        <translation>Fuera del túnel: %1</translation>
    </message>
    <message>
        <source>Please sign in first.</source>
        <translation>Inicie sesión primero.</translation>
    </message>
</context>
<context>
    <name>KvL2TPBox</name>
    <message>
        <source>L2TP Password</source>
        <translation>Contraseña de L2TP</translation>
    </message>
    <message>
        <source>L2TP Password:</source>
        <translation>Contraseña de L2TP:</translation>
    </message>
    <message>
        <source>Remember Password</source>
        <translation>Recordar contraseña</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>KvLanguageBox</name>
    <message>
        <source>As the desktop</source>
        <translation>Como el sistema</translation>
    </message>
</context>
<context>
    <name>KvNotice</name>
    <message>
        <source>Sign in to this network</source>
        <translation>Iniciar sesión en esta red</translation>
    </message>
    <message>
        <source>Use the last working configuration</source>
        <translation>Usar la última configuración que funcionó</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Updating...Please wait a moment.</source>
        <translation>Actualizando. Espere un momento.</translation>
    </message>
    <message>
        <source>compose9 is missed, update failed.</source>
        <translation>Falta compose9: la actualización ha fallado.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Can not start update compose.</source>
        <translation>No se puede iniciar el programa de actualización.</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Versión</translation>
    </message>
    <message>
        <source>Made by the Korvan team
</source>
        <translation>Creado por el equipo de Korvan
</translation>
    </message>
    <message>
        <source>Compiled in %1
</source>
        <translation>Compilado el %1
</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Versión actual: </translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Software libre bajo la Licencia Pública General de GNU, versión 3 o posterior.</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>La actualización ha fallado: %1.</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Actualización</translation>
    </message>
</context>
<context>
    <name>RootPart</name>
    <message>
        <source>Secure failed, you must run me as root at least one time</source>
        <translation>No se han obtenido los permisos; debe ejecutar Korvan como root al menos una vez</translation>
    </message>
    <message>
        <source>This update can not be installed from here, because nothing proves that it comes from the service.
Please install the new package of Korvan instead.</source>
        <translation>Esta actualización no se puede instalar desde aquí, porque nada demuestra que proceda del servicio.
Instale en su lugar el nuevo paquete de Korvan.</translation>
    </message>
    <message>
        <source>%1 is using Korvan on this computer, and alone can end that.</source>
        <translation>%1 está usando Korvan en este equipo y es quien puede finalizarlo.</translation>
    </message>
    <message>
        <source>Somebody else is using Korvan on this computer, and alone can end that.</source>
        <translation>Otra persona está usando Korvan en este equipo y es quien puede finalizarlo.</translation>
    </message>
</context>
</TS>
