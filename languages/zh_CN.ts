<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Korvan</name>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Use the name and password of your subscription.</source>
        <translation>请使用您订阅的用户名和密码。</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>用户名</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Remember login</source>
        <translation>记住登录信息</translation>
    </message>
    <message>
        <source>Log in</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Use existing configuration</source>
        <translation>使用现有配置</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>页面</translation>
    </message>
    <message>
        <source>NOT CONNECTED</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>Connection progress</source>
        <translation>连接进度</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>协议</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>服务器</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>断开连接</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>重新连接</translation>
    </message>
    <message>
        <source>Change user</source>
        <translation>切换用户</translation>
    </message>
    <message>
        <source>Expires</source>
        <translation>有效期至</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>服务器地址</translation>
    </message>
    <message>
        <source>Public IP address</source>
        <translation>公网 IP 地址</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>国家/地区</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>配置</translation>
    </message>
    <message>
        <source>Refresh now</source>
        <translation>立即刷新</translation>
    </message>
    <message>
        <source>Need help?</source>
        <translation>需要帮助？</translation>
    </message>
    <message>
        <source>FAQ</source>
        <translation>常见问题</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>支持</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>当前</translation>
    </message>
    <message>
        <source>Now, received</source>
        <translation>当前，已接收</translation>
    </message>
    <message>
        <source>Now, sent</source>
        <translation>当前，已发送</translation>
    </message>
    <message>
        <source>This connection</source>
        <translation>本次连接</translation>
    </message>
    <message>
        <source>This connection, received</source>
        <translation>本次连接，已接收</translation>
    </message>
    <message>
        <source>This connection, sent</source>
        <translation>本次连接，已发送</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>本月</translation>
    </message>
    <message>
        <source>This month, received</source>
        <translation>本月，已接收</translation>
    </message>
    <message>
        <source>This month, sent</source>
        <translation>本月，已发送</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>累计</translation>
    </message>
    <message>
        <source>All time, received</source>
        <translation>累计，已接收</translation>
    </message>
    <message>
        <source>All time, sent</source>
        <translation>累计，已发送</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Reset the figures shown</source>
        <translation>重置显示的数值</translation>
    </message>
    <message>
        <source>Starts the figures on this page at zero. The stored totals come back at the next start.</source>
        <translation>将此页面上的数值归零。已保存的总计会在下次启动时恢复。</translation>
    </message>
    <message>
        <source>VPN log</source>
        <translation>VPN 日志</translation>
    </message>
    <message>
        <source>The log helps support to see what happened on your computer.</source>
        <translation>日志可帮助支持人员了解您的电脑上发生了什么。</translation>
    </message>
    <message>
        <source>Copy log</source>
        <translation>复制日志</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Connect automatically after start</source>
        <translation>启动后自动连接</translation>
    </message>
    <message>
        <source>Server to connect to after start</source>
        <translation>启动后要连接的服务器</translation>
    </message>
    <message>
        <source>Hide the window once connected</source>
        <translation>连接后隐藏窗口</translation>
    </message>
    <message>
        <source>Lock-down</source>
        <translation>网络锁定</translation>
    </message>
    <message>
        <source>Nothing leaves this computer outside the tunnel.</source>
        <translation>任何数据都不会绕过隧道离开此电脑。</translation>
    </message>
    <message>
        <source>No sounds</source>
        <translation>静音</translation>
    </message>
    <message>
        <source>Run at system startup</source>
        <translation>随系统启动</translation>
    </message>
    <message>
        <source>DNS leak protection</source>
        <translation>DNS 泄漏保护</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>自动重新连接</translation>
    </message>
    <message>
        <source>Language, from the next start on</source>
        <translation>语言（下次启动时生效）</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Refresh the configuration</source>
        <translation>刷新配置</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>从不</translation>
    </message>
    <message>
        <source>Every Startup</source>
        <translation>每次启动</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>每天</translation>
    </message>
    <message>
        <source>Every Week</source>
        <translation>每周</translation>
    </message>
    <message>
        <source>Every Month</source>
        <translation>每月</translation>
    </message>
    <message>
        <source>Update configuration</source>
        <translation>更新配置</translation>
    </message>
    <message>
        <source>Application update</source>
        <translation>应用程序更新</translation>
    </message>
    <message>
        <source>Progress of the application update</source>
        <translation>应用程序更新进度</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Update the application</source>
        <translation>更新应用程序</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>统计</translation>
    </message>
    <message>
        <source>Deletes the stored totals of this month and of all time.</source>
        <translation>删除已保存的本月总计和累计总计。</translation>
    </message>
    <message>
        <source>Reset all statistics</source>
        <translation>重置所有统计</translation>
    </message>
    <message>
        <source>Signed in as</source>
        <translation>当前登录：</translation>
    </message>
    <message>
        <source>Save options</source>
        <translation>保存选项</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>代理</translation>
    </message>
    <message>
        <source>No proxy</source>
        <translation>不使用代理</translation>
    </message>
    <message>
        <source>Korvan reaches the servers directly.</source>
        <translation>Korvan 直接连接服务器。</translation>
    </message>
    <message>
        <source>HTTP proxy</source>
        <translation>HTTP 代理</translation>
    </message>
    <message>
        <source>With or without a name and password.</source>
        <translation>可使用或不使用用户名和密码。</translation>
    </message>
    <message>
        <source>SOCKS proxy</source>
        <translation>SOCKS 代理</translation>
    </message>
    <message>
        <source>SOCKS 5, without a name and password.</source>
        <translation>SOCKS 5，不使用用户名和密码。</translation>
    </message>
    <message>
        <source>Proxy server</source>
        <translation>代理服务器</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Proxy address</source>
        <translation>代理地址</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>代理端口</translation>
    </message>
    <message>
        <source>The proxy asks for a name and password</source>
        <translation>代理需要用户名和密码</translation>
    </message>
    <message>
        <source>Proxy user name</source>
        <translation>代理用户名</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>代理密码</translation>
    </message>
    <message>
        <source>Save proxy settings</source>
        <translation>保存代理设置</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>服务器</translation>
    </message>
    <message>
        <source>Server Name</source>
        <translation>服务器名称</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>延迟</translation>
    </message>
    <message>
        <source>Loss %</source>
        <translation>丢包率 %</translation>
    </message>
    <message>
        <source>Speed Test</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Ping all servers</source>
        <translation>Ping 所有服务器</translation>
    </message>
    <message>
        <source>Detailed ping</source>
        <translation>详细 Ping</translation>
    </message>
    <message>
        <source>Run speed test</source>
        <translation>运行测速</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>取消测试</translation>
    </message>
    <message>
        <source>Dashboard</source>
        <translation>概览</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Service status</source>
        <translation>服务状态</translation>
    </message>
    <message>
        <source>New version %1 ready, please click &quot;Update&quot;.</source>
        <translation>新版本 %1 已就绪，请点击“更新”。</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Korvan compose7 is missed.</source>
        <translation>缺少 Korvan 的 compose7 程序。</translation>
    </message>
    <message>
        <source>Notify</source>
        <translation>通知</translation>
    </message>
    <message>
        <source>Certificate might be expired.
