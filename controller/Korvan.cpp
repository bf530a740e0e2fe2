#include "controller/Korvan.h"

#include "account/SavedLogin.h"
#include "base/DebugLog.h"
#include "common/AppPath.h"
#include "names/StateFiles.h"
#include "ui/KvUnaskedBox.h"
#include "ui/Language.h"
#include "ui/Look.h"
#include "ui/Mnemonics.h"
#include "ui/PlainText.h"
#include "ui_Korvan.h"

#include <QApplication>
#include <QButtonGroup>
#include <QFile>
#include <QHeaderView>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QShortcut>

/// Lets nothing in but a number from 1 to 65535.
static QValidator *portValidator(QObject *parent)
{
    static const QRegularExpression port(
        QStringLiteral("[1-9]\\d{0,3}|[1-5]\\d{4}|6[0-4]\\d{3}|65[0-4]\\d{2}|655[0-2]\\d|6553[0-5]"));
    return new QRegularExpressionValidator(port, parent);
}

Korvan::Korvan(QMainWindow *parent)
    : QMainWindow(parent),
      m_form(new Ui::Korvan),
      m_engine(new VPNClient),
      m_tray(this),
      m_tests(this, m_form, m_status),
      m_route(m_form),
      m_traffic(m_form, m_engine),
      m_nextRefresh(QDateTime::currentDateTime())
{
    qRegisterMetaType<KORVANSTATUS>("KORVANSTATUS");
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    m_form->setupUi(this);
    m_appearance.show(); // what is already styled is styled again with every parent that it gets
    mirrorMargins(*this);
    m_form->lbVersion->setText(QApplication::applicationVersion());
    m_form->edProxyAddr->setEnabled(false);
    m_form->edProxyPort->setEnabled(false);
    m_form->edProxyPort->setValidator(portValidator(this));
    m_form->cmUpdate->setCurrentIndex(1);
    const bool hasScreen = QGuiApplication::platformName() == QLatin1String("xcb");
    setFixedSize(hasScreen ? tightened(this, screen()->availableSize()) : geometry().size());
    g_edLog = m_form->edLog;
    updateOption(false);
    updateLocalNetworkProxy();
    m_form->cbRember->setChecked(QFile::exists(savedLoginPath()));
    connectSignals();
    m_form->cbDnsLeak->hide();
    m_form->cbAutoReconn->hide();
    giveImages();
    addTabs();
    assignMnemonics(m_form->pageLogin);
    for (int page = 0; page < m_form->tabPage->count(); ++page) {
        assignMnemonics(m_form->tabPage->widget(page));
    }
    m_form->cmTheme->setCurrentIndex(m_appearance.choice());
    m_form->tab->setCurrentIndex(0);
    m_form->stack->setCurrentWidget(m_form->pageLogin);
    m_form->tabPage->setCurrentIndex(0);
    m_tests.prepareTable();
    m_traffic.load();
    QTimer::singleShot(0, this, &Korvan::onInit);
}

Korvan::~Korvan()
{
    m_traffic.storeSession();
    m_engine->close();
    m_route.release();
    g_edLog = nullptr;
    delete m_engine;
    delete m_form;
}

