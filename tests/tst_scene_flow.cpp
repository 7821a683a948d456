#include "ClosedWindows.h"
#include "Manual.h"
#include "SceneDriver.h"
#include "app/StartUp.h"

#include <QAccessible>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QtQml>

namespace {

struct Installation {
    QString system;
    QString typed; // into the path field
    QString path; // where that leads
    bool withEntries; // both check boxes ticked
};

struct Ending {
    bool copied;
    bool beforeThePage; // the copy ends before the finish page comes
    QString notice; // what the finish page shows instead of nothing
};

QUrl standIn(const QString &type)
{
    return QUrl::fromLocalFile(VORN_SOURCE_DIR "/tests/standins/" + type + ".qml");
}

// What a screen reader says by itself when the item appears.
QString announcementOf(QQuickItem *item)
{
    for (QQuickItem *part : SceneDriver::itemsOf(item)) {
        const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(part);
        if (known && known->role() == QAccessible::Notification)
            return known->text(QAccessible::Name);
    }
    return {};
}

} // namespace

// The scene as a client of its back ends: which calls it makes, in which order.
class TestSceneFlow : public QObject {
    Q_OBJECT

    QScopedPointer<QQuickView> view;
    QScopedPointer<SceneDriver> scene;

    // In the scene's own context, where its back ends and pages have names.
    QVariant script(const QString &text)
    {
        QQmlExpression expression(qmlContext(scene->root()), scene->root(), text);
        const QVariant value = expression.evaluate();
        return expression.hasError() ? expression.error().toString() : value;
    }

    QStringList calls()
    {
        return script("DataManager.notes").toString().split('\n', Qt::SkipEmptyParts);
    }

    QStringList takeCalls()
    {
        const QStringList taken = calls();
        script("DataManager.notes = ''");
        return taken;
    }

