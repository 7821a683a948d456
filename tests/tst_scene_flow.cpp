#include "SceneDriver.h"
#include "Support.h"
#include "app/StartUp.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QtQml>

namespace {

QStringList calls; // of the back end, by the scene
QString systemType;

void note(const QString &name, const QStringList &arguments)
{
    calls << name + '(' + arguments.join(", ") + ')';
}

QString text(bool value) { return value ? "true" : "false"; }

// Back ends under the names of the real ones that write down what the scene asks of them.
class Server : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void getDomainNameFromWeb() { note("getDomainNameFromWeb", {}); }
    Q_INVOKABLE void getLocalLanguage() { note("getLocalLanguage", {}); }
    Q_INVOKABLE void checkRegion() { note("checkRegion", {}); }
    Q_INVOKABLE void getInitInfo() { note("getInitInfo", {}); }
    Q_INVOKABLE void pushLog(QString flag, QString type, QString status, QString info)
    {
        note("pushLog", {flag, type, status, info});
    }

signals:
    void domainNameFromWebStatus();
    void initSystemStatus(int code);
    void sendDefaultLanguage(int language);
};

class Store : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString emptyString READ emptyString NOTIFY languageChanged)

public:
    QString emptyString() const { return {}; }
    Q_INVOKABLE double getDpiScale() const { return 1; }
    Q_INVOKABLE QString getSystemType() const { return systemType; }
    Q_INVOKABLE QString getSoftUseLanguage() const { return "_xx"; }
    Q_INVOKABLE int languageTypeTransToInt(QString) const { return 0; }
    Q_INVOKABLE QStringList getLanguageList() const
    {
        return {"English", "中文繁體", "Indonesia", "Русский", "Deutsch"};
    }
    Q_INVOKABLE QString getDomainName() const { return "http://host"; }
    Q_INVOKABLE QString getPrivacyPolicyUrl() const { return "/terms"; }
    Q_INVOKABLE void readDataFromFile(QString path) { note("readDataFromFile", {path}); }
    Q_INVOKABLE void setInstallPath(QString path) { note("setInstallPath", {path}); }
    Q_INVOKABLE void setIsBootUp(bool value) { note("setIsBootUp", {text(value)}); }
    Q_INVOKABLE void changeLanguage(int index)
    {
        note("changeLanguage", {QString::number(index)});
        emit languageChanged();
    }

signals:
    void languageChanged();
};

class Host : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE QString getCurrentPath() const { return "/bundle"; }
    Q_INVOKABLE bool creatVornRunShell() { return noted("creatVornRunShell", {}); }
    Q_INVOKABLE bool creatUninstallRunShell() { return noted("creatUninstallRunShell", {}); }
    Q_INVOKABLE bool copyDirectoryFilesThread(QString from, QString to, bool overwrite)
    {
        return noted("copyDirectoryFilesThread", {from, to, text(overwrite)});
    }
    Q_INVOKABLE bool addLinkToDeskTopLinux() { return noted("addLinkToDeskTopLinux", {}); }
    Q_INVOKABLE bool addAutoStartUp() { return noted("addAutoStartUp", {}); }
    Q_INVOKABLE bool addLinkToDeskTop(QString target, QString name)
    {
        return noted("addLinkToDeskTop", {target, name});
    }
    Q_INVOKABLE bool delDeskTopLink(QString name) { return noted("delDeskTopLink", {name}); }
    Q_INVOKABLE bool addLinkToAppLocation(QString target, QString name)
    {
        return noted("addLinkToAppLocation", {target, name});
    }
    Q_INVOKABLE bool delLinkToAppLocation(QString name)
    {
        return noted("delLinkToAppLocation", {name});
    }
    Q_INVOKABLE bool addStartTask(QString name, QString path)
    {
        return noted("addStartTask", {name, path});
    }
    Q_INVOKABLE bool setRegValue(QString key, QString name, QString value)
    {
        return noted("setRegValue", {key.section('\\', -1), name, value});
    }
    Q_INVOKABLE bool removeRegValue(QString key, QString name)
    {
        return noted("removeRegValue", {key.section('\\', -1), name});
    }
    Q_INVOKABLE bool doOtherExe(QString path, QStringList arguments)
    {
        return noted("doOtherExe", {path, QString::number(arguments.size())});
    }
    Q_INVOKABLE bool openUrl(QString url) { return noted("openUrl", {url}); }
    Q_INVOKABLE void lookAtInstallPath(QString path) { note("lookAtInstallPath", {path}); }