Do you want to renew subscription?</source>
        <translation>证书可能已过期。
是否续订？</translation>
    </message>
    <message>
        <source>Public IP Address*</source>
        <translation>公网 IP 地址*</translation>
    </message>
    <message>
        <source>Public IP Address</source>
        <translation>公网 IP 地址</translation>
    </message>
    <message>
        <source>Proxied configurations require you to configure your program to use the VPN.
Check installation instructions for further details.</source>
        <translation>使用代理的配置需要您将程序设置为使用 VPN。
详情请参阅安装说明。</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Please note that if auto reconnect is enabled, there will be a brief moment 
in which your programs may not be protected by the VPN during reconnection. 
Do you still wish to enable auto-reconnect?</source>
        <translation>请注意：启用自动重新连接后，在重新连接的短暂时间内，
您的程序可能不受 VPN 保护。
仍要启用吗？</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>调试</translation>
    </message>
    <message>
        <source>Getting files from server ...</source>
        <translation>正在从服务器获取文件 ...</translation>
    </message>
    <message>
        <source>Invalid username or password.</source>
        <translation>用户名或密码无效。</translation>
    </message>
    <message>
        <source>Updating Configuration ...</source>
        <translation>正在更新配置 ...</translation>
    </message>
    <message>
        <source>Update of new configuration failed.
