#include "controller/ServerTests.h"

#include "account/ServerLists.h"
#include "account/ServiceRequest.h"
#include "account/WebPage.h"
#include "common/Wait.h"
#include "controller/Korvan.h"
#include "diag/Ping.h"
#include "diag/SpeedTest.h"
#include "platform/Tool.h"
#include "ui/TableWidget.h"
#include "ui_Korvan.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QSet>

static constexpr int kColumnWidths[] = {230, 95, 95, 110};
static constexpr int kRowHeight = 20;

/// What a test writes into a cell in place of a figure.
static constexpr const char *kWords[] = {QT_TRANSLATE_NOOP("Korvan", "N/A"), QT_TRANSLATE_NOOP("Korvan", "Canceled")};

/// A cell as the person reads it; figures are the same in every language.
static QString translated(const QString &cell)
{
    for (const char *word : kWords) {
        if (cell == QLatin1String(word)) {
            return Korvan::tr(word);
        }
    }
    return cell;
}

/// While it lives a test runs: of the test buttons only Cancel is active, and the rows of the table keep their
/// places. It may outlive the window.
class ServerTests::Run
{
public:
    Run(QWidget *window, Ui::Korvan *form) : m_window(window), m_form(form) { showRunning(true); }
    ~Run()
    {
        if (!m_window.isNull()) {
            showRunning(false);
        }
    }
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

private:
    void showRunning(bool running)
    {
        m_form->pbPingAll->setEnabled(!running);
        m_form->pbPingDet->setEnabled(!running);
        m_form->pbSpeedTest->setEnabled(!running);
        m_form->pbTestCancel->setEnabled(running);
        // A click on the header would take effect at the end of the test.
        m_form->tbPing->horizontalHeader()->setSectionsClickable(!running);
        m_form->tbPing->setSortingEnabled(!running);
    }

    QPointer<QWidget> m_window;
    Ui::Korvan *m_form;
};

ServerTests::ServerTests(Korvan *window, Ui::Korvan *form, const KORVANSTATUS &status)
    : m_window(window), m_form(form), m_status(status)
{}

void ServerTests::prepareTable()
{
    m_form->tbPing->setShowGrid(false);
    m_form->tbPing->setEditTriggers(QAbstractItemView::NoEditTriggers);
    int column = 0;
    for (const int width : kColumnWidths) {
        m_form->tbPing->setColumnWidth(column++, width);
    }
    m_form->pbTestCancel->setEnabled(false);
}

void ServerTests::setServers(const QStringList &names, const QStringList &skipped)
{
    const QSet<QString> skips(skipped.cbegin(), skipped.cend());
    QTableWidget &table = *m_form->tbPing;
    const bool sorting = table.isSortingEnabled();
    table.setSortingEnabled(false); // a row must not move while it is filled
    QTableWidget_clear(&table);
    table.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // the list's own order
    table.verticalHeader()->setMinimumSectionSize(kRowHeight);
    table.verticalHeader()->setDefaultSectionSize(kRowHeight);
    table.setRowCount(names.size());
    int row = 0;
    {
        const QSignalBlocker quiet(table.model()); // one repaint, not one for every name
        for (const QString &name : names) {
            if (!skips.contains(name)) {
                table.setItem(row++, kName, new QTableWidgetItem(name));
            }
        }
    }
    table.viewport()->update();
    table.setRowCount(row);
    table.setSortingEnabled(sorting);
}

void ServerTests::pingAll()
{
    if (isRefused()) {
        return;
    }
    const QPointer<Korvan> window(m_window);
    const Run run(m_window, m_form);
    bool canceled = false;
    const QObject receiver;
    QObject::connect(m_window, &Korvan::testCancel, &receiver, [&canceled] { canceled = true; });
    const QAbstractItemModel *model = m_form->tbPing->model();
    QVector<QPersistentModelIndex> servers;
    for (int row = 0; row < model->rowCount(); ++row) {
        servers.append(model->index(row, kName));
        setCell(servers.last(), kPing, QString());
        setCell(servers.last(), kLoss, QString());
    }
    for (const QPersistentModelIndex &server : qAsConst(servers)) {
        if (!server.isValid()) {
            return; // the list was rebuilt meanwhile
        }
        setCell(server, kPing, Korvan::tr("Ping..."));
        double loss = 0;
        const int average = ping(GetHostFromOvpn(server.data().toString()), 1, loss);
        if (window.isNull()) {
            return;
        }
        // A connection may have been started in the wait, and no ping must go through its tunnel.
        if (average < 0 || canceled || tunnelInUse(m_status)) {
            setCell(server, kPing, Korvan::tr("Canceled"));
            return;
        }
        setCell(server, kPing, translated(pingCell(average)));
    }
}

