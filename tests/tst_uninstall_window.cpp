#include "ClosedWindows.h"
#include "Machine.h"
#include "SceneDriver.h"
#include "app/StartUp.h"
#include "settings/DataManager.h"
#include "uninstaller/UninstallWindow.h"
#include "uninstaller/Uninstaller.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>

#include <unistd.h>

namespace {

struct Shown {
    const Machine &machine;
    Uninstaller uninstaller{Removal(machine.directory, machine.entries)};
    UninstallWindow window{uninstaller};
    SceneDriver scene{&window};

    bool open() { return window.open() && QTest::qWaitForWindowExposed(&window); }
    QQuickItem *item(const char *name) const { return scene.item(name); }
    QString page() const { return window.rootObject()->property("page").toString(); }
    bool reachesResult() const
    {
        return QTest::qWaitFor([this] { return page() == "result"; }, 60000); // ms
    }
    // What the rows of the list say that are drawn now.
    QStringList rows() const
    {
        const QRectF shown = SceneDriver::placeOf(item("names"));
        QMap<qreal, QString> texts; // by their places
        for (const QQuickItem *text : SceneDriver::shownTexts(item("names"))) {
            const QRectF place = SceneDriver::placeOf(text);
            if (place.bottom() > shown.top() && place.top() < shown.bottom())
                texts[place.top()] = text->property("text").toString();
        }
        return texts.values();
    }
};

struct Language {
    QByteArray settings; // empty: there are none
    QByteArray locale;
    int index;
};

} // namespace

class TestUninstallWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        useSoftwareSceneGraph();
        QAccessible::setActive(true);
        setUpFonts();
        registerQmlTypes();
        DataManager::getInstance()->changeLanguage(0);
    }

    void cleanupTestCase() { QVERIFY(freeClosedWindows()); }

    void asksRemovesAndTellsThatAllIsGone()
    {
        const Machine machine;
        QVERIFY(machine.install());
        Shown shown{machine};
        QVERIFY(shown.open());
        QCOMPARE(shown.page(), QString("question"));
        QVERIFY(machine.has("opt/VornVPN/VORN"));
        const QPoint before = shown.window.position();
        shown.scene.press({300, 20});
        QTest::mouseMove(&shown.window, QPoint(310, 15));
        QCOMPARE(shown.window.position() - before, QPoint(10, -5));
        QTest::mouseRelease(&shown.window, Qt::LeftButton, {}, QPoint(300, 20));

        shown.scene.click("uninstallButton");
        QCOMPARE(shown.page(), QString("removing"));
        QSignalSpy quits(shown.window.engine(), &QQmlEngine::quit);
        shown.scene.click("closeButton");
        shown.scene.key(Qt::Key_Escape);
        auto *bar = QAccessible::queryAccessibleInterface(shown.item("progressBar"));
        QVERIFY(bar);
        QTRY_COMPARE(bar->text(QAccessible::Description), QString("100%"));
        QVERIFY(shown.reachesResult());
        QVERIFY(quits.isEmpty() && !machine.has("opt/VornVPN"));
        QCOMPARE(shown.item("resultText")->property("text").toString(),
            QString("VornVPN has been removed"));
        QCOMPARE(shown.rows(), QStringList());
        shown.scene.key(Qt::Key_Escape);
        QCOMPARE(quits.size(), 1);
        shown.scene.click("doneButton");
        QCOMPARE(quits.size(), 2);
    }

    void reportCanBeReadToItsEnd()
    {
        const Machine machine;
        QStringList files;
        for (int i = 100; i < 400; ++i)
            files << QStringLiteral("mine/letter%1.odt").arg(i);
        QVERIFY(machine.install("../../other/neighbour\n", files));
        Shown shown{machine};
        QVERIFY(shown.open());
        shown.scene.click("uninstallButton");
        QVERIFY(shown.reachesResult());
        QCOMPARE(shown.item("resultText")->property("text").toString(),
            QString("VornVPN could not be removed completely"));
        QTRY_VERIFY(shown.rows().contains(files.first()));
        const QStringList head{
            "These could not be removed:", "../../other/neighbour: leads out of the directory",
            "These files do not belong to VornVPN and were kept:"};
        QCOMPARE(shown.rows().mid(0, 3), head);
        QVERIFY(!shown.rows().contains(files.last()) && shown.item("scrollMark")->isVisible());

        shown.item("names")->forceActiveFocus();
        shown.scene.key(Qt::Key_PageDown);
        QTRY_VERIFY(!shown.rows().contains(head.first()));
        shown.scene.key(Qt::Key_End);
        QTRY_VERIFY(shown.rows().contains(files.last()));
        shown.scene.key(Qt::Key_Home);
        QTRY_VERIFY(shown.rows().contains(head.first()));
    }

    void lackOfRightsIsNamed()
    {
        if (geteuid() == 0 && seteuid(65534) != 0)
            QSKIP("there is nobody else");
        const Machine machine;
        const bool isInstalled = machine.install();
        const QString library = machine.directory + "lib";
        QFile::setPermissions(library, QFile::ReadOwner | QFile::ExeOwner);
        Shown shown{machine};
        const bool isOpen = shown.open();
        shown.scene.click("uninstallButton");
        const bool isDone = shown.reachesResult();
        QFile::setPermissions(library, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(seteuid(getuid()) == 0 && isInstalled && isOpen && isDone);
        QTRY_COMPARE(shown.rows(),
            QStringList({"These could not be removed:\n"
                         "Start the uninstaller again with administrator rights.",
                "lib/libA.so.1: no rights"}));
    }

    void language_data()
    {
        const Rows<Language> row;
        row("that of the settings", {R"({"softUseLanguage": "_ru"})", "de_DE", 3});
        row("the locale's without settings", {"", "de_DE", 4});
        row("the locale's where the settings tell none", {"no settings", "id_ID", 2});
        row("English for others", {"", "tlh", 0});
    }

    void language()
    {
        const auto [settings, locale, expected] = Rows<Language>::fetch();
        const QTemporaryDir directory;
        QVERIFY(settings.isEmpty() || put(directory.filePath("VornData.json"), settings));
        const QByteArray before = qgetenv("LC_ALL");
        qputenv("LC_ALL", locale + ".UTF-8");
        DataManager &store = *DataManager::getInstance();
        store.setSoftUseLanguage({});
        speakLanguageOf(directory.path(), store);
        qputenv("LC_ALL", before);
        QCOMPARE(store.getCurrentLanguageIndex(), expected);
        store.changeLanguage(0);
    }
};

QTEST_MAIN(TestUninstallWindow)
#include "tst_uninstall_window.moc"