signals:
    void copyDirectorySuccess();
    void sendSystemCmdResult(bool success, QString message);
    void entryNotWritten(QString message);
    void installPathLookedAt(QString path, QString hint, QUrl folder);

private:
    static bool noted(const QString &name, const QStringList &arguments)
    {
        note(name, arguments);
        return true;
    }
};

struct Installation {
    QString system;
    QString typed; // into the path field
    bool withEntries; // both check boxes ticked
    QStringList expected;
};

struct Ending {
    bool copied;
    bool beforeThePage; // the copy ends before the finish page comes
    QString notice; // what the finish page shows instead of nothing
};

// What calls for the attention of a screen reader when it appears.
QString alertOf(QQuickItem *item)
{
    const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(item);
    return known && known->role() == QAccessible::AlertMessage ? known->text(QAccessible::Name)
                                                               : QString();
}

} // namespace

// The scene as a client of its back ends: which calls it makes, in which order.
class TestSceneFlow : public QObject {
    Q_OBJECT

    QScopedPointer<QQuickView> view;
    QScopedPointer<SceneDriver> scene;
    Host *host = nullptr;
    Server *server = nullptr;

    QStringList takeCalls() { return std::exchange(calls, {}); }

    void open(const QString &system = "linux")
    {
        systemType = system;
        view.reset(new QQuickView);
        view->setSource(QUrl("qrc:/main.qml"));
        view->show();
        view->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(view.data()));
        scene.reset(new SceneDriver(view.data()));
        host = view->rootObject()->findChild<Host *>();
        server = view->rootObject()->findChild<Server *>();
        QMetaObject::invokeMethod(view->rootObject(), "completePages");
        QVERIFY(host && server && scene->item("pathField") && scene->item("tryItNowButton"));
    }

    void fillField(const QString &path)
    {
        scene->click("customPathButton");
        scene->item("pathField")->forceActiveFocus();
        scene->type(path);
    }

    void tick() { QMetaObject::invokeMethod(view->rootObject(), "showProgress"); }

    void goToFinishPage()
    {
        while (!scene->isShown("finishPage"))
            tick();
    }

