#include "controller/Options.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvNotice.h"
#include "ui/Language.h"
#include "ui/Look.h"

#include <QHeaderView>
#include <QMap>
#include <QRegularExpression>

/// Whether a text that is not shortened by design stands whole in the widget that has it.
static bool showsWholeText(const QWidget *widget)
{
    const QFontMetrics metrics = widget->fontMetrics();
    if (const auto *box = qobject_cast<const KvElidingComboBox *>(widget)) {
        return !box->isShortened();
    }
    if (const auto *line = qobject_cast<const KvTextLine *>(widget)) {
        const int gap = line->caption().isEmpty() ? 0 : 12;
        const QString shown =
            line->text().startsWith(line->caption(), Qt::CaseInsensitive) ? QString() : line->text();
        return line->width() >= metrics.horizontalAdvance(line->caption()) + gap + metrics.horizontalAdvance(shown);
    }
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        const QSize text = metrics.size(Qt::TextHideMnemonic, label->text());
        return label->wordWrap() ? label->height() >= label->heightForWidth(label->width())
                                 : label->width() >= text.width() && label->height() >= text.height();
    }
    if (const auto *table = qobject_cast<const QTableWidget *>(widget)) {
        for (int column = 0; column < table->columnCount(); ++column) {
            const QFontMetrics header = table->horizontalHeader()->fontMetrics();
            if (table->columnWidth(column) <
                header.horizontalAdvance(table->horizontalHeaderItem(column)->text()) + 24) {
                return false;
            }
        }
    }
    if (const auto *tabs = qobject_cast<const QTabBar *>(widget)) {
        return tabs->rect().contains(tabs->tabRect(0)) && tabs->rect().contains(tabs->tabRect(tabs->count() - 1));
    }
    return !qobject_cast<const QAbstractButton *>(widget) || widget->width() >= widget->sizeHint().width();
}

/// The names of the form's controls that are visible and clipped: by what they stand in, or because their text does
/// not fit.
static QString clippedWidgets(const QWidget *window)
{
    static const QRegularExpression names("^(pb|cb|rb|cm|ed|lb|pg|tab|tb)");
    QStringList clipped;
    for (const QWidget *widget : window->findChildren<QWidget *>(names)) {
        const bool hasRoom = widget->parentWidget()->rect().contains(widget->geometry()) &&
                             widget->size().expandedTo(widget->minimumSizeHint()) == widget->size();
        if (widget->isVisible() && !(hasRoom && showsWholeText(widget))) {
            clipped += widget->objectName();
        }
    }
    return clipped.join(' ');
}

/// The keys that lead to more than one of the visible controls, and the controls.
static QString sharedMnemonics(const QWidget *window)
{
    QMap<QString, QStringList> controls;
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        const QString key = QKeySequence::mnemonic(widget->property("text").toString()).toString();
        if (widget->isVisible() && !key.isEmpty()) {
            controls[key] += widget->objectName();
        }
    }
    QStringList shared;
    for (auto at = controls.cbegin(); at != controls.cend(); ++at) {
        shared += at->size() > 1 ? at.key() + ' ' + at->join(' ') : QString();
    }
    return shared.join(' ').trimmed();
}