    void open(const QString &system = "linux")
    {
        view.reset(new QQuickView);
        view->rootContext()->setContextProperty("systemType", system);
        view->setSource(QUrl("qrc:/main.qml"));
        view->show();
        view->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(view.data()));
        scene.reset(new SceneDriver(view.data()));
        script("completePages()");
        QVERIFY(scene->item("pathField") && scene->item("tryItNowButton"));
    }

    void endCopy(bool copied, const QString &message)
    {
        script(QString("operatingId.sendSystemCmdResult(%1, '%2')")
                   .arg(QVariant(copied).toString(), message));
    }

    void fillField(const QString &path)
    {
        scene->click("customPathButton");
        scene->item("pathField")->forceActiveFocus();
        scene->type(path);
    }

    void tick() { script("showProgress()"); }

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
        for (const char *name : {"KQHttpManager", "Operating"})
            qmlRegisterType(standIn(name), qPrintable(QString("VORN.") + name), 1, 0, name);
        qmlRegisterSingletonType(standIn("DataManager"), "VORN.DataManager", 1, 0, "DataManager");
        QAccessible::setActive(true);
    }

    void cleanupTestCase()
    {
        view.reset();
        QVERIFY(freeClosedWindows());
    }

    void asksTheServerAtTheStart()
    {
        open();
        QCOMPARE(takeCalls(), (QStringList{"getDomainNameFromWeb()", "getLocalLanguage()"}));
        script("httpMangerId.domainNameFromWebStatus()");
        QCOMPARE(takeCalls(), (QStringList{"checkRegion()", "getInitInfo()"}));
        scene->click("agreementButton");
        QCOMPARE(takeCalls(), QStringList());
        script("httpMangerId.initSystemStatus(1000)");
        scene->click("agreementButton");
        QCOMPARE(takeCalls(), QStringList("openUrl(http://host/terms)"));
        script("httpMangerId.sendDefaultLanguage(3)");
        QCOMPARE(takeCalls(), QStringList("changeLanguage(3)"));
        QCOMPARE(scene->get("languageBox", "textForShow"), "Русский");
    }

    void installs_data()
    {
        const Rows<Installation> row;
        row("Linux", {"linux", "/home/u/client", "/home/u/client", true});
        row("Linux without entries", {"linux", "/home/u/client", "/home/u/client", false});
        row("blanks around the path", {"linux", "  /home/u/client ", "/home/u/client", false});
        row("empty field", {"linux", "", "/opt/VornVPN", false});
        row("Windows", {"windows", "D:/client", "D:/client", true});
    }

    void installs()
    {
        const auto [system, typed, path, withEntries] = Rows<Installation>::fetch();
        const QString key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion"
                            "\\Uninstall\\VornVpn";
        QStringList expected;
        for (const auto &cells : tableBelow("### The installer's own scene", "scene-interface.md"))
            if (cells[0].trimmed() == system && cells[1].contains("yes") == withEntries)
                expected = codeIn(cells[2]);
        expected.replaceInStrings("PATH", path).replaceInStrings("KEY", key);
        open(system);
        script("httpMangerId.sendDefaultLanguage(3)");
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
        script("startInstallation()");
        for (int value = 0; value <= 100; ++value) {
            tick();
            QCOMPARE(scene->isShown("finishPage"), value == 100);
            QQuickItem *page = scene->item("installingPage");
            page->setVisible(true); // behind the finish page it is hidden
            const char *headline = value < 35 ? "One-click acceleration"
                : value < 70                  ? "Smart cloud acceleration"
                                              : "Multi-platform, fully compatible";
            QCOMPARE(scene->get("percentText", "text"), QString("%1%").arg(value));
            QCOMPARE(SceneDriver::shownTexts(page).constFirst()->property("text"), headline);
        }
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
        script("operatingId.entryNotWritten('no menu')");
        script("operatingId.entryNotWritten('no start')");
        if (beforeThePage)
            endCopy(copied, notice);
        goToFinishPage();
        if (!beforeThePage)
            endCopy(copied, notice);

        QCOMPARE(scene->isShown("failureNotice"), !copied);
        QCOMPARE(scene->get("failureReason", "text"), notice);
        QCOMPARE(scene->get("notesText", "text"), "no menu no start");
        QVERIFY(scene->isShown("finishText") && scene->isShown("tryItNowButton"));
        QCOMPARE(announcementOf(scene->item("notesText")), "no menu no start");
        QVERIFY(copied || announcementOf(scene->item("failureNotice")).endsWith(notice));
        // A name that changed with every percent would be told each time.
        const auto *percent = QAccessible::queryAccessibleInterface(scene->item("percentText"));
        QCOMPARE(percent->text(QAccessible::Name), QString());

        takeCalls();
        QSignalSpy quit(view->engine(), &QQmlEngine::quit);
        scene->click("tryItNowButton");
        scene->click("tryItNowButton");
        QCOMPARE(takeCalls(),
            (QStringList{"pushLog(start, , , )", "doOtherExe(/opt/VornVPN/VornRun.sh, )"}));
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
        endCopy(copied, copied ? "" : "no room");
        QCOMPARE(scene->isShown("failureNotice"), !copied);
        QCOMPARE(calls().isEmpty(), !copied);
        QVERIFY(!scene->isShown("waitingText"));
        QVERIFY(quit.wait());
        QCOMPARE(takeCalls(),
            (QStringList{"pushLog(start, , , )", "doOtherExe(/opt/VornVPN/VornRun.sh, )"}));
    }

    void tellsWhatThePathMeets()
    {
        open();
        takeCalls();
        scene->click("customPathButton");
        QCOMPARE(takeCalls(), QStringList("lookAtInstallPath(/opt/VornVPN)"));
        script("operatingId.installPathLookedAt('/opt/VornVPN', 'needs rights', 'file:///opt')");
        QCOMPARE(scene->get("hintText", "text"), "needs rights");
        script("operatingId.installPathLookedAt('/opt/Vorn', 'outdated', 'file:///')");
        QCOMPARE(scene->get("hintText", "text"), "needs rights");

        scene->item("pathField")->forceActiveFocus();
        scene->type(" /tmp/a ");
        QCOMPARE(scene->get("hintText", "text"), "");
        QCOMPARE(scene->root()->property("installPath"), "/tmp/a");
        QTRY_COMPARE(calls(), QStringList("lookAtInstallPath(/tmp/a)"));
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
        for (const char *name :
            {"agreementButton", "quickInstallButton", "acceptCheckBox", "pathField", "initialPage"})
            row(name, name);
    }

    void aPressElsewhereTakesTheFocus()
    {
        const QString name = Rows<QString>::fetch();
        open();
        script("togglePathPanel()");
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