void Korvan::connectSignals()
{
    connect(m_engine, &VPNClient::message, this, &Korvan::onMessage);
    connect(m_engine, &VPNClient::connected, this, [this] { QTimer::singleShot(0, this, &Korvan::showConnected); });
    connect(m_form->pbSave, &QAbstractButton::clicked, this, &Korvan::onSave);
    connect(m_form->pbSaveProxy, &QAbstractButton::clicked, this, &Korvan::onSave);
    connect(m_form->pbUpdate, &QAbstractButton::clicked, this, &Korvan::onUpdate);
    connect(m_form->pbLogin, &QAbstractButton::clicked, this, &Korvan::onLogin);
    connect(m_form->pbExist, &QAbstractButton::clicked, this, &Korvan::onLogin);
    connect(m_form->tab, &KvRetinaTabBar::indexChanged, this, [this] {
        if (m_form->tabPage->isAncestorOf(focusWidget())) {
            m_form->tab->setFocus(); // else Qt picks a control of the new page
        }
    });
    connect(m_form->tab, &KvRetinaTabBar::indexChanged, m_form->tabPage, &QStackedWidget::setCurrentIndex);
    connect(m_form->pbConnect, &QAbstractButton::clicked, this, &Korvan::onConnect);
    connect(m_form->pbReconnect, &QAbstractButton::clicked, this, &Korvan::onReconnect);
    connect(m_form->pbDisconnect, &QAbstractButton::clicked, this, &Korvan::onDisconnect);
    connect(m_form->pbChangeUser, &QAbstractButton::clicked, this, &Korvan::onChangeUser);
    connect(m_form->pbCopyLog, &QAbstractButton::clicked, this, &Korvan::onLogCopy);
    connect(m_form->pbReset, &QAbstractButton::clicked, this, &Korvan::onReset);
    connect(m_tray.icon(), &QSystemTrayIcon::activated, this, &Korvan::onTrayClicked);
    connect(&m_progressTimer, &QTimer::timeout, this, &Korvan::onProgress);
    connect(m_traffic.timer(), &QTimer::timeout, this, &Korvan::onStatus);
    connectOptionSignals();
    connect(m_form->pbPingAll, &QAbstractButton::clicked, this, &Korvan::onPingAll);
    connect(m_form->pbPingDet, &QAbstractButton::clicked, this, &Korvan::onPingDet);
    connect(m_form->pbSpeedTest, &QAbstractButton::clicked, this, &Korvan::onSpeedTest);
    connect(m_form->pbTestCancel, &QAbstractButton::clicked, this, &Korvan::testCancel);
    connect(m_form->pbUpApp, &QAbstractButton::clicked, this, &Korvan::onUpApp);
    connect(m_form->cmProto, &QComboBox::currentTextChanged, this, &Korvan::onCurrentIndexChanged);
    connect(m_form->cbRember, &QAbstractButton::clicked, this, &Korvan::onRemember);
    connect(m_form->pbClose, &QAbstractButton::clicked, this, &Korvan::close);
    connect(m_form->pbMinimize, &QAbstractButton::clicked, this, &Korvan::showMinimized);
    connect(m_form->pbHelp, &QAbstractButton::clicked, this, &Korvan::onHelp);
    connect(m_form->pbUpAccount, &QAbstractButton::clicked, this, &Korvan::onUpAccount);
    connect(m_form->pbResetStat, &QAbstractButton::clicked, this, &Korvan::onResetStat);
    connect(m_form->pbFAQ, &QAbstractButton::clicked, this, &Korvan::onFAQ);
    connect(m_form->pbHelpSupport, &QAbstractButton::clicked, this, &Korvan::onHelpSupport);
    connect(m_form->tbPing->horizontalHeader(), &QHeaderView::sectionClicked, this, &Korvan::onPingHeader);
    connect(m_form->cbRunOnBoot, &QAbstractButton::clicked, this, &Korvan::onRunOnBoot);
    connect(m_form->cmTheme, qOverload<int>(&QComboBox::activated), this,
            [this](int choice) { m_appearance.choose(static_cast<Appearance::Choice>(choice)); });
}

/// Every change of an option makes the save buttons ready.
void Korvan::connectOptionSignals()
{
    connect(m_form->cbAutoReconn, &QAbstractButton::clicked, this, &Korvan::onAutoReconn);
    for (const QAbstractButton *box : std::initializer_list<QAbstractButton *>{
             m_form->cbAutoReconn, m_form->cbConnectOnBoot, m_form->cbHideConnection, m_form->cbProxyAuth,
             m_form->cbRunOnBoot, m_form->cbNoSound, m_form->cbDnsLeak, m_form->rbHttp, m_form->rbNone,
             m_form->rbSocks, m_form->cbLockDown}) {
        connect(box, &QAbstractButton::clicked, this, &Korvan::onSaveReady);
    }
    for (const QLineEdit *edit :
         {m_form->edProxyAddr, m_form->edProxyPort, m_form->edProxyUser, m_form->edProxyPass}) {
        connect(edit, &QLineEdit::textChanged, this, &Korvan::onSaveReady);
    }
    for (const QComboBox *combo : std::initializer_list<QComboBox *>{m_form->cmBootServer, m_form->cmUpdate}) {
        connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), this, &Korvan::onSaveReady);
    }
}