Please try again later.
Korvan-GUI will use existing keys and configurations.</source>
        <translation>更新新配置失败。
请稍后再试。
Korvan 将使用现有的密钥和配置。</translation>
    </message>
    <message>
        <source>Retrieval of configuration and keys failed.
Please try again later or contact Support at </source>
        <translation>获取配置和密钥失败。
请稍后再试，或联系支持：</translation>
    </message>
    <message>
        <source>Unknown error, please check log.</source>
        <translation>未知错误，请查看日志。</translation>
    </message>
    <message>
        <source>Username or password is not valid.</source>
        <translation>用户名或密码无效。</translation>
    </message>
    <message>
        <source>Korvan Help</source>
        <translation>Korvan 帮助</translation>
    </message>
    <message>
        <source>Update Failed.</source>
        <translation>更新失败。</translation>
    </message>
    <message>
        <source>Update Successful.</source>
        <translation>更新成功。</translation>
    </message>
    <message>
        <source>Update url is not valid.</source>
        <translation>更新地址无效。</translation>
    </message>
    <message>
        <source>Update done, please restart application.</source>
        <translation>更新已完成，请重新启动应用程序。</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Are you sure you wish to quit Korvan?</source>
        <translation>确定要退出 Korvan 吗？</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>已取消</translation>
    </message>
    <message>
        <source>Ping...</source>
        <translation>正在 Ping...</translation>
    </message>
    <message>
        <source>Test...</source>
        <translation>正在测试...</translation>
    </message>
    <message>
        <source>Please disconnect first.</source>
        <translation>请先断开连接。</translation>
    </message>
    <message>
        <source>Please select one server.</source>
        <translation>请选择一台服务器。</translation>
    </message>
    <message>
        <source> CONNECTED</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Korvan: Disconnected</source>
        <translation>Korvan：未连接</translation>
    </message>
    <message>
        <source>Korvan: Connecting to server %1</source>
        <translation>Korvan：正在连接服务器 %1</translation>
    </message>
    <message>
        <source>Korvan: Connected to server %1</source>
        <translation>Korvan：已连接到服务器 %1</translation>
    </message>
    <message>
        <source>Connecting to server %1</source>
        <translation>正在连接服务器 %1</translation>
    </message>
    <message>
        <source>Connected to server %1</source>
        <translation>已连接到服务器 %1</translation>
    </message>
    <message>
        <source>Disconnected from server %1</source>
        <translation>已与服务器 %1 断开连接</translation>
    </message>
    <message>
        <source>Update Config...</source>
        <translation>更新配置...</translation>
    </message>
    <message>
        <source>Proxy Settings...</source>
        <translation>代理设置...</translation>
    </message>
    <message>
        <source>Open Korvan</source>
        <translation>打开 Korvan</translation>
    </message>
    <message>
        <source>Change User...</source>
        <translation>切换用户...</translation>
    </message>
    <message>
        <source>Internet connection has been terminated for your security.
Please press OK to resume your regular internet connection and reconnect to the VPN if needed.</source>
        <translation>为了您的安全，互联网连接已被切断。