/// The window in every language that it speaks.
class LanguagesTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void cleanupTestCase() { useLanguage("en"); }

    void nothingIsClipped_data() { languages(); }
    void nothingIsClipped()
    {
        QFETCH(QString, code);
        startIn(code);
        button("cbConnectOnBoot")->click(); // a hint comes below it
        find<QLabel>("lbSignInHint")
            ->setText(Korvan::tr("The configuration could not be refreshed: the service can not be reached."));
        KvNotice notice(find("centralwidget"), find("pageLogin"));
        notice.tell(
            Korvan::tr("The configuration that came is damaged. Please try again later or contact Support at "), true,
            true);
        for (const KORVANSTATUS status : {STATUS_READY, STATUS_CONNECTING, STATUS_CONNECTED, STATUS_DISCONNECTING}) {
            m_window->setStatus(status);
            for (const char *name : {"lbServerIP", "lbPublicIP", "lbTotalRD", "lbTotalRecv"}) {
                find<QLabel>(name)->setText("203.0.113.121");
            }
            for (int page = kLoginPage; page < find<QStackedWidget>("tabPage")->count(); ++page) {
                showPage(page);
                QTest::qWait(0);
                COMPARE_CASE(code.toLatin1(), sharedMnemonics(m_window.get()), "");
                COMPARE_CASE(code.toLatin1() + " page " + QByteArray::number(page), clippedWidgets(m_window.get()),
                             "");
            }
        }
        QVERIFY(!log().contains("no picture"));
        if (code == "en") { // a small screen with a panel; longer words are shortened there
            m_window->setFixedSize(tightened(m_window.get(), {800, 568}));
            QVERIFY(m_window->width() <= 800 && m_window->height() <= 568);
            for (int page = kLoginPage; page < find<QStackedWidget>("tabPage")->count(); ++page) {
                showPage(page);
                QTest::qWait(0);
                // The stack asks for what its other pages need, and the long server's name is shortened.
                const QString clipped = clippedWidgets(m_window.get()).remove("tabPage").remove("cmServer");
                COMPARE_CASE("small, page " + QByteArray::number(page), clipped.trimmed(), "");
            }
            return;
        }
        showPage(kSettingsPage);
        for (const char *name : {"cmUpdate", "cmTheme", "cmLanguage"}) {
            for (int item = 0; item < combo(name)->count(); ++item) {
                combo(name)->setCurrentIndex(item);
                QCOMPARE(clippedWidgets(m_window.get()), QString());
            }
        }
    }

    /// What the program itself looks for: its own menu's entries, protocols, markers of the engine; and what support
    /// reads.
    void programUnderstandsItself_data() { languages(); }
    void programUnderstandsItself()
    {
        QFETCH(QString, code);
        startIn(code);
        for (const auto &[entry, page] :
             {std::pair("Update Config...", "pageSet"), {"Proxy Settings...", "pageProxy"}}) {
            trayEntry(Korvan::tr(entry))->trigger();
            QCOMPARE(find<QStackedWidget>("tabPage")->currentWidget()->objectName(), QString(page));
        }
        QCOMPARE(items("cmProto"), QStringList({"OpenVPN", "L2TP"}));
        combo("cmProto")->setCurrentText("L2TP");
        press("pbSave");
        QCOMPARE(optionsOf(fileBytes(appPath("/cfg/option"))).protocol, QString("L2TP"));

        putFile(appPath("/fake/routes"), "");
        boxes.expect(Korvan::tr("Error"), Korvan::tr("Internet connection has been terminated for your security.\n"
                                                     "Please press OK to resume your regular internet connection "
                                                     "and reconnect to the VPN if needed."));
        emit engine().message("[ERROR]openvpn error, please check log");
        QVERIFY2(routes().contains("delete 0.0.0.0"), routes().constData());

        const QByteArray logged = log();
        QVERIFY2(std::all_of(logged.cbegin(), logged.cend(), [](char byte) { return byte >= 0; }),
                 "it is in English");
    }

    void rightToLeft()
    {
        startIn("fa");
        showPage(0);
        const auto *tabs = find<KvRetinaTabBar>("tab");
        QVERIFY(tabs->tabRect(0).left() > tabs->tabRect(1).right());
        QVERIFY(find("pbClose")->geometry().right() < find("lbLogo")->geometry().left());
        QVERIFY(!find("edLog")->isRightToLeft()); // the log is English

        // What changes with the control's state stands at its right end.
        const auto changed = [this](const char *name, const std::function<void()> &change) {
            const QImage before = find(name)->grab().toImage();
            change();
            const QImage after = find(name)->grab().toImage();
            int left = before.width();
            for (int y = 0; y < before.height(); ++y) {
                for (int x = 0; x < left; ++x) {
                    left = before.pixel(x, y) != after.pixel(x, y) ? x : left;
                }
            }
            return left > before.width() / 2 && left < before.width();
        };
        QVERIFY(changed("lbCountry", [this] { find<KvTextLine>("lbCountry")->setCaption("-"); }));
        showPage(kSettingsPage);
        QVERIFY(changed("cbNoSound", [this] { button("cbNoSound")->toggle(); }));
        QVERIFY(changed("pgUpdate", [this] { find<QProgressBar>("pgUpdate")->setValue(20); }));
    }

    void choice()
    {
        const std::pair<QStringList, const char *> desktops[] = {{{"de-AT", "en"}, "de"},
                                                                 {{"nl-NL", "fr-CA"}, "fr"},
                                                                 {{"zh-Hans-CN", "zh"}, "zh_CN"},
                                                                 {{"zh-Hant-TW", "es-MX"}, "es"},
                                                                 {{"fa-IR"}, "fa"},
                                                                 {{"en-GB", "de"}, "en"},
                                                                 {{"sr-Latn-RS", "ru-UA"}, "ru"},
                                                                 {{"C"}, "en"},
                                                                 {{}, "en"}};
        for (const auto &[wanted, code] : desktops) {
            COMPARE_CASE(wanted.join(' ').toLatin1(), languageFor(wanted), code);
        }

        startIn("de");
        auto *box = combo("cmLanguage");
        QCOMPARE(box->currentText(), QString("Wie der Desktop"));
        showPage(kSettingsPage);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_End);
        QCOMPARE(chosenLanguage(), QString("fa"));
        start();
        QCOMPARE(combo("cmLanguage")->currentText(), QString("فارسی"));
        chooseLanguage({});
        QCOMPARE(chosenLanguage(), QString());
        putFile(appPath("/cfg/language"), "../tlh\n");
        QCOMPARE(chosenLanguage(), QString());
    }

private:
    static constexpr int kLoginPage = -1;
    static constexpr int kSettingsPage = 2;

    static void languages()
    {
        QTest::addColumn<QString>("code");
        for (const Language &language : kLanguages) {
            QTest::newRow(language.code) << language.code;
        }
    }

    void startIn(const QString &code)
    {
        useLanguage(code);
        startLoggedIn({"Examplia-Long-Distance-Server-Number-040"});
    }

    void showPage(int page) const
    {
        find<QStackedWidget>("stack")->setCurrentWidget(find(page == kLoginPage ? "pageLogin" : "pageMain"));
        find<KvRetinaTabBar>("tab")->setCurrentIndex(qMax(page, 0));
    }
};

QTEST_MAIN(LanguagesTest)
#include "LanguagesTest.moc"