/// What every picture family belongs to. The buttons that only this form has bring their own.
void Korvan::giveImages()
{
    const std::pair<KvRetinaButton *, const char *> buttons[] = {
        {m_form->pbLogin, "login"},
        {m_form->pbExist, "useexisting"},
        {m_form->pbMinimize, "column_download"},
        {m_form->pbHelp, "column_help"},
        {m_form->pbClose, "column_close"},
        {m_form->pbHelpSupport, "help_and_support"},
        {m_form->pbFAQ, "faq"},
        {m_form->pbConnect, "connect"},
        {m_form->pbDisconnect, "disconnect"},
        {m_form->pbReconnect, "reconnect"},
        {m_form->pbReset, "reset"},
        {m_form->pbResetStat, "reset_all_statistics"},
        {m_form->pbUpApp, "update"},
        {m_form->pbChangeUser, "change_user"},
        {m_form->pbSave, "save_options"},
        {m_form->pbPingAll, "ping_all_servers"},
        {m_form->pbPingDet, "detailed_ping"},
        {m_form->pbSpeedTest, "run_speed_test"},
        {m_form->pbTestCancel, "cancel"},
        {m_form->pbSaveProxy, "save_proxy_settings"},
        {m_form->pbCopyLog, "copy_log"},
    };
    for (const auto &[button, name] : buttons) {
        button->setImages(QStringLiteral(":/images/button_%1_%2.png").arg(QLatin1String(name), QStringLiteral("%1")));
    }
    m_form->cbRember->setImages(QStringLiteral(":/images/checkbox_remember_%1.png"));
    m_form->pgUpdate->setImages(QStringLiteral(":/images/link_status_%1.png"));
    auto *proxyTypes = new QButtonGroup(this);
    for (KvRetinaCheckBox *radio : {m_form->rbHttp, m_form->rbNone, m_form->rbSocks}) {
        radio->setImages(QStringLiteral(":/images/radio_%1.png"));
        proxyTypes->addButton(radio);
    }
}

/// The tabs of the pages, each with a key of its own.
void Korvan::addTabs()
{
    const std::pair<const char *, QString> tabs[] = {{"dashboard", tr("Dashboard")},
                                                     {"vpn_log", tr("VPN log")},
                                                     {"settings", tr("Settings")},
                                                     {"proxy_settings", tr("Proxy")},
                                                     {"service_status", tr("Service status")}};
    for (const auto &[name, text] : tabs) {
        m_form->tab->addItem(
            QStringLiteral(":/images/top_menu_%1_%2.png").arg(QLatin1String(name), QStringLiteral("%1")), text);
        const int page = m_form->tab->count() - 1;
        auto *key = new QShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(page + 1)), m_form->pageMain);
        connect(key, &QShortcut::activated, m_form->tab, [this, page] { m_form->tab->setCurrentIndex(page); });
        m_form->tab->setTabToolTip(page, key->key().toString(QKeySequence::NativeText));
    }
}

void Korvan::onInit()
{
    setStatus(STATUS_INIT);
    QFile::remove(appPath(kProxyLoginFile)); // of a program that was killed while it connected
    const bool remembered = QFile::exists(savedLoginPath());
    if (remembered) {
        loadLogin();
    }
    m_route.repair(); // waits in an event loop, in which a login that was queued before would run and connect
    if (remembered) {
        QTimer::singleShot(0, this, &Korvan::onLogin);
    }
    announceUpdate();
}

void Korvan::announceUpdate()
{
    QString version;
    QString message;
    if (!checkUpdate(m_updateAddress, message, version)) {
        return;
    }
    if (message.isEmpty()) {
        message = tr("New version %1 ready, please click \"Update\".").arg(version);
    }
    KvUnaskedBox::tell(this, QMessageBox::Information, tr("Update"), plainText(message));
    m_form->tab->setCurrentIndex(kSettingsTab);
    m_form->tabPage->setCurrentIndex(kSettingsTab);
    m_form->pbUpApp->setEnabled(true);
    m_form->pbUpApp->setFocus(Qt::OtherFocusReason);
}