private slots:
    void initTestCase()
    {
        useSoftwareSceneGraph();
        setUpFonts();
        qmlRegisterType<Server>("VORN.KQHttpManager", 1, 0, "KQHttpManager");
        qmlRegisterType<Host>("VORN.Operating", 1, 0, "Operating");
        qmlRegisterSingletonType<Store>("VORN.DataManager", 1, 0, "DataManager",
            [](QQmlEngine *, QJSEngine *) -> QObject * { return new Store; });
        QAccessible::setActive(true);
    }

    void cleanup() { calls.clear(); }

    void asksTheServerAtTheStart()
    {
        open();
        QCOMPARE(takeCalls(), (QStringList{"getDomainNameFromWeb()", "getLocalLanguage()"}));
        emit server->domainNameFromWebStatus();
        QCOMPARE(takeCalls(), (QStringList{"checkRegion()", "getInitInfo()"}));
        scene->click("agreementButton");
        QCOMPARE(takeCalls(), QStringList());
        emit server->initSystemStatus(1000);
        scene->click("agreementButton");
        QCOMPARE(takeCalls(), QStringList("openUrl(http://host/terms)"));
        emit server->sendDefaultLanguage(3);
        QCOMPARE(takeCalls(), QStringList("changeLanguage(3)"));
        QCOMPARE(scene->get("languageBox", "textForShow"), "Русский");
    }

    void installs_data()
    {
        const Rows<Installation> row;
        const QStringList linux{"readDataFromFile(/home/u/client/)", "changeLanguage(3)",
            "pushLog(language, , 1, _xx)", "setInstallPath(/home/u/client)", "creatVornRunShell()",
            "creatUninstallRunShell()", "copyDirectoryFilesThread(/bundle, /home/u/client, true)"};
        const QStringList linuxEntries{
            "addLinkToDeskTopLinux()", "addAutoStartUp()", "setIsBootUp(true)"};
        const QStringList windows{"readDataFromFile(D:/client/)", "changeLanguage(3)",
            "pushLog(language, 1, , _xx)", "setInstallPath(D:/client)",
            "copyDirectoryFilesThread(/bundle, D:/client, true)"};
        const QStringList windowsEntries{"delLinkToAppLocation(VornVpn)", "delDeskTopLink(VornVpn)",
            "delLinkToAppLocation(VornVpnUninstall)", "delDeskTopLink(VornVpnUninstall)",
            "addLinkToAppLocation(D:/client/VORN.exe, VornVPN)",
            "addLinkToDeskTop(D:/client/VORN.exe, VornVPN)",
            "addLinkToAppLocation(D:/client/Uninstall.exe, UninstallVornVPN)",
            "addStartTask(VornVpnStart, D:/client/VORN.exe)", "setIsBootUp(true)"};
        const QStringList registry{"removeRegValue(VornVpn, DisplayName)",
            "setRegValue(VornVpn, DisplayName, VornVPN)",
            "removeRegValue(VornVpn, UninstallString)",
            "setRegValue(VornVpn, UninstallString, D:/client\\Uninstall.exe)",
            "removeRegValue(VornVpn, DisplayIcon)",
            "setRegValue(VornVpn, DisplayIcon, D:/client\\Uninstall.exe)"};
        row("Linux", {"linux", "/home/u/client", true, linux + linuxEntries});
        row("Linux without entries", {"linux", "/home/u/client", false, linux});
        row("blanks around the path", {"linux", "  /home/u/client ", false, linux});
        QStringList usual = linux;
        usual.replaceInStrings("/home/u/client", "/opt/VornVPN");
        row("empty field", {"linux", "", false, usual});
        row("blank field", {"linux", "   ", false, usual});
        row("Windows", {"windows", "D:/client", true, windows + windowsEntries + registry});
        row("Windows without entries", {"windows", "D:/client", false, windows + registry});
    }

    void installs()
    {
        const auto [system, typed, withEntries, expected] = Rows<Installation>::fetch();
        open(system);
        emit server->sendDefaultLanguage(3);
        fillField(typed);
        if (!withEntries) {
            scene->click("autoStartCheckBox");
            scene->click("shortcutCheckBox");
        }
        scene->click("acceptCheckBox");
        takeCalls();
        scene->click("quickInstallButton");
        QCOMPARE(takeCalls(), QStringList());
        QVERIFY(scene->isShown("initialPage"));

        scene->click("acceptCheckBox");
        scene->click("quickInstallButton");
        QCOMPARE(takeCalls(), expected);
        QVERIFY(scene->isShown("installingPage") && !scene->isShown("initialPage")
            && !scene->isShown("pathPanel"));
    }

    void showsProgressByTicks()
    {
        open();
        QMetaObject::invokeMethod(view->rootObject(), "startInstallation");
        QStringList seen;
        while (!scene->isShown("finishPage")) {
            tick();
            QQuickItem *page = scene->item("installingPage");
            page->setVisible(true);
            const QStringList shown{scene->get("percentText", "text").toString(),
                SceneDriver::shownTexts(page).constFirst()->property("text").toString()};
            seen << shown.join(' ');
            page->setVisible(false);
        }
        QStringList expected;
        for (int value = 0; value <= 100; ++value) {
            const char *headline = value < 35 ? "One-click acceleration"
                : value < 70                  ? "Smart cloud acceleration"
                                              : "Multi-platform, fully compatible";
            expected << QString("%1% %2").arg(value).arg(headline);
        }
        QCOMPARE(seen, expected);
    }

    void tellsHowTheCopyEnded_data()
    {
        const Rows<Ending> row;
        row("copied before the page comes", {true, true, ""});
        row("copied behind the page", {true, false, ""});
        row("failed before the page comes", {false, true, "no room"});
        row("failed behind the page", {false, false, "no room"});
    }

    void tellsHowTheCopyEnded()
    {
        const auto [copied, beforeThePage, notice] = Rows<Ending>::fetch();
        open();
        scene->click("quickInstallButton");
        emit host->entryNotWritten("no menu");
        emit host->entryNotWritten("no start");
        if (beforeThePage)
            emit host->sendSystemCmdResult(copied, notice);
        goToFinishPage();
        if (!beforeThePage)
            emit host->sendSystemCmdResult(copied, notice);

        QCOMPARE(scene->isShown("failureNotice"), !copied);
        QCOMPARE(scene->get("failureReason", "text"), notice);
        QCOMPARE(scene->get("notesText", "text"), "no menu no start");
        QVERIFY(scene->isShown("finishText") && scene->isShown("tryItNowButton"));
        QCOMPARE(alertOf(scene->item("notesText")), "no menu no start");
        QVERIFY(copied || alertOf(scene->item("failureNotice")).endsWith(notice));

        takeCalls();
        QSignalSpy quit(view->engine(), &QQmlEngine::quit);
        scene->click("tryItNowButton");
        scene->click("tryItNowButton");
        QCOMPARE(takeCalls(),
            (QStringList{"pushLog(start, , , )", "doOtherExe(/opt/VornVPN/VornRun.sh, 0)"}));
        QVERIFY(quit.wait());
    }

    void startsWhenTheCopyHasEnded_data()
    {
        const Rows<bool> row; // whether it succeeds
        row("copied", true);
        row("failed", false);
    }

    void startsWhenTheCopyHasEnded()
    {
        const bool copied = Rows<bool>::fetch();
        open();
        for (QObject *timer : view->rootObject()->findChildren<QObject *>())
            if (timer->property("interval") == 5000) // to read the notice
                timer->setProperty("interval", 1);
        scene->click("quickInstallButton");
        goToFinishPage();
        QVERIFY(!scene->isShown("waitingText"));
        takeCalls();
        scene->click("tryItNowButton");
        QCOMPARE(takeCalls(), QStringList());
        QVERIFY(scene->isShown("waitingText"));
        QCOMPARE(scene->get("tryItNowButton", "btText"), "Please wait...");

        QSignalSpy quit(view->engine(), &QQmlEngine::quit);
        emit host->sendSystemCmdResult(copied, copied ? "" : "no room");
        QCOMPARE(scene->isShown("failureNotice"), !copied);
        QCOMPARE(calls.isEmpty(), !copied);
        QVERIFY(!scene->isShown("waitingText"));
        QVERIFY(quit.wait());
        QCOMPARE(takeCalls(),
            (QStringList{"pushLog(start, , , )", "doOtherExe(/opt/VornVPN/VornRun.sh, 0)"}));
    }

    void tellsWhatThePathMeets()
    {
        open();
        takeCalls();
        scene->click("customPathButton");
        QCOMPARE(takeCalls(), QStringList("lookAtInstallPath(/opt/VornVPN)"));
        emit host->installPathLookedAt("/opt/VornVPN", "needs rights", QUrl("file:///opt"));
        QCOMPARE(scene->get("hintText", "text"), "needs rights");
        emit host->installPathLookedAt("/opt/Vorn", "outdated", QUrl("file:///"));
        QCOMPARE(scene->get("hintText", "text"), "needs rights");

        scene->item("pathField")->forceActiveFocus();
        scene->type(" /tmp/a ");
        QCOMPARE(scene->get("hintText", "text"), "");
        QCOMPARE(scene->root()->property("installPath"), "/tmp/a");
        QTRY_COMPARE(calls, QStringList("lookAtInstallPath(/tmp/a)"));
        takeCalls();
        // In another language it reads differently, and what was typed stays.
        QMetaObject::invokeMethod(scene->item("languageBox"), "choose", Q_ARG(QVariant, 4));
        QCOMPARE(takeCalls(), (QStringList{"changeLanguage(4)", "lookAtInstallPath(/tmp/a)"}));
        QCOMPARE(scene->get("pathField", "text"), " /tmp/a ");
        scene->root()->setProperty("installPath", "/srv/b");
        QCOMPARE(scene->get("pathField", "text"), "/srv/b");
    }

    void aPressElsewhereTakesTheFocus_data()
    {
        const Rows<QString> row;
        for (const char *name : {"agreementButton", "customPathButton", "quickInstallButton",
                 "acceptCheckBox", "pathField", "miniButton", "initialPage"})
            row(name, name);
    }

    void aPressElsewhereTakesTheFocus()
    {
        const QString name = Rows<QString>::fetch();
        open();
        QMetaObject::invokeMethod(scene->root(), "togglePathPanel");
        scene->click("languageBox");
        QVERIFY(scene->get("languageBox", "checked").toBool());
        const QPointF at = name == "initialPage" ? QPointF(320, 110)
                                                 : SceneDriver::placeOf(scene->item(name)).center();
        scene->press(at);
        QVERIFY(!scene->get("languageBox", "checked").toBool());
        QTest::mouseRelease(view.data(), Qt::LeftButton, {}, QPoint(10, 250)); // dragged off
        QCOMPARE(scene->focusedName(), name == "initialPage" ? QString("mainWindow") : name);
        // The ring is for the keyboard.
        if (name == "quickInstallButton") {
            QVERIFY(!scene->get(name, "focusedByKeyboard").toBool());
            scene->key(Qt::Key_Tab);
            scene->key(Qt::Key_Backtab);
            QVERIFY(scene->get(name, "focusedByKeyboard").toBool());
        }
    }
};

QTEST_MAIN(TestSceneFlow)
#include "tst_scene_flow.moc"