请点击“确定”恢复正常的互联网连接，并在需要时重新连接 VPN。</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>跟随桌面</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>没有数据</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>更新失败：%1。</translation>
    </message>
    <message>
        <source>it can not be checked</source>
        <translation>无法校验</translation>
    </message>
    <message>
        <source>the archive can not be stored</source>
        <translation>无法保存安装包</translation>
    </message>
    <message>
        <source>the answer has the status %1</source>
        <translation>服务器返回状态 %1</translation>
    </message>
    <message>
        <source>the answer is no archive</source>
        <translation>服务器返回的不是安装包</translation>
    </message>
    <message>
        <source>Refresh now: the configuration</source>
        <translation>立即刷新：配置</translation>
    </message>
    <message>
        <source>FAQ: frequently asked questions</source>
        <translation>常见问题：解答</translation>
    </message>
    <message>
        <source>Return sorts by the column of the current cell.</source>
        <translation>按回车键可按当前单元格所在的列排序。</translation>
    </message>
    <message>
        <source>Needs &quot;%1&quot; on the sign-in page.</source>
        <translation>需要在登录页面勾选“%1”。</translation>
    </message>
    <message>
        <source>The configuration could not be refreshed: the service can not be reached.</source>
        <translation>无法刷新配置：无法连接到服务。</translation>
    </message>
    <message>
        <source>The configuration is in use now.</source>
        <translation>配置正在使用中。</translation>
    </message>
    <message>
        <source>The changes of the options are not saved.</source>
        <translation>选项的更改尚未保存。</translation>
    </message>
    <message>
        <source>Korvan: Disconnecting...</source>
        <translation>Korvan：正在断开连接...</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>正在连接...</translation>
    </message>
    <message>
        <source>Disconnecting...</source>
        <translation>正在断开连接...</translation>
    </message>
    <message>
        <source>Reconnecting...</source>
        <translation>正在重新连接...</translation>
    </message>
    <message>
        <source>The connection has failed.</source>
        <translation>连接失败。</translation>
    </message>
    <message>
        <source>The address of %1 is not encrypted, so that nothing was sent.</source>
        <translation>%1 的地址未加密，因此未发送任何数据。</translation>
    </message>
    <message>
        <source>%1 does not show the key that it is known by, so that nothing was sent. Somebody may be answering in its place.</source>
        <translation>%1 未出示其已知的密钥，因此未发送任何数据。可能有人在冒充它应答。</translation>
    </message>
    <message>
        <source>There is no configuration any more.</source>
        <translation>已没有任何配置。</translation>
    </message>
    <message>
        <source>A web page came in place of your configuration. Hotels, trains and cafés do that until you have signed in to their network. Sign in there, then try again.</source>
        <translation>收到的是网页而不是您的配置。在您登录酒店、列车或咖啡馆的网络之前,这些网络会这样做。请先登录该网络,然后重试。</translation>
    </message>
    <message>
        <source>The service is out of order at the moment. Please try again later.</source>
        <translation>服务目前出现故障。请稍后重试。</translation>
    </message>
    <message>
        <source>The service did not accept your user name or password. Change the user and sign in again.</source>
        <translation>服务未接受您的用户名或密码。请更换用户并重新登录。</translation>
    </message>
    <message>
        <source>The configuration that came is damaged. Please try again later or contact Support at </source>
        <translation>收到的配置已损坏。请稍后重试或联系支持:</translation>
    </message>
    <message>
        <source>The configuration that came could not be stored. Look whether the disk is full, then try again.</source>
        <translation>配置已收到，但无法保存。请检查磁盘是否已满，然后重试。</translation>
    </message>
    <message>
        <source>The last configuration can not be put back.</source>
        <translation>无法恢复上一次的配置。</translation>
    </message>
    <message>
        <source>it is not signed</source>
        <translation>它没有签名</translation>
    </message>
    <message>
        <source>its signature is damaged</source>
        <translation>它的签名已损坏</translation>
    </message>
    <message>
        <source>its signature is not right</source>
        <translation>它的签名不正确</translation>
    </message>
    <message>
        <source>it is signed with a key that this program does not know</source>
        <translation>它由本程序不认识的密钥签名</translation>
    </message>
    <message>
        <source>it is signed for another program</source>
        <translation>它是为另一个程序签名的</translation>
    </message>
    <message>
        <source>it is signed as version %1 and holds version %2</source>
        <translation>它签名为版本 %1,但包含版本 %2</translation>
    </message>
    <message>
        <source>its version %1 is older than the installed %2</source>
        <translation>它的版本 %1 比已安装的 %2 旧</translation>
    </message>
    <message>
        <source>another update is being installed</source>
        <translation>正在安装另一个更新</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>程序仍在运行</translation>
    </message>
    <message>
        <source>the new version does not run, it ended at once with status %1</source>
        <translation>新版本无法运行,立即以状态 %1 结束</translation>
    </message>
    <message>
        <source>No traffic goes through the tunnel.</source>
        <translation>没有任何流量通过隧道。</translation>
    </message>
    <message>
        <source>Only in the tunnel: %1</source>
        <translation>仅通过隧道：%1</translation>
    </message>
    <message>
        <source>Not in the tunnel: %1</source>
        <translation>不通过隧道：%1</translation>
    </message>
    <message>
        <source>Please sign in first.</source>
        <translation>请先登录。</translation>
    </message>