void ServerTests::pingSelected()
{
    testSelected([this](const QPersistentModelIndex &server, const QString &host) {
        setCell(server, kPing, Korvan::tr("Ping..."));
        double loss = 0;
        const int average = ping(host, 20, loss);
        setCell(server, kPing, translated(pingCell(average)));
        setCell(server, kLoss, average < 0 ? QString() : lossCell(loss)); // no answer at all tells no loss
    });
}

void ServerTests::testSpeed()
{
    testSelected([this](const QPersistentModelIndex &server, const QString &host) {
        setCell(server, kSpeed, Korvan::tr("Test..."));
        const int speed = downloadSpeedOf(QStringLiteral("http://%1:8080/korvantest.dat").arg(host));
        setCell(server, kSpeed, translated(speedCell(speed)));
    });
}

void ServerTests::sortBy(int column)
{
    static int clicks[kSpeed + 1] = {};
    if (column < 0 || column > kSpeed || m_form->pbTestCancel->isEnabled()) {
        return;
    }
    m_form->tbPing->setSortingEnabled(true);
    m_form->tbPing->sortItems(column, clicks[column] % 2 == 0 ? Qt::DescendingOrder : Qt::AscendingOrder);
    ++clicks[column];
}

int ServerTests::ping(const QString &host, int count, double &loss)
{
    const QPointer<Korvan> window(m_window);
    Wait wait;
    wait.until(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished));
    wait.until(m_window, &Korvan::testCancel);
    m_process.setProcessEnvironment(childEnvironment());
    m_process.start(QStringLiteral("ping"), {QStringLiteral("-c%1").arg(count), host});
    if (!m_process.waitForStarted(kToolLimitMs)) {
        return -1;
    }
    const bool programQuits = !wait.run();
    if (window.isNull()) {
        return -1;
    }
    const QByteArray output = m_process.readAllStandardOutput();
    m_process.kill();
    m_process.waitForFinished(kToolLimitMs);
    if (output.isEmpty() || programQuits) {
        return -1;
    }
    const PingSummary summary = parsePing(output);
    loss = summary.loss;
    return summary.averageMs;
}

int ServerTests::downloadSpeedOf(const QString &url)
{
    constexpr qint64 mostHeld = 4 << 20;
    QElapsedTimer timer;
    timer.start();
    QNetworkAccessManager manager;
    QNetworkReply *reply = manager.get(plainRequest(url));
    reply->setReadBufferSize(mostHeld); // a file without end must not fill the memory
    qint64 bytes = 0;
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, &bytes] { bytes += reply->readAll().size(); });
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    wait.until(m_window, &Korvan::testCancel);
    wait.until(m_window, &QObject::destroyed);
    wait.run();
    bytes += reply->readAll().size();
    const int speed = downloadSpeed(bytes, timer.elapsed());
    giveUp(*reply);
    return speed;
}

/// Writes a text into a column of a server's row; does nothing once the row is gone.
void ServerTests::setCell(const QPersistentModelIndex &server, Column column, const QString &text)
{
    if (server.isValid()) {
        auto *model = const_cast<QAbstractItemModel *>(server.model());
        model->setData(server.sibling(server.row(), column), text);
    }
}

bool ServerTests::isRefused() const
{
    if (tunnelInUse(m_status)) {
        QMessageBox::information(m_window, Korvan::tr("Notify"), Korvan::tr("Please disconnect first."));
        return true;
    }
    return false;
}

/// Runs the test on the server of the current row. A box tells why where it can not be tested.
void ServerTests::testSelected(
    const std::function<void(const QPersistentModelIndex &server, const QString &host)> &test)
{
    if (isRefused()) {
        return;
    }
    const QModelIndex current = m_form->tbPing->currentIndex();
    if (!current.isValid()) {
        QMessageBox::critical(m_window, Korvan::tr("Error"), Korvan::tr("Please select one server."));
        return;
    }
    const Run run(m_window, m_form);
    const QPersistentModelIndex server = current.siblingAtColumn(kName);
    test(server, GetHostFromOvpn(server.data().toString()));
}
