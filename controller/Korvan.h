#pragma once

#include "account/LastProfile.h"
#include "controller/Appearance.h"
#include "controller/EngineMessage.h"
#include "controller/ServerTests.h"
#include "controller/Status.h"
#include "controller/Traffic.h"
#include "controller/Tray.h"
#include "controller/WindowRoute.h"
#include "vpn/VPNClient.h"

#include <QDateTime>
#include <QMainWindow>
#include <QStringList>
#include <QTimer>

class QNetworkAccessManager;
class QSound;
class KvNotice;
struct Options;
struct ProxySettings;
struct StatusLook;

namespace Ui {
class Korvan;
}

/// The one main window and the controller of everything the user sees. It owns the form, the VPN engine and the parts
/// with a state of their own: tray, default route, traffic figures, tests of the servers. Its slots stand in one file
/// a topic; those of the parts hand over to them in KorvanParts.cpp. Everything runs on the GUI thread.
class Korvan : public QMainWindow
{
    Q_OBJECT

public:
    explicit Korvan(QMainWindow *parent = nullptr);
    ~Korvan() override;

    /// Hides the window, or minimises it where there is no tray icon to bring it back from.
    void hideInTray();

signals:
    /// Ends the wait of a running ping or speed test.
    void testCancel();

public slots:
    void updateOption(bool save);
    void updateOpenVPNServerList();
    void updateOpenVPN(QString folder, QString file);
    void updateLocalNetworkProxy();
    void updateCountryFromIP();
    void updateRefresh(bool save);
    void updateProxyState();
    void setStatus(KORVANSTATUS status);
    void showOnTop();
    void loadLogin();
    void saveLogin();

protected slots:
    void onInit();
    void onLogin();
    void onConnect();
    void onReconnect();
    void onDisconnect();
    void onChangeUser();
    void onMessage(QString message);
    void onLogCopy();
    void onTrayClicked(QSystemTrayIcon::ActivationReason reason);
    void onStatus();
    void onAutoReconn();
    void onSave();
    void onReset();
    void onResetStat();
    void onUpdate();
    void onSaveReady();
    void onProgress();
    void onMenuCommand();
    void onMenuConnect();
    void onRunOnBoot();
    void onPingAll();
    void onPingDet();
    void onSpeedTest();
    void onPingHeader(int column);
    void onUpApp();
    void onUpdateProgress(qlonglong received, qlonglong total);
    void onCurrentIndexChanged(QString text);
    void onRemember();
    void onHelp();
    void onUpAccount();
    void onFAQ();
    void onHelpSupport();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

    // Account
    bool loginKorvan(QString user, QString password, QByteArray &body);
    void releaseCompressedConfig(QByteArray archive);
    void updateL2TPServerList();
    QString getL2TPPassword();
    bool isCrtExpired();
    bool checkUpdate(QString &url, QString &message, QString &version);
    QString proxyAuthPath();

    // Tests of the servers and totals (controller/KorvanParts.cpp)
    int getPingByHostName(QString host, int count, double &loss);
    int getDownloadSpeedByUrl(QString url);
    void refreshTransfer(quint64 received, quint64 sent);

private:
    friend class Tray;          // its menu's entries call the slots
    friend class WindowFixture; // of the tests, which read the engine

    // Login (controller/KorvanLogin.cpp)
    bool profileIsUsable();
    bool fetchProfile(bool &isAccepted);
    bool fallBackToOldProfile();
    bool installProfile(const QByteArray &body);
    void finishLogin();
    void rememberLogin();
    void selectBootServer();
    void showExpiry();
    void showInServerBox(const QString &text);

    // Help where there are no servers (controller/KorvanNotice.cpp)
    void tellWhyNoServers();
    void hideNotice();
    void onLastProfile();

    // Construction (controller/Korvan.cpp)
    void connectSignals();
    void connectOptionSignals();
    void giveImages();
    void addTabs();
    void announceUpdate();

    // Status (controller/KorvanStatus.cpp)
    void showStatus(KORVANSTATUS status);
    void showTunnelLost();
    void showPastTunnel();
    void showLook(const StatusLook &look);
    void moveFocus(QWidget *shown);
    void announce();
    void clearAddresses();
    void enableRefresh(const QString &reason);
    void enterInit();
    void enterReady();
    void enterConnecting();
    void enterConnected();
    void enterNotConnected();
    void playSound(const char *file);

    // Connect flow (controller/KorvanConnect.cpp)
    void giveUpReconnect();
    void showConnected();
    bool isProfileInUse() const;
    bool prepareConnection(VPNClient::SETUP &setup, VPNClient::OPTION &option);
    bool prepareOpenVPN(VPNClient::SETUP &setup, VPNClient::OPTION &option);
    bool prepareL2TP(VPNClient::SETUP &setup, VPNClient::OPTION &option);

    // Options (controller/KorvanOptions.cpp)
    void showOptions(const Options &options);
    Options shownOptions() const;
    void showBootHint();

    // Proxy (controller/KorvanProxy.cpp)
    void showProxy(const ProxySettings &proxy);
    ProxySettings shownProxy() const;

    // Engine messages (controller/KorvanMessages.cpp)
    void actOnMessage(const QString &message);
    void onTunnelFailed();
    void onL2TPLoginFailed();

    /// Tabs of the top bar, and pages of the tab stack, by index.
    static constexpr int kSettingsTab = 2;
    static constexpr int kProxyTab = 3;

    Appearance m_appearance;
    Ui::Korvan *m_form;
    KORVANSTATUS m_status = kStatusNone;
    VPNClient *m_engine;
    QString m_userName;                           ///< of the last login
    QString m_password;                           ///< of the last login
    ProfileAnswer m_answer = ProfileAnswer::None; ///< to the last login
    KvNotice *m_notice = nullptr;                 ///< made when there is something to tell
    QString m_refusal; ///< why the last login's connection was dropped; empty where it was not
    Tray m_tray;
    QTimer m_progressTimer;
    bool m_bundleInWork = false; ///< a profile is being fetched or unpacked: no connection may start
    QString m_updateAddress;     ///< of the newest application archive; empty until one is announced
    QString m_updateSignature;   ///< of that archive
    QStringList m_skipList;      ///< servers that the ping table leaves out
    QString m_bootServer;        ///< server of the automatic connection, as stored
    ServerTests m_tests;
    QString m_protocol; ///< protocol of the dashboard, as stored
    WindowRoute m_route;
    PastTunnel m_pastTunnel; ///< of the newest tunnel
    Traffic m_traffic;

    QDateTime m_nextRefresh;       ///< when the configuration is due to be refreshed
    bool m_connectInWork = false;  ///< onConnect() waits for something
    QStringList m_waitingMessages; ///< of the engine, while an earlier one is acted on
    bool m_actsOnMessage = false;
    QNetworkAccessManager *m_publicIpRequest = nullptr; ///< the newest; null when none is under way
    QSound *m_sound = nullptr;                          ///< played last
};