</context>
<context>
    <name>KvL2TPBox</name>
    <message>
        <source>L2TP Password</source>
        <translation>L2TP 密码</translation>
    </message>
    <message>
        <source>L2TP Password:</source>
        <translation>L2TP 密码：</translation>
    </message>
    <message>
        <source>Remember Password</source>
        <translation>记住密码</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>KvLanguageBox</name>
    <message>
        <source>As the desktop</source>
        <translation>跟随桌面</translation>
    </message>
</context>
<context>
    <name>KvNotice</name>
    <message>
        <source>Sign in to this network</source>
        <translation>登录此网络</translation>
    </message>
    <message>
        <source>Use the last working configuration</source>
        <translation>使用上一次可用的配置</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>QApplication</name>
    <message>
        <source>Updating...Please wait a moment.</source>
        <translation>正在更新……请稍候。</translation>
    </message>
    <message>
        <source>compose9 is missed, update failed.</source>
        <translation>缺少 compose9，更新失败。</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Can not start update compose.</source>
        <translation>无法启动更新程序。</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Made by the Korvan team
</source>
        <translation>由 Korvan 团队开发
</translation>
    </message>
    <message>
        <source>Compiled in %1
</source>
        <translation>编译于 %1
</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>当前版本：</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>自由软件，遵循 GNU 通用公共许可证第 3 版或更高版本。</translation>
    </message>
    <message>
        <source>Update failed, %1.</source>
        <translation>更新失败：%1。</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>更新</translation>
    </message>
</context>
<context>
    <name>RootPart</name>
    <message>
        <source>Secure failed, you must run me as root at least one time</source>
        <translation>安全设置失败，您必须至少以 root 身份运行一次 Korvan</translation>
    </message>
    <message>
        <source>This update can not be installed from here, because nothing proves that it comes from the service.
Please install the new package of Korvan instead.</source>
        <translation>无法从此处安装该更新，因为没有任何内容能证明它来自该服务。
请改为安装新的 Korvan 软件包。</translation>
    </message>
    <message>
        <source>%1 is using Korvan on this computer, and alone can end that.</source>
        <translation>%1 正在此计算机上使用 Korvan，只有该用户可以结束它。</translation>
    </message>
    <message>
        <source>Somebody else is using Korvan on this computer, and alone can end that.</source>
        <translation>其他用户正在此计算机上使用 Korvan，只有该用户可以结束它。</translation>
    </message>
</context>
</TS>
